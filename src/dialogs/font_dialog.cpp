#include "tvx/dialogs/font_dialog.h"

#include "tvx/base/numbers.h"
#include "tvx/dialogs/colour_choice.h"
#include "tvx/dialogs/field_checks.h"

namespace tvx::dialogs {

using platform::FormControl;

FontDialog::FontDialog(platform::CommonDialogs& dialogs, const std::vector<std::u16string>& fonts,
                       FontValues& values)
    : dialogs_(dialogs), values_(values) {
  add_controls();
  load(fonts);
  show_sample();
  form_.set_handler(this);
}

void FontDialog::add_controls() {
  form_.begin_row();
  form_.add_label(u"lblFontName", u"Font");
  form_
      .add_combo_box(u"Combo1", {u"Arial", u"Courier", u"cursive", u"fantasy", u"Helvetica", u"monospace",
                                 u"sans-serif", u"serif", u"Times", u"Western", u"Zapf-Chancery"})
      .set_shows_fonts();
  form_.begin_row();
  form_.add_label(u"lblFontSize", u"Size");
  form_.add_combo_box(u"Combo2", {u"1", u"2", u"3", u"4", u"5", u"6", u"7"});
  add_colour_row(form_, nullptr, u"lblForeColor", u"Fore Color", u"txtColour", u"cmdColour");
  add_colour_row(form_, nullptr, u"lblBackColor", u"Back Color", u"txtbgColour", u"cmdbgColour");
  form_.begin_row();
  form_.add_label(u"lblPreview", u"AaBbGgYyZz 0123").set_sample({});
  form_.set_default_button(form_.add_closing_button(u"cmdApply", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"cmdCancel", u"Cancel"));
}

// Asked for one font more than there are, the platform gives an empty name: the list ends with it.
void FontDialog::load(const std::vector<std::u16string>& fonts) {
  FormControl& names = form_.Controls(u"Combo1");
  names.Clear();
  for (const std::u16string& font : fonts) names.AddItem(font);
  names.AddItem({});
  names.set_ListIndex(0);
  if (!values_.FontNameValue.empty()) names.set_Text(values_.FontNameValue);
  if (!values_.FontSizeValue.empty()) form_.Controls(u"Combo2").set_Text(values_.FontSizeValue);
  form_.Controls(u"txtColour").set_Text(values_.FontFore);
  form_.Controls(u"txtbgColour").set_Text(values_.FontBack);
}

void FontDialog::Click(FormControl& button) {
  if (FormControl* field = button.colour_field()) {
    const ChosenColour chosen = colour_choose2(dialogs_, form_);
    if (!chosen.text.empty()) field->set_Text(chosen.text);
    return;
  }
  if (&button == form_.default_button())
    values_ = {text(u"txtColour"), text(u"txtbgColour"), text(u"Combo1"), text(u"Combo2")};
  form_.Hide();
}

void FontDialog::Change(FormControl&) { show_sample(); }

void FontDialog::show_sample() {
  platform::TextSample sample{.font = text(u"Combo1"), .colour = {}, .background = {}};
  if (check_colour(form_.Controls(u"txtColour"))) sample.colour = text(u"txtColour");
  if (check_colour(form_.Controls(u"txtbgColour"))) sample.background = text(u"txtbgColour");
  sample.size = static_cast<int>(typed_number(text(u"Combo2")));
  form_.Controls(u"lblPreview").set_sample(std::move(sample));
}

}  // namespace tvx::dialogs
