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
  slice_size_ = {};
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

bool PatchStream::flush() {
  const bool load = !slice_;
  std::vector<PatchOperation> operations = mirror_->flush(load ? slice_size_.nodes() : 0);
  const bool moved = reset_ || std::any_of(operations.begin(), operations.end(), moves_selection);
  if (reset_ || !operations.empty()) {
    // Any patch that is on its way counts as the slice: the next one waits until the view has caught up.
    if (load && mirror_->loading()) {
      slice_ = next(last_sent_);
      slice_sent_ = loop_.now();
    }
    send(std::move(operations));
  }
  return moved;
}

void PatchStream::send(std::vector<PatchOperation> operations) {
  Patch patch;
  patch.number = last_sent_ = next(last_sent_);
  patch.reset = std::exchange(reset_, false);
  patch.compatibility_mode = compatibility_mode_;
  if (patch.reset) patch.base = base_;
  patch.operations = std::move(operations);
  mirror_->set_patch(next(last_sent_));
  view_.apply(patch);
}

bool PatchStream::done(PatchNumber number) {
  last_done_ = std::max(last_done_, number);
  if (!slice_ || number < *slice_) return false;
  slice_size_.took(loop_.now() - slice_sent_);
  slice_.reset();
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
