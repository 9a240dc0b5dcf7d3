#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <functional>
#include <optional>

#include "htmled/window.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/bars/branch_face.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::htmled {

/// Somebody who sees the editor for the first time: all by events as a mouse and a keyboard give them.
class Newcomer : public testing::Test {
 protected:
  Newcomer() {
    window_.resize(1000, 720);
    window_.show();
    // Whatever dialog comes is left by Escape, as one does who doesn't know it.
    QObject::connect(&dismiss_, &QTimer::timeout, [this] {
      QWidget* dialog = QApplication::activeModalWidget();
      if (!dialog || QApplication::activePopupWidget()) return;
      ++dialogs_;
      if (answer_) {
        std::exchange(answer_, {})(*dialog);
      } else {
        static_cast<QDialog*>(dialog)->reject();
      }
    });
    dismiss_.start(20);
  }

  core::HTMLed& control() { return window_.editor().control(); }
  browser::HTMLDocument& document() { return *control().DOM(); }

  bool wait_for(const std::function<bool()>& condition, int milliseconds = 10'000) {
    const std::int64_t end = loop_.now() + milliseconds;
    while (!condition()) {
      if (loop_.now() > end) return false;
      loop_.pump(5);
    }
    return true;
  }
  void settle() {
    for (int i = 0; i < 3; ++i) loop_.pump(0);
    ASSERT_TRUE(wait_for([&] { return window_.editor().document_view().settled(); }));
  }
  void open(std::u16string_view html) {
    control().set_DocumentHTML(html);
    settle();
    ask_page("window.getSelection().removeAllRanges()");
  }

  std::string ask_page(const QString& script) {
    auto answer = std::make_shared<std::optional<std::string>>();
    window_.editor().view().page()->runJavaScript(
        script, QWebEngineScript::ApplicationWorld,
        [answer](const QVariant& value) { *answer = value.toString().toStdString(); });
    wait_for([&] { return answer->has_value(); });
    return answer->value_or("");
  }
  /// The middle of an element, or of a character in its first text.
  QPoint place_of(const QString& selector, int character = -1) {
    const QString box =
        character < 0 ? QStringLiteral("document.querySelector('%1').getBoundingClientRect()").arg(selector)
                      : QStringLiteral(
                            "(() => { const r = document.createRange(); const t = "
                            "document.createTreeWalker(document.querySelector('%1'), 4).nextNode(); "
                            "r.setStart(t, %2); r.collapse(true); return r.getClientRects()[0]; })()")
                            .arg(selector)
                            .arg(character);
    const std::string at = ask_page(
        QStringLiteral("(() => { const r = %1; return Math.round(r.left + Math.min(r.width, 40) / 2) + ' ' + "
                       "Math.round(r.top + r.height / 2); })()")
            .arg(box));
    int x = 0, y = 0;
    EXPECT_EQ(std::sscanf(at.c_str(), "%d %d", &x, &y), 2) << selector.toStdString() << ": " << at;
    return {x, y};
  }

  QPoint corner_of(const QString& selector) {
    const std::string at = ask_page(
        QStringLiteral("(() => { const r = document.querySelector('%1').getBoundingClientRect(); return "
                       "Math.round(r.left) + ' ' + Math.round(r.top); })()")
            .arg(selector));
    int x = 0, y = 0;
    EXPECT_EQ(std::sscanf(at.c_str(), "%d %d", &x, &y), 2) << selector.toStdString() << ": " << at;
    return {x, y};
  }

  // --- the keyboard ---
  void focus_document() {
    window_.editor().view().input_widget()->setFocus();
    ASSERT_EQ(pane_with_focus(), "document");
  }
  /// The bar that has the focus, or "document".
  std::string pane_with_focus() {
    const QWidget* focused = QApplication::focusWidget();
    if (!focused) return "none";
    if (focused == window_.editor().view().input_widget()) return "document";
    return focused->parentWidget() ? focused->parentWidget()->objectName().toStdString() : "another";
  }

  void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons buttons) {
    QWidget* target = window_.editor().view().input_widget();
    ASSERT_NE(target, nullptr);
    QCoreApplication::postEvent(target, new QMouseEvent(type, place, target->mapToGlobal(QPointF(place)),
                                                        button, buttons, Qt::NoModifier));
  }
  void press(QPoint place, Qt::MouseButton button = Qt::LeftButton) {
    mouse(QEvent::MouseButtonPress, place, button, button);
    mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton);
    settle();
  }
  void drag(QPoint from, QPoint to) {
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    settle();
    // A hand moves a pixel at a time; the page wants a frame between.
    for (int step = 1; step <= 8; ++step) {
      mouse(QEvent::MouseMove, from + (to - from) * step / 8, Qt::NoButton, Qt::LeftButton);
      const std::int64_t next = loop_.now() + 20;
      wait_for([&] { return loop_.now() >= next; });
    }
    mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    // The page tells of its selection once it has painted it.
    ASSERT_TRUE(wait_for([this] { return !document().editor().selection().collapsed(); }, 3000));
    settle();
  }
  void type(const QString& text) {
    QWidget* target = window_.editor().view().input_widget();
    for (const QChar c : text)
      for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
        QCoreApplication::postEvent(
            target, new QKeyEvent(type, c == u'\n' ? int(Qt::Key_Return) : c.toUpper().unicode(),
                                  Qt::NoModifier, c == u'\n' ? QString(u'\r') : QString(c)));
    settle();
  }
  void select_all() {
    document().select([&](editing::Selection& selection) {
      selection.set({document().body(), 0}, {document().body(), dom::length_of(*document().body())});
    });
    settle();
  }

  static void click(QWidget* target) {
    ASSERT_NE(target, nullptr);
    const QPointF place = QRectF(target->rect()).center(), global = target->mapToGlobal(place);
    QMouseEvent down(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &down);
    QMouseEvent up(QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target, &up);
  }
  void click_button(int index) {
    auto* bar = window_.editor().findChild<qt::ToolbarFace*>(QStringLiteral("Toolbar1"));
    ASSERT_NE(bar, nullptr);
    click(bar->button_widget(index));
    settle();
  }

  /// What the user does with the next popup: null leaves it by Escape, else the item of that name is chosen.
  void in_popup(const QString& item) {
    popup_.clear();
    auto* timer = new QTimer(&window_);
    QObject::connect(timer, &QTimer::timeout, [this, timer, item] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!menu) return;
      timer->deleteLater();
      timer->stop();
      popup_ = menu->objectName();
      choose(*menu, item);
    });
    timer->start(5);
  }
  static void key(QWidget& target, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&target, &event);
  }
  static void choose(QMenu& menu, const QString& item) {
    for (QAction* action : menu.actions()) {
      if (item.isEmpty() || !action->isEnabled()) continue;
      if (action->objectName() == item) {
        menu.setActiveAction(action);
        return key(menu, Qt::Key_Return);
      }
      if (!action->menu() || !action->menu()->findChild<QAction*>(item, Qt::FindDirectChildrenOnly)) continue;
      menu.setActiveAction(action);
      key(menu, Qt::Key_Right);
      return choose(*action->menu(), item);
    }
    while (auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget())) key(*open, Qt::Key_Escape);
  }
  /// A right press in the page, and what comes of it.
  void right_press(const QString& selector, const QString& item) {
    in_popup(item);
    press(place_of(selector), Qt::RightButton);
    ASSERT_TRUE(wait_for([&] { return !popup_.isEmpty() && !QApplication::activePopupWidget(); }, 3000))
        << selector.toStdString() << " " << item.toStdString();
    settle();
  }

  std::string html() { return to_utf8(dom::inner_html(*document().body())); }
  /// What is written reads back as the same tree.
  void expect_well_formed() {
    const std::u16string written = dom::inner_html(*document().body());
    const auto again = dom::parse_document(u"<!DOCTYPE html><body>" + written);
    EXPECT_EQ(dom::inner_html(*again->body()), written);
  }

  qt::MessageLoop loop_;
  QTimer dismiss_;
  int dialogs_ = 0;
  std::function<void(QWidget&)> answer_;
  QString popup_;
  Window window_{loop_};
};

}  // namespace tvx::htmled
