#pragma once

#include <QString>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

class Window;

/// Takes the pictures of docs/dialogs.md: each of the control's dialogs in four languages on one sheet, in
/// light colours or, with a suffix to the name, in the application's present dark ones. The language files
/// are in `languages`. False, with a word on standard error, if one can't be taken.
bool take_dialogs(Window& window, platform::MessageLoop& loop, const QString& languages,
                  const QString& folder, const QString& suffix);

}  // namespace tvx::htmled
