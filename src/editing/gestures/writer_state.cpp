#include "tvx/editing/gestures/writer_state.h"

#include <algorithm>
#include <iterator>

#include "tvx/base/strings.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/justification.h"
#include "tvx/editing/blocks/lists.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/tables/selected_cells.h"

namespace tvx::editing {
namespace {

using dom::Element;
using dom::Ref;

struct InlineRow {
  std::u16string_view name;
  InlineCommand command;
};
constexpr InlineRow inline_rows[] = {
    {u"bold", InlineCommand::Bold},           {u"italic", InlineCommand::Italic},
    {u"underline", InlineCommand::Underline}, {u"strikethrough", InlineCommand::Strikethrough},
    {u"subscript", InlineCommand::Subscript}, {u"superscript", InlineCommand::Superscript},
};

struct AlignmentRow {
  std::u16string_view name, alignment;
};
constexpr AlignmentRow alignment_rows[] = {
    {u"justifyleft", u"left"},
    {u"justifycenter", u"center"},
    {u"justifyright", u"right"},
    {u"justifyfull", u"justify"},
};

constexpr InlineRow value_rows[] = {
    {u"fontname", InlineCommand::FontName},
    {u"fontsize", InlineCommand::FontSize},
    {u"forecolor", InlineCommand::ForeColor},
    {u"hilitecolor", InlineCommand::BackColor},
};

dom::Range content_of(Element& cell) { return {{&cell, 0}, {&cell, dom::length_of(cell)}}; }

/// An empty cell is aligned by itself: its text will be.
bool is_cell_aligned(Element& cell, std::u16string_view alignment) {
  return is_empty_line(cell) ? alignment_of(cell) == alignment : is_aligned(content_of(cell), alignment);
}

/// A list in an item isn't aligned with the item's line, and no other paragraph of it.
bool is_on_in_lines(Editor& editor, std::u16string_view command) {
  const auto row = std::ranges::find(alignment_rows, ascii_lower(command), &AlignmentRow::name);
  if (row == std::end(alignment_rows)) return editor.state(command);
  const LineMemo memo;
  const std::optional<dom::Range> range = editor.active_range();
  return range && are_lines_aligned(*range, row->alignment);
}

}  // namespace

std::optional<bool> state_of_cell(const Ref<Element>& cell, std::u16string_view command) {
  const std::u16string name = ascii_lower(command);
  const LineMemo memo;
  for (const AlignmentRow& row : alignment_rows)
    if (row.name == name) return is_cell_aligned(*cell, row.alignment);
  if (is_empty_line(*cell)) return std::nullopt;
  for (const InlineRow& row : inline_rows)
    if (row.name == name) return is_on(content_of(*cell), row.command);
  if (name == u"insertorderedlist") return list_state(content_of(*cell)) == ListState::Ordered;
  if (name == u"insertunorderedlist") return list_state(content_of(*cell)) == ListState::Unordered;
  return std::nullopt;
}

bool state_as_writer(Editor& editor, std::u16string_view command) {
  bool any = false;
  for (const Ref<Element>& cell : selected_cells(editor)) {
    const std::optional<bool> on = state_of_cell(cell, command);
    if (on == false) return false;
    any = any || on;
  }
  return any || is_on_in_lines(editor, command);
}

std::u16string value_as_writer(Editor& editor, std::u16string_view command) {
  const std::u16string name = ascii_lower(command);
  const auto row = std::ranges::find(value_rows, name, &InlineRow::name);
  std::optional<std::u16string> common;
  if (row != std::end(value_rows)) {
    const LineMemo memo;
    for (const Ref<Element>& cell : selected_cells(editor)) {
      if (is_empty_line(*cell)) continue;
      const std::u16string value = common_value(content_of(*cell), row->command);
      if (common && *common != value) return {};
      common = value;
    }
  }
  if (common) return *common;
  return editor.indeterminate(command) ? std::u16string() : editor.value(command);
}

}  // namespace tvx::editing
