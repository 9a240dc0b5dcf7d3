#include "tvx/qt/support/latin_shortcuts.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include "tvx/qt/support/keys.h"

// The toolkit's own way to try shortcuts with a key. It stands in no header that can be included without the
// test library, but in one whose code is compiled into programs: it stays as long as Qt 6 does.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                               const QString& text = QString(), bool autorep = false,
                                               ushort count = 1);

namespace tvx::qt {
namespace {

/// By blocks and not by scripts: the Arabic comma, as others, belongs to none. Typographic signs are left
/// out; Latin layouts have them too.
bool is_of_another_script(int key) {
  constexpr int greek = 0x370, latin_additions = 0x1D00, kana = 0x3040, special_keys = 0x01000000;
  return (key >= greek && key < latin_additions) || (key >= kana && key < special_keys);
}

/// The key that types two letters on Arabic layouts stands where English has B. The toolkit's table of
/// composed letters makes them of it also with Ctrl, and no key comes.
constexpr QStringView lam_alef = u"\u0644\u0627";
constexpr int place_of_lam_alef = Qt::Key_B;

/// What such a key types with Ctrl.
QString text_of(int key) {
  return key >= Qt::Key_A && key <= Qt::Key_Z ? QString(QChar(key - Qt::Key_A + 1)) : QString(QChar(key));
}

// What is composed comes at once, before keys that have been pressed before it: only the keyboard itself
// knows whether Ctrl is held.
bool take_composed(const QObject& target, const QInputMethodEvent& input) {
  if (input.commitString() != lam_alef) return false;
  const auto* widget = qobject_cast<const QWidget*>(&target);
  QWindow* window = widget ? widget->window()->windowHandle() : nullptr;
  if (!window || !(QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier)) return false;
  QKeyEvent key(QEvent::KeyPress, place_of_lam_alef, Qt::ControlModifier, text_of(place_of_lam_alef));
  if (!qt_sendShortcutOverrideEvent(window, 0, key.key(), key.modifiers(), key.text()))
    QCoreApplication::sendEvent(window, &key);
  return true;
}

}  // namespace

int latin_key(const QKeyEvent& event) {
  if (!(event.modifiers() & Qt::ControlModifier) || !is_of_another_script(event.key())) return 0;
  return latin_character_of_place(event.nativeScanCode());
}

LatinShortcuts::LatinShortcuts(QObject* parent) : QObject(parent) {
  QCoreApplication::instance()->installEventFilter(this);
}

LatinShortcuts::~LatinShortcuts() {
  if (QCoreApplication* application = QCoreApplication::instance()) application->removeEventFilter(this);
}

// A window gets a key when no shortcut was found for it. It is tried again by the Latin name, and becomes
// that key for whoever has the focus: text boxes compare names as well.
bool LatinShortcuts::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::InputMethod)
    return take_composed(*watched, static_cast<QInputMethodEvent&>(*event));
  const bool press = event->type() == QEvent::KeyPress;
  if ((!press && event->type() != QEvent::KeyRelease) || !watched->isWindowType()) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  const int latin = latin_key(key);
  if (!latin) return false;
  const QString text = text_of(latin);
  const auto count = static_cast<quint16>(key.count());
  if (press && qt_sendShortcutOverrideEvent(watched, key.timestamp(), latin, key.modifiers(), text,
                                            key.isAutoRepeat(), count))
    return true;
  QKeyEvent named(event->type(), latin, key.modifiers(), key.nativeScanCode(), key.nativeVirtualKey(),
                  key.nativeModifiers(), text, key.isAutoRepeat(), count, key.device());
  named.setTimestamp(key.timestamp());
  QCoreApplication::sendEvent(watched, &named);
  event->setAccepted(named.isAccepted());
  return true;
}

}  // namespace tvx::qt
