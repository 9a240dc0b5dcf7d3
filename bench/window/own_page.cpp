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

void OwnPage::collapse_in_first_text() {
  const std::shared_ptr<browser::HTMLDocument> document = window_.editor().control().DOM();
  for (dom::Node* node = document->body(); node; node = dom::next_in_order(*node, document->body())) {
    auto* text = dom::as<dom::Text>(node);
    if (!text || trimmed(text->data()).size() < 5) continue;
    document->editor().selection().collapse({text, 5});
    break;
  }
}

void OwnPage::place_caret() {
  collapse_in_first_text();
  wait_until([this] { return settled(); });
}

void OwnPage::open_to_the_window(const QString& file) {
  window_.setWindowModified(false);
  window_.open(file);
  wait_until([this] { return window_.editor().document_view().filled(); });
  to_front();
  collapse_in_first_text();
}

Samples OwnPage::type_while_it_comes(const QString& file, int most) {
  Samples samples;
  open_to_the_window(file);
  for (int key = 0; key <= most && !settled(); ++key) {
    const int left = window_.editor().document_view().facts().caret_left;
    const double since = now();
    post_key(Qt::Key_X, QStringLiteral("x"));
    wait_until([&] { return window_.editor().document_view().facts().caret_left != left; }, 5);
    // The first one comes with the caret itself.
    if (key > 0) samples.add(now() - since);
    rest(100);
  }
  wait_until([this] { return settled(); });
  window_.setWindowModified(false);
  return samples;
}

std::optional<double> OwnPage::jump_while_it_comes(const QString& file) {
  open_to_the_window(file);
  const double since = now();
  post_key(Qt::Key_End, {}, Qt::ControlModifier);
  wait_until([this] { return window_.editor().document_view().facts().scroll_y > 0; }, 60);
  const double time = now() - since;
  if (settled()) return {};
  wait_until([this] { return settled(); });
  return time;
}

}  // namespace tvx::bench
