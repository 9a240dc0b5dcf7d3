#pragma once

#include <QPoint>
#include <QString>

#include "x11/waiting.h"

class QWidget;

namespace tvx::x11 {

/// A person at the X server's keyboard and mouse: the server makes the events, and gives keys to the window
/// that has its focus. Places are those of the screen.
namespace hands {

/// Without a window manager nobody gives the keys to a window that has appeared, or to the one under it when
/// that has gone. Fails the test if the toolkit doesn't hear of it.
void give_focus(const QWidget& window);
/// "ctrl+s", "Return"
void press(const QString& keys);
/// One after the other, without a pause.
void press(const QStringList& keys);
void type(const QString& text);
void move(QPoint to);
/// 1 is the left button, 2 the middle one.
void click(QPoint at, int button = 1);
/// The keys and the click, without a pause.
void press_and_click(const QStringList& keys, QPoint at);
/// Presses, goes there in steps, and lets go.
void drag(QPoint from, QPoint to);
/// The same between programs: lets go when who is below has answered that it takes what comes. What is let go
/// before that is lost.
void drag(QPoint from, QPoint to, const std::function<bool()>& is_taken);

}  // namespace hands
}  // namespace tvx::x11
