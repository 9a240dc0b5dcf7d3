#include "tvx/dialogs/image_dialog.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/dialogs/field_checks.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/pictures/picture_store.h"

namespace tvx::dialogs {

using platform::FormControl;

namespace {

constexpr int number_columns = 6, division_by_zero = 11;

/// Key codes of what numbers are typed with: Backspace, Delete, digits, the number pad. The same list holds
/// for characters, so that some letters pass too.
bool passes(std::int16_t code) {
  return code == 8 || code == 46 || (code >= 48 && code <= 57) || (code >= 96 && code <= 105) || code == 110;
}

constexpr std::u16string_view pixels = u"px", percent = u"%";

/// The list with the unit of a box for a size.
std::u16string_view unit_of(const FormControl& box) {
  return box.Name() == u"txtWidth" ? u"cboWidthUnit" : u"cboHeightUnit";
}

bool is_size(const FormControl& box) { return box.Name() == u"txtWidth" || box.Name() == u"txtHeight"; }

}  // namespace

ImageDialog::ImageDialog(platform::CommonDialogs& dialogs, FindPicture find_picture)
    : dialogs_(dialogs), find_picture_(std::move(find_picture)) {
  form_.begin_row();
  form_.add_picture(u"picPreview");
  form_.begin_row();
  form_.add_label(u"lblSource", u"Source");
  form_.add_text_box(u"txtSrc");
  form_.add_button(u"cmdBrowse", u"Browse");
  form_.begin_row();
  form_.add_label(u"lblAlt", u"Alt Text");
  form_.add_text_box(u"txtAltText");
  add_size_rows();
  add_other_rows();
  form_.set_default_button(form_.add_closing_button(u"OKButton", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"CancelButton", u"Cancel"));
  form_.set_handler(this);
}

void ImageDialog::add_size_rows() {
  const auto add = [this](std::u16string label, std::u16string caption, std::u16string box,
                          std::u16string unit) {
    form_.add_label(std::move(label), std::move(caption));
    FormControl& number = form_.add_text_box(std::move(box));
    number.set_columns(number_columns);
    number.set_number({.least = 0, .most = 32767});
    number.set_reports_keys();
    form_.add_list(std::move(unit), {pixels, percent}).set_Text(pixels);
  };
  form_.begin_row();
  add(u"lblWidth", u"Width", u"txtWidth", u"cboWidthUnit");
  add(u"lblHeight", u"Height", u"txtHeight", u"cboHeightUnit");
  form_.begin_row();
  form_.add_check_box(u"chkConstrain", u"Constrain Proportions");
  form_.begin_row();
  form_.add_button(u"cmdReset", u"Reset");
  form_.add_label(u"lblNaturalSize", u"");
}

void ImageDialog::add_other_rows() {
  form_.begin_row();
  form_.add_label(u"lblBorder", u"Border");
  FormControl& border = form_.add_text_box(u"txtBorder");
  border.set_columns(number_columns);
  border.set_number({.least = 0, .most = 99});
  form_.add_label(u"lblBorderUnit", u"px");
  form_.begin_row();
  form_.add_label(u"lblAlign", u"Align");
  form_.add_combo_box(u"cboAlign", {u"absbottom", u"absmiddle", u"baseline", u"bottom", u"left", u"middle",
                                    u"right", u"texttop", u"top"});
}

void ImageDialog::SetProp(std::int32_t width, std::int32_t height) {
  if (width == 0) throw RuntimeError(division_by_zero, u"Division by zero");
  proportion_ = static_cast<float>(height) / static_cast<float>(width);
}

void ImageDialog::show_size(Side side, std::int32_t number, bool of_the_room) {
  FormControl& box = form_.Controls(side == Side::Width ? u"txtWidth" : u"txtHeight");
  form_.Controls(unit_of(box)).set_Text(of_the_room ? percent : pixels);
  box.set_Text(to_text(number));
}

bool ImageDialog::is_of_the_room(Side side) const {
  return form_.Controls(side == Side::Width ? u"cboWidthUnit" : u"cboHeightUnit").Text() == percent;
}

// --- buttons ---

void ImageDialog::Click(FormControl& control) {
  if (control.Name() == u"cmdBrowse") return browse();
  if (control.kind() != platform::ControlKind::CommandButton) return;
  FormControl &width = form_.Controls(u"txtWidth"), &height = form_.Controls(u"txtHeight");
  isCancelled_ = &control == form_.cancel_button() && isCancelled_;
  if (&control == form_.cancel_button()) {
    height.set_Text(u"-1");
    width.set_Text(u"-1");
  }
  if (control.Name() == u"cmdReset") height.set_Text(u"Reset");
  form_.Hide();
}

void ImageDialog::browse() {
  const std::u16string path(
      TrimNul(dialogs_.ShowOpen({.filters = {{u"All Image Files", u"*.gif;*.jpg;*.jpeg;*.png;*.webp;*.svg"}},
                                 .title = u"Select an Image",
                                 .preset = u"*.*",
                                 .owner = form_.handle(),
                                 .of_pictures = true})));
  if (!path.empty()) form_.Controls(u"txtSrc").set_Text(EncodeURL(platform::local_picture_address(path)));
}

void ImageDialog::Change(FormControl& control) {
  if (control.Name() == u"txtSrc") show_picture();
  if (control.Name() == u"cboWidthUnit") fit_into_unit(form_.Controls(u"txtWidth"));
  if (control.Name() == u"cboHeightUnit") fit_into_unit(form_.Controls(u"txtHeight"));
  if (control.number() && form_.Visible()) check_number(control, Emptiness::allowed);
}

void ImageDialog::show_picture() {
  const Picture picture = find_picture_(form_.Controls(u"txtSrc").Text());
  form_.Controls(u"picPreview").set_Picture(picture.path);
  form_.Controls(u"picPreview").set_Visible(!picture.path.empty());
  FormControl& natural = form_.Controls(u"lblNaturalSize");
  natural.set_Caption(picture.size ? to_text(picture.size->width) + u" \u00D7 " +
                                         to_text(picture.size->height) + u" px"
                                   : std::u16string());
}

// --- the boxes for the size ---

void ImageDialog::KeyDown(FormControl&, std::int16_t& KeyCode, std::int16_t) {
  if (!passes(KeyCode)) KeyCode = 0;
}

void ImageDialog::KeyPress(FormControl&, std::int16_t& KeyAscii) {
  if (!passes(KeyAscii)) KeyAscii = 0;
}

void ImageDialog::KeyUp(FormControl& box, std::int16_t& KeyCode, std::int16_t) {
  if (!passes(KeyCode)) {
    KeyCode = 0;
    return;
  }
  if (box.Text().empty()) {
    box.set_Text(u"0");
    box.select(0, 1);
  }
  keep_proportion(box);
}

// More than the room that there is was a number of pixels.
void ImageDialog::fit_into_unit(FormControl& box) {
  constexpr double all = 100;
  if (form_.Controls(unit_of(box)).Text() == percent && typed_number(box.Text()) > all) box.set_Text(u"100");
}

// A proportion of 0 gives no width. It is one of pixels: what part of the room that is, nobody knows here.
void ImageDialog::keep_proportion(FormControl& box) {
  if (!is_size(box) || !form_.Controls(u"chkConstrain").Value()) return;
  if (is_of_the_room(Side::Width) || is_of_the_room(Side::Height)) return;
  const double proportion = proportion_, number = typed_number(box.Text());
  const bool from_width = box.Name() == u"txtWidth";
  if (!from_width && proportion == 0) return;
  attempt([&] {
    const std::int32_t other = rounded_to_32_bits(from_width ? number * proportion : number / proportion);
    form_.Controls(from_width ? u"txtHeight" : u"txtWidth").set_Text(to_text(other));
  });
}

}  // namespace tvx::dialogs
