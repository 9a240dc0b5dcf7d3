#pragma once

#include <QKeySequence>
#include <string_view>

class QWidget;

namespace tvx::qt {

/// The keys that do what the button of that key does, as they are now: those of the widget's action, else of
/// one with that name, in any letters, of the window around it; where the host has none, those that the page
/// itself answers to. Empty: none.
QKeySequence keys_of_button(const QWidget& widget, std::u16string_view button);

}  // namespace tvx::qt
