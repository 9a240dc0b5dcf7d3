#pragma once

#include <cstdint>

/// How much was done, in steps that are the same on every machine: nodes visited, attributes and menu items
/// compared, declarations read. Tests compare two of these numbers to see that cost grows no faster than a
/// document; nothing else reads them. One thread only.
namespace tvx {

inline std::uint64_t work_done = 0;

inline void count_work(std::uint64_t steps = 1) { work_done += steps; }

}  // namespace tvx
