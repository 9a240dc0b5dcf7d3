#pragma once

#include <deque>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/style/computed.h"

namespace tvx::dom::style {

/// The answers that are kept, by node. A command on a whole document asks a million times: finding one is
/// two steps into arrays, and forgetting all is a change of number, however many there are.
/// References stay good until their node is forgotten.
class KnownValues {
 public:
  bool empty() const { return count_ == 0; }

  const ComputedValues* find(const Node& node) const {
    const auto id = std::size_t(node.id());
    if (id >= slots_.size() || slots_[id].epoch != epoch_) return nullptr;
    return &pool_[slots_[id].index];
  }

  /// Only for a node without an answer.
  const ComputedValues& keep(const Node& node, const ComputedValues& values) {
    const auto id = std::size_t(node.id());
    if (id >= slots_.size()) slots_.resize(id + id / 2 + 1);
    slots_[id] = {epoch_, take_place()};
    ++count_;
    return pool_[slots_[id].index] = values;
  }

  void forget(const Node& node) {
    const auto id = std::size_t(node.id());
    if (id >= slots_.size() || slots_[id].epoch != epoch_) return;
    slots_[id].epoch = 0;
    free_.push_back(slots_[id].index);
    --count_;
  }

  void forget_all() {
    if (++epoch_ == 0) {
      slots_.clear();
      epoch_ = 1;
    }
    count_ = used_ = 0;
    free_.clear();
  }

 private:
  struct Slot {
    std::uint32_t epoch = 0;  // of another time: no answer
    std::uint32_t index = 0;
  };

  std::uint32_t take_place() {
    if (!free_.empty()) {
      const std::uint32_t index = free_.back();
      free_.pop_back();
      return index;
    }
    if (used_ == pool_.size()) pool_.emplace_back();
    return std::uint32_t(used_++);
  }

  std::vector<Slot> slots_;  // by NodeId
  std::deque<ComputedValues> pool_;
  std::vector<std::uint32_t> free_;
  std::size_t used_ = 0, count_ = 0;
  std::uint32_t epoch_ = 1;
};

}  // namespace tvx::dom::style
