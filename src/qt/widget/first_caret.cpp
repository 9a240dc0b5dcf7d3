#include "tvx/qt/widget/first_caret.h"

#include <QTimer>
#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::qt {

void FirstCaret::set_later() {
  if (!view_has_focus_ || !widget_ || std::exchange(awaited_, true)) return;
  QTimer::singleShot(0, widget_, [this] {
    awaited_ = false;
    set();
  });
}

bool FirstCaret::is_awaited() const {
  const auto document = control_.DOM();
  if (!document || document->readyState() != u"complete") return true;
  return !control_.InCodeView() && document->editor().design_mode() &&
         document->editor().selection().type() == editing::SelectionType::None;
}

void FirstCaret::set() {
  const auto document = control_.DOM();
  if (!started_ || !document || control_.InCodeView() || !document->body()) return;
  if (document->readyState() != u"complete" || !document->editor().design_mode()) return;
  if (document->editor().selection().type() != editing::SelectionType::None) return;
  // Before the first thing that is seen: white space before a paragraph holds no caret.
  const dom::Boundary body{document->body(), 0};
  const auto start =
      editing::next_caret_place(body, editing::Direction::Backward, editing::Granularity::Document);
  document->select([&](editing::Selection& selection) {
    selection.collapse(start.value_or(editing::normalized_caret_place(body)));
  });
}

}  // namespace tvx::qt
