#pragma once

#include <QString>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

class Window;

/// Takes the pictures of the window with the sample page, of its code and of the preview of its sheets. The
/// sample is looked for in the current folder. False, with the user told, if one couldn't be taken.
bool take_sample_pictures(Window& window, platform::MessageLoop& loop, const QString& folder);

}  // namespace tvx::htmled
