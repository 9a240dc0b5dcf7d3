#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A toolbar as a model: what a desktop draws, a script reads and a user presses. No widget in sight.
namespace tvx::platform {

class Toolbar;

enum class ButtonStyle : std::uint8_t { Default, Separator };

/// One button. Setting a value that it has already notifies nobody.
class Button {
 public:
  /// 1-based position in its toolbar.
  int Index() const { return index_; }
  const std::u16string& Key() const { return key_; }
  ButtonStyle Style() const { return style_; }
  const std::u16string& Image() const { return image_; }

  const std::u16string& Caption() const { return caption_; }
  void set_Caption(std::u16string_view caption);
  const std::u16string& ToolTipText() const { return tool_tip_; }
  void set_ToolTipText(std::u16string_view text);
  /// Whatever the toolbar's owner wants to find again.
  const std::u16string& Tag() const { return tag_; }
  void set_Tag(std::u16string_view tag) { tag_ = tag; }
  bool Enabled() const { return enabled_; }
  void set_Enabled(bool enabled);
  /// Why it can't act just now, enabled or not; empty where it can. Programs enable a button; this is what
  /// the state of things allows. A desktop shows it grey, with this as its tip.
  const std::u16string& Obstacle() const { return obstacle_; }
  void set_Obstacle(std::u16string_view reason);
  bool Visible() const { return visible_; }
  void set_Visible(bool visible);
  /// Its position in the toolbar, in twips.
  float Left() const;
  float Top() const;
  /// As its toolbar has it for all; a separator is narrower.
  float Width() const;
  float Height() const;
  /// 1 is shown pressed, 0 released; anything else throws RuntimeError(380).
  int Value() const { return value_; }
  void set_Value(int value);

 private:
  friend class Toolbar;
  Button(Toolbar& toolbar, int index) : toolbar_(&toolbar), index_(index) {}
  Toolbar* toolbar_;
  int index_;
  std::u16string key_, caption_, tool_tip_, image_, tag_, obstacle_;
  ButtonStyle style_ = ButtonStyle::Default;
  bool enabled_ = true, visible_ = true;
  int value_ = 0;
};

/// What a new button is made of.
struct ButtonDefinition {
  std::u16string key, caption, tool_tip, image;
  ButtonStyle style = ButtonStyle::Default;
};

struct ButtonPlace {
  float left = 0, top = 0;
};

class ToolbarObserver {
 public:
  virtual ~ToolbarObserver() = default;
  /// Buttons came, went or changed their size.
  virtual void buttons_replaced(Toolbar& toolbar) = 0;
  /// One button has another caption, tooltip, style or state.
  virtual void button_changed(Toolbar& toolbar, Button& button) = 0;
  /// Refresh was called: a drawn toolbar brings itself up to date now.
  virtual void refreshed(Toolbar&) {}
};

/// Who acts when the user presses a button.
class ToolbarHandler {
 public:
  virtual ~ToolbarHandler() = default;
  virtual void ButtonClick(Toolbar& toolbar, Button& button) = 0;
};

/// Buttons in a row that wraps. Lengths are twips. Buttons keep their address until they are removed.
class Toolbar {
 public:
  explicit Toolbar(std::u16string name);
  ~Toolbar();
  Toolbar(const Toolbar&) = delete;
  Toolbar& operator=(const Toolbar&) = delete;

  const std::u16string& Name() const { return name_; }

  // --- buttons; positions count from 1 ---
  int Count() const { return int(buttons_.size()); }
  /// Throws RuntimeError(5) for a position or a key that is none. Keys compare letter by letter.
  Button& Item(int index);
  Button& Item(std::u16string_view key);
  /// The first with that key without regard to case; null if there is none.
  Button* find_ignoring_case(std::u16string_view key);
  Button& Add(ButtonDefinition definition);
  void Remove(int index);
  void Clear();

  float ButtonWidth() const { return button_width_; }
  float ButtonHeight() const { return button_height_; }
  void set_ButtonWidth(float width);
  void set_ButtonHeight(float height);

  float Width() const { return width_; }
  void set_Width(float width) { width_ = width; }
  /// The height that the visible buttons take at this width: as fixed, else as measured by whoever draws
  /// them, else rows of 360 with buttons of the button width and separators of 120.
  float Height() const;
  /// What a script fixed; none: as drawn again.
  void set_measured_height(std::optional<float> height) { measured_height_ = height; }
  /// Whoever draws the toolbar answers what height it takes at a width, as it stands; none: counting.
  void set_measure(std::function<float(float width)> measure) { measure_ = std::move(measure); }
  /// Whoever draws the toolbar answers where its buttons stand; none: counting.
  void set_places(std::function<ButtonPlace(const Button&)> places) { places_ = std::move(places); }
  bool Visible() const { return visible_; }
  void set_Visible(bool visible);

  void Refresh();
  /// The user's press. A button that is not enabled, not visible or a separator doesn't answer: false.
  bool press(Button& button);

  void set_handler(ToolbarHandler* handler) { handler_ = handler; }
  void add_observer(ToolbarObserver& observer);
  void remove_observer(ToolbarObserver& observer);

 private:
  friend class Button;
  void tell_changed(Button& button);
  void tell_replaced();
  ButtonPlace place_of(const Button& button) const;
  /// Where each visible button stands where nobody draws, up to and including `last`; null: all of them.
  ButtonPlace walk(const Button* last) const;

  std::u16string name_;
  std::vector<std::unique_ptr<Button>> buttons_;
  float button_width_ = 345, button_height_ = 345;
  float width_ = 0;
  std::optional<float> measured_height_;
  std::function<float(float width)> measure_;
  std::function<ButtonPlace(const Button&)> places_;
  bool visible_ = true;
  ToolbarHandler* handler_ = nullptr;
  std::vector<ToolbarObserver*> observers_;
};

}  // namespace tvx::platform
