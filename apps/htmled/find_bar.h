#pragma once

#include <QFrame>
#include <QPointer>
#include <functional>
#include <utility>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace tvx::qt {
class HTMLedWidget;
}

namespace tvx::htmled {

/// Finds and replaces in the view that is in front, page or source, as the user types. It is there while it
/// is used, and leaves the keyboard to the editor when it goes.
class FindBar final : public QFrame {
  Q_OBJECT
 public:
  explicit FindBar(QWidget* parent);

  /// Where it looks from now on. `settle` is called before something is replaced: what the user has typed
  /// comes first.
  void set_editor(qt::HTMLedWidget* editor, std::function<void()> settle);
  /// With what is selected; several lines are what to look in.
  void open(bool with_replacement);
  void close_bar();
  /// To the next hit or the one before, also while the bar is closed.
  void step(bool forward);
  /// Another language may be spoken by now.
  void show_words();

 signals:
  /// Whether it is to be seen.
  void wanted(bool visible);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QToolButton* add_toggle(const char* name, const QString& sign);
  QToolButton* add_button(const char* name, const std::function<void()>& act);
  void lay_out();
  int options() const;
  bool take_selection();
  void search();
  void replace_one();
  void replace_all();
  /// Does it, and tells where an expression can't be used.
  void attempt(const std::function<void()>& act);
  void show_count();
  void say(const QString& text, bool wrong = false);
  void show_replacement(bool wanted);

  QPointer<qt::HTMLedWidget> editor_;
  std::function<void()> settle_;
  QLineEdit *sought_, *replacement_;
  QLabel *count_, *message_;
  QToolButton *more_, *case_, *words_, *expression_, *selection_, *previous_, *next_, *close_;
  QPushButton *replace_, *replace_all_;
  bool open_ = false;
  bool quiet_ = false;  // the texts are being set
};

}  // namespace tvx::htmled
