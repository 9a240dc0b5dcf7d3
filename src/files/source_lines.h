#pragma once

#include <string>
#include <string_view>

namespace tvx::files {

/// A page's text with each paragraph, item and row on a line of its own, as a person would write it; nothing
/// is indented. A line's end is put in between blocks alone, where it shows nothing. What keeps its lines
/// (PRE, fields, scripts) stays as it is, and so does a page whose style sheet has a word on white space.
std::u16string with_source_lines(std::u16string page);

}  // namespace tvx::files
