#pragma once

#include <QDialog>
#include <vector>

#include "htmled/templates/page_templates.h"

class QListWidget;
class QPushButton;
class QTextBrowser;

namespace tvx::htmled {

/// The templates, and what the chosen one looks like.
class TemplateDialog final : public QDialog {
  Q_OBJECT
 public:
  /// In the language that the program speaks.
  TemplateDialog(const QString& language, QWidget* parent);
  /// Null: none.
  const PageTemplate* chosen() const;

 private:
  void fill();
  void show_chosen();
  void open_folder();

  const QString language_;
  std::vector<PageTemplate> all_;
  QListWidget* list_;
  QTextBrowser* preview_;
  QPushButton* create_;
};

}  // namespace tvx::htmled
