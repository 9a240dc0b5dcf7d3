#include "tvx/localise/language_file.h"

#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"

namespace tvx::localise {

bool language_file_exists(std::u16string_view path) {
  std::error_code failed;  // what can't be looked at isn't there
  return std::filesystem::is_regular_file(file_system_path(path), failed);
}

XmlDocument read_language_file(std::u16string_view path) {
  XmlDocument document;
  if (document.load(path)) return document;
  const ParseError& error = document.parseError();
  throw RuntimeError(language_file_unparsable,
                     u"Cannot parse UI language file. Error - " + error.reason + u" at line: " +
                         to_text(static_cast<std::int64_t>(error.line)) + u", char: " +
                         to_text(static_cast<std::int64_t>(error.linepos)));
}

}  // namespace tvx::localise
