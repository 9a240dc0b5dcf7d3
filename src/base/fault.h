#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "tvx/base/error.h"

/// Failures made on purpose, for tests and scripts: what a clipboard that another program holds, a full disk
/// or a missing printer does, on request. An operation that can fail so names itself ("WriteTextFile").
namespace tvx {

/// What an operation is to do in place of its work: throw, or give this result.
struct Fault {
  std::optional<RuntimeError> error;
  std::int32_t result = 0;
};

/// The next `times` runs of the operation fail so, whose name counts without regard to case; more than one
/// order for an operation are used up in turn.
void set_fault(std::u16string_view operation, Fault fault, int times = 1);
void clear_faults();

/// For the operation itself: throws if it is to throw, gives the result if one is set, and nothing (at the
/// cost of one comparison) where all is well.
std::optional<std::int32_t> fault_point(std::u16string_view operation);

}  // namespace tvx
