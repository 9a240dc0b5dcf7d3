#pragma once

#include <string>
#include <string_view>

#include "tvx/localise/xml_document.h"

namespace tvx::localise {

/// Numbers of the failures that come with a language file.
inline constexpr int language_failure = 11000, language_file_unparsable = 11011;

/// Whether there is such a file; a folder is none.
bool language_file_exists(std::u16string_view path);

/// Reads a language file that exists. Throws RuntimeError(11011) with the reason and the position if it is
/// no XML.
XmlDocument read_language_file(std::u16string_view path);

}  // namespace tvx::localise
