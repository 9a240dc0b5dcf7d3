#pragma once

#include <QString>

#include "tvx/base/error.h"

namespace tvx::htmled {

/// A failure as the user reads it, in the program's language.
QString words_of(const RuntimeError& error);

}  // namespace tvx::htmled
