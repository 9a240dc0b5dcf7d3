#include <QMetaEnum>
#include <QPointer>
#include <algorithm>
#include <cmath>

#include "tvx/base/interruption.h"
#include "tvx/core/commands/selection_formats.h"
#include "tvx/core/htmled.h"
#include "tvx/core/views/side_source.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"
#include "tvx/qt/widget/host_bars.h"

/// What the widget offers to programs that draw their own bars.
namespace tvx::qt {
namespace {

/// A class that an element can have: rules for states and descendants stand in the sheet, too.
bool is_plain(const std::u16string& name) {
  return std::ranges::all_of(name, [](char16_t c) {
    return c == u'-' || c == u'_' || c >= 0x80 || (c >= u'0' && c <= u'9') ||
           ((c | 0x20) >= u'a' && (c | 0x20) <= u'z');
  });
}

/// As a button of a bar: the user can stop it.
void set_format(core::HTMLed& control, std::u16string_view command, const QString& value) {
  run_interruptible([&] { control.selection_formats().set(command, from_qt(value)); });
}

}  // namespace

QAction* HTMLedWidget::action(Action which) { return host_bars().action(which); }

QAction* HTMLedWidget::action(const QString& name) {
  bool found = false;
  const int value = QMetaEnum::fromType<Action>().keyToValue(name.toLatin1(), &found);
  return found ? action(Action(value)) : nullptr;
}

HTMLedWidget::Format HTMLedWidget::format() const { return host_bars().format(); }

void HTMLedWidget::set_paragraph_style(const QString& style) {
  run_interruptible([&] { control().selection_formats().set_paragraph_style(from_qt(style)); });
}
void HTMLedWidget::set_font(const QString& family) { set_format(control(), u"FontName", family); }
void HTMLedWidget::set_font_size(int size) { set_format(control(), u"FontSize", QString::number(size)); }
void HTMLedWidget::set_text_colour(const QColor& colour) {
  set_format(control(), u"ForeColor", colour.name());
}
void HTMLedWidget::set_highlight(const QColor& colour) {
  set_format(control(), u"HiliteColor", colour.isValid() ? colour.name() : QStringLiteral("transparent"));
}

QStringList HTMLedWidget::style_classes() const {
  QStringList names;
  for (const core::StyleClass& each : control().style_classes())
    if (is_plain(each.name) && !names.contains(to_qt(each.name))) names << to_qt(each.name);
  return names;
}

void HTMLedWidget::set_style_class(const QString& name) {
  if (name.isEmpty()) return control().mnuMiscClass_Click(0);
  for (const core::StyleClass& each : control().style_classes())
    if (to_qt(each.name) == name) return control().mnuMiscClass_Click(each.index);
}

double HTMLedWidget::zoom() const { return view().zoom(); }

void HTMLedWidget::set_zoom(double factor) {
  factor = std::clamp(factor, 0.25, 5.0);
  if (std::abs(factor - 1) < 0.02) factor = 1;
  if (factor == zoom()) return;
  view().set_zoom(factor);
  emit zoomChanged(factor);
}

bool HTMLedWidget::dark_page() const { return view().is_dark(); }
void HTMLedWidget::set_dark_page(bool on) { view().set_dark(on); }

void HTMLedWidget::insert_table(int rows, int columns) { control().insert_table(rows, columns); }

void HTMLedWidget::finish_input() {
  const QPointer<HTMLedWidget> alive(this);
  finish_page_input();
  if (alive) control().side_source().take();
}

}  // namespace tvx::qt
