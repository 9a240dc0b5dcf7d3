#include "x11/editor_fixture.h"

#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <cstdio>

#include "htmled/menus/commands.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/tree.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "tvx/qt/web/web_view.h"
#include "x11/hands.h"
#include "x11/x_display.h"

namespace tvx::x11 {

void EditorOnScreen::SetUp() {
  if (!XDisplay::skip_reason.isEmpty()) GTEST_SKIP() << "SKIPPED: " << XDisplay::skip_reason.toStdString();
}

void EditorOnScreen::TearDown() {
  watch_.reset();
  window_.reset();
}

void EditorOnScreen::start(const QByteArray& page) {
  QFile out(path_of(QStringLiteral("page.html")));
  ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(page) == page.size());
  out.close();
  window_ = std::make_unique<htmled::Window>(loop_);
  window_->show();
  ASSERT_TRUE(window_->start(out.fileName()));
  hands::give_focus(*window_);
  wait_for_caret();
}

void EditorOnScreen::wait_for_caret() {
  EXPECT_TRUE(wait_for([&] {
    const QWidget* input = window_->editor().view().input_widget();
    return input && input->hasFocus() &&
           document().editor().selection().type() == editing::SelectionType::Text;
  }));
  EXPECT_TRUE(settle());
}

// A tab has no page yet while its document comes.
std::string EditorOnScreen::html() {
  const auto page = control().DOM();
  return page && page->body() ? to_utf8(dom::inner_html(*page->body())) : "";
}
std::string EditorOnScreen::text() {
  const auto page = control().DOM();
  return page && page->body() ? to_utf8(dom::text_content(*page->body())) : "";
}

bool EditorOnScreen::settle() {
  for (int i = 0; i < 3; ++i) loop_.pump(0);
  return wait_for([&] { return window_->editor().document_view().settled(); });
}

QByteArray EditorOnScreen::file(const QString& name) const {
  QFile in(path_of(name));
  return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

std::string EditorOnScreen::in_page(const QString& expression) {
  auto answer = std::make_shared<std::optional<std::string>>();
  window_->editor().view().page()->runJavaScript(
      expression, QWebEngineScript::ApplicationWorld,
      [answer](const QVariant& value) { *answer = value.toString().toStdString(); });
  EXPECT_TRUE(wait_for([&] { return answer->has_value(); }));
  return answer->value_or("");
}

QPoint EditorOnScreen::on_screen(const std::string& place) {
  int x = 0, y = 0;
  EXPECT_EQ(std::sscanf(place.c_str(), "%d %d", &x, &y), 2) << place;
  return window_->editor().view().input_widget()->mapToGlobal(QPoint(x, y));
}

QPoint EditorOnScreen::place_of(const QString& selector, double x, double y) {
  return on_screen(in_page(
      QStringLiteral("(() => { const r = document.querySelector('%1').getBoundingClientRect(); return "
                     "Math.round(r.left + r.width * %2) + ' ' + Math.round(r.top + r.height * %3); })()")
          .arg(selector)
          .arg(x)
          .arg(y)));
}

QPoint EditorOnScreen::place_of_character(const QString& selector, int character) {
  return on_screen(
      in_page(QStringLiteral(
                  "(() => { const range = document.createRange(); const text = document.createTreeWalker("
                  "document.querySelector('%1'), NodeFilter.SHOW_TEXT).nextNode(); range.setStart(text, %2); "
                  "range.collapse(true); const r = range.getClientRects()[0]; "
                  "return Math.round(r.left) + ' ' + Math.round(r.top + r.height / 2); })()")
                  .arg(selector)
                  .arg(character)));
}

QPoint EditorOnScreen::middle_of(const QWidget& widget) { return widget.mapToGlobal(widget.rect().center()); }

QWidget* EditorOnScreen::toolbar_button(std::u16string_view key) {
  const auto* bar = window_->editor().findChild<qt::ToolbarFace*>(QStringLiteral("Toolbar1"));
  return bar ? bar->button_widget(control().Toolbar1().Item(key).Index()) : nullptr;
}

std::vector<QMenu*> EditorOnScreen::way_to(const std::string& name) {
  using htmled::Command;
  std::vector<QMenu*> open;
  for (const Command& command : htmled::Commands::table()) {
    if (command.kind == Command::Kind::Menu)
      open.push_back(window_->findChild<QMenu*>(QString::fromLatin1(command.name)));
    else if (command.kind == Command::Kind::End)
      open.pop_back();
    else if (command.name && name == command.name)
      return open;
  }
  return {};
}

QAction* EditorOnScreen::item(const std::string& name) {
  if (QAction* own = window_->commands().own(name)) return own;
  return window_->editor().action(QString::fromStdString(name));
}

void EditorOnScreen::choose(const std::string& name) {
  const auto press = [&](QMenu& menu, QAction& action) {
    ASSERT_TRUE(action.isEnabled()) << name;
    hands::click(menu.mapToGlobal(menu.actionGeometry(&action).center()));
  };
  const std::vector<QMenu*> way = way_to(name);
  ASSERT_FALSE(way.empty()) << name;
  QMenuBar& bar = *window_->menuBar();
  hands::click(bar.mapToGlobal(bar.actionGeometry(way.front()->menuAction()).center()));
  for (std::size_t i = 0; i < way.size(); ++i) {
    ASSERT_TRUE(wait_for([&] { return way[i]->isVisible(); })) << name;
    if (i + 1 < way.size()) press(*way[i], *way[i + 1]->menuAction());
  }
  press(*way.back(), *item(name));
}

QPoint EditorOnScreen::place_in_table_grid(int rows, int columns) {
  constexpr int margin = 8, step = 24, middle = 11;
  QMenu& insert = *window_->findChild<QMenu*>(QStringLiteral("insert"));
  QMenu& grid = *window_->findChild<QMenu*>(QStringLiteral("new-table"));
  QMenuBar& bar = *window_->menuBar();
  hands::click(bar.mapToGlobal(bar.actionGeometry(insert.menuAction()).center()));
  EXPECT_TRUE(wait_for([&] { return insert.isVisible(); }));
  hands::click(insert.mapToGlobal(insert.actionGeometry(grid.menuAction()).center()));
  EXPECT_TRUE(wait_for([&] { return grid.isVisible(); }));
  const QPoint corner = grid.mapToGlobal(grid.actionGeometry(grid.actions().constFirst()).topLeft());
  return corner + QPoint(margin + (columns - 1) * step + middle, margin + (rows - 1) * step + middle);
}

void EditorOnScreen::answer_dialog(std::function<void(QDialog&)> answer) {
  answer_ = [answer = std::move(answer)]() -> std::function<void()> {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) return {};
    return [answer, dialog] {
      hands::give_focus(*dialog);
      answer(*dialog);
    };
  };
  watch();
}

void EditorOnScreen::answer_menu(std::function<void(QWidget&)> answer) {
  answer_ = [answer = std::move(answer)]() -> std::function<void()> {
    QWidget* menu = QApplication::activePopupWidget();
    if (!menu || !menu->isVisible()) return {};
    return [answer, menu] { answer(*menu); };
  };
  watch();
}

void EditorOnScreen::watch() {
  if (watch_) return;
  watch_ = std::make_unique<QTimer>();
  QObject::connect(watch_.get(), &QTimer::timeout, watch_.get(), [this] {
    const auto act = answer_ ? answer_() : nullptr;
    if (!act) return;
    answer_ = {};
    act();
  });
  watch_->start(20);
}

bool EditorOnScreen::closing_asks() {
  bool asked = false;
  answer_dialog([&](QDialog& dialog) {
    asked = true;
    hands::press(QStringLiteral("Escape"));
    wait_for([&] { return !dialog.isVisible(); });
  });
  hands::press(QStringLiteral("ctrl+q"));
  wait_for([&] { return asked || !window_->isVisible(); });
  wait_for([] { return !QApplication::activeModalWidget(); });
  return asked && window_->isVisible();
}

}  // namespace tvx::x11
