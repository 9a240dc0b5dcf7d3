#include "editing/gestures/writer_laws.h"

#include <set>

#include "tvx/dom/journal.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/facts/text_units.h"
#include "tvx/editing/gestures/gap_caret.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing::test {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

bool is_unknown(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && element->name().text().starts_with(u"x-");
}

bool is_comment(const Node* node) { return node && node->type() == dom::NodeType::Comment; }

/// Letters in elements that nobody knows, however these are parted.
std::size_t unknown_letters_in(const Element& host) {
  std::size_t letters = 0;
  for (const Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host))
    for (const Node* around = node->parent(); node->is_text() && around != &host; around = around->parent())
      if (is_unknown(*around)) {
        const std::u16string& text = static_cast<const dom::Text&>(*node).data();
        for (Offset at = 0; at < text.size(); at = next_grapheme(text, at)) ++letters;
        break;
      }
  return letters;
}

const Node* cell_of(const Node* node) {
  while (node && !node->is(Tag::Td) && !node->is(Tag::Th)) node = node->parent();
  return node;
}

/// Letters that are not in the range, white space left out, and what may not be edited, which goes as one. Of
/// cells whole rectangles are selected: there none is asked for.
std::size_t letters_outside(const Element& host, const dom::Range& range) {
  if (range.start && cell_of(range.start.node) != cell_of(range.end.node)) return 0;
  std::size_t letters = 0;
  for (Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host)) {
    const auto* text = dom::as<dom::Text>(node);
    if (!text || !is_editable(*text)) continue;
    for (Offset at = 0; at < text->length(); ++at) {
      const char16_t letter = text->data()[at];
      if (is_ascii_space(letter) || letter == u'\u00A0') continue;
      const bool selected = range.start && !range.collapsed() && dom::compare({node, at}, range.start) >= 0 &&
                            dom::compare({node, at}, range.end) < 0;
      letters += !selected;
    }
  }
  return letters;
}

/// What a gesture must leave of the letters.
std::size_t letters_to_stay(const Element& host, const dom::Range& range, GestureKind next) {
  constexpr std::size_t most_of_one = 2;  // an accent by itself belongs to its letter
  const bool selects = range.start && !range.collapsed();
  switch (next) {
    case GestureKind::Type:
    case GestureKind::Enter:
    case GestureKind::LineBreak: return letters_outside(host, range);
    // A table that is pasted into a cell takes the place of what is there.
    case GestureKind::Paste:
      return range.start && cell_of(range.start.node) ? 0 : letters_outside(host, range);
    case GestureKind::Command: return letters_outside(host, {});
    case GestureKind::Delete: {
      const std::size_t letters = letters_outside(host, range);
      return selects ? letters : letters - std::min(letters, most_of_one);
    }
    case GestureKind::DeleteWord: return selects ? letters_outside(host, range) : 0;
    default: return 0;
  }
}

/// A colour that was only chosen is told as it was written.
std::u16string told(const std::u16string& value) { return value == u"#ff0000" ? u"rgb(255, 0, 0)" : value; }

std::map<std::u16string, std::u16string> style_of(Editor& editor) {
  std::map<std::u16string, std::u16string> style;
  for (std::u16string_view name : {u"bold", u"italic", u"underline"})
    style[std::u16string(name)] = editor.state(name) ? u"on" : u"off";
  for (std::u16string_view name : {u"foreColor", u"fontSize", u"fontName"})
    style[std::u16string(name)] = told(editor.value(name));
  return style;
}

bool is_piece_of_line(const Node* node) { return node && !is_block_piece(*node) && !is_filling(*node); }

/// Whether a caret stands in one of the lines that are children of the host itself: not an empty one between
/// blocks.
bool is_in_bare_line(const Boundary& caret, const Element& host) {
  if (block_around(caret) != &host) return false;
  Node* child = caret.node == &host ? dom::child_at(host, caret.offset) : caret.node;
  while (child && child->parent() != &host) child = child->parent();
  // Nobody sees the comment before which a caret stands.
  Node* after = child;
  while (after && is_filling(*after)) after = after->next_sibling();
  if (is_piece_of_line(after) && !after->is(Tag::Br)) return true;
  return is_piece_of_line(child ? child->previous_sibling() : host.last_child());
}

/// An item may have a line and lists after it; elsewhere a line beside blocks is a block of its own.
bool stands_beside_blocks(const Element& block) {
  if (!(block.is(Tag::Div) || block.is(Tag::Td) || block.is(Tag::Th) || block.is(Tag::Li) ||
        block.is(Tag::Blockquote)))
    return false;
  for (const Node* child = block.first_child(); child; child = child->next_sibling())
    if (is_block_piece(*child) && !(block.is(Tag::Li) && is_list(*child))) return true;
  return false;
}

bool is_empty(const Element& element) {
  for (const Node* child = element.first_child(); child; child = child->next_sibling())
    if (!child->is_text() || dom::length_of(*child) > 0) return false;
  return true;
}

std::string broken_law_of_tree(const Element& host) {
  static const TagSet of_lines{Tag::B, Tag::I, Tag::U, Tag::Font, Tag::Span, Tag::A, Tag::Strong, Tag::Em};
  for (const Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host)) {
    const Node* parent = node->parent();
    const bool in_list = parent->is(Tag::Ul) || parent->is(Tag::Ol);
    if (node->is_text() && (in_list || parent->is(Tag::Table) || parent->is(Tag::Tr)) && !is_filling(*node))
      return "no text stands between items or cells";
    const auto* element = dom::as<Element>(node);
    if (!element) continue;
    if (in_list && !element->is(Tag::Li)) return "a list holds only items";
    if (parent->is(Tag::P) && is_block_node(*element)) return "no block stands in a paragraph";
    if (of_lines.has(*parent) && is_editable(*element) && is_block_node(*element))
      return "no block stands in an element of a line";
    if (holds_items(*element) && !dom::first_child_element(*element)) return "no list is empty";
    if (of_lines.has(*element) && is_empty(*element)) return "no element of a line is empty";
    const std::u16string* style = element->attribute(dom::names::style);
    if (style && style->empty()) return "no style attribute is empty";
  }
  return {};
}

std::string broken_law_of_typing(Editor& editor, const Element& host, const Moment& before) {
  const Boundary caret = editor.selection().focus();
  if (!editor.selection().collapsed()) return "after typing there is a caret";
  const auto* text = dom::as<dom::Text>(caret.node);
  if (!text || caret.offset == 0) return "the caret stands after what was typed";
  const Element* block = block_around(caret);
  static const TagSet bare{Tag::Ul, Tag::Ol, Tag::Table, Tag::Tbody, Tag::Tr, Tag::Dl};
  if (bare.has(*block) || (block == &host && !before.bare))
    return "what is typed stands in a line of its own";
  if (block != &host && stands_beside_blocks(*block)) return "what is typed doesn't stand beside blocks";
  if (before.collapsed && !before.in_gap && !before.bare && !before.beside_blocks &&
      before.line != block->id())
    return "what is typed stands where the caret was";
  return {};
}

std::string broken_law_of_enter(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  if (!editor.selection().collapsed()) return "after Enter there is a caret";
  const auto* text = dom::as<dom::Text>(caret.node);
  if (text && caret.offset > 0 && text->data()[caret.offset - 1] == u'\n') return {};
  const ContentKind beside = content_beside(caret, Direction::Backward).kind;
  if (beside == ContentKind::Text || beside == ContentKind::Object)
    return "after Enter the caret starts a line";
  return {};
}

std::string broken_law_of_style(Editor& editor, const Moment& before, bool in_heading) {
  if (!before.collapsed || before.in_gap || before.in_heading || in_heading || before.in_link) return {};
  // What preformatted text gives its letters ends with it, as what a heading gives.
  if (before.in_pre != block_around(editor.selection().focus())->is(Tag::Pre)) return {};
  const auto now = style_of(editor);
  for (const auto& [name, value] : before.style)
    if (now.at(name) != value)
      return "the style goes on: " + to_utf8(name) + " was " + to_utf8(value) + ", is " +
             to_utf8(now.at(name));
  return {};
}

bool is_in(const Element& host, const Node& node) { return dom::is_inclusive_ancestor(host, node); }

}  // namespace

Moment Moment::of(Editor& editor, Element& host, GestureKind next) {
  Moment moment;
  moment.html = to_utf8(dom::serialise_children(host));
  moment.steps = editor.document().journal().depth();
  const Selection& selection = editor.selection();
  moment.collapsed = selection.collapsed();
  const dom::Range range = selection.range();
  moment.bare = range.start && is_in_bare_line(range.start, host);
  if (moment.collapsed) {
    const Boundary caret = selection.focus();
    moment.in_gap = is_gap_place(caret);
    moment.in_link = dom::enclosing(*caret.node, Tag::A) != nullptr;
    const Element* block = block_around(caret);
    moment.line = block->id();
    moment.in_heading = is_heading(*block);
    moment.in_pre = block->is(Tag::Pre);
    moment.beside_blocks = stands_beside_blocks(*block);
    if (next == GestureKind::Type || next == GestureKind::Enter) moment.style = style_of(editor);
  }
  moment.letters = letters_to_stay(host, range, next);
  if (next == GestureKind::Journal) return moment;
  if (moment.collapsed) moment.unknown_letters = unknown_letters_in(host);
  const bool by_key = next == GestureKind::Delete || next == GestureKind::DeleteWord;
  for (Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host)) {
    if (!moment.collapsed && range.start && dom::contains(range, *node) && !by_key) continue;
    if (!moment.collapsed && range.start && dom::contains(range, *node)) continue;
    if (is_comment(node) || (is_island(*node) && !by_key)) moment.kept.emplace_back(node);
  }
  return moment;
}

std::string broken_law(Editor& editor, Element& host, const Moment& before, GestureKind done) {
  std::string law = broken_law_of_tree(host);
  const Boundary caret = editor.selection().focus();
  const bool in_heading = caret && is_heading(*block_around(caret));
  if (law.empty() && caret && !editing_host_of(*caret.node)) law = "the caret stands where one can write";
  if (law.empty() && done == GestureKind::Type) law = broken_law_of_typing(editor, host, before);
  if (law.empty() && done == GestureKind::Enter) law = broken_law_of_enter(editor);
  if (law.empty() && (done == GestureKind::Type || done == GestureKind::Enter))
    law = broken_law_of_style(editor, before, in_heading);
  if (law.empty() && letters_outside(host, {}) < before.letters) law = "what wasn't selected is still read";
  if (!law.empty()) return law;
  for (const dom::Ref<Node>& node : before.kept)
    if (!is_in(host, *node))
      return "what wasn't selected is still there: " +
             to_utf8(dom::serialise_node(*node, dom::Letters::Upper));
  if (done != GestureKind::DeleteWord && done != GestureKind::Command &&
      unknown_letters_in(host) + 1 < before.unknown_letters)
    return "what nobody knows is still there";
  const std::string html = to_utf8(dom::serialise_children(host));
  if (done != GestureKind::Journal && before.collapsed && done != GestureKind::Paste && html == before.html &&
      editor.document().journal().depth() > before.steps)
    return "what changes nothing is no step";
  return {};
}

namespace {

/// The letters of a part of a text as they are seen: white space that shows is one, other white space
/// nothing.
std::string seen_letters(const Content& content) {
  dom::Text& text = content.text();
  if (!collapses(text)) return std::string(content.to - content.from, 't');
  std::string letters;
  const std::u16string& data = text.data();
  for (Offset at = content.from; at < content.to; ++at) {
    if (!is_ascii_space(data[at])) {
      letters += 't';
      continue;
    }
    Offset from = at, to = at;
    while (from > 0 && is_ascii_space(data[from - 1])) --from;
    while (to < data.size() && is_ascii_space(data[to])) ++to;
    if (shows_space(text, from, to)) letters += 't';
    at = std::min(to, content.to) - 1;
  }
  return letters;
}

/// What a reader passes from the document's start to a position: positions with the same answer look the
/// same.
std::string way_to(const Boundary& place, const Element& host) {
  std::string way;
  ContentWalk walk(place, Direction::Backward, &host);
  for (Content content = walk.next(); content.kind != ContentKind::End; content = walk.next())
    way += content.kind == ContentKind::Text ? seen_letters(content)
                                             : std::string(1, "?obr<>"[int(content.kind)]);
  return way;
}

/// After the break that ends a line before a block, or before the end of one, there is no line.
bool is_after_last_break(const Boundary& place) {
  const ContentKind after = content_beside(place, Direction::Forward).kind;
  return content_beside(place, Direction::Backward).kind == ContentKind::LineBreak &&
         (after == ContentKind::LeaveBlock || after == ContentKind::EnterBlock);
}

void press_arrow(Editor& editor, std::u16string_view key) { press_key(editor, {std::u16string(key), {}}); }

/// All that the arrow keys come by, from one end to the other.
std::set<std::string> walked(Editor& editor, const Element& host, std::u16string_view key) {
  std::set<std::string> ways;
  Boundary last;
  for (int i = 0; i < 5000 && editor.selection().focus() != last; ++i) {
    last = editor.selection().focus();
    ways.insert(way_to(last, host));
    press_arrow(editor, key);
  }
  return ways;
}

std::map<std::string, Boundary> clicked(Element& host) {
  std::map<std::string, Boundary> ways;
  for (Node* node = &host; node; node = dom::next_in_order(*node, &host)) {
    if (!is_editable(*node) && node != &host) continue;
    const auto* text = dom::as<dom::Text>(node);
    // Nor in white space of the source that nobody sees.
    if (text && is_collapsed_whitespace_node(*text)) continue;
    if (!text && (!node->is_element() || dom::is_void(static_cast<const Element&>(*node)))) continue;
    for (Offset at = 0; at <= dom::length_of(*node); at = text ? next_grapheme(text->data(), at) : at + 1) {
      Boundary place{node, at};
      // Nobody can click beside a comment: it is nowhere on the page.
      if (!text &&
          (is_comment(dom::child_at(*node, at)) || (at > 0 && is_comment(dom::child_at(*node, at - 1)))))
        continue;
      if (!is_gap_place(place)) place = normalized_caret_place(place);
      if (editing_host_of(*place.node) == &host && !is_after_last_break(place))
        ways.emplace(way_to(place, host), place);
      if (text && at == text->length()) break;
    }
  }
  return ways;
}

}  // namespace

std::string broken_law_of_moves(Editor& editor, Element& host) {
  editor.selection().collapse(normalized_caret_place({&host, 0}));
  walked(editor, host, u"ArrowLeft");
  const std::set<std::string> forward = walked(editor, host, u"ArrowRight");
  const std::set<std::string> backward = walked(editor, host, u"ArrowLeft");
  for (const auto& [way, place] : clicked(host)) {
    editor.selection().collapse(place);
    if (!forward.contains(way)) return "what can be clicked is reached to the right";
    if (!backward.contains(way)) return "what can be clicked is reached to the left";
  }
  return {};
}

}  // namespace tvx::editing::test
