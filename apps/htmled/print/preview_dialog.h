#pragma once

#include <QDialog>

class QAction;
class QLabel;
class QSpinBox;
class QToolBar;

namespace tvx::htmled {

class SheetsView;
class Window;

/// The page in front as it will be printed, with all that is done from there: turning sheets, page setup,
/// printing, the PDF.
class PreviewDialog final : public QDialog {
  Q_OBJECT
 public:
  explicit PreviewDialog(Window& window);

  SheetsView& sheets() { return *sheets_; }

 private:
  QToolBar* make_bar();
  QAction* add(QToolBar& bar, const QString& text, const char* name, const QKeySequence& keys = {});
  void add_turning(QToolBar& bar);
  void add_zoom(QToolBar& bar);
  /// Makes the sheets anew.
  void look();
  void show_state();

  Window& window_;
  SheetsView* sheets_;
  QAction *before_ = nullptr, *next_ = nullptr, *whole_ = nullptr, *width_ = nullptr;
  QSpinBox* number_ = nullptr;
  QLabel *count_ = nullptr, *zoom_ = nullptr;
};

void open_preview(Window& window);

/// Asks for paper, margins, header and footer, and keeps them for all documents. False: the user gave up.
bool ask_page_setup(Window& window, QWidget* parent);

}  // namespace tvx::htmled
