#pragma once

#include <algorithm>
#include <vector>

namespace tvx::bench {

/// Times of the same thing, done again and again, in milliseconds.
class Samples {
 public:
  void add(double milliseconds) { all_.push_back(milliseconds); }
  bool empty() const { return all_.empty(); }
  const std::vector<double>& all() const { return all_; }
  double median() const { return quantile(0.5); }
  double nearly_all() const { return quantile(0.95); }

 private:
  double quantile(double part) const {
    if (all_.empty()) return 0;
    std::vector<double> sorted = all_;
    std::sort(sorted.begin(), sorted.end());
    return sorted[std::min(sorted.size() - 1,
                           static_cast<std::size_t>(part * static_cast<double>(sorted.size())))];
  }

  std::vector<double> all_;
};

}  // namespace tvx::bench
