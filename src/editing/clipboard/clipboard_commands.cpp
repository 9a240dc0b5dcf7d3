#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/deletion/line_deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/tables/selected_cells.h"

/// Copy, Cut and Paste. Where the content goes and comes from is the door's; without one they do nothing.
namespace tvx::editing {

namespace {

bool has_selected(const Editor& editor) {
  const Selection& selection = editor.selection();
  return selection.type() != SelectionType::None && !selection.collapsed();
}

bool copy(Editor& editor, std::u16string_view) {
  if (!editor.clipboard()) return false;
  const std::optional<CopiedContent> content = copied_content(editor);
  return content && editor.clipboard()->put(*content);
}

bool cut(Editor& editor, std::u16string_view value) {
  if (!copy(editor, value)) return false;
  if (empty_selected_cells(editor)) return true;
  if (!delete_selected_lines(editor)) clear_selection(editor);
  return true;
}

bool paste(Editor& editor, std::u16string_view) {
  return editor.clipboard() && editor.clipboard()->paste(editor);
}

const CommandDefinition rows[] = {
    {.name = u"copy",
     .label = u"Copy",  // a step in which nothing happens, seen without the selection border
     .action = copy,
     .applies = has_selected,
     .always_enabled = true},
    {.name = u"cut", .label = u"Cut", .action = cut, .applies = has_selected, .in_plain_text = true},
    {.name = u"paste", .label = u"Paste", .action = paste, .in_plain_text = true},
};

}  // namespace

std::span<const CommandDefinition> clipboard_commands() { return rows; }

}  // namespace tvx::editing
