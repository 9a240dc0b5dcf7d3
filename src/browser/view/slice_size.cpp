#include "tvx/browser/view/slice_size.h"

#include <algorithm>
#include <utility>

namespace tvx::browser {
namespace {

// What a slice before this one still weighs. Of the last few alone it can't be told what those nodes cost
// that are there already: their number hardly differs from one to the next.
constexpr double fading = 0.995;
// A node is never thought cheaper than this part of what it took in all.
constexpr double least_share = 1.0 / 8;
// Of the errors that there are if what is there costs nothing.
constexpr double most_error = 0.75;
// From one slice to the next: a machine that does other work for a moment says little.
constexpr double most_growth = 1.5;

}  // namespace

void SliceSize::took(double milliseconds) {
  // The first slice had fonts and styles made: it says nothing about the ones to come.
  if (std::exchange(at_first_, false)) {
    there_ = first;
    nodes_ = smallest;
    return;
  }
  weigh(std::max(milliseconds, 1.0));
  there_ += nodes_;
  const auto [node, node_there] = costs();
  const double same_part = node_there * static_cast<double>(there_);
  const double fitting = std::max(aim_milliseconds - same_part, same_part) / node;
  const double now = static_cast<double>(nodes_);
  const double next = std::clamp(fitting, now / 2, now * most_growth);
  nodes_ = std::clamp(static_cast<std::size_t>(next), smallest, largest);
}

// By how much an error counts in relation to the time: most errors are another program's, and make it longer.
void SliceSize::weigh(double time) {
  const double nodes = static_cast<double>(nodes_), there = static_cast<double>(there_);
  const double weight = 1 / (time * time);
  const auto add = [weight](double& sum, double value) { sum = fading * sum + weight * value; };
  add(sums_.nodes_nodes, nodes * nodes);
  add(sums_.nodes_there, nodes * there);
  add(sums_.there_there, there * there);
  add(sums_.nodes_time, nodes * time);
  add(sums_.there_time, there * time);
  add(sums_.time_time, time * time);
}

// Both by least squares. All is thought to be the new nodes', unless the times are explained much better
// otherwise.
SliceSize::Costs SliceSize::costs() const {
  const auto& [nodes_nodes, nodes_there, there_there, nodes_time, there_time, time_time] = sums_;
  const double rate = nodes_time / nodes_nodes;
  const double determinant = nodes_nodes * there_there - nodes_there * nodes_there;
  if (determinant <= 1e-3 * nodes_nodes * there_there) return {rate, 0};
  const double there = (there_time * nodes_nodes - nodes_time * nodes_there) / determinant;
  const double node = (nodes_time * there_there - there_time * nodes_there) / determinant;
  const double error = time_time - node * nodes_time - there * there_time;
  if (there < 0 || error > most_error * (time_time - rate * nodes_time)) return {rate, 0};
  const double least = rate * least_share;
  if (node >= least) return {node, there};
  return {least, std::max(0.0, (there_time - least * nodes_there) / there_there)};
}

}  // namespace tvx::browser
