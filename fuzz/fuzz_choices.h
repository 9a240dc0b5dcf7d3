#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_input.h"

namespace tvx::fuzz {

/// The fuzzer's bytes as a row of decisions. After the end every decision is 0.
class Choices {
 public:
  Choices(const std::uint8_t* data, std::size_t size) : data_(data), end_(data + size) {}

  bool left() const { return data_ != end_; }
  std::uint8_t byte() { return left() ? *data_++ : std::uint8_t{0}; }
  /// A number below `limit`; 0 if that is 0.
  std::size_t below(std::size_t limit) {
    if (limit < 2) return 0;
    std::size_t value = byte();
    if (limit > 0x100) value = value << 8 | byte();
    return value % limit;
  }
  /// A text of up to that many bytes.
  std::u16string text(std::size_t most) {
    const std::size_t size = std::min<std::size_t>(below(most + 1), static_cast<std::size_t>(end_ - data_));
    const std::u16string text = text_of(data_, size);
    data_ += size;
    return text;
  }

 private:
  const std::uint8_t* data_;
  const std::uint8_t* end_;
};

}  // namespace tvx::fuzz
