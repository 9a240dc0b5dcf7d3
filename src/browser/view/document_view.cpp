#include "tvx/browser/view/document_view.h"

#include <cstdint>
#include <vector>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/document_input.h"
#include "tvx/browser/view/document_output.h"
#include "tvx/browser/view/view.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {
namespace {

constexpr std::int64_t crashes_count_within = 10'000;
constexpr int most_restarts = 2;  // for a content that has never been shown whole
constexpr int most_hurried_tries = 3;

}  // namespace

class DocumentView::Parts final : private dom::MutationObserver {
 public:
  Parts(View& view, platform::MessageLoop& loop)
      : view_(view),
        loop_(loop),
        output_(view, loop, [this] { input_.end_waiting(); }),
        input_(output_, loop) {}

  ~Parts() override { *alive_ = false; }

  void show(std::shared_ptr<HTMLDocument> document);
  void receive(const ViewMessage& message);
  void view_died(const ViewDied& death);
  void try_again();

  View& view_;
  platform::MessageLoop& loop_;
  std::shared_ptr<HTMLDocument> document_;
  DocumentOutput output_;
  DocumentInput input_;
  ViewFacts facts_;
  std::vector<std::int64_t> crashes_;
  std::int64_t last_death_ = 0;
  int restarts_ = 0;  // since the content was last shown whole
  bool trying_again_ = false;
  int hurried_tries_ = 0;  // right after a death, since the content was last shown whole
  std::function<void(bool)> on_focus_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);

 private:
  void mutated(const dom::Mutation& mutation) override;
  void note_picture(const ViewPicture& picture) const;
  void forgive();
};

DocumentView::DocumentView(View& view, platform::MessageLoop& loop, const Geometry* fixed)
    : parts_(std::make_unique<Parts>(view, loop)), geometry_(fixed ? *fixed : *this) {
  view.set_receiver([parts = parts_.get(), alive = parts_->alive_](const ViewMessage& message) {
    if (*alive) parts->receive(message);
  });
}

DocumentView::~DocumentView() {
  parts_->view_.set_receiver(nullptr);
  show(nullptr);
}

void DocumentView::show(std::shared_ptr<HTMLDocument> document) {
  if (parts_->document_) parts_->document_->set_geometry(nullptr);
  if (document) document->set_geometry(&geometry_);
  parts_->show(std::move(document));
}

const std::shared_ptr<HTMLDocument>& DocumentView::document() const { return parts_->document_; }

void DocumentView::set_editable(bool editable) { parts_->output_.set_editable(editable); }

bool DocumentView::settled() const { return parts_->output_.settled() && parts_->input_.idle(); }

bool DocumentView::input_waits() const { return !parts_->input_.idle(); }

bool DocumentView::filled() const { return parts_->output_.filled(); }

bool DocumentView::shows_notice() const { return parts_->output_.given_up(); }

const ViewFacts& DocumentView::facts() const { return parts_->facts_; }

std::vector<MarkedStretch> DocumentView::marked(MarkKind kind, const dom::Text& text) const {
  const std::vector<MarkedStretch>* stretches = parts_->output_.marks().find(kind, text);
  return stretches ? *stretches : std::vector<MarkedStretch>();
}

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

void DocumentView::Parts::show(std::shared_ptr<HTMLDocument> document) {
  if (document_) document_->tree().remove_observer(*this);
  forgive();
  hurried_tries_ = 0;
  document_ = std::move(document);
  if (document_) document_->tree().add_observer(*this);
  input_.show(document_);
  output_.show(document_);
}

// --- what the view reports ---

void DocumentView::Parts::receive(const ViewMessage& message) {
  if (const auto* done = std::get_if<PatchDone>(&message.what)) {
    output_.patch_done(*done);
    if (output_.settled() && !output_.given_up()) restarts_ = hurried_tries_ = 0;
    return;
  }
  if (const auto* failure = std::get_if<PatchFailed>(&message.what)) return output_.patch_failed(*failure);
  if (const auto* death = std::get_if<ViewDied>(&message.what)) return view_died(*death);
  if (std::get_if<ViewReady>(&message.what)) return try_again();
  if (std::get_if<ViewWithheld>(&message.what)) {
    if (document_) document_->note_withheld();
    return;
  }
  if (const auto* bar = std::get_if<ViewScrollBar>(&message.what)) return output_.scroll_bar_moved(*bar);
  if (const auto* facts = std::get_if<ViewFacts>(&message.what)) {
    facts_ = *facts;
  } else if (const auto* focus = std::get_if<ViewFocus>(&message.what)) {
    if (on_focus_) on_focus_(focus->focused);
  } else if (const auto* picture = std::get_if<ViewPicture>(&message.what)) {
    note_picture(*picture);
  } else {
    input_.receive(message);
  }
}

void DocumentView::Parts::note_picture(const ViewPicture& picture) const {
  if (!document_) return;
  const auto* image = dom::as<dom::Element>(output_.mirror().node(picture.image));
  if (!image) return;
  std::optional<platform::PictureSize> size;
  if (picture.width > 0 && picture.height > 0) size = {picture.width, picture.height};
  document_->note_natural_size(*image, size);
}

/// A process that dies may have its own reasons. One that dies again soon, or as often as it is given this
/// content, dies of that.
void DocumentView::Parts::view_died(const ViewDied& death) {
  input_.end_waiting();
  if (!document_) return;
  const std::int64_t now = loop_.now();
  last_death_ = now;
  if (!death.of_silence) {
    std::erase_if(crashes_, [now](std::int64_t before) { return now - before > crashes_count_within; });
    crashes_.push_back(now);
  }
  const bool of_content = death.of_silence || !output_.settled();
  output_.lost();
  const bool again = of_content && ++restarts_ > most_restarts;
  if (crashes_.size() < 2 && !again) return output_.begin_page();
  output_.give_up();
  view_.show_notice(
      u"This document can't be shown at the moment: the view has ended more than once while showing it. "
      u"Nothing is lost; the document can be edited as code and saved.");
}

void DocumentView::Parts::forgive() {
  crashes_.clear();
  restarts_ = 0;
  if (output_.given_up()) view_.show_notice({});
}

/// The user wants it, or there is another content.
void DocumentView::Parts::try_again() {
  if (!document_ || !output_.given_up()) return;
  forgive();
  output_.begin_page();
}

/// What couldn't be shown may be gone from the document, by a call of the host or in the code. One who
/// changes it all the time doesn't have it tried all the time.
void DocumentView::Parts::mutated(const dom::Mutation& mutation) {
  if (!output_.given_up() || mutation.kind == dom::MutationKind::Overlay || trying_again_) return;
  const bool lately = loop_.now() - last_death_ <= crashes_count_within;
  if (lately && ++hurried_tries_ > most_hurried_tries) return;
  trying_again_ = true;
  loop_.post([this, alive = alive_] {
    if (!*alive) return;
    trying_again_ = false;
    try_again();
  });
}

}  // namespace tvx::browser
