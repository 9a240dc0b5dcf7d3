#include "tvx/core/views/letter_place.h"

#include <algorithm>

#include "tvx/dom/tree.h"
#include "tvx/source/markup_scanner.h"

namespace tvx::core {

using dom::Boundary;
using dom::Node;
using dom::Tag;

namespace {

bool is_letter(char16_t unit) { return !is_ascii_space(unit); }

bool is_one_of(std::u16string_view name, std::initializer_list<std::u16string_view> others) {
  return std::ranges::any_of(
      others, [&](std::u16string_view each) { return equals_ignoring_ascii_case(name, each); });
}

/// Elements whose text is no text of the page, or none that both sides have alike.
bool hides_text(const Node& node) {
  for (const Tag tag :
       {Tag::Script, Tag::Style, Tag::Textarea, Tag::Xmp, Tag::Iframe, Tag::Noframes, Tag::Noembed})
    if (node.is(tag)) return true;
  return false;
}

/// The next node in tree order; null after the last one. What is in an element that hides text is passed.
Node* next_node(Node& body, Node* node) {
  Node* next = hides_text(*node) ? nullptr : node->first_child();
  while (!next && node != &body) {
    next = node->next_sibling();
    if (!next) node = node->parent();
  }
  return next;
}

bool counts_as_letter(const Node& node) {
  return node.is(Tag::Br) || node.is(Tag::Img) || node.is(Tag::Input);
}

/// The same in a source.
bool counts_as_letter(const source::Piece& piece) {
  return piece.kind == source::Piece::Kind::StartTag && is_one_of(piece.name, {u"br", u"img", u"input"});
}

/// The first node in tree order that stands at a position or after it, a text for one within it; null: the
/// position is after all of them. To ask of each node whether it comes before would take a long page's time
/// squared.
const Node* first_after(const Node& body, const Boundary& place) {
  const Node* node = place.node;
  if (node->is_text()) return node;
  const Node* child = node->first_child();
  for (Offset i = 0; child && i < place.offset; ++i) child = child->next_sibling();
  while (!child && node != &body) {
    child = node->next_sibling();
    node = node->parent();
  }
  return child;
}

std::size_t count_letters(std::u16string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, is_letter));
}

bool is_in_reference(char16_t unit) { return is_ascii_alpha(unit) || is_ascii_digit(unit) || unit == u'#'; }

/// How long a reference to a character is that stands at a position: 0 if none does.
Offset reference_length(std::u16string_view source, Offset at) {
  if (source[at] != u'&') return 0;
  const std::u16string_view rest = source.substr(at + 1);
  const auto end = std::ranges::find_if_not(rest, is_in_reference);
  const bool ends = end != rest.end() && *end == u';' && end != rest.begin();
  return ends ? static_cast<Offset>(end - rest.begin()) + 2 : 0;
}

/// Calls `take(offset, length)` for each letter of a source's text, until it answers false.
template <class Take>
void each_letter(std::u16string_view source, const Take& take) {
  source::MarkupScanner scanner(source);
  std::u16string_view raw;
  while (const auto piece = scanner.next()) {
    if (piece->kind == source::Piece::Kind::StartTag) raw = piece->name;
    if (counts_as_letter(*piece) && !take(piece->begin, piece->end - piece->begin)) return;
    if (piece->kind != source::Piece::Kind::Text) continue;
    const bool hidden =
        is_one_of(raw, {u"script", u"style", u"textarea", u"xmp", u"iframe", u"noframes", u"noembed"});
    raw = {};
    if (hidden) continue;
    for (Offset at = piece->begin; at < piece->end; ++at) {
      const Offset reference = reference_length(source, at);
      if (reference == 0 && !is_letter(source[at])) continue;
      if (!take(at, std::max<Offset>(reference, 1))) return;
      if (reference > 0) at += reference - 1;
    }
  }
}

}  // namespace

LetterPlace letter_place(Node& body, const Boundary& place) {
  LetterPlace found;
  if (!place || !dom::is_inclusive_ancestor(body, *place.node)) return found;
  const Node* const end = first_after(body, place);
  for (Node* node = &body; node && node != end; node = next_node(body, node)) {
    if (end && hides_text(*node) && dom::is_inclusive_ancestor(*node, *end)) return found;
    if (const auto* text = dom::as<dom::Text>(node)) found.before += count_letters(text->data());
    if (counts_as_letter(*node)) ++found.before;
  }
  if (!place.node->is_text() && place.offset > 0)
    found.after_letter = counts_as_letter(*dom::child_at(*place.node, place.offset - 1));
  if (const auto* text = dom::as<dom::Text>(place.node); text && text == end) {
    const Offset offset = std::min(place.offset, text->length());
    found.before += count_letters(std::u16string_view(text->data()).substr(0, offset));
    found.after_letter = offset > 0 && is_letter(text->data()[offset - 1]);
  }
  return found;
}

Boundary boundary_at(Node& body, const LetterPlace& place) {
  std::size_t before = 0;
  Boundary last;  // in an element that counts as a letter: before it or after it
  // Whether the letter at that offset is the one beside the place.
  const auto pass = [&](Node* node, Offset at) {
    const bool is_next = before == place.before && !place.after_letter;
    last = {node, is_next ? at : at + 1};
    return is_next || (++before == place.before && place.after_letter);
  };
  const auto pass_all = [&](Node* node) {
    if (counts_as_letter(*node)) return pass(node, 0);
    const auto* text = dom::as<dom::Text>(node);
    for (Offset at = 0; text && at < text->length(); ++at)
      if (is_letter(text->data()[at]) && pass(node, at)) return true;
    return false;
  };
  for (Node* node = &body; node && !pass_all(node);) node = next_node(body, node);
  if (!last) return {&body, 0};
  if (last.node->is_text()) return last;
  return last.offset == 0 ? dom::before(*last.node) : dom::after(*last.node);
}

LetterPlace letter_place(std::u16string_view source, Offset place) {
  LetterPlace found;
  Offset end = 0, next = source.size();
  each_letter(source, [&](Offset at, Offset length) {
    if (at + length > place) {
      next = at;
      return false;
    }
    ++found.before;
    end = at + length;
    return true;
  });
  // After the end tags of a line the line's last letter is nearer than the first one of the next line.
  const bool same_line = source.substr(end, place - end).find_first_of(u"\r\n") == source.npos;
  found.after_letter = found.before > 0 && (end == place || (same_line && next > place));
  return found;
}

Offset offset_at(std::u16string_view source, const LetterPlace& place) {
  std::size_t before = 0;
  Offset last = 0;
  each_letter(source, [&](Offset at, Offset length) {
    if (before == place.before && !place.after_letter) {
      last = at;
      return false;
    }
    last = at + length;
    return !(++before == place.before && place.after_letter);
  });
  return last;
}

}  // namespace tvx::core
