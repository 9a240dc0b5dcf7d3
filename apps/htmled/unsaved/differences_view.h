#pragma once

#include <QTextBrowser>
#include <string_view>

namespace tvx::htmled {

/// Shows how one page became another, line by line of their source: what was taken away has a minus before it
/// and is red, what came has a plus and is green.
class DifferencesView final : public QTextBrowser {
  Q_OBJECT
 public:
  explicit DifferencesView(QWidget* parent = nullptr);
  void show_differences(std::u16string_view before, std::u16string_view after);
};

}  // namespace tvx::htmled
