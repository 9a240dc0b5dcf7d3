#pragma once

#include <string_view>

#include "tvx/base/strings.h"

/// Where units of a text begin and end. Offsets count 16-bit units.
namespace tvx::editing {

/// The start of the code point that ends at `from`: surrogate pairs are one.
Offset previous_code_point(std::u16string_view text, Offset from);

// Unicode standard annex 29, by ICU: what a person sees as one character, or as one word. At the ends of
// the text these give the end itself.
Offset previous_grapheme(std::u16string_view text, Offset from);
Offset next_grapheme(std::u16string_view text, Offset from);
/// The start of the word before, over the white space and punctuation between.
Offset previous_word(std::u16string_view text, Offset from);
/// The end of the next word.
Offset next_word(std::u16string_view text, Offset from);

}  // namespace tvx::editing
