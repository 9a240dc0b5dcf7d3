#pragma once

#include <string_view>

/// Links as a person makes them, who is asked for an address; the command createLink stands on the same
/// ground.
namespace tvx::editing {

class Editor;

/// Gives what is selected this address. A caret in a link changes that link, a caret elsewhere gets the
/// address itself as the link's text. One undo step. False for an empty address, and where nothing can be
/// edited.
bool link_selection(Editor& editor, std::u16string_view address);

}  // namespace tvx::editing
