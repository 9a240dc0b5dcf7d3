#include "tvx/core/search/finder.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/input/gesture.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/side_source.h"
#include "tvx/dom/journal.h"
#include "tvx/editing/search/replace_read.h"
#include "tvx/platform/message_loop.h"

namespace tvx::core {
namespace {

/// So long nothing changes before the hits are found anew: nobody who types waits for that.
constexpr std::int64_t pause_milliseconds = 200;

TextPattern::Options pattern_options(std::int32_t options, bool in_code) {
  return {.match_case = (options & find_match_case) != 0,
          .whole_words = (options & find_whole_words) != 0,
          .regular_expression = (options & find_regular_expression) != 0,
          .across_lines = in_code};
}

std::u16string with_lf(std::u16string text) {
  std::erase(text, u'\r');
  return text;
}

}  // namespace

Finder::Finder(Context& context, CodePane& code, SideSource& side) : Part(context), code_(code), side_(side) {
  code_.box().add_observer(*this);
  side_.box().add_observer(*this);
}

Finder::~Finder() {
  *alive_ = false;
  code_.box().remove_observer(*this);
  side_.box().remove_observer(*this);
  if (document_) document_->tree().remove_observer(*this);
}

source::OrvelCV* Finder::code_in_hand() const {
  if (code_.in_front()) return &code_.box();
  return side_.in_hand() ? &side_.box() : nullptr;
}

platform::TextBox& Finder::box() const { return searched_->TextBox1(); }

// --- what is looked for, and where ---

std::int32_t Finder::FindText(std::u16string_view text, std::int32_t options) {
  const KeepAlive alive(context_);
  if (text.empty()) return FindEnd(), 0;
  if (!pattern_) follow_document();
  note_origin();
  sought_ = text;
  options_ = options;
  pattern_.reset();
  fresh_ = false;
  hits_.clear();
  try {
    pattern_.emplace(text, pattern_options(options, in_code()));
    searched_ = code_in_hand();
    hits_in_code_ = searched_ != nullptr;
    refresh();
  } catch (const RuntimeError&) {
    clear_marks();
    pattern_.reset();
    throw;
  }
  const Hit from = hits_in_code_ ? code_origin_
                   : origin_     ? Hit{page_ ? page_->unit_at(origin_->start()) : 0, 0}
                                 : Hit{};
  const auto first = std::ranges::lower_bound(hits_, from.from, {}, &Hit::from);
  if (!hits_.empty()) select(first == hits_.end() ? 0 : static_cast<std::size_t>(first - hits_.begin()));
  show_marks();
  return static_cast<std::int32_t>(hits_.size());
}

void Finder::FindEnd() {
  clear_marks();
  pattern_.reset();
  page_.reset();
  hits_.clear();
  code_text_.clear();
  origin_.reset();
  code_origin_ = {};
  fresh_ = false;
  if (document_) document_->tree().remove_observer(*this);
  document_.reset();
}

void Finder::apply() {
  if (!pattern_) return;
  follow_document();
  note_change();
}

void Finder::follow_document() {
  if (document_ == DOM()) return;
  if (document_) document_->tree().remove_observer(*this);
  shown_.clear();
  origin_.reset();
  page_.reset();
  fresh_ = false;
  document_ = DOM();
  if (document_) document_->tree().add_observer(*this);
}

// A search begins where the user was, and not at the hit that it has led to so far.
void Finder::note_origin() {
  source::OrvelCV* const here = code_in_hand();
  if (pattern_ && fresh_ && searched_ == here && present() < hits_.size()) return;
  if (here) {
    platform::TextBox& box = here->TextBox1();
    code_origin_ = {box.SelStart(), box.SelStart() + box.SelLength()};
    return;
  }
  const auto& document = DOM();
  const dom::Range range = document ? document->editor().selection().range() : dom::Range();
  origin_ = range.start ? std::make_unique<dom::LiveRange>(document->tree(), range) : nullptr;
}

// --- the hits ---

void Finder::refresh() {
  if (!pattern_) return;
  if (searched_ != code_in_hand()) {
    clear_marks();
    searched_ = code_in_hand();
    hits_in_code_ = searched_ != nullptr;
    fresh_ = false;
    pattern_.emplace(sought_, pattern_options(options_, hits_in_code_));
    note_origin();
  }
  if (fresh_) return;
  hits_.clear();
  page_.reset();
  code_text_.clear();
  if (hits_in_code_) {
    code_text_ = with_lf(box().Text());
    hits_ = pattern_->hits_in(code_text_);
  } else if (dom::Element* body = document_ ? document_->body() : nullptr) {
    page_.emplace(*body);
    hits_ = pattern_->hits_in(page_->text());
  }
  fresh_ = true;
  if (options_ & find_in_selection) keep_those_in_scope();
}

void Finder::keep_those_in_scope() {
  Hit scope = code_origin_;
  if (!hits_in_code_) {
    if (!origin_ || !page_) return;
    scope = {page_->unit_at(origin_->start()), page_->unit_at(origin_->end())};
  }
  if (scope.from == scope.to) return;
  std::erase_if(hits_, [&](const Hit& hit) { return hit.from < scope.from || hit.to > scope.to; });
}

Finder::Hit Finder::selected() {
  if (hits_in_code_) {
    return {box().SelStart(), box().SelStart() + box().SelLength()};
  }
  const dom::Range range = document_ ? document_->editor().selection().range() : dom::Range();
  if (!range.start || !page_) return {};
  const std::size_t from = page_->unit_at(range.start);
  return {from, range.collapsed() ? from : page_->unit_at(range.end)};
}

std::size_t Finder::present() {
  const Hit here = selected();
  const auto found = std::ranges::lower_bound(hits_, here.from, {}, &Hit::from);
  if (found == hits_.end() || found->from != here.from) return hits_.size();
  const bool same = hits_in_code_
                        ? *found == here
                        : page_->range_of(found->from, found->to) == document_->editor().selection().range();
  return same ? static_cast<std::size_t>(found - hits_.begin()) : hits_.size();
}

std::int32_t Finder::step(bool forward) {
  const KeepAlive alive(context_);
  refresh();
  if (hits_.empty()) return 0;
  const Hit here = selected();
  std::size_t number = 0;
  if (forward) {
    const std::size_t from = present() < hits_.size() ? here.to : here.from;
    const auto next = std::ranges::lower_bound(hits_, from, {}, &Hit::from);
    number = next == hits_.end() ? 0 : static_cast<std::size_t>(next - hits_.begin());
  } else {
    const auto next = std::ranges::lower_bound(hits_, here.from, {}, &Hit::from);
    number = (next == hits_.begin() ? hits_.size() : static_cast<std::size_t>(next - hits_.begin())) - 1;
  }
  select(number);
  show_marks();
  return static_cast<std::int32_t>(number) + 1;
}

void Finder::select(std::size_t number) {
  const Hit& hit = hits_[number];
  if (hits_in_code_) return box().select(hit.from, hit.to - hit.from);
  document_->editor().selection().set(page_->range_of(hit.from, hit.to));
}

std::int32_t Finder::FindCount() {
  refresh();
  return static_cast<std::int32_t>(hits_.size());
}

std::int32_t Finder::FindPosition() {
  refresh();
  const std::size_t number = pattern_ ? present() : 0;
  return number < hits_.size() ? static_cast<std::int32_t>(number) + 1 : 0;
}

std::int32_t Finder::FindLocked() {
  refresh();
  return static_cast<std::int32_t>(
      std::ranges::count_if(hits_, [this](const Hit& hit) { return !may_replace(hit); }));
}

// --- replacing ---

bool Finder::may_replace(const Hit& hit) const {
  if (hits_in_code_) return !box().Locked() && box().Enabled();
  return editing::may_replace(page_->pieces_of(hit.from, hit.to));
}

bool Finder::ReplaceText(std::u16string_view replacement) {
  const KeepAlive alive(context_);
  refresh();
  const std::size_t number = pattern_ ? present() : 0;
  const bool replaces = number < hits_.size() && may_replace(hits_[number]);
  if (replaces) {
    const std::vector<Hit> hit{hits_[number]};
    replace(hit, pattern_->replacements_of(hit, hits_in_code_ ? code_text_ : page_->text(), replacement));
  }
  step(true);
  return replaces;
}

std::int32_t Finder::ReplaceAllText(std::u16string_view replacement) {
  const KeepAlive alive(context_);
  refresh();
  std::vector<Hit> hits;
  std::ranges::copy_if(hits_, std::back_inserter(hits), [this](const Hit& hit) { return may_replace(hit); });
  if (hits.empty()) return 0;
  replace(hits, pattern_->replacements_of(hits, hits_in_code_ ? code_text_ : page_->text(), replacement));
  refresh();
  show_marks();
  return static_cast<std::int32_t>(hits.size());
}

// From the last one to the first: what is still to be replaced stays where it is. The selection is a caret
// after the last one then.
void Finder::replace(const std::vector<Hit>& hits, const std::vector<std::u16string>& texts) {
  fresh_ = false;
  if (hits_in_code_) {
    std::vector<platform::TextBox::Replacement> edits;
    for (std::size_t i = 0; i < hits.size(); ++i) {
      edits.push_back({hits[i].from, hits[i].to - hits[i].from, texts[i]});
      code_origin_.to += texts[i].size() - edits.back().length;  // what it looks in grows along
    }
    box().replace(edits);
    return;
  }
  const browser::HTMLDocument::Gesture quiet(*document_);
  const dom::UndoStep step(document_->tree().journal(), u"Replace");
  std::unique_ptr<dom::LiveRange> caret;
  for (std::size_t i = hits.size(); i-- > 0;) {
    const dom::Boundary end = editing::replace_read(page_->pieces_of(hits[i].from, hits[i].to), texts[i]);
    if (!caret) caret = std::make_unique<dom::LiveRange>(document_->tree(), dom::Range{end, end});
  }
  document_->editor().selection().collapse(caret->start());
  mark_changed();
}

// --- what changes meanwhile ---

void Finder::mutated(const dom::Mutation& mutation) {
  if (mutation.kind == dom::MutationKind::Overlay) return;
  // Where a text is taken out or written anew, the view's marks of it are others.
  if (mutation.type == dom::Mutation::Type::Remove) marks_lost_ = true;
  if (mutation.type == dom::Mutation::Type::ReplaceData)
    if (const auto shown = shown_.find(dom::as<dom::Text>(mutation.node.get())); shown != shown_.end())
      shown->second.lost = true;
  note_change();
}

void Finder::note_change() {
  if (!pattern_) return;
  fresh_ = false;
  changed_at_ = surroundings().loop.now();
  if (!std::exchange(waiting_, true)) wait_for_pause();
}

void Finder::wait_for_pause() {
  surroundings().loop.post_delayed(pause_milliseconds, [this, alive = alive_] {
    if (!*alive) return;
    if (pattern_ && surroundings().loop.now() < changed_at_ + pause_milliseconds) return wait_for_pause();
    waiting_ = false;
    if (!pattern_) return;
    const KeepAlive held(context_);
    attempt([&] { refresh(); });
    show_marks();
    context_.PropertyChanged(u"FindCount");
  });
}

// --- the marks ---

void Finder::show_marks() {
  if (!pattern_) return;
  // More marks than these would make each key wait for the engine. Those around the present one are shown.
  constexpr std::size_t most_marked = 4000;
  const std::size_t here = present(), count = hits_.size();
  const std::size_t middle = here < count ? here : 0;
  const std::size_t from =
      std::min(middle - std::min(middle, most_marked / 2), count - std::min(count, most_marked));
  const std::size_t to = std::min(count, from + most_marked);
  if (!hits_in_code_) return show_in_page(from, to, here);
  std::vector<platform::TextBox::Stretch> stretches;
  for (std::size_t i = from; i < to; ++i) stretches.push_back({hits_[i].from, hits_[i].to - hits_[i].from});
  box().show_hits(stretches, here - from);
}

Finder::ShownTexts Finder::wanted_marks(std::size_t from, std::size_t to, std::size_t present) const {
  ShownTexts wanted;
  for (std::size_t i = from; i < to; ++i)
    for (const editing::ReadText::Piece& piece : page_->pieces_of(hits_[i].from, hits_[i].to)) {
      Shown& shown =
          wanted.try_emplace(piece.node, Shown{dom::Ref<dom::Text>(piece.node), {}, {}}).first->second;
      (i == present ? shown.present : shown.hits).push_back({piece.from, piece.to});
    }
  return wanted;
}

void Finder::show_in_page(std::size_t from, std::size_t to, std::size_t present) {
  auto* display = document_ ? dynamic_cast<browser::MarkDisplay*>(document_->viewport()) : nullptr;
  if (!display || !page_) return;
  const bool all = std::exchange(display_, display) != display || std::exchange(marks_lost_, false);
  ShownTexts wanted = wanted_marks(from, to, present);
  for (const auto& [text, shown] : wanted) {
    const auto before = shown_.find(text);
    const bool is_new = all || before == shown_.end() || before->second.lost;
    if (is_new || before->second.hits != shown.hits) display->mark(browser::MarkKind::Hit, *text, shown.hits);
    if (is_new || before->second.present != shown.present)
      display->mark(browser::MarkKind::PresentHit, *text, shown.present);
  }
  for (const auto& [text, shown] : shown_) {
    if (wanted.contains(text)) continue;
    display->mark(browser::MarkKind::Hit, *text, {});
    display->mark(browser::MarkKind::PresentHit, *text, {});
  }
  shown_ = std::move(wanted);
}

void Finder::clear_marks() {
  auto* display = document_ ? dynamic_cast<browser::MarkDisplay*>(document_->viewport()) : nullptr;
  if (display) {
    display->clear_marks(browser::MarkKind::Hit);
    display->clear_marks(browser::MarkKind::PresentHit);
  }
  shown_.clear();
  if (pattern_ && hits_in_code_) box().show_hits({}, 0);
}

}  // namespace tvx::core
