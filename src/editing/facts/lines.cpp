#include "tvx/editing/facts/lines.h"

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Tag;

bool is_text_block(const Node& node) {
  static const TagSet tags{Tag::P,       Tag::H1,      Tag::H2,         Tag::H3,  Tag::H4,    Tag::H5,
                           Tag::H6,      Tag::Pre,     Tag::Li,         Tag::Dd,  Tag::Dt,    Tag::Address,
                           Tag::Listing, Tag::Summary, Tag::Figcaption, Tag::Div, Tag::Center};
  if (!tags.has(node)) return false;
  static const TagSet perhaps{Tag::Div, Tag::Center, Tag::Figcaption, Tag::Summary, Tag::Address};
  if (!perhaps.has(node)) return true;
  // A division of lines, or a line itself.
  for (const Node* child = node.first_child(); child; child = child->next_sibling()) {
    const auto* element = dom::as<Element>(child);
    if (element && is_prohibited_paragraph_child_name(element->name())) return false;
  }
  return true;
}

bool is_look(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  static const TagSet things{Tag::Img,    Tag::Br,    Tag::Input, Tag::Button, Tag::Select,  Tag::Textarea,
                             Tag::Object, Tag::Embed, Tag::Video, Tag::Audio,  Tag::Canvas,  Tag::Iframe,
                             Tag::Map,    Tag::Hr,    Tag::Wbr,   Tag::Label,  Tag::Meter,   Tag::Progress,
                             Tag::Body,   Tag::Html,  Tag::Main,  Tag::Option, Tag::Optgroup};
  return element && element->is_html() && !things.has(node) && !is_text_block(node) &&
         !is_prohibited_paragraph_child_name(element->name()) && !is_editing_host(node);
}

Element* block_around(Boundary place) {
  for (Node* node = place.node; node; node = node->parent())
    if (node->is_element() && (is_block_node(*node) || is_editing_host(*node)))
      return static_cast<Element*>(node);
  return nullptr;
}

bool is_empty_line(const Node& block) {
  static const TagSet things{Tag::Img,    Tag::Input, Tag::Button, Tag::Select, Tag::Textarea,
                             Tag::Object, Tag::Embed, Tag::Iframe, Tag::Video,  Tag::Audio,
                             Tag::Canvas, Tag::Hr,    Tag::Table,  Tag::Li};
  int breaks = 0;
  for (const Node* node = block.first_child(); node; node = dom::next_in_order(*node, &block)) {
    if (const auto* text = dom::as<dom::Text>(node)) {
      if (!is_whitespace_node(*text)) return false;
    } else if (node->is(Tag::Br)) {
      if (++breaks > 1) return false;
    } else if (things.has(*node) || (node->is_element() && !static_cast<const Element*>(node)->is_html())) {
      return false;
    }
  }
  return true;
}

bool is_block_piece(const Node& node) {
  for (const Node* at = &node; at; at = dom::next_in_order(*at, &node)) {
    const auto* element = dom::as<Element>(at);
    if (element && element->is_html() && is_prohibited_paragraph_child_name(element->name())) return true;
  }
  return false;
}

bool is_filling(const Node& node) {
  if (node.type() == dom::NodeType::Comment) return true;
  const auto* text = dom::as<dom::Text>(&node);
  return text && trimmed(text->data()).empty();
}

bool is_island(const Node& node) {
  return node.is_element() && node.parent() && !is_editable(node) && !is_editing_host(node) &&
         (is_editable(*node.parent()) || is_editing_host(*node.parent()));
}

}  // namespace tvx::editing
