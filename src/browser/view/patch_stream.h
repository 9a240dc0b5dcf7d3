#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tvx/browser/view/messages.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/progress.h"
#include "tvx/browser/view/slice_size.h"
#include "tvx/dom/document.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::browser {

class View;

/// The numbered patches that keep a view's tree equal to a document's.
///
/// A new document goes in slices: the next one is sent when the view has laid out the one before, so that it
/// is never busy for long. Keys go before slices: while somebody is at work, a small slice comes when an edit
/// is shown, and the rest waits. Numbers go on from document to document: a report always names one patch.
class PatchStream {
 public:
  /// The address that the page is loaded under, so that relative ones in the tree mean what they mean here.
  using Base = std::function<std::u16string()>;

  /// Both outlive this.
  PatchStream(View& view, platform::MessageLoop& loop) : view_(view), loop_(loop) {}

  /// Who wants to hear what is sent.
  void set_on_sent(std::function<void(const std::vector<PatchOperation>&)> hear) { hear_ = std::move(hear); }

  /// Follows this tree, from its beginning.
  void follow(dom::Document& tree, Base base);
  /// Nothing is to be sent.
  void stop();
  /// What the view knows of the tree; null without one.
  const Mirror* mirror() const { return mirror_.get(); }

  /// The view is to start over: the next patch begins a page.
  void begin_page();
  /// Whether the page must begin anew to be right: it has another base or compatibility mode by now.
  bool page_outdated();
  /// The base address may be another one.
  void base_may_differ() { base_may_differ_ = true; }

  /// Sends what has changed, or else a slice of what is still to come. What stands around `wanted` is sent at
  /// once, if the view doesn't have that yet. True: the view's own selection may stand elsewhere now.
  bool flush(dom::Node* wanted = nullptr);
  /// The user is at work: keys come, and are not to wait long.
  void note_use();
  /// In how many milliseconds a flush sends more of what waits for the user; nothing where none does.
  std::optional<std::int64_t> resumes_in() const;

  /// The view has laid this patch out, in so many milliseconds if it knows. True: the next slice may come.
  bool done(PatchNumber number, std::optional<double> milliseconds = {});
  /// The view couldn't make a node. Sent once more, then left out.
  void failed(const PatchFailed& failure);
  /// The view's process is gone, and what was on its way with it.
  void lost() { last_done_ = last_sent_; }

  /// All is sent and laid out.
  bool settled() const;
  /// The first slice is laid out: the window is filled, though more may follow.
  bool filled() const { return last_done_ >= first_patch_; }

 private:
  bool at_work() const;
  bool may_load(bool edited) const;
  std::size_t budget(bool jumps) const;
  void send(std::vector<PatchOperation> operations);

  View& view_;
  platform::MessageLoop& loop_;
  std::function<void(const std::vector<PatchOperation>&)> hear_;
  dom::Ref<dom::Document> tree_;
  Base base_of_;
  std::unique_ptr<Mirror> mirror_;

  bool reset_ = false;  // the next patch begins a page
  dom::CompatibilityMode compatibility_mode_{};
  std::u16string base_;
  bool base_may_differ_ = false;
  PatchNumber last_sent_{}, last_done_{};
  PatchNumber first_patch_{};         // the one that began the page
  std::optional<PatchNumber> slice_;  // on its way; or an edit, after which the next slice comes
  std::int64_t slice_sent_ = 0;
  bool slice_tells_ = false;  // how large the next one may be
  bool slice_is_edit_ = false;
  bool edit_shown_ = false;  // just now: there is time for a slice
  std::int64_t loaded_ = 0;  // when a slice was sent last
  std::optional<std::int64_t> used_;
  SliceSize slice_size_;
  Progress progress_;
};

}  // namespace tvx::browser
