#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tvx::fuzz {

/// The fuzzer's bytes as 16-bit text: two bytes a unit, so that lone surrogates occur. A first byte below 128
/// stands for itself alone, which keeps ASCII inputs readable in the corpus.
inline std::u16string text_of(const std::uint8_t* data, std::size_t size) {
  std::u16string text;
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] < 0x80 || i + 1 == size) {
      text.push_back(data[i]);
    } else {
      text.push_back(static_cast<char16_t>((data[i] << 8 | data[i + 1]) & 0xFFFF));
      ++i;
    }
  }
  return text;
}

/// A law that has to hold on any input.
inline void require(bool holds, const char* law) {
  if (holds) return;
  std::fprintf(stderr, "broken law: %s\n", law);
  std::abort();
}

}  // namespace tvx::fuzz
