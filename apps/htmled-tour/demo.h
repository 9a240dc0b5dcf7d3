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

/// Writes to standard output how long things took, in milliseconds: from the program's start to the first
/// paint and to the whole document, from a key to its flushed layout.
int run_measures(Window& window, platform::MessageLoop& loop, const QString& file,
                 std::int64_t program_start);

}  // namespace tvx::htmled
