#include <algorithm>
#include <utility>

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/browser/view/progress.h"
#include "tvx/dom/range.h"

/// What of the tree is still to be sent, and in which order.
namespace tvx::browser {
namespace {

using dom::Node;

// What comes before the wanted node with it: about a window's height, which it may stand at the end of.
constexpr std::size_t lead = 350;

Node* first_mirrored(Node* node) {
  while (node && !is_mirrored(*node)) node = node->next_sibling();
  return node;
}

Node* first_of(const Gap& gap) {
  return first_mirrored(gap.last ? gap.last->next_sibling() : gap.element->first_child());
}

bool shows_children(const Node& node) {
  const auto* element = dom::as<dom::Element>(&node);
  return !element || mirrors_children(*element);
}

/// The node before this one in tree order, of those that a view has.
Node* previous_shown(const Node& node) {
  Node* before = node.previous_sibling();
  if (!before) return node.parent();
  while (before->has_children() && shows_children(*before)) before = before->last_child();
  return before;
}

/// Where a gap stands among its element's children: [from, to).
std::pair<Offset, Offset> stretch(const Gap& gap) {
  return {gap.last ? dom::index_of(*gap.last) + 1 : 0,
          gap.end ? dom::index_of(*gap.end) : gap.element->child_count()};
}

}  // namespace

/// Children at the edges of gaps may have been moved since. Where all that stood between two gaps has gone,
/// they are one.
void Mirror::tidy_gaps() {
  for (Gap& gap : gaps_) {
    while (gap.last && is_mirrored(*gap.last) && !in_place(*gap.last))
      gap.last = gap.last->previous_sibling();
    while (gap.end && !(is_mirrored(*gap.end) && in_place(*gap.end))) gap.end = gap.end->next_sibling();
  }
  for (std::size_t i = 0; i < gaps_.size(); ++i) {
    const auto same = [&gap = gaps_[i]](const Gap& other) {
      return other.element == gap.element && other.last == gap.last && other.end == gap.end;
    };
    gaps_.erase(std::remove_if(gaps_.begin() + static_cast<std::ptrdiff_t>(i) + 1, gaps_.end(), same),
                gaps_.end());
  }
}

void Mirror::drop_gaps(const Node& element) {
  std::erase_if(gaps_, [&element](const Gap& gap) { return gap.element == &element; });
}

void Mirror::close_last_gap() {
  const dom::Ref<Node> element = gaps_.back().element;
  gaps_.pop_back();
  const auto is_its_own = [&element](const Gap& gap) { return gap.element == element; };
  if (std::ranges::none_of(gaps_, is_its_own)) entry(*element).flags &= ~Incomplete;
}

/// Whether an element's last children are still to be sent.
bool Mirror::is_open_ended(const Node& element) const {
  return has(element, Incomplete) && std::ranges::any_of(gaps_, [&element](const Gap& gap) {
           return gap.element == &element && !gap.end;
         });
}

bool Mirror::has_end() const {
  const Node* last = document_.get();
  while (last) {
    if (!knows(*last) || is_open_ended(*last)) return false;
    if (!shows_children(*last)) return true;
    const Node* child = last->last_child();
    while (child && !is_mirrored(*child)) child = child->previous_sibling();
    last = child;
  }
  return true;
}

bool Mirror::is_torn() const {
  return std::ranges::any_of(gaps_, [](const Gap& gap) { return static_cast<bool>(gap.end); });
}

/// Sends what gaps hold, the last one first, until `down_to` gaps are left or the budget is spent.
void Mirror::fill_gaps(std::size_t down_to) {
  while (gaps_.size() > down_to && !spent()) {
    Gap& gap = gaps_.back();
    Node* next = gap.last ? gap.last->next_sibling() : gap.element->first_child();
    if (!next || next == gap.end.get()) {
      close_last_gap();
      continue;
    }
    gap.last = next;
    if (gap.end) entry(*gap.element).changed = patch_;  // those after it move
    if (is_mirrored(*next)) place(*next, gap.end.get());
  }
}

// --- out of turn ---

/// Has the view know a node that isn't there yet, and what stands before it in the window. Sending goes on
/// from there to the end, and then to what has been left out.
void Mirror::lead_to(Node& wanted) {
  Node* start = &wanted;
  for (Node* above = wanted.parent(); above; above = above->parent())
    if (!shows_children(*above)) start = above;
  if (knows(*start)) return;
  for (std::size_t spent = weight_of(*start); spent < lead;) {
    Node* before = previous_shown(*start);
    if (!before || knows(*before) || has(*before, Touched) || !is_mirrored(*before)) break;
    start = before;
    spent += weight_of(*start);
  }
  std::vector<Node*> way;
  for (Node* node = start; node && !knows(*node); node = node->parent()) way.push_back(node);
  if (!way.back()->parent()) return;  // it stands in no tree
  std::size_t fronts = 0;
  for (auto node = way.rbegin(); node != way.rend(); ++node)
    if (has(**node, Touched) || !enter(**node, fronts)) return;
}

/// Sends a child that stands in a gap, which goes on after it. What is left out before it is filled last:
/// `fronts` counts such gaps.
bool Mirror::enter(Node& child, std::size_t& fronts) {
  const std::size_t at = gap_around(child);
  if (at == gaps_.size()) return false;
  const Gap gap = gaps_[at];
  const auto position = [this](std::size_t index) {
    return gaps_.begin() + static_cast<std::ptrdiff_t>(index);
  };
  gaps_.erase(position(at));
  if (at < fronts) --fronts;
  if (first_of(gap) != &child) gaps_.insert(position(fronts++), {gap.element, gap.last, child});
  gaps_.push_back({gap.element, child, gap.end});
  if (gap.end) entry(*gap.element).changed = patch_;
  place(child, gap.end.get());
  return true;
}

/// The number of the gap that a child stands in; that of all gaps if it stands in none.
std::size_t Mirror::gap_around(const Node& child) const {
  for (const Node* before = child.previous_sibling();; before = before->previous_sibling()) {
    if (before && is_mirrored(*before) && !in_place(*before)) continue;
    const auto found = std::ranges::find_if(
        gaps_, [&](const Gap& gap) { return gap.element == child.parent() && gap.last == before; });
    if (found != gaps_.end() || !before || is_mirrored(*before))
      return static_cast<std::size_t>(found - gaps_.begin());
  }
}

// --- positions ---

std::optional<Offset> Mirror::offset_in_view(const Node& parent, Offset offset) const {
  if (!has(parent, Incomplete)) return offset;
  Offset hidden = 0;
  for (const Gap& gap : gaps_) {
    if (gap.element != &parent) continue;
    const auto [from, to] = stretch(gap);
    if (offset > from && (offset < to || !gap.end) && to > from) return {};
    if (offset >= to) hidden += to - from;
  }
  return offset - hidden;
}

/// Beside a gap the view has one position and the document two: the one before it is meant.
Offset Mirror::offset_in_document(const Node& parent, Offset offset) const {
  if (!has(parent, Incomplete)) return offset;
  std::vector<std::pair<Offset, Offset>> stretches;
  for (const Gap& gap : gaps_)
    if (gap.element == &parent) stretches.push_back(stretch(gap));
  std::ranges::sort(stretches);
  for (const auto& [from, to] : stretches)
    if (offset > from) offset += to - from;
  return offset;
}

}  // namespace tvx::browser
