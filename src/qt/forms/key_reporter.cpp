#include "tvx/qt/forms/key_reporter.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>
#include <utility>

#include "tvx/browser/input/typed_character.h"
#include "tvx/qt/support/keys.h"

namespace tvx::qt {
namespace {

std::int16_t held(const browser::KeyInput& key) {
  return static_cast<std::int16_t>(key.shift | key.control << 1 | key.alt << 2);
}

// These press the form's buttons, from whatever box.
bool is_the_forms_own(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Escape;
}

}  // namespace

KeyReporter::KeyReporter(platform::FormControl& control, QWidget& box, UserAct act)
    : QObject(&box), control_(control), act_(std::move(act)) {
  box.installEventFilter(this);
}

bool KeyReporter::eventFilter(QObject* box, QEvent* event) {
  if (replacing_ || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (is_the_forms_own(key)) return false;
  if (event->type() == QEvent::KeyPress) return key_pressed(*box, key);
  if (key.isAutoRepeat()) return false;
  const browser::KeyInput input = key_input(key);
  act_([&] { control_.key_up(static_cast<std::int16_t>(input.key_code), held(input)); });
  return false;
}

bool KeyReporter::key_pressed(QObject& box, const QKeyEvent& event) {
  const browser::KeyInput input = key_input(event);
  const QPointer<QObject> alive(&box);
  bool taken = false;
  act_([&] { taken = control_.key_down(static_cast<std::int16_t>(input.key_code), held(input)) == 0; });
  if (!alive) return true;
  const std::int16_t typed = browser::typed_character(input);
  return typed == 0 ? taken : !character_passes(box, event, typed);
}

bool KeyReporter::character_passes(QObject& box, const QKeyEvent& event, std::int16_t typed) {
  const QPointer<QObject> alive(&box);
  std::int16_t character = 0;
  act_([&] { character = control_.key_press(typed); });
  if (!alive || character == 0) return false;
  if (character == typed) return true;
  QKeyEvent other(QEvent::KeyPress, 0, event.modifiers() & Qt::ShiftModifier,
                  QString(QChar(static_cast<char16_t>(character))));
  replacing_ = true;
  QCoreApplication::sendEvent(&box, &other);
  if (alive) replacing_ = false;
  return false;
}

}  // namespace tvx::qt
