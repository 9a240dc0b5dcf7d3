#include "tvx/headless/clipboard.h"

namespace tvx::headless {

std::vector<std::string> Clipboard::targets() const {
  std::vector<std::string> names;
  for (const platform::TransferItem& item : items_) names.push_back(item.first);
  return names;
}

std::string Clipboard::read(std::string_view target) const {
  for (const platform::TransferItem& item : items_)
    if (item.first == target) return item.second;
  return {};
}

}  // namespace tvx::headless
