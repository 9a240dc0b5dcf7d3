#include "tvx/core/chrome/menus.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/core/chrome/cell_menu.h"

namespace tvx::core {
namespace {

using platform::Menu;

struct Row {
  std::u16string_view name, caption;
};

constexpr Row table_items[] = {
    {u"mnuTInsRow", u"Insert Row"},    {u"mnuTDelRow", u"Delete Row"},    {u"mnuS1", u"-"},
    {u"mnuTInsCol", u"Insert Column"}, {u"mnuTDelCol", u"Delete Column"}, {u"mnuS2", u"-"},
    {u"mnuTProp", u"Properties"},
};

constexpr Row link_items[] = {
    {u"mnuLinkCut", u"Cut"},
    {u"mnuLinkCopy", u"Copy"},
    {u"mnuLinkPaste", u"Paste"},
    {u"mnuLinkPasteText", u"Paste as Plain Text"},
    {u"mnuLinksSep1", u"-"},
    {u"mnuLinkEdit", u"Edit Link"},
    {u"mnuLinkRemove", u"Remove Link"},
};

constexpr Row other_items[] = {
    {u"mnuMiscCut", u"Cut"},
    {u"mnuMiscCopy", u"Copy"},
    {u"mnuMiscPaste", u"Paste"},
    {u"mnuMiscPasteText", u"Paste as Plain Text"},
    {u"mnuMiscStyle", u"Style"},
    {u"mnuMiscSep4", u"-"},
    {u"mnuInsertLink", u"Insert / Edit Link"},
    {u"mnuSepM2", u"-"},
    {u"mnuMiscSource", u"Edit Source"},
    {u"mnuS4", u"-"},
    {u"mnuMiscRevert", u"Revert"},
    {u"mnuMiscFieldSep", u"-"},
    {u"mnuMiscField", u"Field Settings"},
    {u"mnuMiscForm", u"Form Settings"},
};

/// At the top of the menus that open on text, while it is a wrong word. A menu's own items have its prefix.
constexpr std::u16string_view no_suggestions = u"(No Suggestions)", add_word = u"Add to dictionary",
                              ignore_word = u"Ignore";
struct SpellingNames {
  std::u16string_view array, add, ignore, separator;
};
constexpr SpellingNames misc_spelling{u"mnuSpelling", u"mnuSpellingAdd", u"mnuSpellingIgnore",
                                      u"mnuSpellingSep"},
    link_spelling{u"mnuLinkSpelling", u"mnuLinkSpellingAdd", u"mnuLinkSpellingIgnore", u"mnuLinkSpellingSep"};

constexpr Row image_items[] = {
    {u"mnuImgCut", u"Cut"},
    {u"mnuImgCopy", u"Copy"},
    {u"mnuImgPaste", u"Paste"},
    {u"mnuImgSep3", u"-"},
    {u"mnuImgNewLink", u"Insert Link"},
    {u"mnuImgLink", u"Edit Link"},
    {u"mnuImgLinkRemove", u"Remove Link"},
    {u"mnuImgProperties", u"Image Properties"},
};

constexpr Row element_items[] = {
    {u"mnuToolProperties", u"Properties"},
    {u"sep457634", u"-"},
    {u"MnuCellRowActions", u"Cell/Row Actions"},
    {u"mnuPropCellRowSep", u"-"},
    {u"mnuToolEditTag", u"Edit Tag"},
    {u"mnuToolSetClass", u"Class"},
    {u"mnuToolFieldSep", u"-"},
    {u"mnuToolField", u"Field Settings"},
    {u"mnuToolForm", u"Form Settings"},
};

constexpr Row cell_row_items[] = {
    {u"MnuCellRowActionsDelete", u"Delete Cell/Row"},
    {u"MnuCellRowActionsInsertRowAbove", u"Insert Row Above"},
    {u"MnuCellRowActionsInsertRowBelow", u"Insert Row Below"},
    {u"MnuCellRowActionsMergeCellLeft", u"Merge Cell Left"},
    {u"MnuCellRowActionsMergeCellRight", u"Merge Cell Right"},
    {u"MnuCellRowActionsInsertCellBefore", u"Insert Cell Before"},
    {u"MnuCellRowActionsInsertCellAfter", u"Insert Cell After"},
};

struct Key {
  std::u16string_view name, key;
};

// The letters differ from item to item; hosts compare them as they stand.
constexpr Key keys[] = {
    {u"mnuImgCut", u"ContextIMGCut"},
    {u"mnuImgCopy", u"ContextIMGCopy"},
    {u"mnuImgPaste", u"ContextIMGPaste"},
    {u"mnuImgNewLink", u"ContextIMGNewLink"},
    {u"mnuImgLink", u"ContextIMGLink"},
    {u"mnuImgLinkRemove", u"ContextIMGRemoveLink"},
    {u"mnuImgProperties", u"ContextIMGProperties"},
    {u"mnuSpelling", u"ContextMISCSpelling"},
    {u"mnuSpellingAdd", u"ContextMISCSpellingAdd"},
    {u"mnuSpellingIgnore", u"ContextMISCSpellingIgnore"},
    {u"mnuLinkSpelling", u"ContextLINKSpelling"},
    {u"mnuLinkSpellingAdd", u"ContextLINKSpellingAdd"},
    {u"mnuLinkSpellingIgnore", u"ContextLINKSpellingIgnore"},
    {u"mnuLinkCut", u"ContextLINKCut"},
    {u"mnuLinkCopy", u"ContextLINKCopy"},
    {u"mnuLinkPaste", u"ContextLINKPaste"},
    {u"mnuLinkPasteText", u"ContextLINKPasteText"},
    {u"mnuMiscPasteText", u"ContextMiscPasteText"},
    {u"mnuLinkEdit", u"ContextMISCEditLink"},
    {u"mnuLinkRemove", u"ContextMISCRemoveLink"},
    {u"mnuMiscCut", u"ContextMiscCut"},
    {u"mnuMiscCopy", u"ContextMiscCopy"},
    {u"mnuMiscPaste", u"ContextMiscPaste"},
    {u"mnuMiscClass", u"ContextCSSClass"},
    {u"mnuInsertLink", u"ContextMISCInsertLink"},
    {u"mnuMiscSource", u"ContextMISCShowSource"},
    {u"mnuMiscRevert", u"ContextMISCRevert"},
    {u"mnuMiscField", u"ContextMISCFieldSettings"},
    {u"mnuMiscForm", u"ContextMISCFormSettings"},
    {u"mnuTInsRow", u"ContextTABLEInsRow"},
    {u"mnuTDelRow", u"ContextTABLEDelRow"},
    {u"mnuTInsCol", u"ContextTABLEInsCol"},
    {u"mnuTDelCol", u"ContextTABLEDelCol"},
    {u"mnuTProp", u"ContextTABLEProperties"},
    {u"mnuToolProperties", u"DOMProperties"},
    {u"mnuToolEditTag", u"DOMEditTag"},
    {u"mnuToolField", u"DOMFieldSettings"},
    {u"mnuToolForm", u"DOMFormSettings"},
    {u"mnuClass", u"DOMCSSClass"},
    {u"MnuCellRowActionsDelete", u"DOMCELLROWRemove"},
    {u"MnuCellRowActionsInsertCellAfter", u"DOMCELLROWInsertCellAfter"},
    {u"MnuCellRowActionsInsertCellBefore", u"DOMCELLROWInsertCellBefore"},
    {u"MnuCellRowActionsInsertRowAbove", u"DOMCELLROWInsertRowAbove"},
    {u"MnuCellRowActionsInsertRowBelow", u"DOMCELLROWInsertRowBelow"},
    {u"MnuCellRowActionsMergeCellLeft", u"DOMCELLROWMergeCellLeft"},
    {u"MnuCellRowActionsMergeCellRight", u"DOMCELLROWMergeCellRight"},
};

/// A separator shows while something of its group does.
struct Line {
  std::u16string_view separator;
  std::array<std::u16string_view, 2> group;
};
constexpr Line lines[] = {
    {u"mnuS1", {u"mnuTInsCol", u"mnuTDelCol"}},
    {u"mnuLinksSep1", {u"mnuLinkEdit", u"mnuLinkRemove"}},
    {u"mnuMiscSep4", {u"mnuInsertLink"}},
    {u"mnuSepM2", {u"mnuMiscSource"}},
    {u"mnuS4", {u"mnuMiscRevert"}},
    {u"mnuS2", {u"mnuTProp"}},
};

/// The names that a host's list knows leave out "mnu".
constexpr std::size_t prefix_length = 3;

template <std::size_t count>
void fill(Menu& menu, const Row (&rows)[count]) {
  for (const Row& row : rows) menu.Add(std::u16string(row.name), std::u16string(row.caption));
}

void add_spelling(Menu& menu, const SpellingNames& names) {
  menu.Add(std::u16string(names.array), std::u16string(no_suggestions), 0).set_occasional();
  menu.Add(std::u16string(names.add), std::u16string(add_word)).set_occasional();
  menu.Add(std::u16string(names.ignore), std::u16string(ignore_word)).set_occasional();
  menu.Add(std::u16string(names.separator), u"-").set_occasional();
}

std::u16string as_caption(std::u16string_view text) {
  std::u16string caption;
  for (const char16_t unit : text) caption.append(unit == u'&' ? 2 : 1, unit);
  return caption;
}

bool is_listed(const Menu& menu, const std::vector<std::u16string_view>& entries) {
  const std::u16string_view name = std::u16string_view(menu.Name()).substr(prefix_length);
  return std::ranges::any_of(
      entries, [&](std::u16string_view entry) { return equals_ignoring_ascii_case(entry, name); });
}

}  // namespace

bool is_hidden(const Menu& menu, std::u16string_view list) { return is_listed(menu, split(list, u';')); }

ContextMenus::ContextMenus()
    : mnuT(u"mnuT", u"Table"),
      mnuLinks(u"mnuLinks", u"Links"),
      mnuMisc(u"mnuMisc", u"Misc"),
      mnuImg(u"mnuImg", u"IMG"),
      mnuCSS(u"mnuCSS", u"CSS"),
      mnuToolProp(u"mnuToolProp", u"none") {
  fill(mnuT, table_items);
  add_spelling(mnuLinks, link_spelling);
  fill(mnuLinks, link_items);
  add_spelling(mnuMisc, misc_spelling);
  fill(mnuMisc, other_items);
  fill(mnuImg, image_items);
  mnuCSS.Add(u"mnuCSSStyle", u"", 0);
  fill(mnuToolProp, element_items);
  fill(item(u"MnuCellRowActions"), cell_row_items);
  for (const std::u16string_view name :
       {u"mnuMiscFieldSep", u"mnuMiscField", u"mnuMiscForm", u"mnuToolFieldSep", u"mnuToolField",
        u"mnuToolForm", u"mnuMiscPasteText", u"mnuLinkPasteText"})
    item(name).set_occasional();
  show_paste_text(false, {});
  add_cell_menus(*this);
  for (Menu* menu : {&mnuLinks, &mnuMisc}) show_spelling(*menu, nullptr, {});
  for (const Menu* menu : {&mnuMisc, &mnuToolProp}) show_form_items(*menu, false, false, {});
  item(u"mnuMiscStyle").Add(u"mnuMiscClass", u"(none)", 0);
  item(u"mnuToolSetClass").Add(u"mnuClass", u"(none)", 0);
}

Menu* ContextMenus::find(std::u16string_view name, std::optional<int> index) {
  for (Menu* top : tops()) {
    if (!index && equals_ignoring_ascii_case(top->Name(), name)) return top;
    if (Menu* item = top->find(name, index)) return item;
  }
  return nullptr;
}

Menu& ContextMenus::item(std::u16string_view name) {
  if (Menu* found = find(name)) return *found;
  throw RuntimeError(errors::unknown_member, u"No such menu: " + std::u16string(name));
}

void ContextMenus::set_handler(platform::MenuHandler* handler) {
  for (Menu* top : tops()) top->set_handler(handler);
}

std::u16string_view ContextMenus::key_of(const Menu& item) {
  const auto row = std::ranges::find(keys, std::u16string_view(item.Name()), &Key::name);
  return row == std::end(keys) ? cell_key_of(item) : row->key;
}

void ContextMenus::apply_hidden(std::u16string_view list) {
  if (!list.empty()) {
    const std::vector<std::u16string_view> entries = split(list, u';');
    for (Menu* top : tops()) {
      top->set_Visible(!is_listed(*top, entries));
      for (Menu* each : platform::all_items(*top)) each->set_Visible(!is_listed(*each, entries));
    }
  }
  show_spelling(mnuMisc, nullptr, list);
  show_spelling(mnuLinks, nullptr, list);
  show_cell_menus(*this, nullptr, list);
  show_paste_text(false, list);
  for (const Line& line : lines)
    item(line.separator).set_Visible(std::ranges::any_of(line.group, [&](std::u16string_view name) {
      return !name.empty() && item(name).Visible();
    }));
}

void ContextMenus::refresh_paste(Menu& menu, const std::function<bool(platform::ClipboardFormat)>& has) {
  using enum platform::ClipboardFormat;
  const auto any_of = [&](std::initializer_list<platform::ClipboardFormat> formats) {
    return std::ranges::any_of(formats, has);
  };
  if (&menu == &mnuImg) {
    item(u"mnuImgPaste").set_Enabled(any_of({rich_text, text}));
  } else if (&menu == &mnuLinks) {
    item(u"mnuLinkPaste").set_Enabled(any_of({rich_text, text, link}));
  } else if (&menu == &mnuMisc) {
    // The other way round than the two above: an empty clipboard leaves it enabled.
    item(u"mnuMiscPaste")
        .set_Enabled(any_of({rich_text, text, link}) || !any_of({bitmap, metafile, dib, palette, file_list}));
  }
}

void ContextMenus::show_form_items(const Menu& menu, bool of_field, bool of_form,
                                   std::u16string_view hidden) {
  const std::vector<std::u16string_view> entries = split(hidden, u';');
  const std::u16string prefix = &menu == &mnuToolProp ? u"mnuTool" : u"mnuMisc";
  Menu &field = item(prefix + u"Field"), &form = item(prefix + u"Form");
  field.set_Visible(of_field && !is_listed(field, entries));
  form.set_Visible(of_form && !is_listed(form, entries));
  item(prefix + u"FieldSep").set_Visible(field.Visible() || form.Visible());
}

void ContextMenus::show_spelling(Menu& menu, const std::vector<std::u16string>* suggestions,
                                 std::u16string_view hidden) {
  if (&menu != &mnuMisc && &menu != &mnuLinks) return;
  const SpellingNames& names = &menu == &mnuMisc ? misc_spelling : link_spelling;
  const std::vector<std::u16string_view> entries = split(hidden, u';');
  const auto shows = [&](const Menu& each) { return suggestions && !is_listed(each, entries); };
  while (const int last = menu.UBound(names.array)) menu.Unload(names.array, last);
  Menu& none = *menu.find(names.array, 0);
  none.set_Enabled(!suggestions);
  none.set_Visible(shows(none) && suggestions->empty());
  for (std::size_t number = 0; suggestions && shows(none) && number < suggestions->size(); ++number) {
    Menu& loaded = menu.Load(names.array, static_cast<int>(number) + 1);
    loaded.set_occasional();
    loaded.set_Caption(as_caption((*suggestions)[number]));
    loaded.set_Enabled(true);
    loaded.set_Visible(true);
  }
  bool any = shows(none);
  for (const std::u16string_view name : {names.add, names.ignore}) {
    item(name).set_Visible(shows(item(name)));
    any = any || item(name).Visible();
  }
  item(names.separator).set_Visible(any);
}

void ContextMenus::show_paste_text(bool has_text, std::u16string_view hidden) {
  for (const std::u16string_view name : {u"mnuMiscPasteText", u"mnuLinkPasteText"})
    item(name).set_Visible(has_text && !is_hidden(item(name), hidden));
}

void ContextMenus::show_image_link(bool in_link) {
  item(u"mnuImgLink").set_Visible(in_link);
  item(u"mnuImgLinkRemove").set_Visible(in_link);
  item(u"mnuImgNewLink").set_Visible(!in_link);
}

void ContextMenus::show_classes(std::span<const StyleClass> classes) {
  const std::pair<Menu&, std::u16string_view> arrays[] = {{item(u"mnuToolSetClass"), u"mnuClass"},
                                                          {item(u"mnuMiscStyle"), u"mnuMiscClass"}};
  for (const auto& [head, array] : arrays) {
    while (const int last = head.UBound(array)) head.Unload(array, last);
    for (const StyleClass& each : classes) {
      Menu& loaded = head.Load(array, each.index);
      loaded.set_Caption(each.name);
      loaded.set_Visible(true);
    }
  }
}

void ContextMenus::prepare_cell_row_actions(std::u16string_view tag, const CellRowLabels& labels) {
  const bool cell = tag == u"td", row = tag == u"tr";
  Menu& head = item(u"MnuCellRowActions");
  head.set_Visible(cell || row);
  item(u"mnuPropCellRowSep").set_Visible(cell || row);
  if (!cell && !row) return;
  head.set_Caption(cell ? labels.cell : labels.row);
  item(u"MnuCellRowActionsDelete").set_Caption(cell ? labels.delete_cell : labels.delete_row);
  for (std::u16string_view name :
       {u"MergeCellLeft", u"MergeCellRight", u"InsertCellBefore", u"InsertCellAfter"})
    item(u"MnuCellRowActions" + std::u16string(name)).set_Visible(cell);
  for (std::u16string_view name : {u"InsertRowAbove", u"InsertRowBelow"})
    item(u"MnuCellRowActions" + std::u16string(name)).set_Visible(row);
}

}  // namespace tvx::core
