#pragma once

#include <QString>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

class Window;

/// Takes the pictures of docs/appearance.md into a folder: the window in light and in dark colours, narrow,
/// with a right-to-left document, with the menus of the document and of the element path; and those of
/// docs/dialogs.md, for which the language files are in "languages" of the working folder. On a scaled
/// screen (QT_SCALE_FACTOR) their names end in the scale. The exit code.
int run_screenshots(Window& window, platform::MessageLoop& loop, const QString& folder);

}  // namespace tvx::htmled
