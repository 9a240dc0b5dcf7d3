#pragma once

#include <QKeySequence>
#include <string_view>

class QWidget;

namespace tvx::qt {

/// The keys that do what the button of that key does, as they are now: those of the widget's action, or,
/// where the host wants none, those that the page itself answers to. Empty: none.
QKeySequence keys_of_button(const QWidget& widget, std::u16string_view button);

}  // namespace tvx::qt
