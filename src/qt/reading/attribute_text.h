#pragma once

#include <QString>

#include "tvx/editing/reading/text_attributes.h"

namespace tvx::qt {

/// As QAccessibleTextInterface wants them: "name:value;", the names being those of IAccessible2.
QString attribute_text(const editing::TextAttributes& attributes);

}  // namespace tvx::qt
