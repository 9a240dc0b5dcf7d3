#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace tvx::source {

/// The longest choice of pairs that rises on both sides. They are given in the order of their first sides.
std::vector<std::pair<std::size_t, std::size_t>> longest_rise(
    std::span<const std::pair<std::size_t, std::size_t>> pairs);

}  // namespace tvx::source
