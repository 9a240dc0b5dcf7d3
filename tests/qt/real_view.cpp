#include "real_view.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWebEnginePage>
#include <QWebEngineScript>

#include "page_tree.h"
#include "tvx/base/strings.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"

namespace tvx::qt {
RealView::RealView() : window_(std::make_unique<QWidget>()) {
  window_->resize(800, 600);
  view_ = std::make_unique<WebView>(loop_, window_.get());
  view_->widget()->setGeometry(0, 0, 800, 600);
  document_view_ = std::make_unique<browser::DocumentView>(*view_, loop_);
  window_->show();
  window_->activateWindow();
}

RealView::~RealView() {
  document_view_.reset();
  view_.reset();
  window_.reset();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void RealView::open(std::u16string_view html, bool settle_it) {
  document_ = browser::HTMLDocument::create(dom::parse_document(html), u"file:///tmp/test.html");
  document_->finish_loading();
  document_->set_designMode(u"On");
  document_view_->show(document_);
  if (settle_it) {
    ASSERT_TRUE(settle());
    view_->widget()->setFocus();
    if (view_->input_widget()) view_->input_widget()->setFocus();
  }
}

bool RealView::wait_for(const std::function<bool()>& condition, int milliseconds) {
  const std::int64_t end = loop_.now() + milliseconds;
  while (!condition()) {
    if (loop_.now() > end) return false;
    loop_.pump(20);
  }
  return true;
}

bool RealView::settle(int milliseconds) {
  // What was posted arrives first.
  for (int i = 0; i < 3; ++i) loop_.pump(0);
  return wait_for([this] { return document_view_->settled(); }, milliseconds);
}

std::string RealView::in_page(const std::string& script) {
  auto answer = std::make_shared<std::optional<std::string>>();
  view_->page()->runJavaScript(QString::fromStdString(script), QWebEngineScript::ApplicationWorld,
                               [answer](const QVariant& value) { *answer = value.toString().toStdString(); });
  wait_for([&] { return answer->has_value(); }, 5000);
  return answer->value_or("no answer");
}

std::string RealView::shown() { return in_page(page_tree_script); }

std::string RealView::expected() const { return to_utf8(browser::print_mirrored(document_->tree())); }

std::string RealView::html() const { return to_utf8(dom::inner_html(*document_->body())); }

void RealView::post_key(int key, const QString& text, Qt::KeyboardModifiers held) {
  QWidget* target = view_->input_widget();
  ASSERT_NE(target, nullptr);
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, key, held, text));
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, key, held, text));
}

void RealView::post_text(const std::string& text) {
  for (const char c : text) {
    const int key = c == ' ' ? int(Qt::Key_Space) : QChar(c).toUpper().unicode();
    post_key(key, QString(QChar(c)));
  }
}

void RealView::post_press(QPoint point, Qt::MouseButton button, bool release) {
  QWidget* target = view_->input_widget();
  ASSERT_NE(target, nullptr);
  const QPointF at(point);
  const QPointF global = target->mapToGlobal(at);
  QCoreApplication::postEvent(
      target, new QMouseEvent(QEvent::MouseButtonPress, at, global, button, button, Qt::NoModifier));
  if (!release) return;
  QCoreApplication::postEvent(
      target, new QMouseEvent(QEvent::MouseButtonRelease, at, global, button, Qt::NoButton, Qt::NoModifier));
}

void RealView::post_move(QPoint point, Qt::KeyboardModifiers held) {
  QWidget* target = view_->input_widget();
  ASSERT_NE(target, nullptr);
  const QPointF at(point);
  QCoreApplication::postEvent(target, new QMouseEvent(QEvent::MouseMove, at, target->mapToGlobal(at),
                                                      Qt::NoButton, Qt::LeftButton, held));
}

void RealView::post_release(QPoint point, Qt::KeyboardModifiers held) {
  QWidget* target = view_->input_widget();
  ASSERT_NE(target, nullptr);
  const QPointF at(point);
  QCoreApplication::postEvent(target, new QMouseEvent(QEvent::MouseButtonRelease, at, target->mapToGlobal(at),
                                                      Qt::LeftButton, Qt::NoButton, held));
}

void RealView::post_drag(QPoint from, QPoint to, Qt::KeyboardModifiers held) {
  post_press(from, Qt::LeftButton, false);
  for (int step = 1; step <= 4; ++step) post_move(from + (to - from) * step / 4, held);
  post_release(to, held);
}

QRect RealView::box_of(const std::string& selector) {
  const std::string at = in_page("(function () { const r = document.querySelector('" + selector +
                                 "').getBoundingClientRect(); return [r.left, r.top, r.width, "
                                 "r.height].map(Math.round).join(' '); })()");
  int x = 0, y = 0, width = 0, height = 0;
  EXPECT_EQ(std::sscanf(at.c_str(), "%d %d %d %d", &x, &y, &width, &height), 4) << at;
  return {x, y, width, height};
}

bool RealView::wait_for_drawn(const std::string& what, bool drawn) {
  const std::string question = "String(Boolean(tvxView.drawn()." + what + "))";
  return wait_for([&] { return in_page(question) == (drawn ? "true" : "false"); }, 3000);
}

void RealView::take_picture(const QString& name) {
  const QString folder = qEnvironmentVariable("TVX_PICTURES");
  if (folder.isEmpty()) return;
  wait_for([] { return false; }, 300);  // for the engine to paint
  window_->grab().save(folder + QStringLiteral("/") + name);
}

QPoint RealView::place_of(const std::string& selector, int offset) {
  const std::string at = in_page(
      "(function () { const walker = document.createTreeWalker(document.querySelector('" + selector +
      "'), NodeFilter.SHOW_TEXT); const range = document.createRange(); range.setStart(walker.nextNode(), " +
      std::to_string(offset) +
      "); range.collapse(true); const r = range.getClientRects()[0]; return Math.round(r.left) + ' ' + "
      "Math.round(r.top + r.height / 2); })()");
  int x = 0, y = 0;
  EXPECT_EQ(std::sscanf(at.c_str(), "%d %d", &x, &y), 2) << at;
  return {x, y};
}

}  // namespace tvx::qt
