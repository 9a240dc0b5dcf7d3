#include "tvx/editing/clipboard/tidy_content.h"

#include <set>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/elements_in.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// Nothing is seen in it: white space, hard spaces too, breaks and empty elements.
bool shows_nothing(const Node& element) {
  static const TagSet looks{Tag::Span, Tag::Font, Tag::B, Tag::I, Tag::U, Tag::Strong, Tag::Em, Tag::Br};
  for (const Node* node = element.first_child(); node; node = dom::next_in_order(*node, &element)) {
    if (const auto* text = dom::as<dom::Text>(node)) {
      for (char16_t c : text->data())
        if (!is_ascii_space(c) && c != u'\u00A0' && c != u'\u200B' && c != u'\uFEFF') return false;
    } else if (node->is_element() && !looks.has(*node)) {
      return false;
    }
  }
  return true;
}

void unwrap(Element& element) {
  const Ref<Element> held(element);
  while (Node* child = element.first_child()) dom::insert(*element.parent(), dom::remove(*child), &element);
  dom::remove(*held);
}

/// The layout of the source: a line of it is as good as a blank.
std::u16string joined_lines(std::u16string_view text) {
  std::u16string joined;
  for (char16_t c : text) {
    if (!is_ascii_space(c))
      joined += c;
    else if (joined.empty() || joined.back() != u' ')
      joined += u' ';
  }
  return joined;
}

/// What begins and ends a line.
bool is_line_holder(const Node& node) {
  static const TagSet rows{Tag::Table, Tag::Tbody, Tag::Thead, Tag::Tfoot, Tag::Tr, Tag::Colgroup};
  return !node.is_element() || rows.has(node) || is_block_piece(node);
}

/// White space that a style keeps.
bool is_style_with_lines(const Node& node) {
  for (const Node* around = node.parent(); around; around = around->parent()) {
    const auto* element = dom::as<Element>(around);
    if (element && contains(element->attribute_or_empty(dom::names::style), u"white-space")) return true;
  }
  return false;
}

bool holds_only_blocks(const Element& element) {
  bool any = false;
  for (const Node* child = element.first_child(); child; child = child->next_sibling()) {
    if (is_filling(*child)) continue;
    if (!is_block_piece(*child)) return false;
    any = true;
  }
  return any;
}

const Node* seen_before(const Node& node) {
  const Node* before = node.previous_sibling();
  while (before && is_filling(*before)) before = before->previous_sibling();
  return before;
}
const Node* seen_after(const Node& node) {
  const Node* after = node.next_sibling();
  while (after && is_filling(*after)) after = after->next_sibling();
  return after;
}

/// A break that stands where a line of its own would be, between blocks.
bool is_between_blocks(const Element& line_break) {
  const Node* before = seen_before(line_break);
  const Node* after = seen_after(line_break);
  if (!before && !after) return false;
  return (!before || is_block_piece(*before)) && (!after || is_block_piece(*after) || after->is(Tag::Br));
}

/// The only paragraph of a cell is its line.
void unwrap_line_of_cell(Element& cell) {
  Node* only = cell.first_child();
  while (only && is_filling(*only)) only = only->next_sibling();
  if (!only || !only->is(Tag::P) || seen_after(*only)) return;
  auto& paragraph = static_cast<Element&>(*only);
  for (const dom::Attribute& attribute : paragraph.attributes()) {
    if (attribute.name == dom::names::align) continue;
    const bool aligns = attribute.name == dom::names::style && attribute.value.starts_with(u"text-align:") &&
                        attribute.value.find(u';') == std::u16string::npos;
    if (!aligns) return;
  }
  for (const dom::Attribute& attribute : paragraph.attributes())
    if (!cell.has_attribute(attribute.name)) dom::set_attribute(cell, attribute.name, attribute.value);
  unwrap(paragraph);
}

}  // namespace

void drop_empty_paragraphs(Node& content) {
  static const TagSet paragraphs{Tag::P, Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6};
  const auto empty = elements_in(
      content, [&](const Element& element) { return paragraphs.has(element) && shows_nothing(element); });
  for (const Ref<Element>& paragraph : empty) {
    // The only one in a cell or an item is its line.
    if (seen_before(*paragraph) || seen_after(*paragraph)) dom::remove(*paragraph);
  }
  const auto breaks = elements_in(
      content, [](const Element& element) { return element.is(Tag::Br) && is_between_blocks(element); });
  for (const Ref<Element>& line_break : breaks) dom::remove(*line_break);
}

/// What elements of the content are told by: a link to a place in it, a label, a cell's headers.
static std::set<std::u16string, std::less<>> used_names(const Node& content) {
  std::set<std::u16string, std::less<>> used;
  for (const Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content)) {
    const auto* element = dom::as<Element>(node);
    if (!element) continue;
    const std::u16string_view address = element->attribute_or_empty(dom::names::href);
    if (address.starts_with(u'#')) used.emplace(address.substr(1));
    for (const std::u16string_view name : {u"for", u"headers", u"usemap", u"list", u"form"})
      for (std::u16string_view word : split_on_space(element->attribute_or_empty(dom::Name(name))))
        used.emplace(word.starts_with(u'#') ? word.substr(1) : word);
  }
  return used;
}

void drop_unused_names(Node& content) {
  const auto used = used_names(content);
  const auto named = elements_in(content, [&](const Element& element) {
    const std::u16string_view id = element.attribute_or_empty(dom::names::id);
    return !id.empty() && !used.contains(id);
  });
  for (const Ref<Element>& element : named) dom::remove_attribute(*element, dom::names::id);
  // Those that its user made have names without these.
  const auto hidden = elements_in(content, [&](const Element& element) {
    const std::u16string_view name = element.attribute_or_empty(dom::names::name);
    return element.is(Tag::A) && !element.has_attribute(dom::names::href) && !used.contains(name) &&
           (name.starts_with(u'_') || name.starts_with(u"OLE_LINK"));
  });
  for (const Ref<Element>& anchor : hidden) unwrap(*anchor);
}

static void settle_white_space(Node& content) {
  std::vector<Ref<dom::Text>> texts;
  for (Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content))
    if (auto* text = dom::as<dom::Text>(node)) texts.emplace_back(text);
  for (const Ref<dom::Text>& text : texts) {
    if (dom::enclosing(*text, Tag::Pre) || dom::enclosing(*text, Tag::Textarea)) continue;
    if (is_style_with_lines(*text)) continue;
    std::u16string data = joined_lines(text->data());
    const Node* before = text->previous_sibling();
    const Node* after = text->next_sibling();
    const Node* parent = text->parent();
    const bool starts = before ? before->is(Tag::Br) || is_block_piece(*before) : is_line_holder(*parent);
    const bool ends = after ? is_block_piece(*after) : is_line_holder(*parent);
    const bool blank = trimmed(data).empty();
    if (starts && ends && blank) {
      dom::remove(*text);
      continue;
    }
    if (starts && data.starts_with(u' ')) data.erase(0, 1);
    if (ends && data.ends_with(u' ')) data.pop_back();
    if (data.empty())
      dom::remove(*text);
    else if (data != text->data())
      dom::replace_data(*text, 0, text->length(), data);
  }
}

void tidy_content(Node& content) {
  static const TagSet says_nothing_alone{Tag::Span, Tag::Font};
  static const TagSet empty_looks{Tag::Span, Tag::Font,   Tag::B,      Tag::I,  Tag::U,
                                  Tag::S,    Tag::Strong, Tag::Strike, Tag::Em, Tag::Sub,
                                  Tag::Sup,  Tag::Big,    Tag::Small};
  const auto spans = elements_in(content, [](const Element& element) {
    return says_nothing_alone.has(element) && element.attributes().empty();
  });
  for (const Ref<Element>& span : spans) unwrap(*span);
  auto looks = elements_in(content, [](const Element& element) { return empty_looks.has(element); });
  for (std::size_t i = looks.size(); i-- > 0;)
    if (!looks[i]->first_child()) dom::remove(*looks[i]);
  drop_empty_paragraphs(content);
  const auto boxes = elements_in(content, [](const Element& element) {
    return element.is(Tag::Div) && element.attributes().empty() && holds_only_blocks(element);
  });
  for (const Ref<Element>& box : boxes) unwrap(*box);
  const auto cells =
      elements_in(content, [](const Element& element) { return element.is(Tag::Td) || element.is(Tag::Th); });
  for (const Ref<Element>& cell : cells) unwrap_line_of_cell(*cell);
  settle_white_space(content);
}

}  // namespace tvx::editing
