#pragma once

#include <string>
#include <string_view>

#include "tvx/base/strings.h"

namespace tvx::source {

/// Whole lines of a source, from `first` to `end`, made comments, each by itself, or written out again if all
/// of them are comments: as HTML has them, and within a style sheet or a script as these have them. A line
/// that would end the comment in its middle stays as it is; so do empty ones.
std::u16string with_comments_toggled(std::u16string_view source, Offset first, Offset end);

}  // namespace tvx::source
