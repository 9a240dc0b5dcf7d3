#include "htmled/document/proposed_name.h"

#include <QRegularExpression>

#include "tvx/browser/html_document.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

/// Without what file systems take for something else.
QString as_name(const QString& text) {
  static const QRegularExpression foreign(QStringLiteral(R"([\x00-\x1f/\\:*?"<>|]+)"));
  constexpr int longest = 60;
  QString name = QString(text).replace(foreign, QStringLiteral(" ")).simplified();
  // A dot hides a file.
  while (name.startsWith(u'.') || name.startsWith(u' ')) name.remove(0, 1);
  return name.left(longest).trimmed();
}

}  // namespace

QString first_heading(const browser::HTMLDocument& document) {
  constexpr int first_nodes = 1000;
  const dom::Node* body = document.body();
  const dom::Node* node = body;
  for (int seen = 0; node && seen < first_nodes; ++seen, node = dom::next_in_order(*node, body)) {
    if (!editing::is_heading(*node)) continue;
    const QString text = qt::to_qt(dom::text_content(*node)).simplified();
    if (!as_name(text).isEmpty()) return text;
  }
  return {};
}

QString proposed_name(const browser::HTMLDocument& document) {
  QString name = as_name(first_heading(document));
  if (name.isEmpty()) name = as_name(qt::to_qt(document.title()));
  return name.isEmpty() ? QString() : name + QStringLiteral(".html");
}

}  // namespace tvx::htmled
