#include "tvx/editing/inline/remove_format.h"

#include <array>

#include "tvx/editing/active_range.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/inline/effectively_contained.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/tree/rising.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

// "removeFormat candidate": elements that are there for the style.
bool is_candidate(const Node& node) {
  static const TagSet tags{Tag::Abbr,  Tag::Acronym, Tag::B,     Tag::Bdi,  Tag::Bdo,    Tag::Big,
                           Tag::Blink, Tag::Cite,    Tag::Code,  Tag::Dfn,  Tag::Em,     Tag::Font,
                           Tag::I,     Tag::Ins,     Tag::Kbd,   Tag::Mark, Tag::Nobr,   Tag::Q,
                           Tag::S,     Tag::Samp,    Tag::Small, Tag::Span, Tag::Strike, Tag::Strong,
                           Tag::Sub,   Tag::Sup,     Tag::Tt,    Tag::U,    Tag::Var};
  return tags.has(node) && is_editable(node);
}

// Subscript first: it changes the size. Superscript is taken away with it.
constexpr std::array commands{
    InlineCommand::Subscript, InlineCommand::Bold,          InlineCommand::FontName,
    InlineCommand::FontSize,  InlineCommand::ForeColor,     InlineCommand::BackColor,
    InlineCommand::Italic,    InlineCommand::Strikethrough, InlineCommand::Underline};

/// What text without a style of its own has from.
const Node* bearer_of_plain_text(const Boundary& caret) {
  const Node* block = block_around(caret);
  if (!block) block = editing_host_of(*caret.node);
  for (const Node* node = caret.node; node && node != block; node = node->parent())
    if (node->is(Tag::A)) return node;
  return block;
}

}  // namespace

bool write_plain_from_here(Editor& editor) {
  const Node* bearer = bearer_of_plain_text(editor.selection().focus());
  if (!bearer) return false;
  editor.overrides().clear();
  for (const InlineCommand command : commands) {
    InlineValue value = effective_command_value(*bearer, command);
    if (!value && command == InlineCommand::BackColor) value = u"transparent";
    set_selection_value(editor, command, value);
  }
  for (const std::u16string_view script : {u"subscript", u"superscript"})
    editor.overrides().states[std::u16string(script)] = false;
  return true;
}

bool remove_format(Editor& editor, std::u16string_view) {
  for (const Ref<Node>& element : effectively_contained_nodes(*editor.active_range(), is_candidate)) {
    for (const Ref<Node>& child : children_of(*element)) {
      move_preserving_ranges(child, *element->parent(), element.get());
    }
    dom::remove(*element);
  }
  split_text_at_active_range(editor);
  for (const Ref<Node>& node : effectively_contained_nodes(*editor.active_range(), is_editable)) {
    split_parents_while({node}, [&] { return is_candidate(*node->parent()); });
  }
  for (const InlineCommand command : commands) set_selection_value(editor, command, std::nullopt);
  return true;
}

}  // namespace tvx::editing
