#include "htmled/document/proposed_name.h"

#include <QRegularExpression>

#include "tvx/browser/html_document.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

/// Without what file systems take for something else.
QString as_name(const std::u16string& text) {
  static const QRegularExpression foreign(QStringLiteral(R"([\x00-\x1f/\\:*?"<>|]+)"));
  constexpr int longest = 60;
  QString name = qt::to_qt(text).replace(foreign, QStringLiteral(" ")).simplified();
  // A dot hides a file.
  while (name.startsWith(u'.') || name.startsWith(u' ')) name.remove(0, 1);
  return name.left(longest).trimmed();
}

QString first_heading(const dom::Node* body) {
  constexpr int first_nodes = 1000;
  const dom::Node* node = body;
  for (int seen = 0; node && seen < first_nodes; ++seen, node = dom::next_in_order(*node, body)) {
    if (!editing::is_heading(*node)) continue;
    if (QString name = as_name(dom::text_content(*node)); !name.isEmpty()) return name;
  }
  return {};
}

}  // namespace

QString proposed_name(const browser::HTMLDocument& document) {
  QString name = first_heading(document.body());
  if (name.isEmpty()) name = as_name(document.title());
  return name.isEmpty() ? QString() : name + QStringLiteral(".html");
}

}  // namespace tvx::htmled
