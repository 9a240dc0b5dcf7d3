#include "tvx/editing/blocks/format_block.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <vector>

#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/blocks/lists.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/known_ancestors.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/tree/rising.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_formattable_block(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && element->is_html() && is_name_of_formattable_block(element->name());
}

bool holds_blocks(const Node& node) {
  for (const Node* below = node.first_child(); below; below = dom::next_in_order(*below, &node)) {
    if (is_prohibited_paragraph_child(*below)) return true;
  }
  return false;
}

// OURS: what isn't displayed is left alone, for the user hasn't selected it and doesn't see what comes of it.
bool is_line(const Node& node) {
  return is_editable(node) && is_rendered(node) &&
         (is_non_list_single_line_container(node) || is_allowed_child(node, Name(Tag::P)) ||
          node.is(Tag::Dd) || node.is(Tag::Dt)) &&
         !holds_blocks(node);
}

// Step 8: out of blocks that hold but a part of what is formatted. All that is between a node and its editing
// host can be edited and has the same host.
void leave_blocks(const Ref<Node>& node, KnownAncestors& known) {
  const auto stands_in_block = [&] {
    const Node* const host = editing_host_of(*node);
    return host && known.any(node->parent(), host, [](const Node& ancestor) {
      return is_formattable_block(ancestor) && !holds_blocks(ancestor);
    });
  };
  split_parents_while({node}, stands_in_block);
}

/// Steps 10: takes lines from the list and gives them their new block.
class BlockFormatter {
 public:
  BlockFormatter(Editor& editor, Name name, NodeList lines)
      : editor_(editor), name_(name), lines_(std::move(lines)) {}

  void run() {
    while (at_ < lines_.size()) {
      const NodeList content =
          is_single_line_container(*lines_[at_]) ? unwrapped(lines_[at_++]) : next_lines();
      if (content.empty()) continue;
      const Ref<Node> block =
          wrap(content, criteria(), [this] { return Ref<Node>(editor_.document().create_element(name_)); });
      if (block) fix_disallowed_ancestors(block, editor_);
    }
  }

 private:
  NodeList unwrapped(const Ref<Node>& container) {
    NodeList children = children_of(*container);
    const RecordedValues values = record_values(children);
    remove_preserving_descendants(container);
    restore_values(values, editor_);
    return children;
  }

  NodeList next_lines() {
    NodeList nodes{lines_[at_++]};
    while (at_ < lines_.size() && lines_[at_].get() == nodes.back()->next_sibling() &&
           !is_single_line_container(*lines_[at_]) && !nodes.back()->is(Tag::Br)) {
      nodes.push_back(lines_[at_++]);
    }
    return nodes;
  }

  // Paragraphs hold one line each, headings and the like as many as are formatted at once.
  NodeCriteria criteria() const {
    if (name_ == Name(Tag::Div) || name_ == Name(Tag::P)) return {};
    return [this](const Node& node) {
      return is_html_element_of(node, name_) && static_cast<const Element&>(node).attributes().empty();
    };
  }

  Editor& editor_;
  Name name_;
  NodeList lines_;
  std::size_t at_ = 0;
};

}  // namespace

namespace {

/// White space that nobody sees.
bool is_layout(const Node& node) { return is_whitespace_node(node) && is_invisible(node); }

/// What there is of it beside lines.
NodeList layout_beside(const NodeList& lines) {
  NodeList layout;
  for (const Ref<Node>& line : lines)
    for (Node* beside : {line->previous_sibling(), line->next_sibling()})
      if (beside && is_layout(*beside)) layout.emplace_back(beside);
  return layout;
}

// OURS: in preformatted text it would be seen, as a line of its own beside the break between two lines.
void drop_before_breaks(const NodeList& layout) {
  for (const Ref<Node>& space : layout) {
    const Node* next = space->next_sibling();
    if (space->parent() && space->parent()->is(Tag::Pre) && next && next->is(Tag::Br)) dom::remove(*space);
  }
}

bool format_range(Editor& editor, const dom::Range& range, std::u16string_view value) {
  if (value.size() >= 2 && value.front() == u'<' && value.back() == u'>')
    value = value.substr(1, value.size() - 2);
  const Name name{std::u16string_view(ascii_lower(value))};
  if (!is_name_of_formattable_block(name)) return false;
  NodeList lines = topmost_contained(range, is_line);
  std::erase_if(lines, [](const Ref<Node>& line) { return is_layout(*line); });
  const RecordedValues values = record_values(lines);
  KnownAncestors known;
  for (const Ref<Node>& line : lines) leave_blocks(line, known);
  restore_values(values, editor);
  const NodeList layout = name == Name(Tag::Pre) ? layout_beside(lines) : NodeList();
  BlockFormatter(editor, name, std::move(lines)).run();
  drop_before_breaks(layout);
  return true;
}

}  // namespace

bool format_block(Editor& editor, std::u16string_view value) {
  return format_range(editor, block_extend(editor.selection().range()), value);
}

bool format_lines(Editor& editor, std::u16string_view value) {
  return format_range(editor, line_extend(editor.selection().range()), value);
}

namespace {

/// Finds the formats of leaves, one after the other: nobody climbs where another has climbed, and a block is
/// looked through once. Only while the tree stays as it is.
class FormatFinder {
 public:
  /// The name of the block around a leaf; empty where there is none.
  std::u16string_view format_of(const Node& leaf) {
    std::vector<const Node*> climbed;
    const Node* node = &leaf;
    std::optional<std::u16string_view> format;
    for (;; node = node->parent()) {
      if (const auto known = formats_.find(node); known != formats_.end()) format = known->second;
      if (format || is_formattable_block(*node) || !node->parent() || !is_editable(*node->parent())) break;
      climbed.push_back(node);
    }
    if (!format) format = name_of(*node);
    climbed.push_back(node);
    for (const Node* passed : climbed) formats_.emplace(passed, *format);
    return *format;
  }

 private:
  std::u16string_view name_of(const Node& block) {
    if (!is_formattable_block(block) || !is_editable(block) || holds_blocks(block)) return {};
    return static_cast<const Element&>(block).name().text();
  }

  std::unordered_map<const Node*, std::u16string_view> formats_;
};

/// What all that is seen in a range has; nothing where that differs.
std::optional<std::u16string_view> common_format(const dom::Range& range) {
  const NodeList leaves = visible_leaves(range);
  FormatFinder finder;
  const std::u16string_view first =
      leaves.empty() ? std::u16string_view() : finder.format_of(*leaves.front());
  const bool differs = std::any_of(leaves.begin(), leaves.end(),
                                   [&](const Ref<Node>& leaf) { return finder.format_of(*leaf) != first; });
  return differs ? std::nullopt : std::optional(first);
}

}  // namespace

bool is_block_format_mixed(Editor& editor) {
  const std::optional<dom::Range> range = editor.active_range();
  return range && !common_format(block_extend(*range));
}

std::u16string block_format(Editor& editor) {
  const std::optional<dom::Range> range = editor.active_range();
  if (!range) return {};
  const Ref<Node> leaf = first_visible_leaf(block_extend(*range));
  return std::u16string(leaf ? FormatFinder().format_of(*leaf) : std::u16string_view());
}

std::optional<std::u16string> format_of_lines(Editor& editor) {
  const std::optional<dom::Range> range = editor.active_range();
  if (!range) return u"";
  const LineMemo memo;
  const std::optional<std::u16string_view> format = common_format(line_extend(*range));
  return format ? std::optional<std::u16string>(*format) : std::nullopt;
}

}  // namespace tvx::editing
