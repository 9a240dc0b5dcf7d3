#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace tvx::htmled {

/// A colour as CSS writes it, with a button that shows it and opens the desktop's dialog for colours. Empty:
/// the page says nothing of it.
class ColourField final : public QWidget {
  Q_OBJECT
 public:
  explicit ColourField(const QString& name, QWidget* parent = nullptr);
  QString text() const;
  void set_text(const QString& text);

 signals:
  void changed();

 private:
  void show_colour();
  void ask();

  QLineEdit* line_;
  QToolButton* button_;
};

}  // namespace tvx::htmled
