#include "tvx/editing/layout/source_filling.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

/// White space at an edge of a node.
NodeList filling_at(const Element& holder, bool at_end) {
  NodeList filling;
  for (Node* node = at_end ? holder.last_child() : holder.first_child();
       node && node->is_text() && is_filling(*node);
       node = at_end ? node->previous_sibling() : node->next_sibling())
    filling.insert(at_end ? filling.begin() : filling.end(), Ref<Node>(node));
  return filling;
}

constexpr std::u16string_view html_space = u" \t\n\f\r";

/// Takes a part of a text out into one of its own beside it. A caret there comes to the edge of what stays.
void part_text(dom::Text& text, Offset from, Offset length) {
  if (text.data().substr(from, length).find(u'\n') == text.data().npos) return;
  const Ref<dom::Text> part = text.document()->create_text(text.data().substr(from, length));
  dom::replace_data(text, from, length, u"");
  dom::insert(*text.parent(), part, from == 0 ? &text : text.next_sibling());
}

/// The ends of lines in the source that a text at an edge begins or ends with are texts of their own then.
void part_source_ends(const Element& holder) {
  const auto collapsing = [](Node* node) {
    auto* text = dom::as<dom::Text>(node);
    return text && !is_filling(*text) && collapses(*text) ? text : nullptr;
  };
  if (dom::Text* text = collapsing(holder.last_child())) {
    const Offset end = text->data().find_last_not_of(html_space) + 1;
    part_text(*text, end, text->length() - end);
  }
  if (dom::Text* text = collapsing(holder.first_child()))
    part_text(*text, 0, text->data().find_first_not_of(html_space));
}

}  // namespace

void give_back_filling(Editor& editor, Element& made) {
  const auto holds_caret = [&] {
    return editor.selection().collapsed() &&
           dom::is_inclusive_ancestor(made, *editor.selection().focus().node);
  };
  const bool held_caret = holds_caret();
  part_source_ends(made);
  const Ref<Node> holder(made.parent());
  if (const NodeList before = filling_at(made, false); !before.empty())
    move_run_preserving_ranges(before, *holder, &made);
  if (const NodeList after = filling_at(made, true); !after.empty())
    move_run_preserving_ranges(after, *holder, made.next_sibling());
  if (!held_caret || holds_caret()) return;
  const bool is_after = dom::compare(editor.selection().focus(), dom::before(made)) > 0;
  const RecordedLook style = record_current_overrides(editor);
  editor.selection().collapse(normalized_caret_place({&made, is_after ? dom::length_of(made) : 0}));
  restore_look(style, editor);
}

namespace {

/// Whether white space in a text is the source's: that of a script, say, is not.
bool may_trim(const dom::Text& text) { return is_editable(text) && is_rendered(text) && collapses(text); }

}  // namespace

void trim_filling(Element& line, Direction direction) {
  const bool at_start = direction == Direction::Forward;
  for (;;) {
    Node* leaf = &line;
    while (Node* child = at_start ? leaf->first_child() : leaf->last_child()) leaf = child;
    auto* text = dom::as<dom::Text>(leaf);
    if (!text || !may_trim(*text)) return;
    const std::u16string& data = text->data();
    const std::size_t seen =
        at_start ? data.find_first_not_of(html_space) : data.find_last_not_of(html_space);
    if (seen == data.npos) {
      dom::remove(*text);
      continue;
    }
    if (at_start && seen > 0) dom::replace_data(*text, 0, seen, u"");
    if (!at_start && seen + 1 < data.size()) dom::replace_data(*text, seen + 1, data.size() - seen - 1, u"");
    return;
  }
}

namespace {

/// The white space around a place in a text, where the source goes on in another line there.
std::optional<dom::Range> source_line_end(const Boundary& place) {
  auto* text = dom::as<dom::Text>(place.node);
  if (!text || !may_trim(*text)) return std::nullopt;
  const std::u16string_view data = text->data();
  Offset from = place.offset, to = place.offset;
  while (from > 0 && is_ascii_space(data[from - 1])) --from;
  while (to < data.size() && is_ascii_space(data[to])) ++to;
  if (data.substr(from, to - from).find(u'\n') == data.npos) return std::nullopt;
  return dom::Range{{text, from}, {text, to}};
}

/// The text that a step in this direction begins to pass, and where it does.
Boundary text_on_the_way(const Boundary& caret, const Content& beside, Direction direction) {
  const bool forward = direction == Direction::Forward;
  const auto* text = dom::as<dom::Text>(caret.node);
  if (text && caret.offset != (forward ? text->length() : 0)) return caret;
  if (beside.kind != ContentKind::Text || beside.node == caret.node) return {};
  return {beside.node, forward ? 0 : beside.text().length()};
}

}  // namespace

bool delete_source_line_end(Editor& editor, Direction direction) {
  const bool forward = direction == Direction::Forward;
  const Boundary caret = editor.selection().focus();
  const Content beside = content_beside(caret, direction);
  if (beside.kind == ContentKind::LineBreak) {
    const ContentKind after = content_beside(dom::after(*beside.node), Direction::Forward).kind;
    const auto line_end = source_line_end({beside.node->next_sibling(), 0});
    if (line_end && (after == ContentKind::Text || after == ContentKind::Object))
      dom::replace_data(static_cast<dom::Text&>(*line_end->end.node), 0, line_end->end.offset, u"");
    return false;
  }
  if (beside.kind != ContentKind::Text && beside.kind != ContentKind::Object) return false;
  const Boundary place = text_on_the_way(caret, beside, direction);
  const auto line_end = source_line_end(place);
  if (!line_end || place == (forward ? line_end->end : line_end->start)) return false;
  editor.selection().set(*line_end);
  delete_selection(editor);
  return true;
}

}  // namespace tvx::editing
