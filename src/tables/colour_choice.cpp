#include "tables/colour_choice.h"

#include "platform/common_dialogs.h"
#include "platform/form.h"

namespace tvx::tables {

ChosenColour colour_choose2(platform::CommonDialogs& dialogs, const platform::Form& owner) {
  const Colour colour = dialogs.ShowColor(white, owner.handle());
  if (colour == no_colour) return {};
  return {u"#" + RGBToHex(ColourToRGB(colour, u","), u","), colour};
}

}  // namespace tvx::tables
