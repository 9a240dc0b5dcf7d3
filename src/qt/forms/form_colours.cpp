#include "tvx/qt/forms/form_colours.h"

#include <QPalette>
#include <QWidget>
#include <cmath>

namespace tvx::qt {
namespace {

using platform::FormColour;
using platform::FormControl;

constexpr FormColour of_the_desktop = 0x80000000;

/// The desktop's colours have numbers, which hosts know; here are those that a dialog can mean.
QPalette::ColorRole role_of(FormColour number) {
  switch (number) {
    case 5: return QPalette::Base;
    case 8: return QPalette::Text;
    case 13: return QPalette::Highlight;
    case 14: return QPalette::HighlightedText;
    case 16: return QPalette::Dark;
    case 18: return QPalette::ButtonText;
    case 20: return QPalette::Light;
    case 23: return QPalette::ToolTipText;
    case 24: return QPalette::ToolTipBase;
    default: return QPalette::Window;  // 15, the face of buttons: what dialogs are made of
  }
}

/// Relative luminance (WCAG 2).
double luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

// Where black and white are equally far.
QColor readable_on(const QColor& ground) { return luminance(ground) > 0.179 ? Qt::black : Qt::white; }

QColor between(const QColor& one, const QColor& other, float share) {
  return QColor::fromRgbF(one.redF() + (other.redF() - one.redF()) * share,
                          one.greenF() + (other.greenF() - one.greenF()) * share,
                          one.blueF() + (other.blueF() - one.blueF()) * share);
}

bool is_usual(const FormControl& control) {
  return control.BackColor() == (control.has_text() ? platform::window_background : platform::button_face);
}

QPalette coloured(const QColor& ground) {
  QPalette palette;  // what isn't set here comes from the window
  const QColor letters = readable_on(ground);
  for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button}) palette.setColor(role, ground);
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(role, letters);
    palette.setColor(QPalette::Disabled, role, between(ground, letters, 0.5F));
  }
  palette.setColor(QPalette::PlaceholderText, between(ground, letters, 0.5F));
  return palette;
}

}  // namespace

QColor to_qt_colour(FormColour colour, const QPalette& desktop) {
  if (colour & of_the_desktop) return desktop.color(QPalette::Active, role_of(colour & 0xFF));
  return QColor(int(colour & 0xFF), int(colour >> 8 & 0xFF), int(colour >> 16 & 0xFF));
}

void show_back_colour(const FormControl& control, QWidget& widget) {
  const bool usual = is_usual(control);
  if (usual && !widget.testAttribute(Qt::WA_SetPalette)) return;
  widget.setPalette(usual ? QPalette()
                          : coloured(to_qt_colour(control.BackColor(), widget.window()->palette())));
  // Labels and their like have no ground of their own otherwise.
  if (!control.has_text()) widget.setAutoFillBackground(!usual);
}

}  // namespace tvx::qt
