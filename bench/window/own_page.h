#pragma once

#include "htmled/window.h"
#include "tvx/browser/view/messages.h"
#include "tvx/qt/support/message_loop.h"
#include "window/edited_page.h"

namespace tvx::bench {

/// The editor's window.
class OwnPage final : public EditedPage {
 public:
  OwnPage();
  QWidget& window() override { return window_; }
  QWidget* input() override;
  QWebEnginePage& page() override;
  Opening open(const QString& file) override;
  void expect_key(bool writes) override;
  bool key_is_laid_out() override;
  quint32 world() const override;
  void place_caret() override;

  bool settled();

 private:
  qt::MessageLoop loop_;
  htmled::Window window_;
  int turns_ = 0;                             // that what was posted needs to arrive
  std::optional<browser::ViewFacts> before_;  // of a caret that is to move
};

}  // namespace tvx::bench
