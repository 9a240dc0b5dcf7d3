#pragma once

#include <QWidget>

#include "tvx/qt/source/code_box.h"
#include "tvx/source/code_view.h"

namespace tvx::qt {

/// The code view on the screen: the box, and the pane that paints the numbers of its lines. The pane is as
/// wide as the largest number wants, and never narrower than asked for; in an interface from right to left it
/// stands at the right.
class CodeViewFace final : public QWidget, private source::CodeViewObserver {
 public:
  /// The code view outlives its face.
  CodeViewFace(source::OrvelCV& code, QWidget* parent);
  ~CodeViewFace() override;

  QPlainTextEdit* text_box() const { return box_.widget(); }
  QWidget* pane() const;
  CodeBox& box() { return box_; }
  /// Of the code and of its numbers.
  void set_code_font(const QFont& font);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Pane;
  void code_view_changed() override;
  void line_numbers_changed() override;
  void lay_out();
  int pane_width() const;
  void paint_numbers(QPaintEvent& event);

  source::OrvelCV& code_;
  Pane* pane_;
  CodeBox box_;
  int laid_out_width_ = 0;
};

}  // namespace tvx::qt
