#pragma once

#include <functional>
#include <optional>
#include <string>

#include "tvx/platform/form.h"
#include "tvx/platform/pictures/picture_size.h"

namespace tvx::platform {
class CommonDialogs;
}

namespace tvx::dialogs {

/// `frmImageSettings`: size, address, text, border and alignment of an image. What came of it stands in the
/// boxes for the size: "-1" in both after Cancel, "Reset" in the height after Reset.
class ImageDialog final : private platform::FormHandler {
 public:
  /// A picture as it is known here: its file, if it has one on this computer, and its size.
  struct Picture {
    std::u16string path;
    std::optional<platform::PictureSize> size;
  };
  using FindPicture = std::function<Picture(std::u16string_view address)>;
  ImageDialog(platform::CommonDialogs& dialogs, FindPicture find_picture);

  platform::Form& form() { return form_; }
  bool isCancelled() const { return isCancelled_; }
  void set_isCancelled(bool cancelled) { isCancelled_ = cancelled; }
  enum class Side : std::uint8_t { Width, Height };
  /// In pixels, or in percent of the room that there is.
  void show_size(Side side, std::int32_t number, bool of_the_room);
  bool is_of_the_room(Side side) const;
  /// The proportion that the lock keeps. Throws RuntimeError(11) for a width of 0.
  void SetProp(std::int32_t width, std::int32_t height);
  /// Looks for the picture again: it may have come meanwhile.
  void show_picture();

 private:
  using Control = platform::FormControl;
  void add_size_rows();
  void add_other_rows();
  void Click(Control& control) override;
  void Change(Control& control) override;
  void Step(Control& box) override { keep_proportion(box); }
  void KeyDown(Control& box, std::int16_t& KeyCode, std::int16_t Shift) override;
  void KeyPress(Control& box, std::int16_t& KeyAscii) override;
  void KeyUp(Control& box, std::int16_t& KeyCode, std::int16_t Shift) override;
  void keep_proportion(Control& box);
  void fit_into_unit(Control& box);
  void browse();

  platform::CommonDialogs& dialogs_;
  const FindPicture find_picture_;
  platform::Form form_{u"frmImageSettings", u"Image Settings"};
  float proportion_ = 0;  // height by width
  bool isCancelled_ = true;
};

}  // namespace tvx::dialogs
