#include "window/own_page.h"

#include <QWebEngineScript>

#include "tvx/base/strings.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::bench {

OwnPage::OwnPage() : window_(loop_) {
  window_.resize(1000, 800);
  window_.show();
  window_.start({});
}

QWidget* OwnPage::input() { return window_.editor().view().input_widget(); }
QWebEnginePage& OwnPage::page() { return *window_.editor().view().page(); }
quint32 OwnPage::world() const { return QWebEngineScript::ApplicationWorld; }
bool OwnPage::settled() { return window_.editor().document_view().settled(); }

EditedPage::Opening OwnPage::open(const QString& file) {
  Opening opening;
  const double since = now();
  window_.open(file);
  wait_until([&] {
    if (!opening.filled && window_.editor().document_view().filled()) opening.filled = now() - since;
    return settled();
  });
  opening.whole = now() - since;
  return opening;
}

void OwnPage::expect_key(bool writes) {
  turns_ = 3;
  before_.reset();
  if (!writes) before_ = window_.editor().document_view().facts();
}

bool OwnPage::key_is_laid_out() {
  if (--turns_ >= 0 || !settled()) return false;
  const browser::ViewFacts& facts = window_.editor().document_view().facts();
  return !before_ || facts.caret_left != before_->caret_left || facts.caret_top != before_->caret_top;
}

void OwnPage::place_caret() {
  const std::shared_ptr<browser::HTMLDocument> document = window_.editor().control().DOM();
  for (dom::Node* node = document->body(); node; node = dom::next_in_order(*node, document->body())) {
    auto* text = dom::as<dom::Text>(node);
    if (!text || trimmed(text->data()).size() < 5) continue;
    document->editor().selection().collapse({text, 5});
    break;
  }
  wait_until([this] { return settled(); });
}

}  // namespace tvx::bench
