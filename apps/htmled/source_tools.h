#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <string>

#include "tvx/core/observer.h"
#include "tvx/core/views/letter_place.h"

namespace tvx::core {
class HTMLed;
}
namespace tvx::qt {
class HTMLedWidget;
}

namespace tvx::htmled {

/// What the program does for the code view: help with writing, wrapped lines, the way to a line, and the
/// caret where it was in the other view.
class SourceTools final : public QObject, private core::HTMLedObserver {
  Q_OBJECT
 public:
  /// Goes with its editor.
  explicit SourceTools(qt::HTMLedWidget& editor);
  ~SourceTools() override;

  /// Whether lines are wrapped, from one start of the program to the next.
  static bool wraps();
  static void remember_wrapping(bool wraps);
  void follow_settings();
  /// Asks for a line of the code. Of no use in the page.
  void ask_for_line(QWidget* owner);

 private:
  void view_switched(bool in_code) override;
  void enter_code();
  void leave_code();

  qt::HTMLedWidget& editor_;
  std::weak_ptr<core::HTMLed> control_;
  std::optional<core::LetterPlace> in_page_;  // where the caret was on the way in, as the code has it
  // Where the code was left: it comes back to the same lines if the page's caret hasn't moved since.
  struct Left {
    core::LetterPlace place;
    std::u16string text;
    std::size_t start = 0, length = 0;
    int first_line = 0;
  };
  std::optional<Left> left_;
};

}  // namespace tvx::htmled
