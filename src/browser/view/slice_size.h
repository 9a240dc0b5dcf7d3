#pragma once

#include <cstddef>

namespace tvx::browser {

/// How many nodes the next slice of a load brings, by how long the ones before took to be shown.
///
/// A slice should be short: meanwhile the page answers nothing. But part of its time may be the same whatever
/// it brings, since an engine lays out a large table as a whole for each piece of it that comes. Smaller
/// slices would only make more of them, and a table would cost the square of its rows. So a slice brings as
/// much as fits the aim, or as much as costs what the same part costs, whichever is more. What a node costs,
/// and what those cost that are there already, is drawn from all slices so far: one alone may have had to
/// wait for other programs.
class SliceSize {
 public:
  /// What fills a window.
  static constexpr std::size_t first = 700;
  static constexpr std::size_t smallest = 400, largest = 20'000;
  static constexpr double aim_milliseconds = 25;  // the frame that shows it takes as long again at most

  std::size_t nodes() const { return nodes_; }
  /// A slice of that many nodes has been shown.
  void took(double milliseconds);

 private:
  /// Milliseconds, of a new node and of one that is there already.
  struct Costs {
    double node, node_there;
  };
  void weigh(double time);
  Costs costs() const;

  std::size_t nodes_ = first, there_ = 0;
  bool at_first_ = true;
  // Of all slices so far, weighed: products of their nodes, those that were there, and the time.
  struct Sums {
    double nodes_nodes = 0, nodes_there = 0, there_there = 0, nodes_time = 0, there_time = 0, time_time = 0;
  };
  Sums sums_;
};

}  // namespace tvx::browser
