#pragma once

#include "htmled/window.h"
#include "tvx/browser/view/messages.h"
#include "tvx/qt/support/message_loop.h"
#include "window/edited_page.h"
#include "window/samples.h"

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

  /// Opens a file and types as soon as the window is filled, until all is there or so many keys: each key's
  /// time to its layout.
  Samples type_while_it_comes(const QString& file, int most);
  /// Opens a file and presses Ctrl+End as soon as the window is filled: milliseconds until the end is in it.
  /// Nothing if all was there by then.
  std::optional<double> jump_while_it_comes(const QString& file);

 private:
  void open_to_the_window(const QString& file);
  void collapse_in_first_text();

  qt::MessageLoop loop_;
  htmled::Window window_;
  int turns_ = 0;                             // that what was posted needs to arrive
  std::optional<browser::ViewFacts> before_;  // of a caret that is to move
};

}  // namespace tvx::bench
