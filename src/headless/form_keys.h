#pragma once

#include "tvx/browser/events.h"
#include "tvx/platform/form.h"

/// The keyboard of a user who isn't there, in front of a form.
namespace tvx::headless {

/// A key goes down, types what it types, and comes up again, in whatever has the keyboard: boxes of text take
/// characters and the keys that move the caret, Tab goes on, Return and Escape press the form's buttons.
void type_key(platform::Form& form, const browser::KeyInput& key);

/// Replaces what stands in a box by a text, key by key.
void type_over(platform::FormControl& box, std::u16string_view text);

/// The first control that the keyboard can reach; null if there is none.
platform::FormControl* first_stop(const platform::Form& form);

}  // namespace tvx::headless
