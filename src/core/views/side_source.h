#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "tvx/core/part.h"
#include "tvx/core/views/letter_place.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/selection.h"
#include "tvx/source/code_view.h"
#include "tvx/source/source_text.h"

namespace tvx::core {

class CodePane;
class Content;
class SelectionHighlight;

/// The source that stands beside the page, where a program wants to see both. It shows what the code view
/// would show, and is no mode of the control: hosts have the page as ever.
///
/// Each side follows the other when its changes have paused. Here only the stretch that differs is replaced,
/// there only what differs in the tree, so that carets and lines in sight stay. What is typed here goes into
/// the document as a step of undo when its tags fit, and at the latest when somebody turns to the page, saves
/// or asks for the document: take(). The document's steps are the only history; what hasn't gone into the
/// document yet is taken back in the box.
///
/// Where the document changes under what waits here, both changes stay if they don't overlap; else what the
/// document holds counts.
class SideSource final : public Part,
                         private source::CodeViewEvents,
                         private dom::MutationObserver,
                         private editing::SelectionObserver {
 public:
  /// Takes the document's last step back, or does it again.
  using TakeBackInPage = std::function<void(bool again)>;

  SideSource(Context& context, CodePane& code, Content& content, SelectionHighlight& highlight,
             TakeBackInPage take_back);
  ~SideSource();

  source::OrvelCV& box() { return box_; }
  /// Whether the program wants it. It stands there while the page does.
  bool wanted() const { return wanted_; }
  void set_wanted(bool wanted);
  bool shows() const { return document_ != nullptr; }
  /// Whether the user is in it, or was there last.
  bool in_hand() const { return in_hand_ && shows(); }
  /// Something is typed here that the document doesn't have yet.
  bool waits() const { return waits_ && shows(); }
  /// Puts into the document what is typed here, whether its tags fit or not.
  void take();
  /// The user turns to the page.
  void leave();
  /// The document, the view or whether editing is on may be another.
  void apply();

 private:
  // source::CodeViewEvents
  void Change() override;
  void SelChange() override;
  void GotFocus() override;
  bool CanTakeBack(bool again) override;
  bool TakeBack(bool again) override;
  // The document's
  void mutated(const dom::Mutation& mutation) override;
  void selection_changed() override;

  void enter();
  void end();
  void note_change();
  void wait_for_pause(std::int64_t milliseconds);
  void settle();

  /// Whether no more tags don't fit than in what the document has.
  bool fits(const std::u16string& typed) const;
  /// False: the tags don't fit, and nobody insists.
  bool take_typed(bool insists);
  void write(const std::u16string& markup);
  /// The document's text as it stands, formatted.
  source::SourceText present_text();
  /// Shows what the document is by now; where the text has changed.
  std::optional<std::size_t> follow();
  std::optional<std::size_t> put(const std::u16string& from, const std::u16string& to, std::size_t shift);
  std::u16string typed_text();

  void show_place();
  void show_place_in_source();
  void show_place_in_page();
  void mark_place(const dom::Text* text);

  CodePane& code_;
  Content& content_;
  SelectionHighlight& highlight_;
  const TakeBackInPage take_back_;
  source::OrvelCV box_;
  bool wanted_ = false, in_hand_ = false;
  std::shared_ptr<browser::HTMLDocument> document_;  // that is followed; null: it doesn't show

  std::optional<source::SourceText> shown_;  // of the document as it was last read
  std::u16string settled_;                   // what the box holds where nothing waits; lines end with LF
  bool waits_ = false;                       // the box may hold something else
  bool changed_ = false;                     // the document may be another than settled_ shows
  bool own_ = false;                         // what changes now is done here
  bool place_waits_ = false;
  std::optional<LetterPlace> place_;  // that both sides show
  dom::Ref<dom::Text> marked_;

  std::int64_t changed_at_ = 0, last_cost_ = 0;
  bool waiting_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::core
