#pragma once

#include <string>

namespace tvx::dom::parser {

enum class InAttribute : bool { No, Yes };
/// What two numeric references to the halves of one character are: that character, as this control and older
/// programs write it, or two replacement characters, as the standard has it.
enum class Halves : bool { Apart, Joined };

/// Reads a character reference (HTML standard, section 13.2.5.72 to 13.2.5.80). `at` points at the ampersand.
/// Appends what the reference stands for to `out`, or the ampersand itself if it is none, and returns the
/// place after what was read.
const char16_t* read_character_reference(const char16_t* at, const char16_t* end, InAttribute in_attribute,
                                         Halves halves, std::u16string& out);

}  // namespace tvx::dom::parser
