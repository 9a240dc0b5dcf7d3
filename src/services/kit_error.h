#pragma once

#include <string>
#include <string_view>

#include "tvx/base/error.h"

namespace tvx::services {

/// A failure of the message kit or of the timers, as its caller sees it: the number carries the mark of an
/// object's own errors.
class KitError final : public RuntimeError {
 public:
  static constexpr std::uint32_t mark = 0x8004'0000;

  KitError(int number, std::u16string_view text)
      : RuntimeError(static_cast<int>(static_cast<std::uint32_t>(number) | mark), std::u16string(text)) {}

  /// Who raised it.
  static constexpr std::u16string_view source = u"tvxHTML.WindowProc";
};

}  // namespace tvx::services
