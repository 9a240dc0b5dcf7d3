#pragma once

#include <QString>

namespace tvx::htmled {

/// What speakers of a language call it: "Deutsch (Deutschland)" for "de-DE"; the tag itself where nobody
/// knows.
QString own_language_name(const QString& tag);

}  // namespace tvx::htmled
