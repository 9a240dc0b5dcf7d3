#pragma once

#include <QFrame>
#include <optional>

class QLabel;
class QPushButton;

namespace tvx::htmled {

/// What the user said of files that want pictures or style sheets from the web; kept in the program's
/// settings.
namespace remote_content {
std::optional<bool> remembered(const QString& file);
void remember(const QString& file, bool load);
}  // namespace remote_content

/// A line above the page that asks whether to load what a page wants from the web.
class RemoteContentBar final : public QFrame {
  Q_OBJECT
 public:
  explicit RemoteContentBar(QWidget* parent);
  /// Another language may be spoken by now.
  void show_words();

 signals:
  void answered(bool load);

 private:
  QLabel* question_;
  QPushButton* load_;
  QPushButton* leave_;
};

}  // namespace tvx::htmled
