#include "tvx/browser/view/document_output.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/positions.h"
#include "tvx/browser/view/view.h"
#include "tvx/dom/collections.h"
#include "tvx/platform/message_loop.h"

namespace tvx::browser {
namespace {

std::u16string base_of(const HTMLDocument& document) {
  std::u16string address = document.absolute_url(u".");
  return contains(address, u":") ? address : document.url();
}

std::vector<dom::NodeId> pictures_under_way(HTMLDocument& document, const Mirror& mirror) {
  std::vector<dom::NodeId> shown;
  const std::vector<std::u16string>& addresses = document.under_way();
  if (addresses.empty()) return shown;
  const auto images = dom::collection_of(document.tree(), dom::CollectionKind::Images);
  for (const dom::Element* image : images->elements())
    if (mirror.knows(*image) &&
        std::ranges::find(addresses, image->attribute_or_empty(dom::names::src)) != addresses.end())
      shown.push_back(image->id());
  return shown;
}

/// A page from elsewhere doesn't reach into the user's files.
ResourcePolicy policy_of(const HTMLDocument& document) {
  ResourcePolicy policy = document.resource_policy();
  if (is_remote(document.url())) policy.local_files = false;
  return policy;
}

}  // namespace

DocumentOutput::DocumentOutput(View& view, platform::MessageLoop& loop, std::function<void()> page_begins)
    : view_(view),
      loop_(loop),
      page_begins_(std::move(page_begins)),
      patches_(view, loop),
      selection_(view),
      context_(view),
      marks_(view) {
  patches_.set_on_sent([this](const std::vector<PatchOperation>& operations) { marks_.came(operations); });
}

DocumentOutput::~DocumentOutput() {
  *alive_ = false;
  show(nullptr);
}

void DocumentOutput::show(std::shared_ptr<HTMLDocument> document) {
  if (document_) {
    document_->set_viewport(nullptr);
    document_->tree().remove_observer(*this);
    document_->editor().selection().remove_observer(*this);
  }
  patches_.stop();
  scroll_.clear();
  marks_.clear();
  given_up_ = false;
  document_ = std::move(document);
  if (!document_) return;
  patches_.follow(document_->tree(), [document = document_.get()] { return base_of(*document); });
  document_->tree().add_observer(*this);
  document_->editor().selection().add_observer(*this);
  document_->set_viewport(this);
  begin_page();
}

void DocumentOutput::set_editable(bool editable) {
  if (mode_.editable == editable) return;
  mode_.editable = editable;
  view_.set_mode(mode_);
  schedule_flush();
}

void DocumentOutput::begin_page() {
  page_begins_();
  given_up_ = false;
  page_began_ = true;
  view_.set_policy(policy_of(*document_));
  patches_.begin_page();
  selection_.page_began();
  marks_.page_began();
  schedule_flush();
}

void DocumentOutput::patch_done(const PatchDone& done) {
  if (patches_.done(done.number, done.milliseconds)) schedule_flush();
}

void DocumentOutput::patch_failed(const PatchFailed& failure) {
  if (!document_) return;
  patches_.failed(failure);
  schedule_flush();
}

bool DocumentOutput::settled() const {
  return !document_ || given_up_ || (!flush_scheduled_ && patches_.settled() && !scroll_.waits());
}

void DocumentOutput::mutated(const dom::Mutation& mutation) {
  if (mutation.node->is(dom::Tag::Base)) patches_.base_may_differ();
  schedule_flush();
}

void DocumentOutput::selection_changed() {
  patches_.note_use();
  selection_.reveal(true);
  scroll_.clear();
  schedule_flush();
}

void DocumentOutput::schedule_flush() {
  if (std::exchange(flush_scheduled_, true)) return;
  loop_.post([this, alive = alive_] {
    if (*alive) flush();
  });
}

void DocumentOutput::flush() {
  flush_scheduled_ = false;
  if (!document_ || given_up_) return;
  if (patches_.page_outdated()) begin_page();
  scroll_.find(document_->tree(), mirror());
  const bool moved = patches_.flush(first_wanted());
  send_mode(std::exchange(page_began_, false));
  selection_.send(wanted_selection(*document_, mirror()), moved);
  scroll_.send(view_, mirror());
  context_.send(*document_, mode_.editable);
  if (marks_.send(mirror())) schedule_flush();
  resume_later();
}

/// What waits while the user is at work goes on after that.
void DocumentOutput::resume_later() {
  const auto milliseconds = patches_.resumes_in();
  if (!milliseconds || std::exchange(resume_posted_, true)) return;
  loop_.post_delayed(*milliseconds, [this, alive = alive_] {
    if (!*alive) return;
    resume_posted_ = false;
    schedule_flush();
  });
}

/// What is to be in the window and may not be in the view yet.
dom::Node* DocumentOutput::first_wanted() const {
  if (dom::Node* element = scroll_.element()) return mirror().knows(*element) ? nullptr : element;
  const editing::Selection& selection = document_->editor().selection();
  if (dom::Element* control = selection.control()) return mirror().knows(*control) ? nullptr : control;
  if (selection.type() != editing::SelectionType::Text) return nullptr;
  dom::Node* focus = missing_at(mirror(), selection.focus());
  return focus ? focus : missing_at(mirror(), selection.anchor());
}

/// A mode of the editor changes without notice: it is read with each flush.
void DocumentOutput::send_mode(bool again) {
  ViewMode mode = mode_;
  mode.free_placement = document_->editor().two_d_position();
  mode.under_way = pictures_under_way(*document_, mirror());
  if (!again && mode == mode_) return;
  mode_ = mode;
  view_.set_mode(mode_);
}

void DocumentOutput::scroll_to(int x, int y) {
  scroll_.to(x, y);
  selection_.reveal(false);
  schedule_flush();
}

void DocumentOutput::scroll_into_view(dom::Element& element, bool at_top) {
  scroll_.into_view(element, at_top);
  selection_.reveal(false);
  schedule_flush();
}

void DocumentOutput::scroll_bar_moved(const ViewScrollBar& bar) {
  if (!document_ || given_up_) return;
  scroll_.to(bar);
  selection_.reveal(false);
  schedule_flush();
}

void DocumentOutput::mark(MarkKind kind, const dom::Text& text, std::vector<MarkedStretch> stretches) {
  marks_.set(kind, text, std::move(stretches));
  schedule_flush();
}

bool DocumentOutput::is_busy() const { return document_ && !given_up_ && mirror().loading(); }

void DocumentOutput::clear_marks(MarkKind kind) {
  marks_.clear(kind);
  schedule_flush();
}

QuestionId DocumentOutput::ask(ViewQuestion question) {
  question.id = QuestionId(++last_question_);
  view_.ask(question);
  return question.id;
}

void DocumentOutput::selection_drawn(const ViewPlace& anchor, const ViewPlace& focus) {
  selection_.drawn(anchor, focus);
}

void DocumentOutput::cancel_drag() { view_.cancel_drag(); }

}  // namespace tvx::browser
