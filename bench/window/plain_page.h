#pragma once

#include <QWebChannel>
#include <QWebEngineView>

#include "window/edited_page.h"

namespace tvx::bench {

/// What a plain page tells: after each key and each move of the caret, when it is laid out.
class PlainPageEar final : public QObject {
  Q_OBJECT
 public:
  int heard = 0;
 public slots:
  void laid_out() { ++heard; }
};

/// A page whose body is `contenteditable`, without any editor: what the engine itself takes for the same.
class PlainPage final : public EditedPage {
 public:
  PlainPage();
  QWidget& window() override { return view_; }
  QWidget* input() override { return view_.focusProxy(); }
  QWebEnginePage& page() override { return *view_.page(); }
  Opening open(const QString& file) override;
  void expect_key(bool) override { expected_ = ear_.heard + 1; }
  bool key_is_laid_out() override { return ear_.heard >= expected_; }
  quint32 world() const override;
  void place_caret() override;

 private:
  QWebEngineView view_;
  QWebChannel channel_;
  PlainPageEar ear_;
  int expected_ = 0;
};

}  // namespace tvx::bench
