#include <algorithm>

#include "tvx/base/work_count.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/font_sizes.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/inline/value_forcer.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;
namespace names = dom::names;

namespace {

bool looks(const Node& node, InlineCommand command, const InlineValue& value) {
  return has_effective_value(node, command, value);
}

}  // namespace

void reorder_modifiable_descendants(const Ref<Node>& node, InlineCommand command, const InlineValue& value) {
  if (!node || !node->first_child()) return;
  const auto says_value = [&](const Node& candidate) {
    return is_simple_modifiable_element(candidate) &&
           equivalent_values(command,
                             specified_command_value(static_cast<const Element&>(candidate), command), value);
  };
  Ref<Node> candidate = node;
  while (is_modifiable_element(*candidate) && candidate->first_child() &&
         candidate->first_child() == candidate->last_child() &&
         is_modifiable_element(*candidate->first_child()) && !says_value(*candidate)) {
    candidate = candidate->first_child();
  }
  if (candidate == node || !says_value(*candidate) || !looks(*candidate, command, value)) return;
  while (Node* child = candidate->first_child()) {
    move_preserving_ranges(child, *candidate->parent(), candidate.get());
  }
  dom::insert(*node->parent(), candidate, node->next_sibling());
  move_preserving_ranges(node, *candidate, nullptr);
}

// The standard calls itself for children, always as the last thing it does: a list does as well.
void ValueForcer::force(const Ref<Node>& node) {
  NodeList waiting = force_one(node);
  std::reverse(waiting.begin(), waiting.end());
  while (!waiting.empty()) {
    const Ref<Node> next = std::move(waiting.back());
    waiting.pop_back();
    const NodeList children = force_one(next);
    waiting.insert(waiting.end(), children.rbegin(), children.rend());
  }
}

// Returns the children that have to be forced instead. The numbers are the standard's steps.
NodeList ValueForcer::force_one(const Ref<Node>& node) {
  if (!node->parent() || !value_) return {};
  const bool wrappable = is_allowed_child(*node, Name(Tag::Span));
  if (wrappable) join_neighbour(node);  // 4
  if (!node->parent()) return {};       // a line break that counts no more went in the joining
  if (!is_seen(*node) || looks_right(*node)) return {};  // 5, 6
  if (!wrappable) return children_to_force(*node);       // 7
  const Ref<Element> wrapper = make_wrapper(*node);      // 9 to 15
  dom::insert(*node->parent(), wrapper, node.get());     // 16
  style(*wrapper);                                       // 17 to 19
  move_preserving_ranges(node, *wrapper, nullptr);       // 20
  if (!node->is_element() || looks_right(*node)) return {};
  // 21: the node insists on its own style, so wrapping it was no use.
  move_preserving_ranges(node, *wrapper->parent(), wrapper.get());
  dom::remove(*wrapper);
  return children_to_force(*node);
}

bool ValueForcer::looks_right(const Node& node) const { return looks(node, command_, value_); }

bool ValueForcer::is_seen(const Node& node) {
  if (node.parent() != parent_.get()) {
    parent_ = node.parent();
    rendered_ = is_rendered(*node.parent());
  }
  return rendered_ && is_visible_where_rendered(node);
}

// A simple modifiable element that says the value, and has it.
bool ValueForcer::is_bearer(const Node& node) const {
  return is_simple_modifiable_element(node) &&
         equivalent_values(command_, specified_command_value(static_cast<const Element&>(node), command_),
                           value_) &&
         looks_right(node);
}

void ValueForcer::join_neighbour(const Ref<Node>& node) {
  reorder_modifiable_descendants(node->previous_sibling(), command_, value_);
  reorder_modifiable_descendants(node->next_sibling(), command_, value_);
  if (join_plainly(node)) return;
  // What nobody sees is worth no wrapping, so don't look for a neighbour over all the others that nobody
  // sees.
  if (!node->is(Tag::Br) && !is_seen(*node)) return;
  if (has_bearer_beside(*node)) wrap({node}, [this](const Node& sibling) { return is_bearer(sibling); });
}

bool ValueForcer::joins(const Node* node) const { return node && is_bearer(*node) && is_editable(*node); }

namespace {

// No line break that might have lost its effect, and no white space after one.
bool ends_with_text(const Node& node) {
  const Node* last = dom::last_within(node);
  return last->is_text() && !is_whitespace_node(*last);
}

}  // namespace

// What wrap() does in the commonest case, at a quarter of its cost: a piece of a line with one neighbour to
// join, and nothing that would come along or be joined as well.
bool ValueForcer::join_plainly(const Ref<Node>& node) {
  Node *before = node->previous_sibling(), *behind = node->next_sibling();
  const bool joins_before = joins(before), joins_behind = joins(behind);
  if (joins_before == joins_behind || !is_seen(*node)) return false;
  if (!is_inline_node(*node) || !is_inline_node(joins_before ? *before : *behind)) return false;
  if (joins_before) {
    if (!ends_with_text(*node) || (behind && (behind->is(Tag::Br) || !is_seen(*behind)))) return false;
    move_preserving_ranges(node, *before, nullptr);
    return true;
  }
  if (!ends_with_text(*behind) || (before && !is_seen(*before)) || joins(behind->next_sibling()))
    return false;
  move_preserving_ranges(node, *behind, behind->first_child());
  return true;
}

// Whether wrap() could find a neighbour to join: looking costs much less than wrapping in vain. Of siblings
// that nobody sees, one that has found none says so for the next: that one would look through the same nodes
// again.
bool ValueForcer::has_bearer_beside(const Node& node) {
  const std::uint64_t version = editor_.document().version();
  const bool none_before = next_without_ == &node && version_ == version;
  for (const Node* before = node.previous_sibling(); before && !none_before;
       before = before->previous_sibling()) {
    count_work();
    if (joins(before)) return true;
    if (is_seen(*before)) break;
  }
  const bool unseen = !is_seen(node);
  const Node* behind = node.next_sibling();
  if (behind && behind->is(Tag::Br) && !node.is(Tag::Br)) {
    behind = behind->next_sibling();
  } else if (none_before && unseen) {
    behind = nullptr;
  }
  for (; behind; behind = behind->next_sibling()) {
    count_work();
    if (joins(behind)) return true;
    if (is_seen(*behind)) break;
  }
  // The last sibling, a text in a style element for instance, has none to say it for.
  if (node.next_sibling() || none_before) {
    next_without_ = unseen && !joins(&node) ? node.next_sibling() : nullptr;
    version_ = version;
  }
  return false;
}

NodeList ValueForcer::children_to_force(const Node& node) const {
  NodeList children;
  for (Node* child = node.first_child(); child; child = child->next_sibling()) {
    if (const auto* element = dom::as<Element>(child)) {
      const InlineValue own = specified_command_value(*element, command_);
      if (own && !equivalent_values(command_, own, value_)) continue;
    }
    children.emplace_back(child);
  }
  return children;
}

Ref<Element> ValueForcer::make(Tag tag) const { return editor_.document().create_element(tag); }
Ref<Element> ValueForcer::make_font(Name attribute, std::u16string_view text) const {
  Ref<Element> font = make(Tag::Font);
  dom::set_attribute(*font, attribute, text);
  return font;
}

Ref<Element> ValueForcer::make_wrapper(Node& node) const {
  if (!editor_.style_with_css()) {
    if (Ref<Element> wrapper = make_tag()) return wrapper;
  }
  switch (command_) {
    case InlineCommand::CreateLink: return make_link(node);
    case InlineCommand::Subscript:
    case InlineCommand::Superscript:
      if (*value_ == u"subscript") return make(Tag::Sub);
      if (*value_ == u"superscript") return make(Tag::Sup);
      break;
    case InlineCommand::FontSize: {
      // CSS has no word for the largest size, so that one is an element in either mode.
      const auto size = font_size_of_keyword(*value_);
      if (size && (!editor_.style_with_css() || *size == 7)) return make_font(names::size, to_text(*size));
      break;
    }
    default: break;
  }
  return make(Tag::Span);
}

// Step 10: tag mode.
Ref<Element> ValueForcer::make_tag() const {
  switch (command_) {
    case InlineCommand::Bold:
      // COMPAT: a weight of 700 is the same boldness under another name.
      return equivalent_values(command_, value_, u"bold") ? make(Tag::B) : nullptr;
    case InlineCommand::Italic: return *value_ == u"italic" ? make(Tag::I) : nullptr;
    case InlineCommand::Strikethrough: return *value_ == u"line-through" ? make(Tag::S) : nullptr;
    case InlineCommand::Underline: return *value_ == u"underline" ? make(Tag::U) : nullptr;
    case InlineCommand::FontName: return make_font(names::face, *value_);
    case InlineCommand::ForeColor: {
      const auto colour = dom::style::parse_color(*value_);
      if (!colour || colour->alpha != 1) return nullptr;
      return make_font(names::color, dom::style::to_hex(*colour));
    }
    default: return nullptr;
  }
}

// Links within links can't be written as HTML: whatever link is left above becomes a span.
Ref<Element> ValueForcer::make_link(Node& node) const {
  Ref<Element> link = make(Tag::A);
  dom::set_attribute(*link, names::href, *value_);
  for (Node* ancestor = node.parent(); ancestor; ancestor = ancestor->parent()) {
    if (!ancestor->is(Tag::A)) continue;
    if (is_editable(*ancestor)) {
      ancestor = set_tag_name(static_cast<Element&>(*ancestor), Name(Tag::Span)).get();
    }
  }
  return link;
}

// COMPAT: engines write a colour resolved, "rgb(255, 248, 220)", into the style that a command makes.
std::u16string inline_value(std::u16string_view property, const std::u16string& value) {
  if (!property.ends_with(u"color")) return value;
  const auto colour = dom::style::parse_color(value);
  return colour ? dom::style::to_text(*colour) : value;
}

void ValueForcer::style(Element& wrapper) const {
  const std::u16string_view property = css_property_of(command_);
  if (!property.empty()) {
    if (!looks(wrapper, command_, value_))
      dom::style::set_inline_value(wrapper, property, inline_value(property, *value_));
  } else if (command_ == InlineCommand::Strikethrough || command_ == InlineCommand::Underline) {
    if (!looks(wrapper, command_, value_)) dom::style::set_inline_value(wrapper, u"text-decoration", *value_);
  }
}

void force_value(const Ref<Node>& node, InlineCommand command, const InlineValue& value, Editor& editor) {
  if (value) ValueForcer(command, value, editor).force(node);
}

}  // namespace tvx::editing
