#include "tvx/qt/reading/caret_line.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <algorithm>

#include "tvx/platform/message_loop.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::qt {
namespace {

/// So long a reading program hears nothing of a move while the page is busy.
constexpr std::int64_t patience = 300;  // milliseconds

/// The offset of the page's position among the units of a content; none if it is in no text of that.
std::optional<Offset> offset_of(const editing::AccessibleContent& content, const QJsonValue& place) {
  const auto id = static_cast<dom::NodeId>(place[0].toInteger());
  const auto offset = static_cast<Offset>(std::max<qint64>(place[1].toInteger(), 0));
  for (const editing::AccessibleContent::Run& run : content.runs())
    if (run.node->id() == id && run.is_text()) return content.offset_of({run.node, offset});
  return {};
}

}  // namespace

void CaretLine::ask(editing::AccessibleTree& tree, const editing::AccessibleTree::Place& caret,
                    const dom::Boundary& position, std::function<void()> done) {
  const std::uint64_t number = ++number_;
  done_ = std::move(done);
  asked_ = caret.element;
  asked_version_ = tree.version();
  if (!position || !position.node->is_text()) {
    loop_.post([this, number, alive = alive_] {
      if (*alive) finish(number);
    });
    return;
  }
  const QString question =
      QStringLiteral("globalThis.tvxView ? JSON.stringify(tvxView.lineAround(%1, %2)) : ''")
          .arg(static_cast<std::uint32_t>(position.node->id()))
          .arg(position.offset);
  view_.page()->runJavaScript(question, QWebEngineScript::ApplicationWorld,
                              [this, number, tree = &tree, alive = alive_](const QVariant& answer) {
                                if (!*alive) return;
                                const std::string text = answer.toString().toStdString();
                                loop_.post([this, number, tree, alive, text] {
                                  if (*alive) answered(number, tree, text);
                                });
                              });
  loop_.post_delayed(patience, [this, number, alive = alive_] {
    if (*alive) finish(number);
  });
}

void CaretLine::forget() {
  ++number_;
  done_ = nullptr;
  element_ = {};
}

void CaretLine::answered(std::uint64_t number, editing::AccessibleTree* tree, const std::string& answer) {
  // With another question, or document, the tree may be gone.
  if (number != number_) return;
  const QJsonArray places = QJsonDocument::fromJson(QByteArray::fromStdString(answer)).array();
  if (places.size() == 2 && tree->version() == asked_version_) {
    const editing::AccessibleContent& content = tree->content(*asked_);
    const auto from = offset_of(content, places[0]), to = offset_of(content, places[1]);
    if (from && to && *from < *to) {
      element_ = asked_;
      version_ = asked_version_;
      from_ = *from;
      to_ = *to;
    }
  }
  finish(number);
}

void CaretLine::finish(std::uint64_t number) {
  if (number != number_) return;
  if (const auto done = std::exchange(done_, nullptr)) done();
}

std::optional<std::pair<Offset, Offset>> CaretLine::of(const editing::AccessibleTree& tree,
                                                       const dom::Element& element) const {
  if (element_.get() != &element || version_ != tree.version()) return {};
  return std::pair(from_, to_);
}

}  // namespace tvx::qt
