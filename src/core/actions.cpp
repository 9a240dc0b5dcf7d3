#include "tvx/core/actions.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/core/chrome/cell_menu.h"
#include "tvx/core/parts.h"
#include "tvx/platform/common_dialogs.h"

/// The one table of what buttons and menu items do.
namespace tvx::core {
namespace {

struct ButtonRow {
  std::u16string_view key;  // compared letter by letter
  void (*act)(Parts& parts);
};

template <const char16_t* command>
void run(Parts& parts) {
  parts.formatting.run_command(command, AskedBy::Writer);
}
constexpr char16_t left[] = u"JustifyLeft", center[] = u"JustifyCenter", right[] = u"JustifyRight",
                   indent[] = u"indent", outdent[] = u"outdent", ordered[] = u"InsertOrderedList",
                   unordered[] = u"InsertUnorderedList";

// The button is never seen; pressed by a script it says its name.
void find(Parts& parts) {
  const KeepAlive alive(parts.context);
  const Surroundings& around = parts.context.surroundings();
  around.dialogs.show_message({.text = u"Find", .owner = around.hwnd});
}

constexpr ButtonRow buttons[] = {
    {u"toggle", [](Parts& parts) { parts.view_switch.show_Code(); }},
    {u"Print", [](Parts& parts) { parts.files.print_Document(false); }},
    {u"Copy", [](Parts& parts) { parts.clipboard.copy(); }},
    {u"Cut", [](Parts& parts) { parts.clipboard.cut(); }},
    {u"Paste", [](Parts& parts) { parts.clipboard.paste(); }},
    {u"Align Left", run<left>},
    {u"Center", run<center>},
    {u"Align Right", run<right>},
    {u"Bold", [](Parts& parts) { parts.formatting.bold(AskedBy::Writer); }},
    {u"Italic", [](Parts& parts) { parts.formatting.italic(AskedBy::Writer); }},
    {u"Underline", [](Parts& parts) { parts.formatting.underline(AskedBy::Writer); }},
    {u"Strike Through", [](Parts& parts) { parts.formatting.strike(AskedBy::Writer); }},
    {u"indent", run<indent>},
    {u"unindent", run<outdent>},
    {u"Text", [](Parts& parts) { parts.font_settings.change_Font(); }},
    {u"Find", find},
    {u"Spell Check", [](Parts& parts) { parts.spelling.SpellCheck(); }},
    {u"Undo", [](Parts& parts) { parts.formatting.undo(); }},
    {u"Redo", [](Parts& parts) { parts.formatting.redo(); }},
    {u"link", [](Parts& parts) { parts.formatting.insert_Link(); }},
    {u"Image", [](Parts& parts) { parts.images.insert_chosen(); }},
    {u"RemoteImage", [](Parts& parts) { parts.images.insertImageFromURL(u""); }},
    {u"orderedlist", run<ordered>},
    {u"unorderedlist", run<unordered>},
    {u"table", [](Parts& parts) { parts.tables.insert_table(); }},
    {u"HR", [](Parts& parts) { parts.selection.insert_HR(); }},
};

struct ItemRow {
  std::u16string_view name;
  void (*act)(Parts& parts, const platform::Menu& item);
};

void cut(Parts& parts, const platform::Menu&) {
  parts.clipboard.cut();
  parts.context.mark_changed();
}
void copy(Parts& parts, const platform::Menu&) { parts.clipboard.copy(); }
void paste(Parts& parts, const platform::Menu&) {
  parts.clipboard.paste();
  parts.context.mark_changed();
}
void paste_text(Parts& parts, const platform::Menu&) { parts.clipboard.paste_text(); }
/// Leaves a command for what runs when the popup has closed.
template <const char16_t* command>
void pend(Parts& parts, const platform::Menu&) {
  parts.menu_commands.pend(command);
}
void source(Parts& parts, const platform::Menu&) {
  if (parts.toolbars.Toolbar1.Item(button_toggle).Visible()) parts.view_switch.show_Code();
}
void revert(Parts& parts, const platform::Menu&) { parts.content.ask_and_revert(); }
void cell_or_row(Parts& parts, const platform::Menu& item) { parts.tables.act_on_cell_or_row(item); }
void edit_tag(Parts& parts, const platform::Menu&) { parts.element_dialogs.edit_tag(); }
void properties(Parts& parts, const platform::Menu&) { parts.element_dialogs.edit_properties(); }
void field_of_path(Parts& parts, const platform::Menu&) {
  attempt([&] { parts.highlight.restore(); });
  if (const auto field = FieldSettings::field_of(parts.highlight.element()))
    parts.field_settings.edit_field(field);
}
void form_of_path(Parts& parts, const platform::Menu&) {
  attempt([&] { parts.highlight.restore(); });
  if (const auto found = FieldSettings::form_of(parts.highlight.element()))
    parts.field_settings.edit_form(found);
}

void change_spelling(Parts& parts, const platform::Menu& item) {
  std::u16string text;
  for (std::size_t at = 0; at < item.Caption().size(); ++at) {
    if (item.Caption()[at] == u'&') ++at;
    text += item.Caption()[at];
  }
  if (item.Index().value_or(0) > 0) parts.spelling_marks.change_word(text);
}
void add_spelling(Parts& parts, const platform::Menu&) { parts.spelling_marks.add_word(); }
void ignore_spelling(Parts& parts, const platform::Menu&) { parts.spelling_marks.ignore_word(); }

constexpr char16_t link[] = u"Link", remove_image_link[] = u"RemoveLink", image[] = u"IMGPROP",
                   edit_link[] = u"Edit Link", remove_link[] = u"Remove Link", insert_row[] = u"Insert Row",
                   delete_row[] = u"Delete Row", insert_column[] = u"Insert Column",
                   delete_column[] = u"Delete Column", table[] = u"Properties", field[] = u"Field Settings",
                   form[] = u"Form Settings";

constexpr ItemRow items[] = {
    {u"mnuImgCut", cut},
    {u"mnuImgCopy", copy},
    {u"mnuImgPaste", paste},
    {u"mnuImgNewLink", pend<link>},
    {u"mnuImgLink", pend<link>},
    {u"mnuImgLinkRemove", pend<remove_image_link>},
    {u"mnuImgProperties", pend<image>},
    {u"mnuSpelling", change_spelling},
    {u"mnuSpellingAdd", add_spelling},
    {u"mnuSpellingIgnore", ignore_spelling},
    {u"mnuLinkSpelling", change_spelling},
    {u"mnuLinkSpellingAdd", add_spelling},
    {u"mnuLinkSpellingIgnore", ignore_spelling},
    {u"mnuLinkCut", cut},
    {u"mnuLinkCopy", copy},
    {u"mnuLinkPaste", paste},
    {u"mnuLinkEdit", pend<edit_link>},
    {u"mnuLinkRemove", pend<remove_link>},
    {u"mnuMiscCut", cut},
    {u"mnuMiscCopy", copy},
    {u"mnuMiscPaste", paste},
    {u"mnuMiscPasteText", paste_text},
    {u"mnuLinkPasteText", paste_text},
    {u"mnuInsertLink", pend<edit_link>},
    {u"mnuMiscField", pend<field>},
    {u"mnuMiscForm", pend<form>},
    {u"mnuMiscSource", source},
    {u"mnuMiscRevert", revert},
    {u"mnuTInsRow", pend<insert_row>},
    {u"mnuTDelRow", pend<delete_row>},
    {u"mnuTInsCol", pend<insert_column>},
    {u"mnuTDelCol", pend<delete_column>},
    {u"mnuTProp", pend<table>},
    {u"mnuToolProperties", properties},
    {u"mnuToolEditTag", edit_tag},
    {u"mnuToolField", field_of_path},
    {u"mnuToolForm", form_of_path},
    {u"MnuCellRowActionsDelete", cell_or_row},
    {u"MnuCellRowActionsInsertRowAbove", cell_or_row},
    {u"MnuCellRowActionsInsertRowBelow", cell_or_row},
    {u"MnuCellRowActionsMergeCellLeft", cell_or_row},
    {u"MnuCellRowActionsMergeCellRight", cell_or_row},
    {u"MnuCellRowActionsInsertCellBefore", cell_or_row},
    {u"MnuCellRowActionsInsertCellAfter", cell_or_row},
};

}  // namespace

bool ControlActions::press(std::u16string_view button_key) {
  const auto row = std::ranges::find(buttons, button_key, &ButtonRow::key);
  if (row == std::end(buttons)) return false;
  row->act(parts_);
  return true;
}

bool ControlActions::press_form(std::u16string_view button_key) {
  if (button_key != u"form") return parts_.form_elements.insert_field(button_key);
  parts_.form_elements.insert_Form();
  return true;
}

bool ControlActions::choose(const platform::Menu& item) {
  if (const std::u16string_view command = cell_command_of(item); !command.empty()) {
    parts_.formatting.act_on_cells(command);
    return true;
  }
  const auto row = std::ranges::find(items, std::u16string_view(item.Name()), &ItemRow::name);
  if (row == std::end(items)) return false;
  row->act(parts_, item);
  return true;
}

}  // namespace tvx::core
