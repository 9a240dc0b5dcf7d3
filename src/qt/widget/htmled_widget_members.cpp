#include <QLoggingCategory>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/buttons.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/object_path.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/toolbar.h"
#include "tvx/qt/support/strings.h"

/// The widget's properties and operations: each is the member of the table with that name.
namespace tvx::qt {
namespace {

using library::Value;
using library::Values;

Q_LOGGING_CATEGORY(category, "tvx.htmled")

/// No exception crosses a property or a slot: what called it may be Qt itself.
template <class Act>
void or_warn(std::u16string_view name, Act&& act) {
  try {
    act();
  } catch (const RuntimeError& error) {
    qCWarning(category).noquote() << to_qt(name) + QStringLiteral(":") << to_qt(error.text())
                                  << QStringLiteral("(%1)").arg(error.number());
  }
}

Value value_of(const QString& text) { return from_qt(text); }

/// An argument that needn't be given.
Values given(const QString& text) { return text.isNull() ? Values() : Values{value_of(text)}; }

bool flag_of(const Value& value) { return !value.is_null() && value.to_boolean(); }
int number_of(const Value& value) { return value.is_null() ? 0 : value.to_integer32(); }
QString text_of(const Value& value) { return value.is_null() ? QString() : to_qt(value.to_text()); }
QString text_or_nothing(const Value& value) { return text_of(value); }

}  // namespace

// --- parts of the face ---

namespace {

struct ToVariant {
  QVariant operator()(bool flag) const { return flag; }
  QVariant operator()(std::int32_t number) const { return number; }
  QVariant operator()(std::int64_t number) const { return qlonglong(number); }
  QVariant operator()(double number) const { return number; }
  QVariant operator()(const std::u16string& text) const { return to_qt(text); }
  template <class Other>
  QVariant operator()(const Other&) const {
    return {};
  }
};

Value value_of_variant(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool();
    case QMetaType::Int: return std::int32_t{value.toInt()};
    case QMetaType::Double: return value.toDouble();
    default: return from_qt(value.toString());
  }
}

}  // namespace

QVariant HTMLedWidget::part(const QString& path) const {
  std::vector<library::PathStep> steps = library::parse_path(from_qt(path));
  return std::visit(ToVariant{}, library::read_path(*library::face_of(control()), steps).data());
}

void HTMLedWidget::set_part(const QString& path, const QVariant& value) {
  std::vector<library::PathStep> steps = library::parse_path(from_qt(path));
  library::write_path(*library::face_of(control()), steps, value_of_variant(value));
}

HTMLedWidget::ButtonState HTMLedWidget::button_state(const QString& toolbar, const QString& button) const {
  const platform::Button* found = library::find_button(control(), from_qt(toolbar), from_qt(button));
  if (!found) return {};
  return {true,
          found->Enabled(),
          found->Visible(),
          found->Value() == 1,
          to_qt(found->Caption()),
          to_qt(found->ToolTipText())};
}

bool HTMLedWidget::press_button(const QString& toolbar, const QString& button) {
  return library::press_button(control(), from_qt(toolbar), from_qt(button));
}

// --- properties and operations ---

Value HTMLedWidget::get(std::u16string_view name) const { return library::get_property(control(), name); }

void HTMLedWidget::put(std::u16string_view name, const Value& value) {
  or_warn(name, [&] { library::set_property(control(), name, value); });
}

Value HTMLedWidget::call(std::u16string_view name, Values& arguments) const {
  Value result;
  or_warn(name, [&] { result = library::call_method(control(), name, arguments); });
  return result;
}

#include "tvx/interface/widget_members.inc"

}  // namespace tvx::qt
