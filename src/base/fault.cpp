#include "tvx/base/fault.h"

#include <string>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx {
namespace {

struct Order {
  std::u16string operation;
  Fault fault;
  int times;
};

std::vector<Order>& orders() {
  static std::vector<Order> list;
  return list;
}

}  // namespace

void set_fault(std::u16string_view operation, Fault fault, int times) {
  if (times > 0) orders().push_back({std::u16string(operation), std::move(fault), times});
}

void clear_faults() { orders().clear(); }

std::optional<std::int32_t> fault_point(std::u16string_view operation) {
  auto& list = orders();
  if (list.empty()) return {};
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (!equals_ignoring_ascii_case(list[i].operation, operation)) continue;
    const Fault fault = list[i].fault;
    if (--list[i].times == 0) list.erase(list.begin() + std::ptrdiff_t(i));
    if (fault.error) throw *fault.error;
    return fault.result;
  }
  return {};
}

}  // namespace tvx
