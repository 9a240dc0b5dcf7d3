#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::source {

/// The indented source of a document's text, in one pass from left to right: an indent counter and a pending
/// line, no tree. Nothing but white space at the borders of lines is added or dropped.
///
/// It is made for text that a serialiser gave out, brought into form by `prepare_for_formatting`: tags are
/// known by their names in capitals, a ">" ends a tag also within quotes, and what stands in comments,
/// scripts and style sheets is read as tags too. Text that is formatted already is indented further.
///
/// `indentStep` is the number of indent characters a level, which are TABs or blanks. A level below zero
/// can't be made into an indentation: the pending line then stays, and comes again in front of the next one.
///
/// Ends on every input: a "<" without a ">" after it is a letter like any other. Throws RuntimeError(14)
/// where the result would outgrow `longest_source`, which takes thousands of levels, or of lines below level
/// zero.
std::u16string FormatHTMLSource(std::u16string_view text, std::int16_t indentStep,
                                bool blankLineBeforeBlockContent, bool useTabs);

/// One line of a formatted source: so many indent characters, and a piece of the text. Below level zero a
/// piece begins where an earlier one did.
struct FormattedLine {
  Offset begin, end;
  std::size_t indent;
};

/// What FormatHTMLSource(text, indentStep, false, false) would write, without writing it. The line ends with
/// CR LF, of its own or added.
std::vector<FormattedLine> formatted_lines(std::u16string_view text, std::int16_t indentStep);

/// Units that the formatted source of so many may have.
constexpr std::size_t longest_source(std::size_t units) { return std::max(std::size_t{1} << 26, 16 * units); }

}  // namespace tvx::source
