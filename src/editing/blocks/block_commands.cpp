#include <array>

#include "tvx/editing/blocks/format_block.h"
#include "tvx/editing/blocks/indentation.h"
#include "tvx/editing/blocks/justification.h"
#include "tvx/editing/blocks/lists.h"
#include "tvx/editing/command_definition.h"

namespace tvx::editing {

using dom::Tag;

namespace {

template <Tag tag>
bool toggle(Editor& editor, std::u16string_view) {
  toggle_lists(editor, tag);
  return true;
}

bool is_ordered(Editor& editor) { return list_state(editor) == ListState::Ordered; }
bool is_unordered(Editor& editor) { return list_state(editor) == ListState::Unordered; }
bool is_ordered_mixed(Editor& editor) {
  const ListState state = list_state(editor);
  return state == ListState::Mixed || state == ListState::MixedOrdered;
}
bool is_unordered_mixed(Editor& editor) {
  const ListState state = list_state(editor);
  return state == ListState::Mixed || state == ListState::MixedUnordered;
}

enum class Alignment : std::uint8_t { Center, Justify, Left, Right };

template <Alignment alignment>
constexpr std::u16string_view name_of() {
  constexpr std::array names{u"center", u"justify", u"left", u"right"};
  return names[static_cast<std::size_t>(alignment)];
}

template <Alignment alignment>
CommandDefinition justify_row(std::u16string_view name, std::u16string_view label) {
  CommandDefinition row;
  row.name = name;
  row.label = label;
  row.action = [](Editor& editor, std::u16string_view) {
    justify_selection(editor, name_of<alignment>());
    return true;
  };
  row.indeterminate = [](Editor& editor) { return is_alignment_mixed(editor, name_of<alignment>()); };
  row.state = [](Editor& editor) { return is_aligned(editor, name_of<alignment>()); };
  row.value = alignment_of_selection;
  row.keeps_overrides = true;
  return row;
}

}  // namespace

std::span<const CommandDefinition> block_commands() {
  static const std::array rows{
      CommandDefinition{.name = u"formatBlock",
                        .label = u"Paragraph style",
                        .action = format_block,
                        .indeterminate = is_block_format_mixed,
                        .value = block_format,
                        .keeps_overrides = true},
      CommandDefinition{
          .name = u"indent", .label = u"Indent", .action = indent_selection, .keeps_overrides = true},
      CommandDefinition{.name = u"insertOrderedList",
                        .label = u"Numbered list",
                        .action = toggle<Tag::Ol>,
                        .indeterminate = is_ordered_mixed,
                        .state = is_ordered,
                        .keeps_overrides = true},
      CommandDefinition{.name = u"insertUnorderedList",
                        .label = u"Bulleted list",
                        .action = toggle<Tag::Ul>,
                        .indeterminate = is_unordered_mixed,
                        .state = is_unordered,
                        .keeps_overrides = true},
      justify_row<Alignment::Center>(u"justifyCenter", u"Centre"),
      justify_row<Alignment::Justify>(u"justifyFull", u"Justify"),
      justify_row<Alignment::Left>(u"justifyLeft", u"Align left"),
      justify_row<Alignment::Right>(u"justifyRight", u"Align right"),
      CommandDefinition{
          .name = u"outdent", .label = u"Outdent", .action = outdent_selection, .keeps_overrides = true},
  };
  return rows;
}

}  // namespace tvx::editing
