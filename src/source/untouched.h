#pragma once

#include <string>
#include <string_view>

namespace tvx::source {

/// What the user has made of a code, with the formatter's white space taken off again where it would change
/// what the document says: the formatter indents the lines of a PRE, of a script and the like as it does all
/// others, and drops blank ones, and comments have come into one line.
///
/// `original` is the document's text, `entered` the code made of it, `left` what that code has become; both
/// codes have CR LF. Where such content stands as it was entered, the original comes back to the letter.
/// Where the user has worked in it, its lines lose the indentation that formatting had added. All else stays
/// as it is.
std::u16string with_original_lines(std::u16string_view original, std::u16string_view entered,
                                   std::u16string_view left);

}  // namespace tvx::source
