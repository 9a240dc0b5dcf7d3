#include "tvx/core/chrome/cell_menu.h"

#include <algorithm>

#include "tvx/core/chrome/obstacles.h"
#include "tvx/editing/commands/command_table.h"
#include "tvx/editing/editor.h"

namespace tvx::core {
namespace {

using platform::Menu;

struct Row {
  std::u16string_view name, caption, key, command, obstacle;
  CellDialogOf opens = CellDialogOf::None;

  bool is_line() const { return command.empty() && opens == CellDialogOf::None; }
};

constexpr Row rows[] = {
    {u"mnuCellRowAbove", u"Insert Row Above", u"ContextCELLInsertRowAbove", u"insertRowAbove"},
    {u"mnuCellRowBelow", u"Insert Row Below", u"ContextCELLInsertRowBelow", u"insertRowBelow"},
    {u"mnuCellColumnLeft", u"Insert Column Left", u"ContextCELLInsertColumnLeft", u"insertColumnLeft"},
    {u"mnuCellColumnRight", u"Insert Column Right", u"ContextCELLInsertColumnRight", u"insertColumnRight"},
    {u"mnuCellSep1", u"-"},
    {u"mnuCellDeleteRow", u"Delete Row", u"ContextCELLDeleteRow", u"deleteRow"},
    {u"mnuCellDeleteColumn", u"Delete Column", u"ContextCELLDeleteColumn", u"deleteColumn"},
    {u"mnuCellSep2", u"-"},
    {u"mnuCellMerge", u"Merge Cells", u"ContextCELLMerge", u"mergeCells", obstacles::no_cells},
    {u"mnuCellMergeDown", u"Merge Down", u"ContextCELLMergeDown", u"mergeCellDown", obstacles::no_cell_below},
    {u"mnuCellSplit", u"Split Cell", u"ContextCELLSplit", u"splitCell", obstacles::several_cells},
    {u"mnuCellSep3", u"-"},
    {u"mnuCellHeader", u"Header Row", u"ContextCELLHeaderRow", u"headerRow"},
    {u"mnuCellSep4", u"-"},
    {u"mnuCellSelectRow", u"Select Row", u"ContextCELLSelectRow", u"selectRow"},
    {u"mnuCellSelectColumn", u"Select Column", u"ContextCELLSelectColumn", u"selectColumn"},
    {u"mnuCellSelectTable", u"Select Table", u"ContextCELLSelectTable", u"selectTable"},
    {u"mnuCellSep5", u"-"},
    {.name = u"mnuCellProperties",
     .caption = u"Cell Properties",
     .key = u"ContextCELLProperties",
     .opens = CellDialogOf::Cells},
    {.name = u"mnuCellTableProperties",
     .caption = u"Table Properties",
     .key = u"ContextCELLTableProperties",
     .opens = CellDialogOf::Table},
};

constexpr std::u16string_view head_name = u"mnuMiscTable", head_caption = u"Table",
                              head_separator = u"mnuMiscTableSep";

/// The menus whose items are an array.
struct Twin {
  std::u16string_view head, separator, array;
};
constexpr Twin twins[] = {{u"mnuLinkTable", u"mnuLinkTableSep", u"mnuLinkCell"},
                          {u"mnuImgTable", u"mnuImgTableSep", u"mnuImgCell"}};

const Row* row_of(const Menu& item) {
  const std::u16string_view name = item.Name();
  if (item.Index())
    for (const Twin& twin : twins)
      if (name == twin.array && std::size_t(*item.Index()) < std::size(rows)) return &rows[*item.Index()];
  const auto found = std::ranges::find(rows, name, &Row::name);
  return found == std::end(rows) ? nullptr : &*found;
}

Menu& add_head(Menu& menu, std::u16string_view name, std::u16string_view separator) {
  menu.Add(std::u16string(separator), u"-").set_occasional();
  Menu& head = menu.Add(std::u16string(name), std::u16string(head_caption));
  head.set_occasional();
  return head;
}

/// As the items of the menu of everything else stand now.
void show_twin(ContextMenus& menus, const Twin& twin) {
  Menu& head = menus.item(twin.head);
  head.set_Caption(menus.item(head_name).Caption());
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const int index = static_cast<int>(i);
    Menu& item =
        index > head.UBound(twin.array) ? head.Load(twin.array, index) : head.Item(twin.array, index);
    const Menu& shown = menus.item(rows[i].name);
    item.set_Caption(shown.Caption());
    item.set_Obstacle(shown.Obstacle());
    item.set_Checked(shown.Checked());
    item.set_Visible(shown.Visible());
  }
}

}  // namespace

CellItemState cell_item_state(const Menu& item, editing::Editor& editor) {
  const Row* row = row_of(item);
  if (!row || !editor.enabled(u"selectTable")) return {.obstacle = obstacles::no_table};
  if (row->opens != CellDialogOf::None) return {};
  const editing::CommandDefinition* command = editing::find_command(row->command);
  const bool can_be_on = command && command->state;
  return {can_be_on, can_be_on && editor.state(row->command),
          editor.enabled(row->command) ? obstacles::none : row->obstacle};
}

void add_cell_menus(ContextMenus& menus) {
  Menu& head = add_head(menus.mnuMisc, head_name, head_separator);
  for (const Row& row : rows) head.Add(std::u16string(row.name), std::u16string(row.caption));
  for (const Twin& twin : twins) {
    Menu& menu = &twin == &twins[0] ? menus.mnuLinks : menus.mnuImg;
    add_head(menu, twin.head, twin.separator)
        .Add(std::u16string(twin.array), std::u16string(rows[0].caption), 0);
  }
  show_cell_menus(menus, nullptr, {});
}

void show_cell_menus(ContextMenus& menus, editing::Editor* editor, std::u16string_view hidden) {
  const bool in_cell = editor && editor->enabled(u"selectTable");
  for (const Row& row : rows) {
    if (row.is_line()) continue;
    Menu& item = menus.item(row.name);
    const bool asks = row.opens != CellDialogOf::None;
    const bool enabled = in_cell && (asks || editor->enabled(row.command));
    item.set_Obstacle(!in_cell ? obstacles::no_table : enabled ? obstacles::none : row.obstacle);
    item.set_Checked(in_cell && !asks && editor->state(row.command));
  }
  const auto show_head = [&](std::u16string_view name, std::u16string_view separator) {
    Menu& head = menus.item(name);
    head.set_Visible(in_cell && !is_hidden(head, hidden));
    menus.item(separator).set_Visible(head.Visible());
  };
  show_head(head_name, head_separator);
  for (const Twin& twin : twins) {
    show_head(twin.head, twin.separator);
    if (in_cell)
      show_twin(menus, twin);
    else
      menus.item(twin.array).set_Obstacle(obstacles::no_table);
  }
}

std::u16string_view cell_command_of(const Menu& item) {
  const Row* row = row_of(item);
  return row ? row->command : std::u16string_view();
}

CellDialogOf cell_dialog_of(const Menu& item) {
  const Row* row = row_of(item);
  return row ? row->opens : CellDialogOf::None;
}

std::u16string_view cell_key_of(const Menu& item) {
  const Row* row = row_of(item);
  return row ? row->key : std::u16string_view();
}

}  // namespace tvx::core
