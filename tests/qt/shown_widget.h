#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::qt {

/// A widget in use.
class ShownWidget : public testing::Test {
 protected:
  ShownWidget() : widget_(std::make_unique<HTMLedWidget>(loop_)) {}

  void show(const QString& html) {
    widget_->show();
    widget_->set_DocumentHTML(html);
  }
  bool settle() {
    return wait_for([&] { return widget_->document_view().settled(); });
  }
  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop_.now() + 20'000;
    while (!condition() && loop_.now() < end) loop_.pump(20);
    return condition();
  }

  MessageLoop loop_;
  std::unique_ptr<HTMLedWidget> widget_;
};

}  // namespace tvx::qt
