#include "tvx/headless/lines.h"

#include <algorithm>
#include <string_view>

namespace tvx::headless {

using browser::ViewMove;
using browser::ViewPlace;
using Operation = browser::PatchOperation;
using Node = ShadowTree::Node;

namespace {

bool is_block_name(std::u16string_view name) {
  static constexpr std::u16string_view names[] = {
      u"address", u"article", u"aside",    u"blockquote", u"body", u"center", u"dd",  u"dir", u"div",
      u"dl",      u"dt",      u"fieldset", u"footer",     u"form", u"h1",     u"h2",  u"h3",  u"h4",
      u"h5",      u"h6",      u"header",   u"hr",         u"li",   u"main",   u"nav", u"ol",  u"p",
      u"pre",     u"section", u"table",    u"td",         u"th",   u"tr",     u"ul"};
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool is_block(const Node& node) { return node.type == Operation::Type::Element && is_block_name(node.name); }

/// Tables and rows hold lines in cells alone, a rule none.
bool holds_no_line(const Node& node) {
  return node.name == u"hr" || node.name == u"table" || node.name == u"tr";
}

bool is_leaf_block(const Node& node) {
  return is_block(node) && !holds_no_line(node) &&
         std::none_of(node.children.begin(), node.children.end(),
                      [](const auto* child) { return is_block(*child); });
}

bool is_blank(const std::u16string& text) { return text.find_first_not_of(u" \t\r\n") == text.npos; }

const Node* around(const Node* node, bool (*fits)(const Node&)) {
  while (node && !fits(*node)) node = node->parent;
  return node;
}

bool is_cell(const Node& node) { return node.name == u"td" || node.name == u"th"; }
bool is_row(const Node& node) { return node.name == u"tr"; }

bool is_in(const Node* node, const Node* ancestor) {
  while (node && node != ancestor) node = node->parent;
  return node != nullptr;
}

std::size_t index_of(const Node& node) {
  const auto& all = node.parent->children;
  return static_cast<std::size_t>(std::find(all.begin(), all.end(), &node) - all.begin());
}

std::size_t length_of(const std::vector<const Node*>& texts) {
  std::size_t length = 0;
  for (const auto* text : texts) length += text->text.size();
  return length;
}

}  // namespace

Lines::Lines(const ShadowTree& tree) : tree_(tree) {
  std::vector<const Node*> open;
  const auto push = [&open](const Node& node) {
    open.insert(open.end(), node.children.rbegin(), node.children.rend());
  };
  push(tree.page());
  while (!open.empty()) {
    const Node* node = open.back();
    open.pop_back();
    push(*node);
    const bool is_text = node->type == Operation::Type::Text;
    if (!is_text && !is_leaf_block(*node)) continue;
    const Node* block = around(node, is_block);
    if (!block || (is_text && is_blank(node->text) && !is_leaf_block(*block))) continue;
    if (lines_.empty() || lines_.back().block != block) lines_.push_back({block, {}});
    if (is_text) lines_.back().texts.push_back(node);
  }
}

Lines::At Lines::line_of(const Node& block) const {
  return std::find_if(lines_.begin(), lines_.end(), [&](const Line& line) { return line.block == &block; });
}

Lines::At Lines::next(At line, bool up) const {
  if (!up) return line == lines_.end() ? line : line + 1;
  return line == lines_.begin() ? lines_.end() : line - 1;
}

/// From a position between blocks: the nearest line on that side.
Lines::At Lines::beside(const Node& holder, std::size_t offset, bool up) const {
  for (const Node* block = &holder; block && is_block(*block); block = block->parent) {
    const auto is_beyond = [&](const Line& line) {
      const Node* child = line.block;
      while (child && child->parent != block) child = child->parent;
      return child && (up ? index_of(*child) < offset : index_of(*child) >= offset);
    };
    const auto first = std::find_if(lines_.begin(), lines_.end(), is_beyond);
    const auto last = std::find_if(lines_.rbegin(), lines_.rend(), is_beyond);
    if (first != lines_.end()) return up ? last.base() - 1 : first;
    offset = index_of(*block) + (up ? 0 : 1);
  }
  return lines_.end();
}

/// The line after another one, or before it: in the cell below or above, where there is one.
Lines::At Lines::beyond(At line, bool up) const {
  const Node* cell = around(line->block, is_cell);
  At to = next(line, up);
  const Node* row = around(cell, is_row);
  if (cell && row && (to == lines_.end() || !is_in(to->block, cell)))
    while (to != lines_.end() && is_in(to->block, row)) to = next(to, up);
  if (to == lines_.end()) return to;
  const Node* other = around(to->block, is_row);
  if (!other || is_in(line->block, other)) return to;
  const bool same_table = row && other->parent == row->parent;
  const std::size_t wanted = same_table ? index_of(*cell) : 0;
  const Node* below = other->children[std::min(wanted, other->children.size() - 1)];
  while (!is_in(to->block, below) && next(to, up) != lines_.end() && is_in(next(to, up)->block, other))
    to = next(to, up);
  return to;
}

ViewPlace Lines::place_in(const Line& line, std::size_t column) {
  column = std::min(column, length_of(line.texts));
  for (const auto* text : line.texts) {
    if (column <= text->text.size()) return ViewPlace{text->id, static_cast<std::uint32_t>(column)};
    column -= text->text.size();
  }
  return ViewPlace{line.block->id, 0};
}

std::optional<ViewPlace> Lines::move(ViewMove move, ViewPlace from) const {
  const Node* node = tree_.find(from.node);
  const Node* block = around(node, is_block);
  if (!block) return {};
  const bool up = move == ViewMove::LineUp || move == ViewMove::PageUp;
  const bool down = move == ViewMove::LineDown || move == ViewMove::PageDown;
  auto line = line_of(*block);
  if (line == lines_.end() || (node == block && !is_leaf_block(*block))) {
    const At to = up || down ? beside(*block, from.offset, up) : lines_.end();
    return to == lines_.end() ? from : place_in(*to, 0);
  }
  std::size_t column = 0;
  for (const auto* text : line->texts) {
    if (text == node) {
      column += from.offset;
      break;
    }
    column += text->text.size();
  }
  switch (move) {
    case ViewMove::LineStart: column = 0; break;
    case ViewMove::LineEnd: column = length_of(line->texts); break;
    case ViewMove::Left: column -= column > 0; break;
    case ViewMove::Right: ++column; break;
    default:
      line = beyond(line, up);
      if (line == lines_.end()) return from;
  }
  return place_in(*line, column);
}

}  // namespace tvx::headless
