#include "tvx/core/views/side_source.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/line_ends.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/input/gesture.h"
#include "tvx/browser/view/mark_display.h"
#include "tvx/core/content/content.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/changed_content.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/editing/editor.h"
#include "tvx/platform/message_loop.h"
#include "tvx/source/markup_troubles.h"

namespace tvx::core {
namespace {

/// So long nothing is typed before the other side follows. Where that takes long, as in a long document, it
/// is done more rarely.
constexpr std::int64_t pause_milliseconds = 300, pauses_a_cost = 4;
/// A caret that moves is followed sooner.
constexpr std::int64_t caret_milliseconds = 60;

/// What changes while it lives is done here.
struct Own {
  explicit Own(bool& is_own) : flag(is_own), before(std::exchange(is_own, true)) {}
  ~Own() { flag = before; }
  Own(const Own&) = delete;
  Own& operator=(const Own&) = delete;
  bool& flag;
  const bool before;
};

std::u16string with_lf(std::u16string text) {
  std::erase(text, u'\r');
  return text;
}

/// The stretch in which two texts differ.
struct Stretch {
  std::size_t start = 0, old_end = 0, new_end = 0;
  bool empty() const { return old_end == start && new_end == start; }
};

Stretch difference(const std::u16string& before, const std::u16string& after) {
  const std::size_t shorter = std::min(before.size(), after.size());
  const auto head = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
  std::size_t tail = 0;
  while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
  return {head, before.size() - tail, after.size() - tail};
}

}  // namespace

SideSource::SideSource(Context& context, CodePane& code, Content& content, SelectionHighlight& highlight,
                       TakeBackInPage take_back)
    : Part(context), code_(code), content_(content), highlight_(highlight), take_back_(std::move(take_back)) {
  box_.set_events(this);
  box_.set_clipboard(surroundings().clipboard);
}

SideSource::~SideSource() {
  *alive_ = false;
  box_.set_events(nullptr);
  if (!document_) return;
  document_->tree().remove_observer(*this);
  document_->editor().selection().remove_observer(*this);
}

// --- when it shows ---

void SideSource::set_wanted(bool wanted) {
  if (wanted_ == wanted) return;
  const KeepAlive alive(context_);
  if (!wanted) take();
  wanted_ = wanted;
  apply();
}

void SideSource::apply() {
  const auto& document = DOM();
  const bool can_show = wanted_ && document && document->body() && !code_.in_front() && run_time();
  if (can_show) box_.set_Locked(!properties_.EditorEnabled);
  if (document_ == (can_show ? document : nullptr)) return;
  if (document_) end();
  if (can_show) enter();
}

void SideSource::enter() {
  document_ = DOM();
  document_->tree().add_observer(*this);
  document_->editor().selection().add_observer(*this);
  changed_ = false;
  waits_ = false;
  place_.reset();
  attempt([&] { shown_ = present_text(); });
  if (!shown_) shown_ = source::SourceText::as_it_is(share(u""));
  settled_ = with_lf(*shown_->code());
  box_.set_Text(shown_->code());
  box_.attachMessages();
  box_.set_Visible(true);
  box_.set_TabStop(true);
  show_place();
}

void SideSource::end() {
  mark_place(nullptr);
  document_->tree().remove_observer(*this);
  document_->editor().selection().remove_observer(*this);
  document_.reset();
  waits_ = in_hand_ = false;
  shown_.reset();
  box_.DetachAllMessages();
  box_.set_TabStop(false);
  box_.set_Visible(false);
}

// --- what changes ---

void SideSource::Change() {
  if (!shows()) return;
  const KeepAlive alive(context_);
  waits_ = true;
  note_change();
  mark_changed();
}

void SideSource::mutated(const dom::Mutation& mutation) {
  if (own_ || mutation.kind == dom::MutationKind::Overlay) return;
  changed_ = true;
  note_change();
}

void SideSource::note_change() {
  changed_at_ = surroundings().loop.now();
  if (!std::exchange(waiting_, true)) wait_for_pause(pause_milliseconds);
}

void SideSource::wait_for_pause(std::int64_t milliseconds) {
  surroundings().loop.post_delayed(milliseconds, [this, alive = alive_] {
    if (!*alive) return;
    const std::int64_t due = changed_at_ + std::max(pause_milliseconds, last_cost_ * pauses_a_cost),
                       now = surroundings().loop.now();
    if (shows() && now < due) return wait_for_pause(due - now);
    waiting_ = false;
    if (shows() && !context_.terminated()) settle();
  });
}

// Input that is on its way to the document comes first: what it does is followed then.
void SideSource::settle() {
  const KeepAlive held(context_);
  const std::int64_t start = surroundings().loop.now();
  attempt([&] {
    if (waits_) take_typed(false);
    if (changed_) follow();
  });
  last_cost_ = surroundings().loop.now() - start;
  show_place();
}

// --- from here into the document ---

void SideSource::take() {
  if (!waits()) return;
  const KeepAlive held(context_);
  attempt([&] { take_typed(true); });
}

void SideSource::leave() {
  if (!std::exchange(in_hand_, false) || !shows()) return;
  const KeepAlive held(context_);
  mark_place(nullptr);
  place_.reset();
  take();
  // What the parser has made of it is what stands here from now on.
  attempt([&] { follow(); });
}

std::u16string SideSource::typed_text() { return with_lf(box_.TextBox1().Text()); }

bool SideSource::fits(const std::u16string& typed) const {
  const std::size_t troubles = source::markup_troubles(typed);
  return troubles == 0 || troubles <= source::markup_troubles(settled_);
}

bool SideSource::take_typed(bool insists) {
  if (changed_) follow();
  const std::u16string typed = typed_text();
  if (typed == settled_) return waits_ = false, true;
  if (!insists && !fits(typed)) return false;
  write(shown_->markup_after(with_crlf(typed)));
  waits_ = false;
  settled_ = typed;
  box_.follow(0, 0, {});  // from here on the document's steps lead back
  // Where lines are drawn as the user has left them the next edit starts from here.
  source::SourceText now = present_text();
  if (with_lf(*now.code()) == settled_) shown_ = std::move(now);
  mark_changed();
  return true;
}

void SideSource::write(const std::u16string& markup) {
  const Own own(own_);
  const browser::HTMLDocument::Gesture gesture(*document_);
  const dom::UndoStep step(document_->tree().journal(), u"Source");
  const dom::WithoutOverlay without_overlay(document_->tree());
  dom::change_content(body_of(*document_), markup);
  const dom::Element* current = highlight_.element();
  if (current && !dom::is_connected(*current)) highlight_.set_element({});
}

// --- from the document to here ---

source::SourceText SideSource::present_text() {
  const dom::WithoutOverlay without_overlay(document_->tree());
  return source::SourceText::formatted(share(content_.text_of_body()));
}

std::optional<std::size_t> SideSource::put(const std::u16string& from, const std::u16string& to,
                                           std::size_t shift) {
  const Stretch stretch = difference(from, to);
  if (stretch.empty()) return {};
  box_.follow(stretch.start + shift, stretch.old_end - stretch.start,
              std::u16string_view(to).substr(stretch.start, stretch.new_end - stretch.start));
  return stretch.new_end + shift;
}

// What waits here stays where the document has changed elsewhere.
std::optional<std::size_t> SideSource::follow() {
  changed_ = false;
  const Own own(own_);
  source::SourceText text = present_text();
  const std::u16string now = with_lf(*text.code()), typed = typed_text();
  const Stretch theirs = difference(settled_, now), ours = difference(settled_, typed);
  std::optional<std::size_t> place;
  const bool before = theirs.old_end<ours.start, after = theirs.start> ours.old_end;
  if (!ours.empty() && (before || after)) {
    place = put(settled_, now, before ? 0 : ours.new_end - ours.old_end);
  } else {
    place = put(typed, now, 0);
    waits_ = false;
  }
  shown_ = std::move(text);
  settled_ = now;
  return place;
}

// --- undo ---

bool SideSource::CanTakeBack(bool again) {
  if (!shows()) return false;
  if (again ? box_.TextBox1().can_redo() : box_.TextBox1().can_undo()) return true;
  const dom::Journal& journal = document_->tree().journal();
  return again ? journal.can_redo() : journal.can_undo();
}

// What waits goes back letter by letter, in the box.
bool SideSource::TakeBack(bool again) {
  if (!shows() || own_) return false;
  platform::TextBox& box = box_.TextBox1();
  if (again ? box.can_redo() : box.can_undo()) {
    again ? box.Redo() : box.Undo();
    return true;
  }
  const KeepAlive held(context_);
  take();
  take_back_(again);
  attempt([&] {
    if (const auto place = follow()) box.select(*place, 0);
  });
  show_place();
  return true;
}

// --- the place that both show ---

void SideSource::GotFocus() {
  if (!shows()) return;
  in_hand_ = true;
  context_.state_changed();
}

void SideSource::SelChange() {
  if (!shows() || own_ || !in_hand_) return;
  context_.state_changed();
  if (!std::exchange(place_waits_, true))
    surroundings().loop.post_delayed(caret_milliseconds, [this, alive = alive_] {
      if (*alive && std::exchange(place_waits_, false)) show_place();
    });
}

void SideSource::selection_changed() {
  if (own_ || in_hand_) return;
  if (!std::exchange(place_waits_, true))
    surroundings().loop.post_delayed(caret_milliseconds, [this, alive = alive_] {
      if (*alive && std::exchange(place_waits_, false)) show_place();
    });
}

// Not while one side is ahead of the other: settling shows it then.
void SideSource::show_place() {
  if (!shows() || waits_ || changed_ || !document_->body()) return;
  const KeepAlive held(context_);
  const Own own(own_);
  attempt([&] { in_hand_ ? show_place_in_page() : show_place_in_source(); });
}

void SideSource::show_place_in_source() {
  const editing::Selection& selection = document_->editor().selection();
  if (selection.type() == editing::SelectionType::None) return;
  const LetterPlace place = letter_place(*document_->body(), selection.focus());
  if (std::exchange(place_, place) == place) return;
  box_.TextBox1().select(offset_at(settled_, place), 0);
}

void SideSource::show_place_in_page() {
  platform::TextBox& box = box_.TextBox1();
  const LetterPlace place = letter_place(settled_, box.SelStart() + box.SelLength());
  const dom::Boundary boundary = boundary_at(*document_->body(), place);
  if (std::exchange(place_, place) != place) document_->editor().selection().collapse(boundary);
  mark_place(dom::as<dom::Text>(boundary.node));
}

void SideSource::mark_place(const dom::Text* text) {
  auto* display = dynamic_cast<browser::MarkDisplay*>(document_->viewport());
  if (!display) return;
  display->clear_marks(browser::MarkKind::Place);
  if (text && text->length() > 0) display->mark(browser::MarkKind::Place, *text, {{0, text->length()}});
}

}  // namespace tvx::core
