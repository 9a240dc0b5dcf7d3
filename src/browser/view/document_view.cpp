#include "tvx/browser/view/document_view.h"

#include <cstdint>
#include <vector>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/document_input.h"
#include "tvx/browser/view/document_output.h"
#include "tvx/browser/view/view.h"

namespace tvx::browser {
namespace {

constexpr std::int64_t deaths_count_within = 10'000;

}  // namespace

class DocumentView::Parts {
 public:
  Parts(View& view, platform::MessageLoop& loop)
      : view_(view),
        loop_(loop),
        output_(view, loop, [this] { input_.end_waiting(); }),
        input_(output_, loop) {}

  void receive(const ViewMessage& message);
  void view_died();
  void view_ready();

  View& view_;
  platform::MessageLoop& loop_;
  std::shared_ptr<HTMLDocument> document_;
  DocumentOutput output_;
  DocumentInput input_;
  ViewFacts facts_;
  std::vector<std::int64_t> deaths_;
  std::function<void(bool)> on_focus_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

DocumentView::DocumentView(View& view, platform::MessageLoop& loop)
    : parts_(std::make_unique<Parts>(view, loop)) {
  view.set_receiver([parts = parts_.get(), alive = parts_->alive_](const ViewMessage& message) {
    if (*alive) parts->receive(message);
  });
}

DocumentView::~DocumentView() {
  *parts_->alive_ = false;
  parts_->view_.set_receiver(nullptr);
  show(nullptr);
}

void DocumentView::show(std::shared_ptr<HTMLDocument> document) {
  Parts& parts = *parts_;
  if (parts.document_) parts.document_->set_geometry(nullptr);
  parts.deaths_.clear();
  parts.document_ = document;
  if (document) document->set_geometry(this);
  parts.input_.show(document);
  parts.output_.show(std::move(document));
}

const std::shared_ptr<HTMLDocument>& DocumentView::document() const { return parts_->document_; }

void DocumentView::set_editable(bool editable) { parts_->output_.set_editable(editable); }

bool DocumentView::settled() const { return parts_->output_.settled() && parts_->input_.idle(); }

bool DocumentView::filled() const { return parts_->output_.filled(); }

bool DocumentView::shows_notice() const { return parts_->output_.given_up(); }

const ViewFacts& DocumentView::facts() const { return parts_->facts_; }

void DocumentView::set_on_focus(std::function<void(bool)> on_focus) {
  parts_->on_focus_ = std::move(on_focus);
}

void DocumentView::scroll_into_view(dom::Element& element, bool at_top) {
  parts_->output_.scroll_into_view(element, at_top);
}

dom::Element* DocumentView::element_at(const HTMLDocument&, int x, int y) const {
  return parts_->input_.element_at(x, y);
}

std::pair<int, int> DocumentView::caret_place(const HTMLDocument&) const {
  return {parts_->facts_.caret_left, parts_->facts_.caret_top};
}

// --- what the view reports ---

void DocumentView::Parts::receive(const ViewMessage& message) {
  if (const auto* done = std::get_if<PatchDone>(&message.what)) return output_.patch_done(done->number);
  if (const auto* failure = std::get_if<PatchFailed>(&message.what)) return output_.patch_failed(*failure);
  if (std::get_if<ViewDied>(&message.what)) return view_died();
  if (std::get_if<ViewReady>(&message.what)) return view_ready();
  if (const auto* facts = std::get_if<ViewFacts>(&message.what)) {
    facts_ = *facts;
  } else if (const auto* focus = std::get_if<ViewFocus>(&message.what)) {
    if (on_focus_) on_focus_(focus->focused);
  } else {
    input_.receive(message);
  }
}

void DocumentView::Parts::view_died() {
  input_.end_waiting();
  if (!document_) return;
  const std::int64_t now = loop_.now();
  std::erase_if(deaths_, [now](std::int64_t death) { return now - death > deaths_count_within; });
  deaths_.push_back(now);
  output_.lost();
  if (deaths_.size() < 2) return output_.begin_page();
  output_.give_up();
  view_.show_notice(
      u"This document can't be shown at the moment: the view has ended twice while showing it. Nothing is "
      u"lost; the document can be edited as code and saved.");
}

/// The user wants to try again.
void DocumentView::Parts::view_ready() {
  if (!document_ || !output_.given_up()) return;
  deaths_.clear();
  view_.show_notice({});
  output_.begin_page();
}

}  // namespace tvx::browser
