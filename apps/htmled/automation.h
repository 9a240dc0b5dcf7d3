#pragma once

#include <QString>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

/// Opens the door for programs in a real window: JSON-RPC on standard input and output, one message a line,
/// as htmled-cli speaks it. Instance 1 is the window; its file is `file`, or a new page. Returns at the end
/// of the input, or when the window is closed.
int run_automation(platform::MessageLoop& loop, const QString& file);

}  // namespace tvx::htmled
