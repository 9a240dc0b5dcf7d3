#pragma once

#include <string>
#include <string_view>

namespace tvx::source {

/// Brings a document's text into the form that FormatHTMLSource was made for, so that what the formatter adds
/// is what goes away here when the text comes back: outside elements whose line breaks count, each run of
/// white space with a line break becomes one blank, and none at the edges of blocks; inside them each line
/// break becomes CR LF. Tags stay as they are.
std::u16string prepare_for_formatting(std::u16string_view text);

/// The text of a document as the code view shows it.
std::u16string code_of(std::u16string_view text);

/// CR, LF and CR LF alike become CR LF.
std::u16string with_crlf(std::u16string_view text);

}  // namespace tvx::source
