#pragma once

#include "tvx/platform/clipboard.h"

namespace tvx::headless {

/// A clipboard of one process, in memory: what is put on it is what is found there.
class Clipboard final : public platform::Clipboard {
 public:
  std::vector<std::string> targets() const override;
  std::string read(std::string_view target) const override;
  const platform::TransferItems& items() const { return items_; }
  void publish(platform::TransferItems items) override {
    items_ = std::move(items);
    ++changes_;
    tell_changed();
  }
  std::uint64_t changes() const override { return changes_; }

 private:
  platform::TransferItems items_;
  std::uint64_t changes_ = 0;
};

}  // namespace tvx::headless
