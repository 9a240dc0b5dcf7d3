#include "tvx/core/actions.h"

#include <algorithm>
#include <iterator>

#include "tvx/base/error.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/core/chrome/cell_menu.h"
#include "tvx/core/chrome/frames.h"
#include "tvx/core/chrome/obstacles.h"
#include "tvx/core/chrome/veto.h"
#include "tvx/core/parts.h"
#include "tvx/editing/commands/command_table.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/writer_state.h"
#include "tvx/platform/common_dialogs.h"

/// The one table of what buttons and menu items do.
namespace tvx::core {
namespace {

template <const char16_t* command>
void run(Parts& parts) {
  parts.formatting.run_command(command, AskedBy::Writer);
}
constexpr char16_t left[] = u"JustifyLeft", center[] = u"JustifyCenter", right[] = u"JustifyRight",
                   justify[] = u"JustifyFull", indent[] = u"indent", outdent[] = u"outdent",
                   ordered[] = u"InsertOrderedList", unordered[] = u"InsertUnorderedList",
                   subscript[] = u"Subscript", superscript[] = u"Superscript", clear[] = u"RemoveFormat",
                   unlink[] = u"Unlink", block[] = u"FormatBlock";

// The button is never seen; pressed by a script it says its name.
void find(Parts& parts) {
  const KeepAlive alive(parts.context);
  const Surroundings& around = parts.context.surroundings();
  around.dialogs.show_message({.text = u"Find", .owner = around.hwnd});
}

void select_all(Parts& parts) {
  if (parts.code.in_front())
    parts.code.box().TextBox1().select(0, parts.code.box().TextBox1().length());
  else
    attempt([&] { browser::press_command(parts.context.document(), u"SelectAll"); });
}

template <const char16_t* style>
void set_style(Parts& parts) {
  parts.selection_formats.set_paragraph_style(style);
}
template <const char16_t* style>
bool has_style(Parts& parts) {
  return parts.selection_formats.paragraph_style() == style;
}
constexpr char16_t p[] = u"p", h1[] = u"h1", h2[] = u"h2", h3[] = u"h3", h4[] = u"h4", h5[] = u"h5",
                   h6[] = u"h6", pre[] = u"pre", quotation[] = u"blockquote";

bool source_shows(Parts& parts) { return parts.code.in_front(); }

std::u16string_view cannot_quote(Parts& parts) {
  return parts.selection_formats.can_be_quotation() ? obstacles::none : obstacles::in_list;
}
std::u16string_view lacks_link(Parts& parts) {
  return parts.selection_formats.has_link() ? obstacles::none : obstacles::no_link;
}
std::u16string_view cannot_paste(Parts& parts) {
  return parts.toolbars.Toolbar1.Item(button_paste).Obstacle();
}

std::u16string_view lacks_text(Parts& parts) {
  const bool frames = consists_of_frames(parts.context.document().tree());
  return frames && !parts.side.in_hand() ? obstacles::frames : obstacles::none;
}

// The code's own steps: the document keeps its own.
void undo_in_code(Parts& parts) { parts.code.box().TextBox1().Undo(); }
void redo_in_code(Parts& parts) { parts.code.box().TextBox1().Redo(); }

// In the source beside the page the clipboard's operations are those of its box, and so are the steps.
template <platform::Message message>
void tell_side(Parts& parts) {
  platform::SendMessage(parts.side.box().hwnd(), message);
}
void select_all_of_side(Parts& parts) {
  platform::TextBox& box = parts.side.box().TextBox1();
  box.select(0, box.length());
}

/// An operation is what a button does; some have none, and are for hosts' own bars alone.
struct OperationRow {
  std::u16string_view name;    // for hosts' own bars; empty: only the button knows it
  std::u16string_view button;  // its key, compared letter by letter; empty: it has none
  void (*act)(Parts& parts);
  std::u16string_view command = {};  // of the document, which says whether it can act and is on
  bool (*is_on)(Parts& parts) = nullptr;
  std::u16string_view (*obstacle)(Parts& parts) = nullptr;  // beside that of its button
  void (*act_in_code)(Parts& parts) = nullptr;
  void (*act_in_side)(Parts& parts) = nullptr;  // none: it is for the page
  bool while_reading = false;                   // also where the page may not be edited
};

void show_other_view(Parts& parts) { parts.view_switch.show_Code(); }
void copy(Parts& parts) { parts.clipboard.copy(); }
void cut(Parts& parts) { parts.clipboard.cut(); }
void paste(Parts& parts) { parts.clipboard.paste(); }
void paste_text(Parts& parts) { parts.clipboard.paste_text(); }
void print(Parts& parts) { parts.files.print_Document(false); }

constexpr OperationRow operation_rows[] = {
    {.name = u"Source",
     .button = u"toggle",
     .act = show_other_view,
     .is_on = source_shows,
     .act_in_code = show_other_view},
    {.name = u"Print", .button = u"Print", .act = print, .while_reading = true},
    {.name = u"Copy",
     .button = u"Copy",
     .act = copy,
     .act_in_code = copy,
     .act_in_side = tell_side<platform::WM_COPY>,
     .while_reading = true},
    {.name = u"Cut",
     .button = u"Cut",
     .act = cut,
     .act_in_code = cut,
     .act_in_side = tell_side<platform::WM_CUT>},
    {.name = u"Paste",
     .button = u"Paste",
     .act = paste,
     .act_in_code = paste,
     .act_in_side = tell_side<platform::WM_PASTE>},
    {.name = u"PasteText",
     .act = paste_text,
     .obstacle = cannot_paste,
     .act_in_code = paste_text,
     .act_in_side = tell_side<platform::WM_PASTE>},
    {.name = u"SelectAll",
     .act = select_all,
     .obstacle = lacks_text,
     .act_in_code = select_all,
     .act_in_side = select_all_of_side,
     .while_reading = true},
    {.name = u"AlignLeft", .button = u"Align Left", .act = run<left>, .command = left},
    {.name = u"AlignCenter", .button = u"Center", .act = run<center>, .command = center},
    {.name = u"AlignRight", .button = u"Align Right", .act = run<right>, .command = right},
    {.name = u"Justify", .act = run<justify>, .command = justify},
    {.name = u"Bold",
     .button = u"Bold",
     .act = [](Parts& parts) { parts.formatting.bold(AskedBy::Writer); },
     .command = u"Bold"},
    {.name = u"Italic",
     .button = u"Italic",
     .act = [](Parts& parts) { parts.formatting.italic(AskedBy::Writer); },
     .command = u"Italic"},
    {.name = u"Underline",
     .button = u"Underline",
     .act = [](Parts& parts) { parts.formatting.underline(AskedBy::Writer); },
     .command = u"Underline"},
    {.name = u"Strike",
     .button = u"Strike Through",
     .act = [](Parts& parts) { parts.formatting.strike(AskedBy::Writer); },
     .command = u"Strikethrough"},
    {.name = u"Subscript", .act = run<subscript>, .command = subscript},
    {.name = u"Superscript", .act = run<superscript>, .command = superscript},
    {.name = u"ClearFormatting", .act = run<clear>, .command = clear},
    {.name = u"Indent", .button = u"indent", .act = run<indent>, .command = indent},
    {.name = u"Outdent", .button = u"unindent", .act = run<outdent>, .command = outdent},
    {.name = u"Font",
     .button = u"Text",
     .act = [](Parts& parts) { parts.font_settings.change_Font(); },
     .command = u"FontName"},
    {.button = u"Find", .act = find},
    {.name = u"Spelling", .button = u"Spell Check", .act = [](Parts& parts) { parts.spelling.SpellCheck(); }},
    {.name = u"Undo",
     .button = u"Undo",
     .act = [](Parts& parts) { parts.formatting.undo(); },
     .act_in_code = undo_in_code,
     .act_in_side = tell_side<platform::EM_UNDO>},
    {.name = u"Redo",
     .button = u"Redo",
     .act = [](Parts& parts) { parts.formatting.redo(); },
     .act_in_code = redo_in_code,
     .act_in_side = tell_side<platform::EM_REDO>},
    {.name = u"Link",
     .button = u"link",
     .act = [](Parts& parts) { parts.formatting.insert_Link(); },
     .command = u"CreateLink"},
    {.name = u"Unlink", .act = run<unlink>, .command = unlink, .obstacle = lacks_link},
    {.name = u"Image",
     .button = u"Image",
     .act = [](Parts& parts) { parts.images.insert_chosen(); },
     .command = u"InsertImage"},
    {.name = u"RemoteImage",
     .button = u"RemoteImage",
     .act = [](Parts& parts) { parts.images.insertImageFromURL(u""); },
     .command = u"InsertImage"},
    {.name = u"NumberedList", .button = u"orderedlist", .act = run<ordered>, .command = ordered},
    {.name = u"BulletedList", .button = u"unorderedlist", .act = run<unordered>, .command = unordered},
    {.name = u"Table",
     .button = u"table",
     .act = [](Parts& parts) { parts.tables.insert_table(); },
     .command = u"InsertHTML"},
    {.name = u"Rule",
     .button = u"HR",
     .act = [](Parts& parts) { parts.selection.insert_HR(); },
     .command = u"InsertHorizontalRule"},
    {.name = u"Paragraph", .act = set_style<p>, .command = block, .is_on = has_style<p>},
    {.name = u"Heading1", .act = set_style<h1>, .command = block, .is_on = has_style<h1>},
    {.name = u"Heading2", .act = set_style<h2>, .command = block, .is_on = has_style<h2>},
    {.name = u"Heading3", .act = set_style<h3>, .command = block, .is_on = has_style<h3>},
    {.name = u"Heading4", .act = set_style<h4>, .command = block, .is_on = has_style<h4>},
    {.name = u"Heading5", .act = set_style<h5>, .command = block, .is_on = has_style<h5>},
    {.name = u"Heading6", .act = set_style<h6>, .command = block, .is_on = has_style<h6>},
    {.name = u"Preformatted", .act = set_style<pre>, .command = block, .is_on = has_style<pre>},
    {.name = u"Quotation",
     .act = set_style<quotation>,
     .command = block,
     .is_on = has_style<quotation>,
     .obstacle = cannot_quote},
};

/// The forms' buttons, whose keys say what they insert.
struct FormRow {
  std::u16string_view name, button;
};
constexpr FormRow form_rows[] = {
    {u"Form", u"Form"},           {u"TextField", u"TextField"},     {u"TextArea", u"textarea"},
    {u"FileField", u"FileField"}, {u"HiddenField", u"HiddenField"}, {u"ImageField", u"ImageField"},
    {u"CheckBox", u"checkbox"},   {u"DropDownList", u"dropdown"},   {u"PushButton", u"Button"},
    {u"SubmitButton", u"Submit"}, {u"ResetButton", u"Reset"},       {u"RadioButton", u"Radio"},
};

/// The items of the table submenu.
struct CellRow {
  std::u16string_view name, item;
};
constexpr CellRow cell_rows[] = {
    {u"RowAbove", u"mnuCellRowAbove"},
    {u"RowBelow", u"mnuCellRowBelow"},
    {u"ColumnLeft", u"mnuCellColumnLeft"},
    {u"ColumnRight", u"mnuCellColumnRight"},
    {u"DeleteRow", u"mnuCellDeleteRow"},
    {u"DeleteColumn", u"mnuCellDeleteColumn"},
    {u"MergeCells", u"mnuCellMerge"},
    {u"MergeDown", u"mnuCellMergeDown"},
    {u"SplitCell", u"mnuCellSplit"},
    {u"HeaderRow", u"mnuCellHeader"},
    {u"SelectRow", u"mnuCellSelectRow"},
    {u"SelectColumn", u"mnuCellSelectColumn"},
    {u"SelectTable", u"mnuCellSelectTable"},
    {u"CellProperties", u"mnuCellProperties"},
    {u"TableProperties", u"mnuCellTableProperties"},
};

struct ItemRow {
  std::u16string_view name;
  void (*act)(Parts& parts, const platform::Menu& item);
};

void cut(Parts& parts, const platform::Menu&) {
  parts.clipboard.cut();
  parts.context.mark_changed();
}
void copy(Parts& parts, const platform::Menu&) { copy(parts); }
void paste(Parts& parts, const platform::Menu&) {
  parts.clipboard.paste();
  parts.context.mark_changed();
}
void paste_text(Parts& parts, const platform::Menu&) { paste_text(parts); }
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

/// The row with that name; null if there is none.
template <class Row, std::size_t count>
const Row* row_of(const Row (&rows)[count], std::u16string_view name) {
  const auto found = std::ranges::find(rows, name, &Row::name);
  return name.empty() || found == std::end(rows) ? nullptr : &*found;
}

bool has_frames(Parts& parts) { return consists_of_frames(parts.context.document().tree()); }

/// What stands in the way of everything that works on the page.
std::optional<std::u16string_view> obstacle_of_page(Parts& parts) {
  if (parts.code.in_front()) return obstacles::in_code;
  if (!parts.context.properties().EditorEnabled) return obstacles::read_only;
  if (has_frames(parts)) return obstacles::frames;
  return std::nullopt;
}

OperationState state_of(Parts& parts, const OperationRow& row) {
  OperationState state;
  const bool in_code = parts.code.in_front();
  const platform::Button* button = row.button.empty() ? nullptr : &parts.toolbars.Toolbar1.Item(row.button);
  const editing::CommandDefinition* command = editing::find_command(row.command);
  state.can_be_on = row.is_on || (command && command->state);
  if (in_code && !row.act_in_code) return state.obstacle = obstacles::in_code, state;
  if (!parts.context.properties().EditorEnabled && !row.while_reading)
    return state.obstacle = obstacles::read_only, state;
  if (!in_code && !row.command.empty() && has_frames(parts)) return state.obstacle = obstacles::frames, state;
  if (!in_code && button) state.obstacle = button->Obstacle();
  if (!in_code && row.obstacle && state.obstacle.empty()) state.obstacle = row.obstacle(parts);
  state.enabled = state.obstacle.empty();
  if (row.is_on) state.on = row.is_on(parts);
  if (!command) return state;
  editing::Editor& editor = parts.context.document().editor();
  state.enabled = state.enabled && editor.enabled(row.command);
  if (!row.is_on && command->state)
    state.on = button ? button->Value() == 1 : editing::state_as_writer(editor, row.command);
  return state;
}

OperationState state_of(Parts& parts, const FormRow&) {
  OperationState state;
  if (const auto obstacle = obstacle_of_page(parts)) return state.obstacle = *obstacle, state;
  state.enabled = parts.context.document().editor().enabled(u"InsertHTML");
  return state;
}

OperationState state_of(Parts& parts, const CellRow& row) {
  OperationState state;
  if (const auto obstacle = obstacle_of_page(parts)) return state.obstacle = *obstacle, state;
  const CellItemState item = cell_item_state(parts.menus.item(row.item), parts.context.document().editor());
  return {item.obstacle.empty(), item.can_be_on, item.on, item.obstacle};
}

}  // namespace

bool ControlActions::press(std::u16string_view button_key) {
  const auto row = std::ranges::find(operation_rows, button_key, &OperationRow::button);
  if (row == std::end(operation_rows)) return false;
  if (row->act_in_side && parts_.side.in_hand()) return row->act_in_side(parts_), true;
  parts_.side.take();
  row->act(parts_);
  return true;
}

bool ControlActions::press_form(std::u16string_view button_key) {
  parts_.side.take();
  if (button_key != u"form") return parts_.form_elements.insert_field(button_key);
  parts_.form_elements.insert_Form();
  return true;
}

std::vector<std::u16string_view> ControlActions::operations() {
  std::vector<std::u16string_view> names;
  const auto add = [&](const auto& rows) {
    for (const auto& row : rows)
      if (!row.name.empty()) names.push_back(row.name);
  };
  add(operation_rows);
  add(form_rows);
  add(cell_rows);
  return names;
}

std::optional<OperationState> ControlActions::state(std::u16string_view operation) {
  std::optional<OperationState> state;
  const auto ask = [&](const auto* row) {
    if (!row) return false;
    state.emplace();
    if (parts_.context.DOM()) attempt([&] { state = state_of(parts_, *row); });
    return true;
  };
  ask(row_of(operation_rows, operation)) || ask(row_of(form_rows, operation)) ||
      ask(row_of(cell_rows, operation));
  return state;
}

// A button of a bar that the host has hidden is switched off with it: it is asked of nothing but its name
// here.
bool ControlActions::act(std::u16string_view operation) {
  const auto now = state(operation);
  if (!now || !now->enabled) return false;
  const KeepAlive alive(parts_.context);
  Toolbars& bars = parts_.toolbars;
  if (const OperationRow* row = row_of(operation_rows, operation)) {
    if (parts_.code.in_front())
      row->act_in_code(parts_);
    else if (!row->button.empty())
      parts_.toolbar_commands.ButtonClick(bars.Toolbar1, bars.Toolbar1.Item(row->button));
    else if (row->act_in_side && parts_.side.in_hand())
      row->act_in_side(parts_);
    else
      parts_.side.take(), row->act(parts_);
  } else if (const FormRow* form = row_of(form_rows, operation)) {
    parts_.toolbar_commands.ButtonClick(bars.Toolbar2, bars.Toolbar2.Item(form->button));
  } else {
    parts_.side.take();
    const platform::Menu& item = parts_.menus.item(row_of(cell_rows, operation)->item);
    if (host_allows_item(parts_.context, cell_key_of(item))) attempt([&] { choose(item); });
  }
  return true;
}

bool ControlActions::choose(const platform::Menu& item) {
  if (const std::u16string_view command = cell_command_of(item); !command.empty()) {
    parts_.formatting.act_on_cells(command);
    return true;
  }
  if (const CellDialogOf opens = cell_dialog_of(item); opens != CellDialogOf::None) {
    opens == CellDialogOf::Cells ? parts_.tables.edit_selected_cells() : parts_.tables.edit_table_around();
    return true;
  }
  const auto row = std::ranges::find(items, std::u16string_view(item.Name()), &ItemRow::name);
  if (row == std::end(items)) return false;
  row->act(parts_, item);
  return true;
}

}  // namespace tvx::core
