#include "tvx/editing/clipboard/move_content.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/clipboard/word_gaps.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/deletion/line_deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/ranges/markup_pointer.h"
#include "tvx/editing/tables/selected_cells.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

/// Holds the selection's news back until all is done.
class Gesture {
 public:
  Gesture(Editor& editor, std::u16string_view label)
      : selection_(editor.selection()), step_(editor.document().journal(), label) {
    selection_.hold_notifications();
  }
  ~Gesture() { selection_.release_notifications(); }
  Gesture(const Gesture&) = delete;
  Gesture& operator=(const Gesture&) = delete;

 private:
  Selection& selection_;
  dom::UndoStep step_;
};

bool is_within(const Boundary& place, const dom::Range& range) {
  return compare(range.start, place) <= 0 && compare(place, range.end) <= 0;
}

/// The first element of that name between two positions.
Element* find_between(const dom::Range& range, dom::Name name) {
  Node* node = dom::child_at(*range.start.node, range.start.offset);
  if (!node) node = range.start.node;
  for (; node && compare(dom::before(*node), range.end) < 0; node = dom::next_in_order(*node)) {
    auto* element = dom::as<Element>(node);
    if (element && element->name() == name && compare(range.start, dom::before(*node)) <= 0) return element;
  }
  return nullptr;
}

/// A position between nodes where a text begins or ends: what is inserted there is inserted beside the text.
Boundary out_of_text_edge(const Boundary& place) {
  if (!place.node->is_text()) return place;
  if (place.offset == 0) return dom::before(*place.node);
  return place.offset == dom::length_of(*place.node) ? dom::after(*place.node) : place;
}

/// Inserts markup at a position and gives what it has become.
dom::Range insert_markup(Editor& editor, const Boundary& at, std::u16string_view html) {
  MarkupPointer start(editor.document());
  start.SetGravity(PointerGravity::Left);
  start.MoveTo(out_of_text_edge(at));
  TextRange range(editor, {at, at});
  range.paste_html(html);
  return {start.place(), range.range().end};
}

bool move_control(Editor& editor, Element& control, const Boundary& to, KeepSource keep) {
  const Gesture gesture(editor, keep == KeepSource::Yes ? u"Copy" : u"Move");
  const Ref<Element> source(&control);
  const dom::Range inserted = insert_markup(editor, to, dom::serialise_node(control));
  const Ref<Element> arrived(find_between(inserted, control.name()));
  if (keep == KeepSource::No) ControlRange(editor, *source).execute(u"Delete");
  if (arrived && arrived->parent()) editor.selection().select_control(*arrived);
  return true;
}

/// What was taken goes in as what is pasted does: lines as lines, items among items.
void put_in(Editor& editor, const Ref<dom::DocumentFragment>& content, const Boundary& at) {
  // Within or after a text the position stays where the text ends, also if what follows becomes part of it.
  const Boundary before = at.node->is_text() && at.offset > 0 ? at : out_of_text_edge(at);
  const dom::LiveRange start(editor.document(), {before, before});
  editor.selection().collapse(at);
  paste_nodes(editor, content);
  const Boundary end = editor.selection().range().end;
  if (dom::compare(start.start(), end) < 0) editor.selection().set(start.start(), end);
}

bool holds_lines(const dom::DocumentFragment& content) {
  for (const Node* child = content.first_child(); child; child = child->next_sibling())
    if (is_block_piece(*child)) return true;
  return false;
}

/// Parts words from those where they arrive. The blanks aren't selected: moved on, the words leave them
/// there.
void put_words_in(Editor& editor, const Ref<dom::DocumentFragment>& words, const Boundary& at,
                  WordGaps gaps) {
  dom::Document& document = editor.document();
  if (gaps.before) dom::insert(*words, document.create_text(u" "), words->first_child());
  if (gaps.after) dom::insert(*words, document.create_text(u" "));
  put_in(editor, words, at);
  dom::Range put = editor.selection().range();
  if (gaps.before) put.start = next_character(put.start, Direction::Forward).value_or(put.start);
  if (gaps.after) put.end = next_character(put.end, Direction::Backward).value_or(put.end);
  editor.selection().set(put.start, put.end);
}

bool move_text(Editor& editor, const dom::Range& range, const Boundary& to, KeepSource keep) {
  const dom::Range seen = shrunk_to_characters(range);
  if (seen.collapsed()) return false;
  const Gesture gesture(editor, keep == KeepSource::Yes ? u"Copy" : u"Move");
  const LineEnd end = takes_line_end(range, seen) ? LineEnd::With : LineEnd::Without;
  const Ref<dom::DocumentFragment> content = copied_nodes(seen, end);
  if (end == LineEnd::With) append_line_end(*content);
  const bool words = end == LineEnd::Without && !holds_lines(*content) && are_whole_words(seen);
  const WordGaps gaps = words ? gaps_at(to) : WordGaps{};
  const dom::LiveRange target(editor.document(), {to, to});
  if (keep == KeepSource::No && !delete_selected_lines(editor)) {
    if (words) {
      const dom::Range gone = with_spare_blank(seen);
      editor.selection().set(gone.start, gone.end);
    }
    delete_selection(editor);
  }
  put_words_in(editor, content, target.start(), gaps);
  return true;
}

}  // namespace

bool move_selection(Editor& editor, Boundary to, KeepSource keep) {
  const Selection& selection = editor.selection();
  const dom::Range range = selection.range();
  if (!to || !editing_host_of(*to.node) || selection.type() == SelectionType::None || range.collapsed() ||
      is_within(to, range))
    return false;
  to = normalized_caret_place(to);
  if (is_within(to, range)) return false;
  if (Element* control = selection.control()) return move_control(editor, *control, to, keep);
  // Cells stay in their table; the text from one of them into another isn't what is selected.
  if (!selected_cells(editor).empty()) return false;
  return editing_host_of(*range.start.node) && editing_host_of(*range.end.node) &&
         move_text(editor, range, to, keep);
}

bool insert_selected(Editor& editor, Boundary at, std::u16string_view label,
                     const std::function<void(Editor&)>& insert) {
  if (!at || !editing_host_of(*at.node)) return false;
  const Gesture gesture(editor, label);
  at = normalized_caret_place(at);
  editor.selection().collapse(at);
  MarkupPointer start(editor.document());
  start.SetGravity(PointerGravity::Left);
  start.MoveTo(out_of_text_edge(at));
  insert(editor);
  if (editor.selection().type() == SelectionType::Text)
    editor.selection().set(start.place(), editor.selection().range().end);
  return true;
}

}  // namespace tvx::editing
