#include "tvx/qt/reading/attribute_text.h"

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

/// The toolkit divides the text at colons and semicolons, and wants a value for each name.
void add(QString& all, const char* name, QString value) {
  value.remove(u':').remove(u';');
  if (!value.isEmpty()) all += QLatin1String(name) + u':' + value + u';';
}

QString colour(const dom::style::Color& colour) {
  return QStringLiteral("rgb(%1,%2,%3)").arg(colour.red).arg(colour.green).arg(colour.blue);
}

QString align(editing::TextAttributes::Align align) {
  using Align = editing::TextAttributes::Align;
  switch (align) {
    case Align::Right: return QStringLiteral("right");
    case Align::Centre: return QStringLiteral("center");
    case Align::Justified: return QStringLiteral("justify");
    case Align::Left: break;
  }
  return QStringLiteral("left");
}

}  // namespace

QString attribute_text(const editing::TextAttributes& attributes) {
  constexpr double points_in_pixel = 0.75;
  QString all;
  add(all, "font-family", to_qt(attributes.font_family));
  add(all, "font-size", QStringLiteral("%1pt").arg(attributes.font_size * points_in_pixel));
  add(all, "font-weight",
      attributes.font_weight == 400 ? QStringLiteral("normal") : QString::number(attributes.font_weight));
  add(all, "font-style", attributes.italic ? QStringLiteral("italic") : QStringLiteral("normal"));
  add(all, "text-underline-type", attributes.underlined ? QStringLiteral("single") : QStringLiteral("none"));
  if (attributes.struck_through) add(all, "text-line-through-type", QStringLiteral("single"));
  add(all, "text-position",
      attributes.lowered  ? QStringLiteral("sub")
      : attributes.raised ? QStringLiteral("super")
                          : QStringLiteral("baseline"));
  add(all, "color", colour(attributes.colour));
  if (attributes.background.alpha > 0) add(all, "background-color", colour(attributes.background));
  add(all, "text-align", align(attributes.align));
  add(all, "writing-mode", attributes.right_to_left ? QStringLiteral("rl") : QStringLiteral("lr"));
  add(all, "language", to_qt(attributes.language));
  if (attributes.wrong) add(all, "invalid", QStringLiteral("spelling"));
  return all;
}

}  // namespace tvx::qt
