#include "htmled/automation.h"

#include <unistd.h>

#include <QApplication>
#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QSocketNotifier>
#include <cerrno>
#include <cstdio>

#include "htmled/window.h"
#include "tvx/automation/server.h"
#include "tvx/automation/stage.h"
#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::htmled {
namespace {

using qt::to_qt;

struct KeyName {
  const char16_t* name;
  Qt::Key key;
};

constexpr KeyName key_names[] = {
    {u"Enter", Qt::Key_Return},   {u"Tab", Qt::Key_Tab},
    {u"Escape", Qt::Key_Escape},  {u"Backspace", Qt::Key_Backspace},
    {u"Delete", Qt::Key_Delete},  {u"Insert", Qt::Key_Insert},
    {u"Home", Qt::Key_Home},      {u"End", Qt::Key_End},
    {u"PageUp", Qt::Key_PageUp},  {u"PageDown", Qt::Key_PageDown},
    {u"ArrowLeft", Qt::Key_Left}, {u"ArrowRight", Qt::Key_Right},
    {u"ArrowUp", Qt::Key_Up},     {u"ArrowDown", Qt::Key_Down},
    {u"Shift", Qt::Key_Shift},    {u"Control", Qt::Key_Control},
    {u"Alt", Qt::Key_Alt},        {u"ContextMenu", Qt::Key_Menu},
    {u"F6", Qt::Key_F6},          {u"F10", Qt::Key_F10},
};

int qt_key(const browser::KeyInput& input) {
  for (const KeyName& each : key_names)
    if (input.key == each.name) return each.key;
  const QString name = to_qt(input.key);
  if (name.size() == 1) return name.at(0).toUpper().unicode();
  if (name.size() == 2 && name.at(0).isHighSurrogate()) return Qt::Key_unknown;
  throw RuntimeError(errors::not_supported, u"The window knows no such key: " + input.key);
}

Qt::KeyboardModifiers held(const browser::KeyInput& input) {
  return (input.control ? Qt::ControlModifier : Qt::NoModifier) |
         (input.shift ? Qt::ShiftModifier : Qt::NoModifier) | (input.alt ? Qt::AltModifier : Qt::NoModifier);
}

/// Dialogs and popups are those that a client expects, and the clipboard is the conversation's: a script at
/// work leaves the user's alone.
qt::Substitutes substitutes(automation::StageParts& parts, const automation::InstanceOptions& options) {
  return {&parts.dialogs, &parts.popups, &parts.forms, options.clipboard, std::move(parts.print)};
}

void tell_properties(const qt::HTMLedWidget& editor, std::function<void(std::u16string_view key)> tell) {
  QObject::connect(&editor, &qt::HTMLedWidget::property_changed, &editor,
                   [told = std::move(tell)](const QString& key) { told(key.toStdU16String()); });
}

void post_key(qt::HTMLedWidget& editor, const core::HTMLed& control, const browser::KeyInput& key,
              bool down) {
  QWidget* target = control.InCodeView() ? QApplication::focusWidget() : editor.view().input_widget();
  if (!target) throw RuntimeError(errors::not_supported, u"Nothing takes keys");
  const auto type = down ? QEvent::KeyPress : QEvent::KeyRelease;
  QCoreApplication::postEvent(target, new QKeyEvent(type, qt_key(key), held(key), to_qt(key.text)));
}

/// The program's window, with a page in it.
class WindowStage final : public automation::Stage {
 public:
  WindowStage(automation::StageParts parts, const automation::InstanceOptions& options, QString file)
      : window_(std::make_unique<Window>(parts.loop, substitutes(parts, options))),
        control_(window_->editor().control().shared_from_this()),
        file_(std::move(file)) {
    tell_properties(window_->editor(), std::move(parts.property_changed));
  }

  const std::shared_ptr<core::HTMLed>& control() const override { return control_; }

  void begin(const automation::InstanceOptions& options) override {
    if (options.store) window_->editor().read_properties(*options.store);
    window_->show();
    window_->start(file_);
  }
  void end() override { window_->hide(); }
  void resize(float width, float height) override {
    const QSize frame = window_->size() - window_->editor().size();
    window_->resize(QSize(qt::to_pixels(width), qt::to_pixels(height)) + frame);
  }

  void key(browser::KeyInput key, bool down) override { post_key(window_->editor(), *control_, key, down); }
  bool settled() const override { return window_->editor().document_view().settled(); }

  dom::Element* element_at(int x, int y) const override {
    return control_->DOM() ? window_->editor().document_view().element_at(*control_->DOM(), x, y) : nullptr;
  }
  // Where an element stands the page alone knows; the event carries the element itself.
  std::pair<int, int> place_of(int) const override { return {0, 0}; }

 private:
  std::unique_ptr<Window> window_;
  std::shared_ptr<core::HTMLed> control_;
  QString file_;
};

/// A control by itself, as its container makes it: with what was stored, or new and without a document
/// before it is shown.
class ControlStage final : public automation::Stage {
 public:
  ControlStage(automation::StageParts parts, const automation::InstanceOptions& options)
      : editor_(std::make_unique<qt::HTMLedWidget>(parts.loop, nullptr, substitutes(parts, options))),
        control_(editor_->control().shared_from_this()) {
    tell_properties(*editor_, std::move(parts.property_changed));
  }

  const std::shared_ptr<core::HTMLed>& control() const override { return control_; }

  void begin(const automation::InstanceOptions& options) override {
    resize(options.width, options.height);
    if (!options.store) return;
    editor_->read_properties(*options.store);
    editor_->show();
  }
  void show() override { editor_->isVisible() ? control_->UserControl_Show() : editor_->show(); }
  void end() override { editor_->hide(); }
  void resize(float width, float height) override {
    editor_->resize(qt::to_pixels(width), qt::to_pixels(height));
  }
  void key(browser::KeyInput key, bool down) override { post_key(*editor_, *control_, key, down); }
  bool settled() const override { return editor_->document_view().settled(); }
  dom::Element* element_at(int x, int y) const override {
    return control_->DOM() ? editor_->document_view().element_at(*control_->DOM(), x, y) : nullptr;
  }
  std::pair<int, int> place_of(int) const override { return {0, 0}; }

 private:
  std::unique_ptr<qt::HTMLedWidget> editor_;
  std::shared_ptr<core::HTMLed> control_;
};

void write_line(std::string_view line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

/// Reads what is there; false at the end of the input.
bool read_some(automation::Server& server) {
  char buffer[64 * 1024];
  const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
  if (count > 0) server.receive({buffer, static_cast<std::size_t>(count)});
  return count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
}

}  // namespace

int run_automation(platform::MessageLoop& loop, const QString& file) {
  bool first = true;
  const auto make_stage =
      [&](automation::StageParts parts,
          const automation::InstanceOptions& options) -> std::unique_ptr<automation::Stage> {
    // A window is never at design time.
    if (options.design_mode) return automation::headless_stage(std::move(parts), options);
    if (std::exchange(first, false)) return std::make_unique<WindowStage>(std::move(parts), options, file);
    if (options.hwnd != platform::WindowHandle::none) platform::set_next_window_handle(options.hwnd);
    auto stage = std::make_unique<ControlStage>(std::move(parts), options);
    platform::set_next_window_handle(std::nullopt);
    return stage;
  };
  automation::Server server(loop, write_line, make_stage);
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QEventLoop wait;
  QObject::connect(&input, &QSocketNotifier::activated, [&] {
    if (read_some(server)) return;
    input.setEnabled(false);
    server.end();
    wait.quit();
  });
  return wait.exec();
}

}  // namespace tvx::htmled
