#include "tvx/editing/gestures/typing.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/comment_keeper.h"
#include "tvx/editing/deletion/delete_command.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/deletion/islands.h"
#include "tvx/editing/deletion/line_deletion.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/text_units.h"
#include "tvx/editing/gestures/attached_lines.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/gap_caret.h"
#include "tvx/editing/gestures/gesture_step.h"
#include "tvx/editing/gestures/line_joins.h"
#include "tvx/editing/gestures/line_keys.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/gestures/quotations.h"
#include "tvx/editing/gestures/writing_place.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/layout/source_filling.h"
#include "tvx/editing/tables/table_caret.h"
#include "tvx/editing/tables/table_rows.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/hard_spaces.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::StepJoin;
using dom::Tag;

namespace {

bool can_type(Editor& editor) {
  if (!editor.enabled(u"insertText")) return false;
  leave_comments(editor);
  return true;
}

// A host that has lost all it held gets a paragraph, so that the next text is not a bare line in it.
void keep_paragraph(Editor& editor) {
  const Boundary caret = editor.selection().range().start;
  Node* host = editing_host_of(*caret.node);
  if (!host || caret.node != host) return;
  for (const Node* child = host->first_child(); child; child = child->next_sibling()) {
    if (!child->is(Tag::Br) && is_visible(*child)) return;
    if (child->is(Tag::Br) && child->next_sibling()) return;
  }
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  if (!is_allowed_child_name(name, *host)) return;
  Node* next = dom::child_at(*host, caret.offset);
  if (Node* last = host->last_child(); last && last->is(Tag::Br)) {
    if (next == last) next = nullptr;
    dom::remove(*last);
  }
  const Ref<Node> paragraph(editor.document().create_element(name));
  dom::insert(*host, paragraph, next);
  append_line_break(*paragraph);
  editor.selection().collapse({paragraph.get(), 0});
}

// After a deletion the caret may stand between the cells of a table, or in an empty host.
void settle_caret(Editor& editor, bool was_in_line) {
  if (!editor.selection().collapsed()) return;
  keep_paragraph(editor);
  if (was_in_line) hold_emptied_line(editor, Wrappers::Strip);
  const Boundary caret = editor.selection().range().start;
  const Boundary place = normalized_caret_place(caret);
  if (place != caret) collapse_keeping_style(editor, place);
  wrap_line_beside_blocks(editor);
}

bool is_space(char16_t c) { return is_ascii_space(c) || c == u'\u00A0'; }

constexpr char16_t hard_space = u'\u00A0';

bool stands_at(const TypingRun& run, const Boundary& caret) {
  return caret && run.node == caret.node->id() && run.offset == caret.offset;
}

bool has_typed_hard_space(Editor& editor) {
  const TypingRun& run = editor.typing_run();
  return stands_at(run, editor.selection().focus()) && !run.text.empty() && run.text.back() == hard_space;
}

// In the middle of a text with no white space near that would change, typing is writing into that text and
// nothing else.
bool type_into_text(Editor& editor, std::u16string_view word) {
  if (!editor.selection().collapsed() || !editor.overrides().empty()) return false;
  const Boundary caret = editor.selection().focus();
  auto* text = dom::as<dom::Text>(caret.node);
  if (!text || caret.offset == 0) return false;
  const std::u16string& data = text->data();
  if (is_space(data[caret.offset - 1]) && !has_typed_hard_space(editor) &&
      !is_hard_space(data, caret.offset - 1))
    return false;
  if (caret.offset < data.size() && is_space(data[caret.offset]) && !is_hard_space(data, caret.offset))
    return false;
  dom::replace_data(*text, caret.offset, 0, word);
  editor.selection().collapse({text, caret.offset + word.size()});
  return true;
}

// The text up to the next white space.
std::u16string_view first_word(std::u16string_view text) {
  std::size_t length = 0;
  while (length < text.size() && !is_space(text[length])) ++length;
  return text.substr(0, length);
}

// In overwrite mode a typed character takes the place of the one after the caret, but never of a line's
// end.
void make_room(Editor& editor, std::size_t count) {
  const Boundary caret = editor.selection().focus();
  auto* text = dom::as<dom::Text>(caret.node);
  if (!editor.overwrite() || !editor.selection().collapsed() || !text) return;
  Offset end = caret.offset;
  for (; count > 0 && end < text->length(); --count) end = next_grapheme(text->data(), end);
  // What is left empty would be a text without content.
  if (caret.offset > 0 || end < text->length())
    dom::replace_data(*text, caret.offset, end - caret.offset, u"");
}

/// White space is settled where a text goes in, by which a space that somebody wanted hard may become a
/// blank.
void keep_hard_space(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  auto* text = dom::as<dom::Text>(caret.node);
  if (!text || caret.offset == 0 || text->data()[caret.offset - 1] != u' ') return;
  dom::replace_data(*text, caret.offset - 1, 1, std::u16string(1, hard_space));
  editor.selection().collapse({text, caret.offset});
}

// Types the beginning of the text and gives its length.
std::size_t type_some(Editor& editor, std::u16string_view text) {
  if (text[0] == u'\n' || text[0] == u'\r') {
    insert_paragraph(editor);
    return text.substr(0, 2) == u"\r\n" ? 2 : 1;
  }
  const std::u16string_view word = text[0] == hard_space ? text.substr(0, 1) : first_word(text);
  if (!word.empty() && type_into_text(editor, word)) return word.size();
  const std::size_t unit = is_high_surrogate(text[0]) && text.size() > 1 ? 2 : 1;
  insert_plain_text(editor, text.substr(0, unit));
  if (text[0] == hard_space) keep_hard_space(editor);
  return unit;
}

}  // namespace

namespace {

/// Long enough for a thought: what is typed after it is taken back by itself.
constexpr std::chrono::seconds pause_between_runs{1};
constexpr std::size_t longest_run = 100;

bool is_combining(char32_t c) {
  const int kind = u_charType(UChar32(c));
  return kind == U_NON_SPACING_MARK || kind == U_ENCLOSING_MARK || kind == U_COMBINING_SPACING_MARK;
}

/// A run ends at a pause, where the caret was moved, and when it is long at the next word.
void continue_run(Editor& editor, std::u16string_view text) {
  TypingRun& run = editor.typing_run();
  const auto now = std::chrono::steady_clock::now();
  const bool starts_word =
      !run.text.empty() && is_space(run.text.back()) && !text.empty() && !is_space(text[0]);
  if (!stands_at(run, editor.selection().focus()) || now - run.last > pause_between_runs ||
      (run.length >= longest_run && starts_word)) {
    editor.document().journal().end_typing_run();
    run = {};
  }
  run.last = now;
}

void note_typed(Editor& editor, std::u16string_view text) {
  TypingRun& run = editor.typing_run();
  const Boundary caret = editor.selection().focus();
  run.length += text.size();
  run.text = text.size() > 8 ? text.substr(text.size() - 8) : run.text + std::u16string(text);
  if (run.text.size() > 16) run.text.erase(0, run.text.size() - 8);
  run.node = caret.node->id();
  run.offset = caret.offset;
}

/// Deletions by one key join as typing does.
void continue_deletions(Editor& editor) {
  TypingRun& run = editor.typing_run();
  const auto now = std::chrono::steady_clock::now();
  if (!stands_at(run, editor.selection().focus()) || now - run.last > pause_between_runs)
    editor.document().journal().end_typing_run();
  run = {};
  run.last = now;
}

void note_deleted(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  if (!caret) return;
  editor.typing_run().node = caret.node->id();
  editor.typing_run().offset = caret.offset;
}

}  // namespace

bool type_text(Editor& editor, std::u16string_view text) {
  if (text.empty() || !can_type(editor)) return false;
  const bool goes_on = editor.document().journal().undo_label() == u"Typing" &&
                       !editor.typing_run().text.empty() &&
                       stands_at(editor.typing_run(), editor.selection().focus());
  continue_run(editor, text);
  const Gesture gesture(editor, u"Typing", StepJoin::TypingRun);
  if (!editor.selection().collapsed()) {
    const bool in_line = starts_in_line(editor);
    take_out_selection(editor, Wrappers::Keep);
    if (in_line) hold_emptied_line(editor, Wrappers::Keep);
    stand_in_line(editor, BetweenBlocks::MakeParagraph);
  } else {
    // Where typing goes on there is a line.
    if (!goes_on) stand_in_line(editor);
    make_room(editor, text.size());
  }
  const std::u16string_view all = text;
  while (!text.empty()) text.remove_prefix(type_some(editor, text));
  drop_spare_break(editor);
  note_typed(editor, all);
  return true;
}

namespace {

bool press_return(Editor& editor, std::u16string_view label, void (*insertion)(Editor&)) {
  if (!can_type(editor)) return false;
  const Gesture gesture(editor, label);
  const bool caret = editor.selection().collapsed(), in_line = starts_in_line(editor);
  take_out_selection(editor, Wrappers::Strip);
  if (!caret && in_line) hold_emptied_line(editor, Wrappers::Strip);
  if (stand_in_line(editor, caret ? BetweenBlocks::GoToNextLine : BetweenBlocks::MakeParagraph)) return true;
  insertion(editor);
  return true;
}

/// In an empty line the caret stands before the break that holds it open, never after it.
void step_before_break(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  if (!editor.selection().collapsed() || caret.node->is_text() || caret.offset == 0) return;
  const Node* before = dom::child_at(*caret.node, caret.offset - 1);
  if (before->is(Tag::Br) && is_empty_line(*block_around(caret)))
    collapse_keeping_style(editor, dom::before(*before));
}

void delete_selected(Editor& editor) {
  start_in_line(editor);
  if (empty_selected_cells(editor)) return;
  remove_islands(editor);
  if (!delete_selected_lines(editor))
    delete_selection(editor, {.block_merging = ends_in_lines_that_join(editor)});
  drop_spare_break(editor);
}

/// The letter that goes by one key; nothing at the edge of a text.
dom::Range letter_beside(const Boundary& caret, Direction direction) {
  auto* text = dom::as<dom::Text>(caret.node);
  if (!text) return {caret, caret};
  if (direction == Direction::Forward)
    return {caret,
            {text, caret.offset < text->length() ? next_grapheme(text->data(), caret.offset) : caret.offset}};
  return {{text, caret.offset > 0 ? previous_grapheme(text->data(), caret.offset) : 0}, caret};
}

/// `label` names the run that it may join.
template <class Deletion>
bool press_delete(Editor& editor, std::u16string_view label, Direction direction, Deletion&& deletion) {
  if (!can_type(editor)) return false;
  step_before_break(editor);
  const bool at_caret = editor.selection().collapsed();
  continue_deletions(editor);
  // A letter that goes is a change; of what stands between two lines one must look.
  const ContentKind beside = content_beside(editor.selection().focus(), direction).kind;
  const bool takes_letter = at_caret && (beside == ContentKind::Text || beside == ContentKind::Object);
  const bool in_line = at_caret ? takes_letter : starts_in_line(editor);
  const Gesture gesture(editor, label, at_caret ? StepJoin::TypingRun : StepJoin::Never,
                        takes_letter ? Compare::No
                        : at_caret   ? Compare::Seen
                                     : Compare::All);
  const RecordedLook look = record_current_overrides(editor);
  CommentKeeper comments(editor);
  HardSpaceKeeper hard_spaces(at_caret ? letter_beside(editor.selection().focus(), direction)
                                       : editor.selection().range());
  if (at_caret)
    deletion();
  else
    delete_selected(editor);
  hard_spaces.put_back();
  settle_caret(editor, in_line);
  comments.put_back();
  if (editor.selection().collapsed()) restore_look(look, editor);
  forget_link(editor);
  note_deleted(editor);
  return true;
}

// Whether two positions are in one block. Across blocks a word is a character: the lines join.
bool is_same_line(Boundary a, Boundary b) {
  const auto block_of = [](const Node* node) {
    while (node && is_inline_node(*node)) node = node->parent();
    return node;
  };
  return block_of(a.node) == block_of(b.node);
}

/// A no-break space is a letter that goes. The command would write it as a blank first, and take what stands
/// before that where a blank isn't seen.
bool delete_hard_space(Editor& editor, Direction direction) {
  const bool forward = direction == Direction::Forward;
  const Boundary caret = editor.selection().focus();
  auto* text = dom::as<dom::Text>(caret.node);
  if (!text || caret.offset == (forward ? text->length() : 0)) return false;
  const Offset at = forward ? caret.offset : caret.offset - 1;
  if (text->data()[at] != hard_space) return false;
  editor.selection().set({text, at}, {text, at + 1});
  delete_selection(editor);
  return true;
}

/// At a line's edge the caret may stand within white space of the source, of which each key would take a
/// blank that nobody sees.
void leave_filling_at_edge(Editor& editor, Direction direction) {
  const Boundary caret = editor.selection().focus();
  const auto* text = dom::as<dom::Text>(caret.node);
  if (!text || !collapses(*text)) return;
  const ContentKind beside = content_beside(caret, direction).kind;
  if (beside == ContentKind::Text || beside == ContentKind::Object) return;
  const Offset edge = direction == Direction::Forward ? text->length() : 0;
  if (caret.offset != edge) collapse_keeping_style(editor, {caret.node, edge});
}

/// One character, or one step over what stands between two lines.
void delete_one(Editor& editor, Direction direction) {
  const bool forward = direction == Direction::Forward;
  if (delete_hard_space(editor, direction) || delete_source_line_end(editor, direction))
    return drop_spare_break(editor);
  if (delete_island(editor, direction) || (!forward && leave_item_at_start(editor))) return;
  if (keep_attached_line(editor, direction)) return;
  if (leave_empty_line_beside_table(editor, direction) || join_lines(editor, direction)) return;
  if (!forward && leave_quotation_at_start(editor)) return;
  leave_filling_at_edge(editor, direction);
  if (forward) {
    if (!delete_empty_line_forward(editor)) delete_forward_by(editor, next_grapheme);
  } else {
    if (!delete_empty_line_backward(editor)) delete_backward_by(editor, previous_grapheme);
  }
  drop_spare_break(editor);
}

bool delete_word(Editor& editor, Direction direction) {
  const bool forward = direction == Direction::Forward;
  return press_delete(editor, forward ? u"Delete word" : u"Backspace word", direction, [&] {
    if (delete_island(editor, direction)) return;
    const Boundary caret = editor.selection().focus();
    const auto place = next_caret_place(caret, direction, Granularity::Word);
    if (place && is_same_line(caret, *place))
      editor.selection().set(forward ? caret : *place, forward ? *place : caret);
    if (editor.selection().collapsed()) return delete_one(editor, direction);
    HardSpaceKeeper hard_spaces(editor.selection().range());
    delete_selection(editor);
    hard_spaces.put_back();
    drop_spare_break(editor);
  });
}

}  // namespace

bool press_enter(Editor& editor) { return press_return(editor, u"Paragraph", start_line); }
bool press_shift_enter(Editor& editor) { return press_return(editor, u"Line break", break_line); }

namespace {

/// An accent that was typed by itself is taken back by itself.
bool take_back_mark(Editor& editor) {
  TypingRun& run = editor.typing_run();
  const Boundary caret = editor.selection().focus();
  auto* text = dom::as<dom::Text>(caret.node);
  if (!editor.selection().collapsed() || !stands_at(run, caret) || !text || run.text.empty()) return false;
  Offset from = run.text.size();
  char32_t last = 0;
  U16_PREV(run.text.data(), 0, from, last);
  const Offset length = run.text.size() - from;
  if (!is_combining(last) || caret.offset <= length || !editor.enabled(u"insertText")) return false;
  if (text->data().substr(caret.offset - length, length) != run.text.substr(from)) return false;
  const Gesture gesture(editor, u"Backspace");
  run.text.erase(from);
  dom::replace_data(*text, caret.offset - length, length, u"");
  editor.selection().collapse({text, caret.offset - length});
  run.offset = caret.offset - length;
  return true;
}

}  // namespace

bool delete_backward(Editor& editor) {
  if (take_back_mark(editor)) return true;
  if (leave_gap_backward(editor)) return true;
  return press_delete(editor, u"Backspace", Direction::Backward,
                      [&] { delete_one(editor, Direction::Backward); });
}
bool delete_forward(Editor& editor) {
  return press_delete(editor, u"Delete", Direction::Forward, [&] { delete_one(editor, Direction::Forward); });
}
bool delete_word_backward(Editor& editor) { return delete_word(editor, Direction::Backward); }
bool delete_word_forward(Editor& editor) { return delete_word(editor, Direction::Forward); }

namespace {

Element* enclosing_cell(Node& node) {
  for (Node* ancestor = &node; ancestor && is_editable(*ancestor); ancestor = ancestor->parent()) {
    if (ancestor->is(Tag::Td) || ancestor->is(Tag::Th)) return static_cast<Element*>(ancestor);
  }
  return nullptr;
}

// The next cell of the same table; tables within cells are passed.
Node* neighbour_cell(const Element& cell, const Element& table, bool backward) {
  const auto step = [&](const Node& node) {
    return backward ? dom::previous_in_order(node, &table) : dom::next_in_order(node, &table);
  };
  for (Node* node = step(cell); node; node = step(*node)) {
    if ((node->is(Tag::Td) || node->is(Tag::Th)) && dom::enclosing(*node, Tag::Table) == &table) return node;
  }
  return nullptr;
}

/// Deeper into the list, or out by one level; at the outermost one an item stays.
bool press_tab_in_list(Editor& editor, bool backward) {
  const Element* item = dom::enclosing(*editor.selection().focus().node, Tag::Li);
  if (!item || !is_editable(*item) || !item->parent() || !is_list(*item->parent())) return false;
  const Gesture gesture(editor, backward ? u"Outdent" : u"Indent");
  return backward ? outdent_items(editor) : indent_items(editor);
}

}  // namespace

bool press_tab(Editor& editor, bool backward) {
  if (!can_type(editor)) return false;
  Element* cell = enclosing_cell(*editor.selection().focus().node);
  const Element* table = cell ? dom::enclosing(*cell, Tag::Table) : nullptr;
  if (!table) return press_tab_in_list(editor, backward);
  if (Node* next = neighbour_cell(*cell, *table, backward)) {
    editor.document().journal().end_typing_run();
    editor.selection().collapse(normalized_caret_place({next, 0}));
    return true;
  }
  if (backward || !cell->parent()->is(Tag::Tr) || !is_editable(*cell->parent())) return true;
  const Gesture gesture(editor, u"Insert row");
  if (const auto first = add_row_like(static_cast<Element&>(*cell->parent())))
    editor.selection().collapse({first.get(), 0});
  return true;
}

}  // namespace tvx::editing
