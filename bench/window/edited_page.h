#pragma once

#include <QString>
#include <QWebEnginePage>
#include <QWidget>
#include <optional>

namespace tvx::bench {

/// A page in a window that keys go to: the editor's, or a plain editable one in the same engine. Both are
/// asked the same.
class EditedPage {
 public:
  virtual ~EditedPage() = default;

  virtual QWidget& window() = 0;
  virtual QWidget* input() = 0;
  virtual QWebEnginePage& page() = 0;
  /// Opens a file, and answers how long it took until the window was filled, where that can be told, and
  /// until all was laid out: milliseconds.
  struct Opening {
    std::optional<double> filled;
    double whole = 0;
  };
  virtual Opening open(const QString& file) = 0;
  /// A key is about to come: one that writes, or one that moves the caret.
  virtual void expect_key(bool writes) = 0;
  virtual bool key_is_laid_out() = 0;
  /// The world of scripts that `ask` runs in.
  virtual quint32 world() const = 0;

  // --- for both ---
  void to_front();
  /// The value of an expression in the page, as text.
  QString ask(const QString& script);
  void post_key(int key, const QString& text = {}, Qt::KeyboardModifiers held = Qt::NoModifier);
  /// A key, to its layout.
  double key(int key, const QString& text = {});
  /// A letter, until it is seen in the window.
  double letter_to_pixel();
  /// Puts the caret after the first words of a paragraph that stands in the window.
  virtual void place_caret() = 0;

 private:
  QRect after_caret();
};

/// Runs the program's events until something holds; false where it doesn't within so many seconds.
bool wait_until(const std::function<bool()>& holds, double seconds = 120);
void rest(int milliseconds);
/// Milliseconds since the program's first question.
double now();

}  // namespace tvx::bench
