#pragma once

#include <string>

#include "tvx/base/colour.h"

namespace tvx::platform {
class CommonDialogs;
class Form;
class FormControl;
}  // namespace tvx::platform

namespace tvx::dialogs {

/// A colour that the user chose: "#RRGGBB" and the platform's number. The text is empty if the user
/// cancelled.
struct ChosenColour {
  std::u16string text;
  Colour colour = no_colour;
};

/// Asks over a form, with white chosen at first.
ChosenColour colour_choose2(platform::CommonDialogs& dialogs, const platform::Form& owner);

/// A row with a label, a box for a colour and the button that lets the user choose one, in a frame or, where
/// that is null, on the form itself.
void add_colour_row(platform::Form& form, platform::FormControl* frame, std::u16string label,
                    std::u16string caption, std::u16string box, std::u16string button);

}  // namespace tvx::dialogs
