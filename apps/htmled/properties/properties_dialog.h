#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "tvx/files/page_properties.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QTabWidget;

namespace tvx::htmled {

class ColourField;
class SheetsField;

/// What a page says of itself as a whole: title, language, character set, what search engines read, colours
/// and style sheets.
class PropertiesDialog final : public QDialog {
  Q_OBJECT
 public:
  PropertiesDialog(const files::PageProperties& properties, const QString& name, QWidget* parent);

  /// As the user left them.
  files::PageProperties properties() const;
  /// Whether the page below is to show them meanwhile.
  bool shows_changes() const;

 signals:
  /// After a change, when the user has paused.
  void changed();

 private:
  using Text = std::u16string files::PageProperties::*;
  struct Line {
    Text member;
    std::function<QString()> text;
  };

  QWidget* make_general();
  QWidget* make_appearance();
  void add_line(QFormLayout& form, const QString& label, Text member, const char* name,
                const QString& hint = {});
  void add_choice(QFormLayout& form, const QString& label, Text member, const char* name,
                  const QStringList& choices);
  void add_colour(QFormLayout& form, const QString& label, Text member, const char* name);

  const files::PageProperties before_;
  std::vector<Line> lines_;
  SheetsField* sheets_;
  QCheckBox* preview_;
};

}  // namespace tvx::htmled
