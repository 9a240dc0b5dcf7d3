#pragma once

#include <QString>
#include <functional>

#include "tvx/platform/form.h"

class QWidget;

/// One control of a form as a widget of the desktop.
namespace tvx::qt {

/// Called with what the user did, to run it. No failure of it may leave this: it would reach Qt's loop.
using UserAct = std::function<void(const std::function<void()>& act)>;

/// The widget of a control: named like it, and after the model in every state. What the user does with it
/// goes to the model through `act`.
QWidget* make_widget(platform::FormControl& control, QWidget* parent, const UserAct& act);

/// Brings the widget after the model. What is the same already is left alone, the position of the caret in a
/// text that is being typed above all.
void show_state(const platform::FormControl& control, QWidget& widget);

/// The caption of a label, check box or button, with the mark of its letter for the keyboard.
void show_caption(const platform::FormControl& control, const QString& caption, QWidget& widget);

/// A caption without its marks for the keyboard: "Fo&re" is "Fore", "&&" is "&".
QString without_marks(const QString& caption);

}  // namespace tvx::qt
