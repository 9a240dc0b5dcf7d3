#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::platform {

class Form;

enum class ControlKind : std::uint8_t {
  Label,
  TextBox,
  ComboBox,
  CheckBox,
  CommandButton,
  Frame,
  PictureBox
};

/// A colour of a form: blue, green and red from the third byte down, or 0x80000000 with the number of one of
/// the desktop's own colours.
using FormColour = std::uint32_t;
inline constexpr FormColour window_background = 0x80000005, button_face = 0x8000000F;

/// One control of a form, known by its name. Which members it has goes by its kind; a member that it doesn't
/// have throws RuntimeError(438). Setting a value that it has already notifies nobody.
class FormControl {
 public:
  FormControl(const FormControl&) = delete;
  FormControl& operator=(const FormControl&) = delete;

  const std::u16string& Name() const { return name_; }
  ControlKind kind() const { return kind_; }
  Form& form() const { return form_; }
  /// The frame that it stands in; null: the form itself.
  FormControl* container() const { return container_; }

  bool has_caption() const;
  bool has_text() const;

  /// Of labels, check boxes, buttons and frames. "&" stands before the letter that the keyboard reaches the
  /// control by, "&&" is the letter itself.
  const std::u16string& Caption() const;
  void set_Caption(std::u16string_view caption);
  /// Of text boxes; of lists the item that is chosen. A list ignores a text that is none of its items.
  const std::u16string& Text() const;
  void set_Text(std::u16string_view text);
  /// Of check boxes: ticked or not.
  bool Value() const;
  void set_Value(bool ticked);

  /// A control in a frame that is not enabled, or not visible, isn't either; this is its own state alone.
  bool Enabled() const { return enabled_; }
  void set_Enabled(bool enabled);
  bool Visible() const { return visible_; }
  void set_Visible(bool visible);
  const std::u16string& ToolTipText() const { return tool_tip_; }
  void set_ToolTipText(std::u16string_view text);
  FormColour BackColor() const { return back_color_; }
  void set_BackColor(FormColour colour);
  /// Of picture boxes: the path of the image file; empty shows nothing.
  const std::u16string& Picture() const;
  void set_Picture(std::u16string_view path);

  // --- lists: items count from 0 ---
  void AddItem(std::u16string_view item);
  /// Takes all items away; nothing is chosen then.
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  /// Throws RuntimeError(381) for an index that is none.
  const std::u16string& List(int index) const;
  /// The chosen item's, -1 if there is none. Setting throws RuntimeError(381) for an index that is none.
  int ListIndex() const;
  void set_ListIndex(int index);

  // --- for whoever draws it ---
  /// How many letters a box should show; none: as many as there is room for.
  std::optional<int> columns() const { return columns_; }
  void set_columns(int letters) { columns_ = letters; }
  /// The text box whose colour a button lets the user choose: the button shows that colour.
  FormControl* colour_field() const { return colour_field_; }
  void set_colour_field(FormControl& box) { colour_field_ = &box; }

  // --- for whoever uses it ---
  /// Whether the user could reach it: enabled and visible, and its frames too.
  bool reachable() const;
  /// The user's press on a button, or on a check box, which turns. Something that can't be reached, or is
  /// neither, doesn't answer: false. Throws what the press throws.
  bool click();

 private:
  friend class Form;
  FormControl(Form& form, ControlKind kind, std::u16string name, std::u16string caption,
              FormControl* container);
  void require(bool has, std::u16string_view member) const;
  void tell();
  void tell_change();

  Form& form_;
  const ControlKind kind_;
  const std::u16string name_;
  FormControl* const container_;
  std::u16string caption_, text_, tool_tip_, picture_;
  std::vector<std::u16string> items_;
  FormColour back_color_;
  std::optional<int> columns_;
  FormControl* colour_field_ = nullptr;
  bool enabled_ = true, visible_ = true, value_ = false;
};

}  // namespace tvx::platform
