#pragma once

#include <deque>
#include <functional>
#include <string>

#include "tvx/platform/menu.h"

namespace tvx::headless {

/// What the user who isn't there will do with one popup.
struct ExpectedPopup {
  /// The menu's name; empty: any menu.
  std::u16string menu;
  /// The item: its name, with the index where it is in an array ("mnuClass(2)"), else its caption. Empty, or
  /// an item that can't be chosen: the popup is dismissed.
  std::u16string choose = {};
  /// Runs while the popup is open; it may pump, and it may open further popups.
  std::function<void(platform::Menu&)> while_open = {};
  /// How many popups are answered so; after that the expectation is used up.
  int times = 1;
  /// Handed back to the observer, to tell expectations apart.
  int id = 0;
};

/// Popup menus without a screen: each is answered by the oldest expectation of its name, and dismissed where
/// there is none.
class Menus final : public platform::PopupMenus {
 public:
  /// Hears of each popup when it closes, before the chosen item acts. `expected` is null if nobody expected
  /// it, `chosen` if it was dismissed.
  using Observer =
      std::function<void(platform::Menu& menu, const ExpectedPopup* expected, const platform::Menu* chosen)>;

  void expect(ExpectedPopup expected) { expected_.push_back(std::move(expected)); }
  void forget(int id);
  std::size_t expectations() const { return expected_.size(); }
  void on_opened(std::function<void(platform::Menu&)> observer) { opened_ = std::move(observer); }
  void on_closed(Observer observer) { closed_ = std::move(observer); }
  /// The names of all menus that have popped up.
  const std::vector<std::u16string>& shown() const { return shown_; }
  void clear_shown() { shown_.clear(); }
  /// Where the last one popped up; none: at the mouse.
  const std::optional<platform::PopupPlace>& last_place() const { return last_place_; }

 private:
  platform::Menu* show(platform::Menu& menu, platform::WindowHandle owner,
                       const std::optional<platform::PopupPlace>& place) override;
  std::optional<ExpectedPopup> take(const platform::Menu& menu);

  std::deque<ExpectedPopup> expected_;
  std::function<void(platform::Menu&)> opened_;
  Observer closed_;
  std::vector<std::u16string> shown_;
  std::optional<platform::PopupPlace> last_place_;
};

}  // namespace tvx::headless
