#include "tvx/transfer/name_pattern.h"

#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/platform/remote_network.h"

namespace tvx::transfer {
namespace {

/// Goes back to the last star alone, so it takes at most the product of both lengths.
bool fits(std::u16string_view name, std::u16string_view pattern) {
  std::size_t at = 0, in = 0, after_star = std::u16string_view::npos, tried = 0;
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == u'*') {
      after_star = ++in;
      tried = at;
    } else if (in < pattern.size() && (pattern[in] == u'?' || pattern[in] == name[at])) {
      ++in;
      ++at;
    } else if (after_star != std::u16string_view::npos) {
      in = after_star;
      at = ++tried;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', in) == std::u16string_view::npos;
}

}  // namespace

bool fits_pattern(std::u16string_view name, std::u16string_view pattern, LetterCase letters) {
  if (pattern.empty() || pattern == u"*.*") return true;
  if (letters == LetterCase::Counts) return fits(name, pattern);
  return fits(upper_cased(name), upper_cased(pattern));
}

bool has_wildcard(std::u16string_view pattern) {
  return pattern.find_first_of(u"*?") != std::u16string_view::npos;
}

void require_plain_name(std::u16string_view name) {
  if (name.find_first_of(std::u16string_view(u"\r\n\0", 3)) != std::u16string_view::npos)
    throw RuntimeError(platform::network_errors::invalid_parameter,
                       u"The name has a line break or a zero character in it and is refused");
}

bool stays_in_folder(std::u16string_view name) {
  return !name.empty() && name != u"." && name != u".." &&
         name.find_first_of(u"/\\") == std::u16string_view::npos;
}

}  // namespace tvx::transfer
