#pragma once

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/web/web_view.h"

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
  void post_move(QPoint point, Qt::KeyboardModifiers held = Qt::NoModifier);
  void post_release(QPoint point, Qt::KeyboardModifiers held = Qt::NoModifier);
  /// Press, moves, release.
  void post_drag(QPoint from, QPoint to, Qt::KeyboardModifiers held = Qt::NoModifier);
  /// Where the first element stands that the selector names.
  QRect box_of(const std::string& selector);
  /// Waits until the page draws something over itself: "caret", "frame", "outline", "drop", or not any more.
  bool wait_for_drawn(const std::string& what, bool drawn = true);
  /// A picture of the window, in the folder that TVX_PICTURES names; nothing without that.
  void take_picture(const QString& name);
  /// The first element of that tag.
  dom::Element* element(dom::Tag tag) { return document_->first(tag); }
  /// Where a character stands, in the first text of the element that the selector names.
  QPoint place_of(const std::string& selector, int offset);

  std::unique_ptr<QWidget> window_;
  MessageLoop loop_;
  std::unique_ptr<WebView> view_;
  std::unique_ptr<browser::DocumentView> document_view_;
  std::shared_ptr<browser::HTMLDocument> document_;
};

}  // namespace tvx::qt
