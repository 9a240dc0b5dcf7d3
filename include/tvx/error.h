#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace tvx {

/// A failing operation, as a host sees it: a number and a text in English. What does not apply is no failure
/// but an answer: an optional, false.
class RuntimeError : public std::exception {
 public:
  RuntimeError(int number, std::u16string text);

  /// One of `errors`, or another number that docs/reference.md names.
  int number() const { return number_; }
  /// In UTF-16.
  const std::u16string& text() const { return text_; }
  /// The same in UTF-8.
  const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  int number_;
  std::u16string text_;
  std::string utf8_;
};

/// Numbers that failures of this system share; the numbers a host knows from late-bound object models.
namespace errors {
inline constexpr int invalid_call = 5;              // "Invalid procedure call or argument"
inline constexpr int overflow = 6;                  // "Overflow"
inline constexpr int type_mismatch = 13;            // "Type mismatch"
inline constexpr int file_not_found = 53;           // "File not found"
inline constexpr int path_access = 75;              // "Path/File access error"
inline constexpr int object_not_set = 91;           // the object, or the document it belonged to, is gone
inline constexpr int invalid_property_value = 380;  // "Invalid property value"
inline constexpr int set_not_supported_at_runtime = 382;
inline constexpr int set_not_permitted_here = 383;
inline constexpr int set_not_permitted = 387;
inline constexpr int unknown_member = 438;  // "Object doesn't support this property or method"
inline constexpr int not_supported = 445;   // "Object doesn't support this action"
inline constexpr int wrong_argument_count = 450;
}  // namespace errors

}  // namespace tvx
