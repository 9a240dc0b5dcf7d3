#include "tvx/editing/gestures/attached_lines.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// Whether nothing that is seen stands between a caret and an edge of the line.
bool is_at_edge(const Boundary& caret, const Element& line, Direction direction) {
  ContentWalk walk(caret, direction, line.parent());
  for (;;) {
    const Content met = walk.next();
    if (met.kind == ContentKind::LeaveBlock && met.node == &line) return true;
    const bool is_space = met.kind == ContentKind::Text && collapses(met.text()) &&
                          trimmed(met.text().data().substr(met.from, met.to - met.from)).empty();
    const bool is_last_break = met.kind == ContentKind::LineBreak && direction == Direction::Forward &&
                               is_collapsed_line_break(*met.node);
    if (!is_space && !is_last_break && met.kind != ContentKind::LeaveBlock) return false;
  }
}

bool is_folded(const Element& summary) {
  const Node* after = summary.next_sibling();
  return after ? is_folded_away(*after) : false;
}

bool start_paragraph_after(Editor& editor, Element& line) {
  const bool outside = is_folded(line);
  const Node& before = outside ? *line.parent() : line;
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  if (!is_editable(before) || !is_allowed_child_name(name, *before.parent())) return false;
  const Ref<Element> paragraph = editor.document().create_element(name);
  dom::insert(*before.parent(), paragraph, before.next_sibling());
  append_line_break(*paragraph);
  editor.selection().collapse({paragraph.get(), 0});
  return true;
}

/// An empty one goes, but for a summary: there a browser would put a word of its own.
void remove_line(Editor& editor, Element& line) {
  const auto next = next_caret_place(editor.selection().focus(), Direction::Forward, Granularity::Character);
  dom::LiveRange place(editor.document(), {next ? *next : dom::after(line), next ? *next : dom::after(line)});
  dom::remove(line);
  editor.selection().collapse(normalized_caret_place(place.start()));
}

}  // namespace

Element* attached_line(const Boundary& caret) {
  Element* line = block_around(caret);
  if (line && is_heading(*line) && line->parent_element()) line = line->parent_element();
  const bool is_one = line && (line->is(Tag::Caption) || line->is(Tag::Legend) || line->is(Tag::Summary));
  return is_one && is_editable(*line) ? line : nullptr;
}

bool start_line_in_attached(Editor& editor) {
  Element* line = attached_line(editor.selection().focus());
  if (!line) return false;
  const bool at_end = is_at_edge(editor.selection().focus(), *line, Direction::Forward);
  if (at_end && !line->is(Tag::Caption) && start_paragraph_after(editor, *line)) return true;
  insert_line_break(editor);
  editor.selection().collapse(normalized_caret_place(editor.selection().focus()));
  return true;
}

bool keep_attached_line(Editor& editor, Direction direction) {
  const Boundary caret = editor.selection().focus();
  Element* line = attached_line(caret);
  const bool forward = direction == Direction::Forward;
  if (line) {
    if (!is_at_edge(caret, *line, direction)) return false;
    if (is_empty_line(*line) && !line->is(Tag::Summary)) return remove_line(editor, *line), true;
    return !forward || line->is(Tag::Caption) || is_folded(*line);
  }
  const Element* block = block_around(caret);
  const Content beside = content_beside(caret, direction);
  if (!block || is_empty_line(*block) || beside.kind != ContentKind::LeaveBlock) return false;
  const auto next = next_caret_place(caret, direction, Granularity::Character);
  line = next ? attached_line(*next) : nullptr;
  if (!line) return false;
  // What stands below a legend or a summary may become a part of it.
  return forward || line->is(Tag::Caption) || is_folded(*line) ||
         !dom::is_ancestor(*line->parent(), *caret.node);
}

}  // namespace tvx::editing
