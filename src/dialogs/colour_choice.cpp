#include "tvx/dialogs/colour_choice.h"

#include <utility>

#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/form.h"

namespace tvx::dialogs {

ChosenColour colour_choose2(platform::CommonDialogs& dialogs, const platform::Form& owner) {
  const Colour colour = dialogs.ShowColor(white, owner.handle());
  if (colour == no_colour) return {};
  return {u"#" + RGBToHex(ColourToRGB(colour, u","), u","), colour};
}

void add_colour_row(platform::Form& form, platform::FormControl* frame, std::u16string label,
                    std::u16string caption, std::u16string box, std::u16string button) {
  constexpr int columns = 10;
  form.begin_row(frame);
  form.add_label(std::move(label), std::move(caption));
  platform::FormControl& field = form.add_text_box(std::move(box));
  field.set_columns(columns);
  form.add_button(std::move(button), u"...").set_colour_field(field);
}

}  // namespace tvx::dialogs
