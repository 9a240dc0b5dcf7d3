#include "tvx/editing/facts/predicates.h"

#include "tvx/base/work_count.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Name;
using dom::Node;
using dom::NodeType;
using dom::Tag;

namespace {

// What shows though it has no child that does. The standard names images alone.
// OURS: form fields, embedded objects and drawings too, or deleting around them would take them for nothing.
bool shows_by_itself(const Node& node) {
  static const TagSet tags{Tag::Applet,   Tag::Audio,  Tag::Button,   Tag::Canvas, Tag::Embed,
                           Tag::Iframe,   Tag::Img,    Tag::Input,    Tag::Meter,  Tag::Object,
                           Tag::Progress, Tag::Select, Tag::Textarea, Tag::Video};
  const auto* element = dom::as<Element>(&node);
  return element && (tags.has(element->tag()) || !element->is_html());
}

bool is_line_holder(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return !element || display_of(*element) != Display::Inline;
}

// What a step along a line meets.
enum class Met : std::uint8_t { Nothing, Enter, Pass, LineBreak, Content, Edge };

Met look_at(const Node& node) {
  if (const auto* text = dom::as<dom::Text>(&node))
    return is_whitespace_node(*text) ? Met::Pass : Met::Content;
  const auto* element = dom::as<Element>(&node);
  if (!element) return Met::Pass;
  switch (display_of(*element)) {
    case Display::None: return Met::Pass;
    case Display::InlineBlock: return Met::Content;
    case Display::Block: return Met::Edge;
    case Display::Inline: break;
  }
  if (element->tag() == Tag::Br) return Met::LineBreak;
  return shows_by_itself(node) ? Met::Content : Met::Enter;
}

// What follows the node in its line or begins the next; Edge at the end of the block.
Met next_in_line(const Node& from) {
  for (const Node* node = &from;;) {
    while (!node->next_sibling()) {
      node = node->parent();
      if (!node || is_line_holder(*node)) return Met::Edge;
    }
    node = node->next_sibling();
    Met met = look_at(*node);
    while (met == Met::Enter && node->first_child()) met = look_at(*(node = node->first_child()));
    if (met != Met::Enter && met != Met::Pass) return met;
  }
}

Met previous_in_line(const Node& from) {
  for (const Node* node = &from;;) {
    while (!node->previous_sibling()) {
      node = node->parent();
      if (!node || is_line_holder(*node)) return Met::Edge;
    }
    node = node->previous_sibling();
    Met met = look_at(*node);
    while (met == Met::Enter && node->last_child()) met = look_at(*(node = node->last_child()));
    if (met != Met::Enter && met != Met::Pass) return met;
  }
}

bool consists_of(std::u16string_view text, std::u16string_view units) {
  return text.find_first_not_of(units) == std::u16string_view::npos;
}

bool is_break(const Node& node) { return node.is(Tag::Br); }

// Steps 8 and 10 of "collapsed whitespace node": whether the line ends at this node, goes on, or holds more.
LineGoes line_at(const Node& node) {
  if (is_block_node(node) || is_break(node)) return LineGoes::Ends;
  if (node.is_text() && !is_whitespace_node(node)) return LineGoes::Holds;
  return shows_by_itself(node) ? LineGoes::Holds : LineGoes::On;
}

const Node* line_holder_of(const Node& node) {
  const Node* holder = node.parent();
  while (holder && !is_block_node(*holder) && holder->parent()) holder = holder->parent();
  return holder;
}

// Walks on from the node until the line ends or holds something, and remembers it of all that it has passed.
template <class Next>
LineGoes walk_line(const Node& node, LineMemo::Side side, LineGoes at_the_end, Next next) {
  std::vector<const Node*> passed;
  LineGoes goes = at_the_end;
  for (const Node* at = &node; at; at = next(*at)) {
    if (at != &node) {
      goes = line_at(*at);
      if (goes != LineGoes::On) break;
    }
    if (const auto known = LineMemo::find(*at, side)) {
      goes = *known;
      break;
    }
    passed.push_back(at);
    goes = at_the_end;
  }
  LineMemo::note(passed, side, goes);
  return goes;
}

// A node that is visible whatever it holds; asked only of rendered ones.
bool is_visible_itself(const Node& node) {
  if (node.is_text()) return !is_collapsed_whitespace_node(node);
  if (is_break(node)) return !is_extraneous_line_break(node);
  return is_block_node(node) || shows_by_itself(node);
}

bool is_hidden(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && display_of(*element) == Display::None;
}

}  // namespace

// OURS: an item is one also in a menu that has its items in one line. What is written in one stays in it.
bool is_block_node(const Node& node) {
  if (const auto* element = dom::as<Element>(&node)) {
    const Display display = display_of(*element);
    return display == Display::Block || (display != Display::None && is_item(node));
  }
  return node.type() == NodeType::Document || node.type() == NodeType::DocumentFragment;
}

bool is_inline_node(const Node& node) { return !is_block_node(node); }

bool is_block_start_point(const Boundary& boundary) {
  if (!boundary.node->parent() && boundary.offset == 0) return true;
  if (boundary.offset == 0) return false;
  const Node* child = dom::child_at(*boundary.node, boundary.offset - 1);
  return child && (is_block_node(*child) || is_break(*child)) && is_visible(*child);
}

bool is_block_end_point(const Boundary& boundary) {
  if (!boundary.node->parent() && boundary.offset == dom::length_of(*boundary.node)) return true;
  const Node* child = dom::child_at(*boundary.node, boundary.offset);
  return child && is_block_node(*child) && is_visible(*child);
}

bool is_block_boundary_point(const Boundary& boundary) {
  return is_block_start_point(boundary) || is_block_end_point(boundary);
}

bool is_whitespace_node(const Node& node) {
  const auto* text = dom::as<dom::Text>(&node);
  if (!text) return false;
  if (text->data().empty()) return true;
  if (!consists_of(text->data(), u"\t\n\r ") || !text->parent_element()) return false;
  switch (white_space_of(*text->parent_element())) {
    case dom::style::WhiteSpace::Normal:
    case dom::style::WhiteSpace::NoWrap: return true;
    case dom::style::WhiteSpace::PreLine: return consists_of(text->data(), u"\t\r ");
    default: return false;
  }
}

bool is_collapsed_whitespace_node(const Node& node) {
  if (!is_whitespace_node(node)) return false;
  if (static_cast<const dom::Text&>(node).data().empty() || !node.parent()) return true;
  if (!is_rendered(*node.parent())) return true;
  // OURS: a line begins after a block. In the standard's order what is in the block comes between.
  if (const Node* before = node.previous_sibling();
      before && before->is_element() && is_block_node(*before) && is_rendered(*before))
    return true;
  const Node* holder = line_holder_of(node);
  const LineGoes before = walk_line(node, LineMemo::Side::Before, LineGoes::Holds, [&](const Node& at) {
    return &at == holder ? nullptr : dom::previous_in_order(at);
  });
  if (before == LineGoes::Ends) return true;
  // The end of the block ends the line, whatever comes after it.
  return walk_line(node, LineMemo::Side::After, LineGoes::Ends,
                   [&](const Node& at) { return dom::next_in_order(at, holder); }) == LineGoes::Ends;
}

// The standard describes both kinds of line break by what they do to the layout. These are the rules of
// lines after it: a break needs something after it to begin a line for, and something before it to end.
bool is_collapsed_line_break(const Node& node) { return is_break(node) && next_in_line(node) == Met::Edge; }

bool is_extraneous_line_break(const Node& node) {
  return is_collapsed_line_break(node) && previous_in_line(node) == Met::Content;
}

bool is_visible(const Node& node) { return is_rendered(node) && is_visible_where_rendered(node); }

namespace {

// Up to here looking through an element costs no more than remembering what came of it.
constexpr std::size_t short_look = 8;

// All elements that hold what is seen, up to the one that was asked about, show something.
void note_seen(const Node& seen, const Node& asked) {
  std::vector<const Node*> holders{&asked};
  for (const Node* node = &seen; node != &asked; node = node->parent())
    if (node->is_element()) holders.push_back(node);
  LineMemo::note_sight(holders, true);
}

// Whether anything below is seen.
bool shows_something(const Node& node) {
  std::vector<const Node*> nothing_yet;
  std::size_t walked = 0;
  for (const Node* current = node.first_child(); current; ++walked) {
    count_work();
    const bool hidden = is_hidden(*current);
    const auto known = hidden || !current->has_children() ? std::nullopt : LineMemo::find_sight(*current);
    if (known == true || (!hidden && is_visible_itself(*current))) {
      if (walked >= short_look) note_seen(*current, node);
      return true;
    }
    if (!hidden && current->has_children()) nothing_yet.push_back(current);
    current =
        hidden || known ? dom::next_skipping_children(*current, &node) : dom::next_in_order(*current, &node);
  }
  if (walked >= short_look) {
    nothing_yet.push_back(&node);
    LineMemo::note_sight(nothing_yet, false);
  }
  return false;
}

}  // namespace

bool is_visible_where_rendered(const Node& node) {
  if (is_hidden(node)) return false;
  if (is_visible_itself(node)) return true;
  if (!node.has_children()) return false;
  const auto known = LineMemo::find_sight(node);
  return known ? *known : shows_something(node);
}

bool is_invisible(const Node& node) { return !is_visible(node); }

// The standard's definition goes down child by child. All in all it says: what is to be seen in this
// inline element is line breaks that hold a line open, at least one of them, and nothing else.
bool is_collapsed_block_prop(const Node& node) {
  if (is_break(node)) return is_collapsed_line_break(node) && !is_extraneous_line_break(node);
  if (!node.is_element() || is_block_node(node) || !is_rendered(node) || shows_by_itself(node)) return false;
  bool found = false;
  for (const Node* current = node.first_child(); current;) {
    if (is_hidden(*current)) {
      current = dom::next_skipping_children(*current, &node);
      continue;
    }
    if (is_visible_itself(*current)) {
      if (!is_break(*current) || !is_collapsed_line_break(*current)) return false;
      found = true;
    }
    current = dom::next_in_order(*current, &node);
  }
  return found;
}

bool is_formattable(const Node& node) {
  if (!node.is_text() && !node.is(Tag::Img) && !is_break(node)) return false;
  return is_editable(node) && is_visible(node);
}

bool is_list(const Node& node) { return node.is(Tag::Ol) || node.is(Tag::Ul); }
bool is_list_of_any_kind(const Node& node) {
  return is_list(node) || node.is(Tag::Dir) || node.is(Tag::Menu);
}
bool holds_items(const Node& node) { return is_list_of_any_kind(node) || node.is(Tag::Dl); }
bool is_item(const Node& node) { return node.is(Tag::Li) || node.is(Tag::Dt) || node.is(Tag::Dd); }
bool is_table_part(const Node& node) {
  static const TagSet tags{Tag::Thead, Tag::Tbody, Tag::Tfoot, Tag::Tr, Tag::Th, Tag::Td};
  return tags.has(node);
}

bool is_non_list_single_line_container(const Node& node) {
  static const TagSet tags{Tag::Address, Tag::Div, Tag::H1,      Tag::H2, Tag::H3,  Tag::H4,
                           Tag::H5,      Tag::H6,  Tag::Listing, Tag::P,  Tag::Pre, Tag::Xmp};
  return tags.has(node);
}

bool is_single_line_container(const Node& node) {
  return is_non_list_single_line_container(node) || is_item(node);
}

bool is_name_of_formattable_block(Name name) {
  static const TagSet tags{Tag::Address, Tag::Dd, Tag::Div, Tag::Dt, Tag::H1, Tag::H2,
                           Tag::H3,      Tag::H4, Tag::H5,  Tag::H6, Tag::P,  Tag::Pre};
  return tags.has(name.tag());
}

}  // namespace tvx::editing
