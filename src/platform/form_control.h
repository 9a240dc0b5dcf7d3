#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::platform {

class Form;
class ListView;

enum class ControlKind : std::uint8_t {
  Label,
  TextBox,
  ComboBox,
  ListBox,
  ListView,
  CheckBox,
  CommandButton,
  Frame,
  PictureBox
};

/// A colour of a form: blue, green and red from the third byte down, or 0x80000000 with the number of one of
/// the desktop's own colours.
using FormColour = std::uint32_t;
inline constexpr FormColour window_background = 0x80000005, button_face = 0x8000000F;

/// What a box for a number is for: from where to where the arrows beside it go, and how far at a time. What
/// is typed is the dialog's business.
struct NumberRange {
  int least = 0, most = 32767, step = 1;
};

/// Letters that show what a choice of font, size and colours looks like. What is empty is the desktop's own.
struct TextSample {
  std::u16string font, colour, background;
  int size = 0;  // 1 to 7, as documents count; 0: none is given
  bool operator==(const TextSample&) const = default;
};

/// One control of a form, known by its name. Which members it has goes by its kind; a member that it doesn't
/// have throws RuntimeError(438). Setting a value that it has already notifies nobody.
class FormControl {
 public:
  ~FormControl();
  FormControl(const FormControl&) = delete;
  FormControl& operator=(const FormControl&) = delete;

  const std::u16string& Name() const { return name_; }
  ControlKind kind() const { return kind_; }
  Form& form() const { return form_; }
  /// The frame that it stands in; null: the form itself.
  FormControl* container() const { return container_; }

  bool has_caption() const;
  bool has_text() const;
  /// Whether it has items to pick from.
  bool is_list() const;

  /// Of labels, check boxes, buttons and frames. "&" stands before the letter that the keyboard reaches the
  /// control by, "&&" is the letter itself.
  const std::u16string& Caption() const;
  void set_Caption(std::u16string_view caption);
  /// Of text boxes; of lists the item that is chosen. A list ignores a text that is none of its items, unless
  /// it takes typed text.
  const std::u16string& Text() const;
  void set_Text(std::u16string_view text);
  /// Of boxes that take typed text: what is selected in it, or where the caret stands. A new text has its
  /// caret at the start. What lies after the text is cut off.
  int SelStart() const;
  int SelLength() const;
  void select(int start, int length);
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
  /// Whatever the dialog wants to remember with it.
  const std::u16string& Tag() const { return tag_; }
  void set_Tag(std::u16string_view text) { tag_ = text; }
  FormColour BackColor() const { return back_color_; }
  void set_BackColor(FormColour colour);
  /// Of picture boxes: the path of the image file; empty shows nothing.
  const std::u16string& Picture() const;
  void set_Picture(std::u16string_view path);

  /// Of lists with columns.
  ListView& list_view() const;

  // --- lists: items count from 0; an index that is none throws RuntimeError(381) ---
  void AddItem(std::u16string_view item);
  void RemoveItem(int index);
  /// Takes all items away; nothing is chosen then.
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  const std::u16string& List(int index) const;
  void set_List(int index, std::u16string_view item);
  /// The chosen item's, -1 if there is none.
  int ListIndex() const;
  void set_ListIndex(int index);

  // --- for whoever draws it ---
  /// How many letters a box should show; none: as many as there is room for.
  std::optional<int> columns() const { return columns_; }
  void set_columns(int letters) { columns_ = letters; }
  /// The text box whose colour a button lets the user choose: the button shows that colour.
  FormControl* colour_field() const { return colour_field_; }
  void set_colour_field(FormControl& box) { colour_field_ = &box; }
  /// Of lists that open: whether the user may type what isn't in it.
  bool takes_text() const { return kind_ == ControlKind::TextBox || takes_text_; }
  /// Of lists: each item is the name of a font, and is shown in it.
  bool shows_fonts() const { return shows_fonts_; }
  void set_shows_fonts() { shows_fonts_ = true; }
  /// Of text boxes that are for numbers.
  const std::optional<NumberRange>& number() const { return number_; }
  void set_number(NumberRange range) { number_ = range; }
  /// Of text boxes: a passage that is only read, on as many lines as it takes; what is selected in it is
  /// marked.
  bool is_passage() const { return is_passage_; }
  void set_passage() { is_passage_ = true; }
  /// Of text boxes: texts that the user may pick instead of typing, the likeliest first.
  const std::vector<std::u16string>& offered() const { return offered_; }
  void set_offered(std::vector<std::u16string> texts) { offered_ = std::move(texts); }
  /// Of labels: the style of what they say, where they show one.
  const std::optional<TextSample>& sample() const { return sample_; }
  void set_sample(TextSample sample);
  /// Why what stands there is no good, to be marked and told beside it; empty: nothing is wrong.
  const std::u16string& fault() const { return fault_; }
  void set_fault(std::u16string_view reason);

  // --- for whoever uses it ---
  /// Whether the user could reach it: enabled and visible, and its frames too.
  bool reachable() const;
  /// The user's press on a button, or on a check box, which turns. Something that can't be reached, or is
  /// neither, doesn't answer: false. Throws what the press throws.
  bool click();
  /// The user picks an item of a list, or none: -1.
  bool choose(int index);
  bool double_click();
  /// The user steps the number of a box that is for one, by so many steps, within its range.
  bool step(int steps);
  /// The user has edited the text, and the selection is what stands here.
  void edit(std::u16string_view text, int start, int length);

  // --- keys of text boxes: the handler's word on them, asked by whoever has the keyboard ---
  /// Whether the handler wants to hear of its keys.
  bool reports_keys() const { return reports_keys_; }
  void set_reports_keys() { reports_keys_ = true; }
  /// A key goes down, or up: its code, or 0 where it is taken away. A key that is taken away does nothing;
  /// the character that it types is asked about by itself.
  std::int16_t key_down(std::int16_t code, std::int16_t shift);
  std::int16_t key_up(std::int16_t code, std::int16_t shift);
  /// A character is typed: what comes into the box instead, 0 for nothing.
  std::int16_t key_press(std::int16_t character);

 private:
  friend class Form;
  FormControl(Form& form, ControlKind kind, std::u16string name, std::u16string caption,
              FormControl* container);
  void require(bool has, std::u16string_view member) const;
  void tell();
  void tell_change();
  void require_item(int index) const;

  Form& form_;
  const ControlKind kind_;
  const std::u16string name_;
  FormControl* const container_;
  std::u16string caption_, text_, tool_tip_, picture_, fault_;
  std::u16string tag_;
  std::unique_ptr<ListView> list_view_;
  std::vector<std::u16string> items_, offered_;
  int index_ = -1;  // of a list box: items may be alike
  int selection_start_ = 0, selection_length_ = 0;
  FormColour back_color_;
  std::optional<int> columns_;
  FormControl* colour_field_ = nullptr;
  std::optional<NumberRange> number_;
  std::optional<TextSample> sample_;
  bool takes_text_ = false, shows_fonts_ = false, reports_keys_ = false, is_passage_ = false;
  bool enabled_ = true, visible_ = true, value_ = false;
};

}  // namespace tvx::platform
