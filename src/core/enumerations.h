#pragma once

#include <cstdint>

/// The enumerations of the control's interface. All are 32 bits wide there; hosts know the numbers.
namespace tvx::core {

enum class EdBorderStyle : std::int32_t { None = 0, Solid = 1 };

enum class EdHighLightStyle : std::int32_t {
  edNone = 0,
  edSolid = 1,
  edDashed = 2,
  edDotted = 3,
  edDouble = 4,
  edGroove = 5,
  edRidge = 6,
  edInset = 7,
  edOutset = 8
};

enum class ed_FTPTransferType : std::int32_t { ov_Unknown = 0, ov_ASCII = 1, ov_Binary = 2 };

enum class ed_InsertType : std::int32_t {
  ed_InsertReplaceSelection = 0,
  ed_InsertBeforeSelection = 1,
  ed_InsertAfterSelection = 2
};

enum class EdToolbar : std::int32_t { edMainToolbars = 0, edFormToolbar = 1 };

}  // namespace tvx::core
