#include "x11/hands.h"

#include <gtest/gtest.h>

#include <QWidget>

#include "x11/x_display.h"

namespace tvx::x11 {
namespace {

void xdotool(const QStringList& arguments) { output_of(QStringLiteral("xdotool"), arguments); }

QStringList move_to(QPoint at) {
  return {QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y())};
}

QStringList keys_without_pause(const QStringList& keys) {
  return QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("0")} + keys;
}

}  // namespace

namespace hands {

void give_focus(const QWidget& window) {
  ASSERT_TRUE(wait_for([&] { return window.isVisible(); }));
  xdotool({QStringLiteral("windowfocus"), QString::number(window.winId())});
  EXPECT_TRUE(wait_for([&] { return window.isActiveWindow(); }));
}

void press(const QString& keys) { xdotool({QStringLiteral("key"), keys}); }
void press(const QStringList& keys) { xdotool(keys_without_pause(keys)); }
void type(const QString& text) { xdotool({QStringLiteral("type"), QStringLiteral("--"), text}); }
void move(QPoint to) { xdotool(move_to(to)); }

void click(QPoint at, int button) {
  xdotool(move_to(at) + QStringList{QStringLiteral("click"), QString::number(button)});
}

void press_and_click(const QStringList& keys, QPoint at) {
  xdotool(keys_without_pause(keys) + move_to(at) + QStringList{QStringLiteral("click"), QStringLiteral("1")});
}

void drag(QPoint from, QPoint to, const std::function<bool()>& is_taken) {
  constexpr int steps = 8;
  xdotool(move_to(from) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")});
  for (int step = 1; step <= steps; ++step) xdotool(move_to(from + (to - from) * step / steps));
  EXPECT_TRUE(is_taken());
  xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void drag(QPoint from, QPoint to) {
  drag(from, to, [] { return true; });
}

}  // namespace hands
}  // namespace tvx::x11
