#include "tvx/browser/view/patch_stream.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/browser/view/view.h"
#include "tvx/platform/message_loop.h"

namespace tvx::browser {
namespace {

PatchNumber next(PatchNumber number) { return PatchNumber(static_cast<std::uint32_t>(number) + 1); }

// Whoever has written or moved the caret in so many milliseconds is at work.
constexpr std::int64_t work_lasts = 250;
// Whoever moves the caret or changes the document all the time keeps slices from being sent for so long.
constexpr std::int64_t longest_wait = 300;
// Of what may be sent at once, the part that goes between two keys.
constexpr std::size_t share_between_keys = 4;

/// Operations after which the view's own selection may stand elsewhere.
bool moves_selection(const PatchOperation& operation) {
  using Type = PatchOperation::Type;
  return operation.type == Type::Detach || operation.type == Type::Place || operation.type == Type::Forget ||
         operation.type == Type::Data;
}

}  // namespace

void PatchStream::follow(dom::Document& tree, Base base) {
  stop();
  tree_ = tree;
  base_of_ = std::move(base);
  mirror_ = std::make_unique<Mirror>(tree);
}

void PatchStream::stop() {
  mirror_.reset();
  tree_ = {};
  base_of_ = nullptr;
}

void PatchStream::begin_page() {
  mirror_->reset();
  reset_ = true;
  slice_.reset();
  edit_shown_ = slice_is_edit_ = false;
  slice_size_ = {};
  progress_.begin();
  used_.reset();
  compatibility_mode_ = tree_->compatibility_mode();
  base_ = base_of_();
  base_may_differ_ = false;
  first_patch_ = next(last_sent_);
  mirror_->set_patch(first_patch_);
}

bool PatchStream::page_outdated() {
  if (std::exchange(base_may_differ_, false) && base_of_() != base_) return true;
  return tree_->compatibility_mode() != compatibility_mode_;
}

void PatchStream::note_use() { used_ = loop_.now(); }

bool PatchStream::at_work() const { return used_ && loop_.now() - *used_ < work_lasts; }

bool PatchStream::may_load(bool edited) const {
  if (slice_) return false;
  if (!edited && (edit_shown_ || !at_work())) return true;
  return loop_.now() - loaded_ > longest_wait;
}

std::optional<std::int64_t> PatchStream::resumes_in() const {
  if (slice_ || !mirror_->loading() || !at_work()) return {};
  return *used_ + work_lasts - loop_.now();
}

std::size_t PatchStream::budget(bool jumps) const {
  if (jumps) return SliceSize::first;
  return at_work() ? slice_size_.nodes() / share_between_keys : slice_size_.nodes();
}

bool PatchStream::flush(dom::Node* wanted) {
  const bool edited = mirror_->dirty() && !reset_, loading = mirror_->loading();
  // A page begins at its top, whatever comes next.
  const bool jumps = wanted && mirror_->loading() && !reset_;
  bool load = reset_ || jumps || may_load(edited);
  std::vector<PatchOperation> operations = mirror_->flush(load ? budget(jumps) : 0, jumps ? wanted : nullptr);
  // An edit of what is still to come is none for the view.
  if (edited && !load && !slice_ && operations.empty()) {
    load = true;
    operations = mirror_->flush(budget(false));
  }
  const bool moved = reset_ || std::any_of(operations.begin(), operations.end(), moves_selection);
  // That there is nothing more to come is told, too.
  if (reset_ || !operations.empty() || (loading && !mirror_->loading())) {
    // Any patch that is on its way counts as the slice: the next one waits until the view has caught up.
    if (mirror_->loading() && (load || !slice_)) {
      slice_ = next(last_sent_);
      slice_sent_ = loop_.now();
      slice_tells_ = load && !jumps && !at_work();
      slice_is_edit_ = !load;
      if (load) loaded_ = slice_sent_;
    }
    send(std::move(operations));
  }
  edit_shown_ = false;
  return moved;
}

void PatchStream::send(std::vector<PatchOperation> operations) {
  Patch patch;
  patch.number = last_sent_ = next(last_sent_);
  patch.reset = std::exchange(reset_, false);
  patch.compatibility_mode = compatibility_mode_;
  if (patch.reset) patch.base = base_;
  patch.operations = std::move(operations);
  progress_.sent(patch.operations);
  if (mirror_->loading()) {
    patch.share = patch.reset ? 0 : progress_.share(*tree_);
    patch.has_end = mirror_->has_end();
  }
  mirror_->set_patch(next(last_sent_));
  view_.apply(patch);
  if (hear_) hear_(patch.operations);
}

bool PatchStream::done(PatchNumber number, std::optional<double> milliseconds) {
  last_done_ = std::max(last_done_, number);
  if (!slice_ || number < *slice_) return false;
  const auto under_way = static_cast<double>(loop_.now() - slice_sent_);
  if (slice_tells_) slice_size_.took(number == *slice_ ? milliseconds.value_or(under_way) : under_way);
  slice_.reset();
  edit_shown_ = slice_is_edit_;
  return mirror_ && mirror_->loading();
}

void PatchStream::failed(const PatchFailed& failure) {
  if (!mirror_ || mirror_->failed(failure.node)) return;
  std::clog << "htmled: a node can't be shown and is left out of the view: " << to_utf8(failure.reason)
            << '\n';
}

bool PatchStream::settled() const {
  return last_done_ == last_sent_ && !reset_ && !mirror_->dirty() && !mirror_->loading();
}

}  // namespace tvx::browser
