#include "scene.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <optional>

#include "page_tree.h"
#include "tvx/base/strings.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/htmled_widget.h"
#include "tvx/platform/toolbar.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::htmled {

struct Scene::Stage {
  qt::MessageLoop loop;
  Window window{loop};
};

std::unique_ptr<Scene::Stage> Scene::stage_;

void Scene::SetUpTestSuite() {
  stage_ = std::make_unique<Stage>();
  QApplication::setCursorFlashTime(0);  // so that the caret is in each picture
  stage_->window.resize(900, 640);
  stage_->window.show();
  stage_->window.activateWindow();
  ASSERT_TRUE(stage_->window.start({}));
}

void Scene::TearDownTestSuite() { stage_.reset(); }

browser::HTMLDocument& Scene::document() { return *stage_->window.editor().control().DOM(); }

QWidget* Scene::input() { return stage_->window.editor().view().input_widget(); }

bool Scene::wait_for(const std::function<bool()>& condition) {
  const std::int64_t end = stage_->loop.now() + 20'000;
  while (!condition()) {
    if (stage_->loop.now() > end) return false;
    stage_->loop.pump(10);
  }
  return true;
}

bool Scene::settle() {
  // What was posted arrives first.
  for (int i = 0; i < 3; ++i) stage_->loop.pump(0);
  return wait_for([] { return stage_->window.editor().document_view().settled(); });
}

std::string Scene::html() {
  EXPECT_TRUE(settle());
  return stage_->window.editor().DocumentHTML().toStdString();
}

std::string Scene::in_page(const std::string& script) {
  auto answer = std::make_shared<std::optional<std::string>>();
  stage_->window.editor().view().page()->runJavaScript(
      QString::fromStdString(script), QWebEngineScript::ApplicationWorld,
      [answer](const QVariant& value) { *answer = value.toString().toStdString(); });
  wait_for([&] { return answer->has_value(); });
  return answer->value_or("no answer");
}

void Scene::begin(const std::string& html_text) {
  qt::HTMLedWidget& editor = stage_->window.editor();
  editor.set_DocumentHTML(QString::fromStdString(html_text));
  ASSERT_TRUE(settle());
  ASSERT_NE(input(), nullptr);
  come_to_front();
  input()->setFocus();
  first_ = html();
  // Each at another place: two clicks at one place soon after another are a double click.
  static int turn = 0;
  turn = (turn + 1) % 8;
  click({input()->width() / 2 + 20 * turn, input()->height() - 30});
}

/// What a desktop does by itself when a window is new, or a dialog over it has gone.
void Scene::come_to_front() {
  stage_->window.activateWindow();
  ASSERT_TRUE(wait_for([] { return stage_->window.isActiveWindow(); }));
}

void Scene::shows(const std::string& expected) { EXPECT_EQ(html(), expected); }

void Scene::ends_with(const std::string& expected) {
  ASSERT_EQ(html(), expected);
  agree();
  EXPECT_TRUE(input()->hasFocus()) << "the keys go elsewhere, and no caret is shown";
  take_picture();
  const dom::Journal& journal = document().tree().journal();
  const int steps = int(journal.depth());
  ASSERT_GT(steps, 0);
  press("Ctrl+Z", steps);
  EXPECT_EQ(html(), first_) << "everything undone";
  EXPECT_FALSE(journal.can_undo());
  agree();
  press("Ctrl+Y", steps);
  EXPECT_EQ(html(), expected) << "everything redone";
  EXPECT_FALSE(journal.can_redo());
  agree();
}

// The page has the tree that the document has.
void Scene::agree() {
  ASSERT_TRUE(settle());
  EXPECT_EQ(in_page(qt::page_tree_script), to_utf8(browser::print_mirrored(document().tree())));
}

void Scene::take_picture() {
  const QString folder = qEnvironmentVariable("TVX_PICTURES");
  if (folder.isEmpty()) return;
  // For the engine to paint.
  const std::int64_t end = stage_->loop.now() + 400;
  wait_for([end] { return stage_->loop.now() > end; });
  const char* name = testing::UnitTest::GetInstance()->current_test_info()->name();
  stage_->window.grab().save(folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
}

// --- the keyboard ---

void Scene::type(const std::string& text) {
  ASSERT_NE(input(), nullptr);
  type_into(input(), text);
}

void Scene::type_into(QWidget* widget, const std::string& text) {
  for (const char32_t c : QString::fromStdString(text).toStdU32String()) {
    const QString typed = QString::fromUcs4(&c, 1);
    const int key = c < 0x80 ? int(QChar(char16_t(c)).toUpper().unicode()) : int(Qt::Key_unknown);
    const auto held = c >= U'A' && c <= U'Z' ? Qt::ShiftModifier : Qt::NoModifier;
    for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
      QCoreApplication::postEvent(widget, new QKeyEvent(kind, key, held, typed));
  }
}

void Scene::press(const char* keys, int times) {
  const QKeySequence sequence = QKeySequence::fromString(QString::fromLatin1(keys));
  ASSERT_EQ(sequence.count(), 1) << keys;
  const QKeyCombination combination = sequence[0];
  ASSERT_NE(combination.key(), Qt::Key_unknown) << keys;
  ASSERT_NE(input(), nullptr);
  for (int i = 0; i < times; ++i)
    for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
      QCoreApplication::postEvent(
          input(), new QKeyEvent(kind, combination.key(), combination.keyboardModifiers(), QString()));
}

void Scene::post_composition(const QString& composed, const QString& committed) {
  QList<QInputMethodEvent::Attribute> attributes;
  if (!composed.isEmpty())
    attributes.append({QInputMethodEvent::Cursor, int(composed.size()), 1, QVariant()});
  auto* event = new QInputMethodEvent(composed, attributes);
  event->setCommitString(committed);
  QCoreApplication::postEvent(input(), event);
  ASSERT_TRUE(settle());
}

void Scene::compose(const std::string& text) { post_composition(QString::fromStdString(text), {}); }
void Scene::commit(const std::string& text) { post_composition({}, QString::fromStdString(text)); }

// --- the mouse ---

quint64 Scene::now() const { return quint64(stage_->loop.now()); }

/// The engine counts clicks by the time between them, so it is told when each was.
void Scene::post_mouse(QEvent::Type type, QPoint point, Qt::MouseButton button, Qt::MouseButtons held,
                       quint64 when) {
  ASSERT_NE(input(), nullptr);
  const QPointF at(point);
  auto* event = new QMouseEvent(type, at, input()->mapToGlobal(at), button, held, Qt::NoModifier);
  event->setTimestamp(when);
  QCoreApplication::postEvent(input(), event);
}

void Scene::post_click(QPoint point, QEvent::Type pressed, quint64 at) {
  post_mouse(pressed, point, Qt::LeftButton, Qt::LeftButton, at);
  post_mouse(QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton, at + 1);
}

void Scene::click(QPoint point) {
  post_click(point, QEvent::MouseButtonPress, now());
  ASSERT_TRUE(settle());
}

/// As fast as it is told, however long the machine takes over it.
void Scene::click_often(const std::string& words, int times) {
  const QPoint point = (before(words) + after(words)) / 2;
  const quint64 first = now();
  for (int i = 0; i < times; ++i)
    post_click(point, i == 1 ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress,
               first + quint64(i) * 60);
  ASSERT_TRUE(settle());
}

void Scene::drag_over(const std::string& first_words, const std::string& last_words) {
  const QPoint from = before(first_words), to = after(last_words);
  post_mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, now());
  for (int step = 1; step <= 4; ++step)
    post_mouse(QEvent::MouseMove, from + (to - from) * step / 4, Qt::NoButton, Qt::LeftButton, now());
  post_mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, now());
}

void Scene::press_in(QWidget* widget, Qt::Key key) {
  for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease})
    QCoreApplication::postEvent(widget, new QKeyEvent(kind, key, Qt::NoModifier, QString()));
}

void Scene::in_dialog(const std::function<void()>& open, const std::function<void(QWidget&)>& answer) {
  ASSERT_TRUE(settle());
  // Who answers it must stand ready before it opens.
  bool answered = false;
  QTimer ready;
  QObject::connect(&ready, &QTimer::timeout, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog || !dialog->focusWidget() || std::exchange(answered, true)) return;
    answer(*dialog);
  });
  ready.start(10);
  open();
  ASSERT_TRUE(wait_for([&] { return answered && !QApplication::activeModalWidget(); }));
  come_to_front();
  ASSERT_TRUE(settle());
}

void Scene::make_link(const std::string& address) {
  in_dialog([&] { press("Ctrl+K"); },
            [&](QWidget& dialog) {
              type_into(dialog.focusWidget(), address);
              press_in(dialog.focusWidget(), Qt::Key_Return);
            });
}

void Scene::make_table(const std::string& rows, const std::string& columns) {
  const auto fill = [](QWidget& dialog, const char* name) {
    auto* field = dialog.findChild<QWidget*>(QString::fromLatin1(name));
    EXPECT_NE(field, nullptr) << name;
    return field;
  };
  in_dialog([&] { click_button(u"table"); },
            [&](QWidget& dialog) {
              QWidget *first = fill(dialog, "txttablerow"), *second = fill(dialog, "txttablecolumns");
              ASSERT_TRUE(first && second);
              EXPECT_EQ(dialog.focusWidget(), first) << "the first field has the keys";
              type_into(first, rows);
              press_in(first, Qt::Key_Tab);
              type_into(second, columns);
              press_in(second, Qt::Key_Return);
            });
}

void Scene::click_button(std::u16string_view key) {
  ASSERT_TRUE(settle());
  const platform::Button& model = stage_->window.editor().control().Toolbar1().Item(key);
  const auto* bar = stage_->window.editor().findChild<qt::ToolbarFace*>();
  ASSERT_NE(bar, nullptr);
  QWidget* button = bar->button_widget(model.Index());
  ASSERT_NE(button, nullptr) << to_utf8(key);
  const QPoint middle = button->mapTo(&stage_->window, button->rect().center());
  ASSERT_EQ(stage_->window.childAt(middle), button) << to_utf8(key) << " can't be reached";
  const QPointF at = button->rect().center();
  for (const auto kind : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
    QCoreApplication::postEvent(
        button,
        new QMouseEvent(kind, at, button->mapToGlobal(at), Qt::LeftButton,
                        kind == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
  ASSERT_TRUE(settle());
}

QPoint Scene::place(const std::string& words, bool behind) {
  EXPECT_TRUE(settle());
  const std::string at = in_page(
      "(function () { const words = '" + words +
      "', walker = document.createTreeWalker(document.body, "
      "NodeFilter.SHOW_TEXT); for (let n; (n = walker.nextNode());) { const at = n.data.indexOf(words); "
      "if (at < 0) continue; const range = document.createRange(); range.setStart(n, at + (" +
      (behind ? "true" : "false") +
      " ? words.length : 0)); range.collapse(true); const r = "
      "range.getClientRects()[0]; return Math.round(r.left) + ' ' + Math.round(r.top + r.height / 2); } "
      "})()");
  int x = 0, y = 0;
  EXPECT_EQ(std::sscanf(at.c_str(), "%d %d", &x, &y), 2) << words << ": " << at;
  return {x, y};
}

QRect Scene::box_of(const std::string& selector) {
  EXPECT_TRUE(settle());
  const std::string at = in_page("(function () { const r = document.querySelector('" + selector +
                                 "').getBoundingClientRect(); return [r.left, r.top, r.width, "
                                 "r.height].map(Math.round).join(' '); })()");
  int x = 0, y = 0, width = 0, height = 0;
  EXPECT_EQ(std::sscanf(at.c_str(), "%d %d %d %d", &x, &y, &width, &height), 4) << selector << ": " << at;
  return {x, y, width, height};
}

// --- the host ---

void Scene::command(std::u16string_view name, std::u16string_view value) {
  ASSERT_TRUE(settle());
  EXPECT_TRUE(document().execCommand(name, false, value)) << to_utf8(name);
}

void Scene::insert_html(const QString& html_text) {
  ASSERT_TRUE(settle());
  stage_->window.editor().InsertAtCursor(html_text);
}

}  // namespace tvx::htmled
