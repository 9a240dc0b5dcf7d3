#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "tvx/platform/common_dialogs.h"

namespace tvx::headless {

/// What a dialog was opened with.
struct ColorDialog {
  Colour colour = white;
  platform::WindowHandle owner = platform::WindowHandle::none;
};
struct OpenDialog : platform::FileDialog {};
struct SaveDialog : platform::FileDialog {};
using ShownDialog =
    std::variant<ColorDialog, OpenDialog, SaveDialog, platform::MessageBox, platform::LinkDialog>;

/// The kinds, by the names that scripts use.
enum class DialogKind { color, open, save, msgbox, link };
DialogKind kind_of(const ShownDialog& dialog);
std::u16string_view name_of(DialogKind kind);

/// What the user who isn't there will do with one dialog.
struct ExpectedDialog {
  DialogKind kind;
  /// The colour, the path, the address or the button; nothing: the dialog is cancelled. An answer of another
  /// kind than the dialog's, or a button that the box doesn't have, cancels as well.
  std::variant<std::monostate, Colour, std::u16string, platform::MessageAnswer> answer = {};
  /// Runs while the dialog is open; it may pump, and it may open further dialogs.
  std::function<void(const ShownDialog&)> while_open = {};
  /// How many dialogs of this kind are answered so; after that the expectation is used up.
  int times = 1;
  /// Handed back to the observer, to tell expectations apart.
  int id = 0;
};

/// The common dialogs without a screen: each is answered by the oldest expectation of its kind, and
/// cancelled where there is none. Colours of the user's own are not kept, since nobody sees them.
class Dialogs : public platform::CommonDialogs {
 public:
  /// Hears of each dialog when it closes; `expected` is null if nobody expected it.
  using Observer = std::function<void(const ShownDialog& dialog, const ExpectedDialog* expected)>;

  void expect(ExpectedDialog expected) { expected_.push_back(std::move(expected)); }
  /// Takes back the expectations with that id.
  void forget(int id);
  std::size_t expectations() const { return expected_.size(); }
  void on_opened(std::function<void(const ShownDialog&)> observer) { opened_ = std::move(observer); }
  void on_closed(Observer observer) { closed_ = std::move(observer); }

  Colour ShowColor(Colour colour, platform::WindowHandle owner) override;
  std::u16string ShowOpen(const platform::FileDialog& dialog) override;
  std::u16string ShowSave(const platform::FileDialog& dialog) override;
  platform::MessageAnswer show_message(const platform::MessageBox& box) override;
  std::optional<std::u16string> ask_link(const platform::LinkDialog& dialog) override;

 private:
  /// The answer of the type asked for, if one was expected.
  template <class Answer>
  std::optional<Answer> show(const ShownDialog& dialog);
  std::optional<ExpectedDialog> take(DialogKind kind);

  std::deque<ExpectedDialog> expected_;
  std::function<void(const ShownDialog&)> opened_;
  Observer closed_;
};

}  // namespace tvx::headless
