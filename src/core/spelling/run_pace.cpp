#include "tvx/core/spelling/run_pace.h"

#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/dialog_host.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/platform/message_loop.h"
#include "tvx/spelling/spelling_progress.h"

namespace tvx::core {

using dom::Boundary;
using editing::Content;
using editing::ContentKind;
using editing::ContentWalk;

namespace {

/// Nobody needs to be told of what takes no longer.
constexpr std::chrono::milliseconds until_shown{300};
/// Often enough for a window that is moved, and for a bar.
constexpr std::chrono::milliseconds between_turns{40};

/// The text from one position to another, or to the content's end.
std::size_t text_between(const Boundary& from, const Boundary* to) {
  std::size_t units = 0;
  ContentWalk walk(from, editing::Direction::Forward);
  for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) {
    if (met.kind != ContentKind::Text) continue;
    if (to && met.node == to->node)
      return units + std::min(to->offset, met.to) - std::min(to->offset, met.from);
    if (to && dom::compare({met.node, met.from}, *to) >= 0) break;
    units += met.to - met.from;
  }
  return units;
}

}  // namespace

RunPace::RunPace(Context& context, DialogHost* dialogs, std::function<void()> quit)
    : Part(context), dialogs_(dialogs), quit_(std::move(quit)), next_(Clock::now() + until_shown) {}

RunPace::~RunPace() { restart(); }

void RunPace::restart() {
  if (progress_) progress_->form().Hide();
  progress_.reset();
  next_ = Clock::now() + until_shown;
}

bool RunPace::reach(const Boundary& place) {
  if (Clock::now() < next_) return false;
  platform::MessageLoop& loop = surroundings().loop;
  if (!loop.non_modal_allowed()) {
    restart();
    return false;
  }
  if (!progress_) open();
  count_to(place);
  progress_->show(passed_, whole_);
  loop.pump(0);
  next_ = Clock::now() + between_turns;
  return true;
}

void RunPace::open() {
  progress_ = std::make_unique<spelling::SpellingProgress>(quit_);
  dom::Element& body = body_of(document());
  const Boundary start{&body, 0};
  if (!counted_ || !counted_->start()) {
    counted_ = std::make_unique<dom::LiveRange>(document().tree(), dom::Range{start, start});
    passed_ = 0;
  }
  whole_ = passed_ + text_between(counted_->start(), nullptr);
  if (dialogs_) dialogs_->open_beside(progress_->form(), u"SpellingSettings");
}

void RunPace::count_to(const Boundary& place) {
  const Boundary from = counted_->start();
  if (from && dom::compare(from, place) < 0) passed_ += text_between(from, &place);
  counted_->set({place, place});
}

}  // namespace tvx::core
