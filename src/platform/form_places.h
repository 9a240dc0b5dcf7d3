#pragma once

namespace tvx::platform {

class Form;
class FormControl;

/// Where things stand on a form that nobody draws, in twips, counted and not measured: rows below each other,
/// the controls of a row beside each other in equal shares of its width, frames around their rows, a list
/// with columns in all the room that is left, and the closing buttons at the foot.
struct ControlPlace {
  float Left = 0, Top = 0, Width = 0, Height = 0;
};

inline constexpr int usual_form_width = 6000;

/// On the form, whatever frames the control stands in.
ControlPlace place_of(const FormControl& control);
/// What its rows need.
float height_of_rows(const Form& form);

}  // namespace tvx::platform
