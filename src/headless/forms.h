#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/platform/form.h"

namespace tvx::headless {

/// What the user who isn't there will do with one form.
struct ExpectedForm {
  /// The form's name; empty: any form.
  std::u16string form;
  /// Runs while the form is open; it may fill the controls, pump, and open further dialogs.
  std::function<void(platform::Form&)> while_open = {};
  /// The button that is pressed then: its name, else its caption. Empty: the form is cancelled.
  std::u16string press = {};
  /// How many forms are answered so; after that the expectation is used up.
  int times = 1;
  /// Handed back to the observer, to tell expectations apart.
  int id = 0;
};

/// Forms without a screen: each is answered by the oldest expectation of its name, and cancelled where there
/// is none, or where it is still open after the button's press.
class Forms final : public platform::Forms, private platform::FormObserver {
 public:
  ~Forms() override;
  /// Hears of each form when it closes. `expected` is null if nobody expected it; `failure` is what the
  /// expectation's work or the button's press ended with.
  using Observer = std::function<void(platform::Form& form, const ExpectedForm* expected,
                                      const std::optional<RuntimeError>& failure)>;

  void expect(ExpectedForm expected) { expected_.push_back(std::move(expected)); }
  void forget(int id);
  std::size_t expectations() const { return expected_.size(); }
  void on_opened(std::function<void(platform::Form&)> observer) { opened_ = std::move(observer); }
  void on_closed(Observer observer) { closed_ = std::move(observer); }

  /// Those of the screen that isn't there.
  std::vector<std::u16string> fonts() const override { return fonts_; }
  void set_fonts(std::vector<std::u16string> names) { fonts_ = std::move(names); }

  /// The form in front; null if none is open.
  platform::Form* open() const { return open_.empty() ? nullptr : open_.back(); }
  /// Whether nobody waits for it.
  bool is_beside(const platform::Form& form) const;
  /// Who was named as the last one's owner.
  platform::WindowHandle last_owner() const { return last_owner_; }
  /// The names of all forms that were shown.
  const std::vector<std::u16string>& shown() const { return shown_; }

 private:
  void run(platform::Form& form, platform::WindowHandle owner) override;
  void open(platform::Form& form, platform::WindowHandle owner) override;
  void control_changed(platform::FormControl&) override {}
  void caption_changed(platform::Form&) override {}
  void form_hidden(platform::Form& form) override;
  std::optional<ExpectedForm> take(const platform::Form& form);
  static void act(platform::Form& form, const ExpectedForm& expected);

  /// A form that nobody waits for: its expectation is acted on when it opens, and told when it goes.
  struct Beside {
    platform::Form* form;
    std::optional<ExpectedForm> expected;
    std::optional<RuntimeError> failure;
  };

  std::deque<ExpectedForm> expected_;
  std::vector<Beside> beside_;
  std::function<void(platform::Form&)> opened_;
  Observer closed_;
  std::vector<platform::Form*> open_;  // the one in front last
  std::vector<std::u16string> shown_;
  std::vector<std::u16string> fonts_ = {u"Arial",     u"Courier",   u"cursive",      u"fantasy",
                                        u"Helvetica", u"monospace", u"sans-serif",   u"serif",
                                        u"Times",     u"Western",   u"Zapf-Chancery"};
  platform::WindowHandle last_owner_ = platform::WindowHandle::none;
};

// --- what a user does with one control; RuntimeError(5) where it can't be reached ---
/// Types into a box, key by key where it reports its keys, or picks from a list.
void fill(platform::FormControl& control, std::u16string_view text);
/// Presses the check box if it isn't as wanted.
void tick(platform::FormControl& control, bool ticked);

}  // namespace tvx::headless
