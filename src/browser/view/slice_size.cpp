#include "tvx/browser/view/slice_size.h"

#include <algorithm>

namespace tvx::browser {
namespace {

// Times are those of a busy machine: a node is never thought cheaper than this part of what it took in all.
constexpr double least_share = 1.0 / 8;

}  // namespace

void SliceSize::took(double milliseconds) {
  // The first slice had fonts and styles made: it says nothing about the ones to come.
  if (at_first_) {
    at_first_ = false;
    nodes_ = smallest;
    return;
  }
  const double time = std::max(milliseconds, 1.0);
  weigh_nodes(time);
  const double same_part = time - node_cost_ * static_cast<double>(nodes_);
  const auto fitting =
      static_cast<std::size_t>(std::max(aim_milliseconds - same_part, same_part) / node_cost_);
  last_nodes_ = nodes_;
  last_time_ = time;
  nodes_ = std::clamp(std::clamp(fitting, nodes_ / 2, nodes_ * 2), smallest, largest);
}

// Two slices of different sizes tell; until there are two, all is thought to be the nodes'.
void SliceSize::weigh_nodes(double time) {
  const double nodes = static_cast<double>(nodes_), last = static_cast<double>(last_nodes_);
  const double rate = time / nodes;
  double cost = node_cost_ == 0 ? rate : node_cost_;
  if (last_nodes_ != 0 && std::max(nodes, last) >= 1.25 * std::min(nodes, last))
    cost = (time - last_time_) / (nodes - last);
  node_cost_ = std::clamp(cost, rate * least_share, rate);
}

}  // namespace tvx::browser
