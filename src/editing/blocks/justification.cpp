#include "tvx/editing/blocks/justification.h"

#include <algorithm>

#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;
using dom::style::ComputedValues;
using dom::style::Direction;
using dom::style::TextAlign;

namespace {

const std::u16string_view text_align = u"text-align";

bool sets_alignment(const Element& element) {
  return element.has_attribute(dom::names::align) || element.is(Tag::Center) ||
         (element.has_attribute(dom::names::style) && !dom::style::inline_value(element, text_align).empty());
}

// Step 3.
void unset_alignment(Element& element) {
  dom::remove_attribute(element, dom::names::align);
  if (!dom::style::inline_value(element, text_align).empty())
    dom::style::remove_inline_value(element, text_align);
  const bool needless = element.is(Tag::Div) || element.is(Tag::Span) || element.is(Tag::Center);
  if (needless && element.attributes().empty()) {
    remove_preserving_descendants(element);
  } else if (element.is(Tag::Center)) {
    set_tag_name(element, Name(Tag::Div));
  }
}

// A `div` that does nothing but align its content this way.
bool is_aligner(const Node& node, std::u16string_view alignment) {
  if (!node.is(Tag::Div)) return false;
  const auto& element = static_cast<const Element&>(node);
  const auto& attributes = element.attributes();
  return !attributes.empty() &&
         std::all_of(attributes.begin(), attributes.end(), [&](const dom::Attribute& attribute) {
           if (attribute.name == dom::names::align)
             return equals_ignoring_ascii_case(attribute.value, alignment);
           return attribute.name == dom::names::style && dom::style::inline_length(element) == 1 &&
                  dom::style::inline_value(element, text_align) == alignment;
         });
}

}  // namespace

std::u16string_view alignment_of(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  if (!element) element = node.parent_element();
  if (!element) return u"left";
  const ComputedValues& values = dom::style::computed_values(*element);
  const bool left_to_right = values.line_direction == Direction::LeftToRight;
  switch (values.line_align) {
    case TextAlign::Start: return left_to_right ? u"left" : u"right";
    case TextAlign::End: return left_to_right ? u"right" : u"left";
    case TextAlign::Left: return u"left";
    case TextAlign::Right: return u"right";
    case TextAlign::Center: return u"center";
    case TextAlign::Justify: return u"justify";
  }
  return u"left";
}

namespace {

using Extend = dom::Range (*)(dom::Range);

void justify(Editor& editor, Extend extend, std::u16string_view alignment) {
  NodeList elements;
  walk_contained(extend(editor.selection().range()), [&](Node& node) {
    const auto* element = dom::as<Element>(&node);
    if (element && sets_alignment(*element) && is_editable(node)) elements.emplace_back(node);
    return Visit::Children;
  });
  for (const Ref<Node>& element : elements) unset_alignment(static_cast<Element&>(*element));
  // Lines may be others now: a `div` that is gone has left a line break.
  const NodeList nodes = topmost_contained(extend(editor.selection().range()), [&](const Node& node) {
    return is_editable(node) && is_allowed_child(node, Name(Tag::Div)) && alignment_of(node) != alignment;
  });
  const auto make_aligner = [&] {
    Ref<Element> aligner = editor.document().create_element(Tag::Div);
    dom::style::set_inline_value(*aligner, text_align, alignment);
    return Ref<Node>(aligner);
  };
  for (std::size_t at = 0; at < nodes.size();) {
    const Ref<Node> aligner = wrap(
        take_siblings(nodes, at), [&](const Node& node) { return is_aligner(node, alignment); },
        make_aligner);
    // OURS: the standard leaves the `div` in a paragraph whose other lines it doesn't align, and the text
    // would not come back as that tree.
    if (aligner) fix_disallowed_ancestors(aligner, editor);
  }
}

}  // namespace

void justify_selection(Editor& editor, std::u16string_view alignment) {
  justify(editor, block_extend, alignment);
}

void justify_lines(Editor& editor, std::u16string_view alignment) { justify(editor, line_extend, alignment); }

namespace {

// How many of the leaves in a range are aligned that way, and of how many.
std::pair<std::size_t, std::size_t> count_aligned(const dom::Range& range, std::u16string_view alignment) {
  const NodeList leaves = visible_leaves(range);
  const auto aligned = std::count_if(leaves.begin(), leaves.end(),
                                     [&](const auto& leaf) { return alignment_of(*leaf) == alignment; });
  return {aligned, leaves.size()};
}

}  // namespace

bool is_alignment_mixed(Editor& editor, std::u16string_view alignment) {
  const std::optional<dom::Range> range = editor.active_range();
  if (!range) return false;
  const auto [aligned, all] = count_aligned(block_extend(*range), alignment);
  return aligned > 0 && aligned < all;
}

bool is_aligned(const dom::Range& range, std::u16string_view alignment) {
  const auto [aligned, all] = count_aligned(block_extend(range), alignment);
  return all > 0 && aligned == all;
}

bool are_lines_aligned(const dom::Range& range, std::u16string_view alignment) {
  const auto [aligned, all] = count_aligned(line_extend(range), alignment);
  return all > 0 && aligned == all;
}

bool is_aligned(Editor& editor, std::u16string_view alignment) {
  const std::optional<dom::Range> range = editor.active_range();
  return range && is_aligned(*range, alignment);
}

std::u16string alignment_of_selection(Editor& editor) {
  const std::optional<dom::Range> range = editor.active_range();
  if (!range) return {};
  const Ref<Node> leaf = first_visible_leaf(block_extend(*range));
  return std::u16string(leaf ? alignment_of(*leaf) : u"left");
}

}  // namespace tvx::editing
