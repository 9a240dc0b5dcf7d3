#pragma once

#include <QWidget>
#include <vector>

#include "tvx/files/page_properties.h"

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace tvx::htmled {

/// The style sheets of a page in their order: linked ones by their address, the page's own by their rules.
class SheetsField final : public QWidget {
  Q_OBJECT
 public:
  explicit SheetsField(QWidget* parent = nullptr);
  void set_sheets(std::vector<files::PageProperties::Sheet> sheets);
  const std::vector<files::PageProperties::Sheet>& sheets() const { return sheets_; }

 signals:
  void changed();

 private:
  QPushButton* add_button(const QString& text, const char* name);
  void add(bool linked);
  void remove();
  void move(int by);
  void show_list(int row);
  void show_text();
  void take_text();

  std::vector<files::PageProperties::Sheet> sheets_;
  QListWidget* list_;
  QLabel* kind_;
  QPlainTextEdit* text_;
  QPushButton *link_, *embed_, *remove_, *up_, *down_;
  bool showing_ = false;
};

}  // namespace tvx::htmled
