#include "tvx/editing/gestures/line_commands.h"

#include <algorithm>
#include <functional>
#include <set>

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/format_block.h"
#include "tvx/editing/blocks/justification.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/alignment.h"
#include "tvx/editing/gestures/attached_lines.h"
#include "tvx/editing/gestures/line_keys.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/gestures/quotations.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/layout/source_filling.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;

bool acts_on_lines(std::u16string_view command) {
  static constexpr std::u16string_view names[] = {
      u"justifyleft",         u"justifycenter", u"justifyright", u"justifyfull", u"insertorderedlist",
      u"insertunorderedlist", u"formatblock",   u"indent",       u"outdent"};
  return std::ranges::any_of(
      names, [&](std::u16string_view name) { return equals_ignoring_ascii_case(command, name); });
}

std::u16string alignment_of_command(std::u16string_view command) {
  constexpr std::u16string_view prefix = u"justify";
  const std::u16string name = ascii_lower(command);
  if (!name.starts_with(prefix)) return {};
  const std::u16string side = name.substr(prefix.size());
  return side == u"full" ? u"justify" : side;
}

namespace {

bool is_list_command(std::u16string_view command) {
  return equals_ignoring_ascii_case(command, u"insertorderedlist") ||
         equals_ignoring_ascii_case(command, u"insertunorderedlist");
}

/// What would put the line into a block, which a caption or a summary has no room for.
bool puts_into_block(std::u16string_view command) {
  return is_list_command(command) || equals_ignoring_ascii_case(command, u"indent");
}

bool is_in_attached_line(const Editor& editor) {
  const dom::Range range = editor.selection().range();
  const Element* line = range.start ? attached_line(range.start) : nullptr;
  return line && line == attached_line(range.end);
}

bool is_in_one_list(const Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (!range.start) return false;
  const dom::Node* common = dom::common_ancestor(*range.start.node, *range.end.node);
  return dom::enclosing(*common, dom::Tag::Ul) || dom::enclosing(*common, dom::Tag::Ol);
}

/// Items go with their lists, as by the Tab key. False where the command itself has to act.
bool move_items(Editor& editor, bool inward) {
  if (!is_in_one_list(editor)) return !inward && leave_quotations(editor);
  if (inward) return indent_items(editor);
  if (is_in_nested_list(editor)) return outdent_items(editor);
  // At the outermost level the button leads out of the list.
  leave_lists(editor);
  return true;
}

Element* list_around(Node* node) {
  while (node && !node->is(dom::Tag::Ul) && !node->is(dom::Tag::Ol)) node = node->parent();
  return static_cast<Element*>(node);
}

/// The lines of a selection as blocks.
std::vector<Ref<Element>> line_blocks(const dom::Range& range) {
  std::vector<Ref<Element>> blocks;
  const Node* end = dom::child_at(*range.end.node, range.end.offset);
  if (!end) end = dom::next_skipping_children(*range.end.node);
  for (Node* node = block_around(range.start); node && node != end; node = dom::next_in_order(*node))
    if (is_text_block(*node)) blocks.emplace_back(static_cast<Element*>(node));
  return blocks;
}

/// What a command does, for the lines alone. The style that is to be typed in stays.
bool act_on_lines(Editor& editor, const std::function<bool()>& act) {
  const LineMemo memo;
  leave_comments(editor);
  const RecordedLook look = record_current_overrides(editor);
  const bool done = act();
  if (editor.selection().collapsed()) restore_look(look, editor);
  return done;
}

/// The quotations and divisions around a selection that hold blocks.
NodeList wrappers_around(const dom::Range& range) {
  NodeList wrappers;
  for (Node* node : {range.start.node, range.end.node})
    for (; node && !is_editing_host(*node); node = node->parent())
      if ((node->is(dom::Tag::Blockquote) || node->is(dom::Tag::Div)) && is_editable(*node) &&
          passed_filling(node->first_child(), false) &&
          is_block_piece(*passed_filling(node->first_child(), false)))
        wrappers.emplace_back(node);
  return wrappers;
}

/// The blocks that this gives lines, and puts around them, don't take in what is between blocks.
bool act_and_give_back(Editor& editor, const std::function<bool()>& act) {
  const dom::Range lines = editor.selection().range();
  const std::vector<Ref<Element>> blocks = line_blocks(lines);  // held, so that no new one has its place
  std::set<const Node*> known;
  for (const Ref<Element>& block : blocks) known.insert(block.get());
  for (const Node* node : {lines.start.node, lines.end.node})
    for (; node; node = node->parent()) known.insert(node);
  const bool done = act();
  const dom::Range range = editor.selection().range();
  NodeList made = wrappers_around(range);
  for (const Ref<Element>& block : line_blocks(range)) made.emplace_back(block);
  for (const Ref<Node>& block : made)
    if (!known.contains(block.get()) && is_editable(*block) && block->parent())
      give_back_filling(editor, static_cast<Element&>(*block));
  return done;
}

/// Between blocks, and in an empty page, there is no line to act on: one is made, as for what is typed there.
void make_line_between_blocks(Editor& editor) {
  const Selection& selection = editor.selection();
  const dom::Boundary caret = selection.focus();
  if (selection.type() != SelectionType::Text || !selection.collapsed() || caret.node->is_text()) return;
  if (!is_editing_host(*caret.node)) return;
  const Node* after = dom::child_at(*caret.node, caret.offset);
  const Node* before = after ? after->previous_sibling() : caret.node->last_child();
  const auto stands_apart = [](const Node* node) {
    return !node || is_block_piece(*node) || is_filling(*node);
  };
  if (!stands_apart(before) || !stands_apart(after)) return;
  const Ref<Element> line = editor.document().create_element(dom::Name(editor.paragraph_separator()));
  append_line_break(*line);
  insert_all(gap_at(caret), {line});
  editor.selection().collapse({line.get(), 0});
}

/// An empty block shows no line, as it holds nothing: what acts on lines would take the block away and leave
/// none.
void hold_line_open(Editor& editor) {
  const Selection& selection = editor.selection();
  if (selection.type() != SelectionType::Text || !selection.collapsed()) return;
  Element* block = block_around(selection.focus());
  if (!block || is_editing_host(*block) || !is_editable(*block) || !is_empty_line(*block)) return;
  if (!dom::last_within(*block)->is(dom::Tag::Br)) append_line_break(*block);
}

/// An empty line keeps to itself: formatting it otherwise takes in the white space beside it in the source.
bool format_empty_line(Editor& editor, std::u16string_view value) {
  const Selection& selection = editor.selection();
  if (selection.type() != SelectionType::Text || !selection.collapsed()) return false;
  Element* block = block_around(selection.focus());
  const dom::Name name{std::u16string_view(ascii_lower(value))};
  if (!block || !is_empty_line(*block) || !is_editable(*block) || is_editing_host(*block)) return false;
  if (!is_name_of_formattable_block(block->name()) || !is_name_of_formattable_block(name)) return false;
  const bool within = selection.focus().node == block;
  const RecordedLook style = record_current_overrides(editor);
  const Ref<Element> renamed = set_tag_name(*block, name);
  if (within) editor.selection().collapse({renamed.get(), 0});
  restore_look(style, editor);
  return true;
}

bool make_list(Editor& editor, std::u16string_view command, std::u16string_view value) {
  const bool was_list = list_around(editor.selection().range().start.node) != nullptr;
  const bool done = toggle_list_as_writer(editor, command) || editor.execute(command, value);
  Element* list = was_list ? nullptr : list_around(editor.selection().range().end.node);
  if (list && is_editable(*list)) {
    for (Node* item : {list->first_child(), list->last_child()})
      if (item && item->is(dom::Tag::Li)) give_back_filling(editor, static_cast<Element&>(*item));
    give_back_filling(editor, *list);
  }
  return done;
}

}  // namespace

bool execute_on_lines(Editor& editor, std::u16string_view command, std::u16string_view value) {
  if (!editor.enabled(command)) return false;
  if (puts_into_block(command) && is_in_attached_line(editor)) return false;
  const HeldSelection held(editor.selection());
  const dom::UndoStep step(editor.document().journal(), command);
  make_line_between_blocks(editor);
  hold_line_open(editor);
  if (is_list_command(command)) return make_list(editor, command, value);
  if (equals_ignoring_ascii_case(command, u"formatblock"))
    return format_empty_line(editor, value) || act_and_give_back(editor, [&] {
             return act_on_lines(editor, [&] { return format_lines(editor, value); });
           });
  const bool inward = equals_ignoring_ascii_case(command, u"indent");
  if (inward || equals_ignoring_ascii_case(command, u"outdent")) {
    const bool done = move_items(editor, inward) ||
                      act_and_give_back(editor, [&] { return editor.execute(command, value); });
    drop_end_break_before(block_around(editor.selection().range().start));
    return done;
  }
  const std::u16string alignment = alignment_of_command(command);
  return align_lines(editor, alignment) || act_and_give_back(editor, [&] {
           return act_on_lines(editor, [&] { return justify_lines(editor, alignment), true; });
         });
}

}  // namespace tvx::editing
