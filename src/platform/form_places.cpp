#include "tvx/platform/form_places.h"

#include <algorithm>
#include <optional>

#include "tvx/platform/form.h"

namespace tvx::platform {
namespace {

constexpr float row_height = 360, margin = 120, list_height = 1440, closing_width = 1200;

/// A form's rows as they are laid out, until the control that is asked about has its place.
class Places {
 public:
  Places(const Form& form, const FormControl* wanted) : form_(form), wanted_(wanted) {}

  /// The height of all rows of a frame (null: of the form) that begin at a place.
  float lay_out(const FormControl* frame, ControlPlace room) {
    float top = room.Top;
    for (const FormRow& row : form_.rows()) {
      if (row.frame != frame || row.controls.empty()) continue;
      top += lay_out_row(row, {room.Left, top, room.Width, 0}) + margin;
    }
    return top - room.Top;
  }
  /// What is over for the lists that take all room.
  void set_room_left(float room) { room_left_ = room; }
  const std::optional<ControlPlace>& found() const { return found_; }

 private:
  float lay_out_row(const FormRow& row, const ControlPlace& room) {
    const float share = room.Width / static_cast<float>(row.controls.size());
    float height = row_height, left = room.Left;
    for (const FormControl* control : row.controls) {
      ControlPlace place{left, room.Top, share, height_of(*control)};
      if (control->kind() == ControlKind::Frame)
        place.Height =
            2 * margin + lay_out(control, {left + margin, room.Top + 2 * margin, share - 2 * margin, 0});
      if (control == wanted_) found_ = place;
      height = std::max(height, place.Height);
      left += share;
    }
    return height;
  }
  float height_of(const FormControl& control) const {
    switch (control.kind()) {
      case ControlKind::ListBox:
      case ControlKind::PictureBox: return list_height;
      case ControlKind::ListView: return list_height + room_left_;
      default: return row_height;
    }
  }

  const Form& form_;
  const FormControl* const wanted_;
  float room_left_ = 0;
  std::optional<ControlPlace> found_;
};

float height_of_foot(const Form& form) { return form.closing_buttons().empty() ? 0 : row_height + margin; }

ControlPlace room_of(const Form& form) { return {margin, margin, form.Width() - 2 * margin, 0}; }

}  // namespace

float height_of_rows(const Form& form) {
  return margin + Places(form, nullptr).lay_out(nullptr, room_of(form)) + height_of_foot(form);
}

ControlPlace place_of(const FormControl& control) {
  const Form& form = control.form();
  const auto& closing = form.closing_buttons();
  if (const auto button = std::ranges::find(closing, &control); button != closing.end()) {
    const auto from_right = static_cast<float>(closing.end() - button);
    return {form.Width() - from_right * (closing_width + margin), form.Height() - row_height - margin,
            closing_width, row_height};
  }
  Places places(form, &control);
  places.set_room_left(form.Height() - height_of_rows(form));
  places.lay_out(nullptr, room_of(form));
  return places.found().value_or(ControlPlace());
}

}  // namespace tvx::platform
