#pragma once

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "browser/document_view.h"
#include "browser/html_document.h"
#include "qt/message_loop.h"
#include "qt/web_view.h"

namespace tvx::qt {

/// A document in a real view, off screen.
class RealView : public testing::Test {
 protected:
  RealView();
  ~RealView() override;

  /// Shows a document of this text, ready for editing, and waits until it is whole.
  void open(std::u16string_view html, bool settle_it = true);
  /// Pumps until the condition holds; false after that many milliseconds.
  bool wait_for(const std::function<bool()>& condition, int milliseconds = 20'000);
  bool settle(int milliseconds = 20'000);

  /// The value of an expression in the page, as text.
  std::string in_page(const std::string& script);
  /// The page's tree in the form of browser::print_mirrored.
  std::string shown();
  std::string expected() const;
  std::string html() const;  // of the body

  // --- what a user does; events are posted, nothing waits ---
  void post_key(int key, const QString& text = {}, Qt::KeyboardModifiers held = Qt::NoModifier);
  void post_text(const std::string& text);
  void post_press(QPoint point, Qt::MouseButton button = Qt::LeftButton, bool release = true);
  /// Where a character stands, in the first text of the element that the selector names.
  QPoint place_of(const std::string& selector, int offset);

  std::unique_ptr<QWidget> window_;
  MessageLoop loop_;
  std::unique_ptr<WebView> view_;
  std::unique_ptr<browser::DocumentView> document_view_;
  std::shared_ptr<browser::HTMLDocument> document_;
};

}  // namespace tvx::qt
