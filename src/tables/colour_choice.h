#pragma once

#include <string>

#include "base/colour.h"

namespace tvx::platform {
class CommonDialogs;
class Form;
}  // namespace tvx::platform

namespace tvx::tables {

/// A colour that the user chose: "#RRGGBB" and the platform's number. The text is empty if the user
/// cancelled.
struct ChosenColour {
  std::u16string text;
  Colour colour = no_colour;
};

/// Asks over a form, with white chosen at first.
ChosenColour colour_choose2(platform::CommonDialogs& dialogs, const platform::Form& owner);

}  // namespace tvx::tables
