#pragma once

#include <QDialog>
#include <array>

#include "tvx/page_setup.h"

class QComboBox;
class QDoubleSpinBox;
class QGroupBox;
class QRadioButton;

namespace tvx::htmled {

/// Paper, margins, header and footer.
class PageSetupDialog final : public QDialog {
  Q_OBJECT
 public:
  PageSetupDialog(const qt::PageSetup& setup, QWidget* parent);

  /// As the user left it.
  qt::PageSetup setup() const;

 private:
  struct LineFields {
    QGroupBox* box = nullptr;
    QComboBox *left = nullptr, *middle = nullptr, *right = nullptr;
  };

  QWidget* make_paper();
  QWidget* make_margins();
  LineFields make_line(const QString& title, const QString& name, const qt::PageSetup::Line& line);
  QComboBox* make_text(qt::PageSetup::Text chosen, const QString& name);
  /// So much paper is left between the margins that something can be read.
  void limit_margins();
  QPageLayout chosen_paper() const;

  const qt::PageSetup before_;
  QComboBox* size_ = nullptr;
  QRadioButton *portrait_ = nullptr, *landscape_ = nullptr;
  std::array<QDoubleSpinBox*, 4> margins_{};  // left, top, right, bottom
  LineFields header_, footer_;
};

}  // namespace tvx::htmled
