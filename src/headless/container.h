#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/container.h"

namespace tvx::headless {

/// A container that only keeps count of what it hears.
class Container : public platform::Container {
 public:
  explicit Container(bool user_mode = true) : user_mode_(user_mode) {}

  bool user_mode() const override { return user_mode_; }
  void property_changed(std::u16string_view key) override {
    changed_.emplace_back(key);
    if (observer_) observer_(key);
  }

  /// The keys so far, one for each notification.
  const std::vector<std::u16string>& changed() const { return changed_; }
  void clear_changed() { changed_.clear(); }
  void on_property_changed(std::function<void(std::u16string_view key)> observer) {
    observer_ = std::move(observer);
  }

 private:
  bool user_mode_;
  std::vector<std::u16string> changed_;
  std::function<void(std::u16string_view)> observer_;
};

}  // namespace tvx::headless
