#pragma once

#include <cstddef>

namespace tvx::browser {

/// How many nodes the next slice of a load brings, by how long the ones before took to be shown.
///
/// A slice should be short: meanwhile the page answers nothing. But part of its time may be the same whatever
/// it brings, since an engine lays out a large table as a whole for each piece of it that comes. Smaller
/// slices would only make more of them, and a table would cost the square of its rows. So a slice brings as
/// much as fits the aim, or as much as costs what the same part costs, whichever is more.
class SliceSize {
 public:
  /// What fills a window.
  static constexpr std::size_t first = 700;
  static constexpr std::size_t smallest = 400, largest = 20'000;
  static constexpr double aim_milliseconds = 30;

  std::size_t nodes() const { return nodes_; }
  /// A slice of that many nodes has been shown.
  void took(double milliseconds);

 private:
  void weigh_nodes(double time);

  std::size_t nodes_ = first;
  bool at_first_ = true;
  // The slice before, and what a node costs by itself, in milliseconds; 0: none known.
  std::size_t last_nodes_ = 0;
  double last_time_ = 0, node_cost_ = 0;
};

}  // namespace tvx::browser
