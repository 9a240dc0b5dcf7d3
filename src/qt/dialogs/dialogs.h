#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include "tvx/platform/common_dialogs.h"

namespace tvx::qt {

/// The desktop's own dialogs, modal over the window that they are made for.
class Dialogs final : public platform::CommonDialogs {
 public:
  explicit Dialogs(QWidget& window) : window_(&window) {}

  Colour ShowColor(Colour colour, platform::WindowHandle owner) override;
  std::u16string ShowOpen(const platform::FileDialog& dialog) override;
  std::u16string ShowSave(const platform::FileDialog& dialog) override;
  platform::MessageAnswer show_message(const platform::MessageBox& box) override;
  std::optional<std::u16string> ask_link(const platform::LinkDialog& dialog) override;

  /// Where file dialogs open: at first the working folder, later where the user last chose a file.
  void set_folder(const QString& folder) { folder_ = folder; }
  const QString& folder() const { return folder_; }

 private:
  class FileChooser;
  std::u16string choose(FileChooser& chooser);
  QWidget* owner() const;

  QPointer<QWidget> window_;
  QString folder_;
};

/// The filter list in Qt's form: "Images (*.gif *.jpg)". A pattern may bring further filters after bars, as
/// hosts have always handed them: "*.htm|All Files|*.*".
QStringList name_filters(const std::vector<platform::FileFilter>& filters);

}  // namespace tvx::qt
