#pragma once

#include <cstdint>

/// The enumerations of the control's interface. All are 32 bits wide; the numbers never change.
namespace tvx {

/// The control's own frame.

enum class EdBorderStyle : std::int32_t { None = 0, Solid = 1 };

/// The border around the current element.
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

/// How the bytes of a transfer are taken.
enum class ed_FTPTransferType : std::int32_t { ov_Unknown = 0, ov_ASCII = 1, ov_Binary = 2 };

/// Where InsertAtCursor puts its HTML.
enum class ed_InsertType : std::int32_t {
  ed_InsertReplaceSelection = 0,
  ed_InsertBeforeSelection = 1,
  ed_InsertAfterSelection = 2
};

}  // namespace tvx
