#pragma once

#include <QString>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

class Window;

/// What the editor does by itself with no display: types a sentence at the end of the first paragraph, makes
/// a word of it bold by the toolbar, undoes and redoes that, and writes edited.html and screenshot.png into a
/// folder, whose paths go to standard output. The exit code: 1, with the reason told, if a step failed.
int run_demo(Window& window, platform::MessageLoop& loop, const QString& folder);

}  // namespace tvx::htmled
