#pragma once

#include <string>
#include <vector>

#include "tvx/platform/form.h"

namespace tvx::platform {
class CommonDialogs;
}

namespace tvx::dialogs {

/// What a selection's letters look like, as the dialog and the control tell each other: colours as "#RRGGBB",
/// empty where the selection has several.
struct FontValues {
  std::u16string FontFore, FontBack, FontNameValue, FontSizeValue;
};

/// `frmFont`: the font, its size and the two colours of the selection. Only its OK writes to the values.
class FontDialog final : private platform::FormHandler {
 public:
  /// `values` outlive it.
  FontDialog(platform::CommonDialogs& dialogs, const std::vector<std::u16string>& fonts, FontValues& values);

  platform::Form& form() { return form_; }

 private:
  void add_controls();
  void load(const std::vector<std::u16string>& fonts);
  void Click(platform::FormControl& button) override;
  void Change(platform::FormControl& control) override;
  void show_sample();
  const std::u16string& text(std::u16string_view box) const { return form_.Controls(box).Text(); }

  platform::CommonDialogs& dialogs_;
  FontValues& values_;
  platform::Form form_{u"frmFont", u"Font Settings"};
};

}  // namespace tvx::dialogs
