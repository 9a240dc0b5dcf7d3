#include "tvx/source/plain_text_box.h"

#include <algorithm>
#include <utility>

#include "tvx/base/line_ends.h"
#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

constexpr std::int16_t shift_bit = 1, control_bit = 2, alt_bit = 4;
constexpr std::int16_t key_backspace = 8, key_tab = 9, key_enter = 13, key_page_up = 33, key_page_down = 34,
                       key_end = 35, key_home = 36, key_left = 37, key_up = 38, key_right = 39, key_down = 40,
                       key_insert = 45, key_delete = 46;

bool is_word(char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'_' || c >= 0x80; }

}  // namespace

PlainTextBox::~PlainTextBox() { destroy(); }

std::u16string PlainTextBox::Text() const { return with_crlf(text_); }

void PlainTextBox::set_Text(std::u16string_view text) {
  text_ = with_lf(text);
  anchor_ = focus_ = first_visible_ = 0;
  hits_.clear();
  line_starts_.clear();
  done_.clear();
  undone_.clear();
  typing_run_ = false;
}

// --- selection ---

std::size_t PlainTextBox::SelStart() const { return std::min(anchor_, focus_); }
std::size_t PlainTextBox::SelLength() const { return std::max(anchor_, focus_) - SelStart(); }

void PlainTextBox::select(std::size_t start, std::size_t length) {
  start = std::min(start, text_.size());
  moved(start, start + std::min(length, text_.size() - start));
}

std::u16string PlainTextBox::SelText() const {
  return with_crlf(std::u16string_view(text_).substr(SelStart(), SelLength()));
}

void PlainTextBox::set_SelText(std::u16string_view text) {
  typing_run_ = false;
  replace(SelStart(), SelLength(), with_lf(text));
  typing_run_ = false;
}

// One record: from the first one's start to the last one's end.
void PlainTextBox::replace(const std::vector<Replacement>& replacements) {
  if (replacements.empty()) return;
  const std::size_t start = replacements.front().start;
  std::size_t at = start;
  std::u16string text;
  for (const Replacement& each : replacements) {
    text += std::u16string_view(text_).substr(at, each.start - at);
    text += with_lf(each.text);
    at = each.start + each.length;
  }
  typing_run_ = false;
  replace(start, at - start, text);
  typing_run_ = false;
}

void PlainTextBox::follow(std::size_t start, std::size_t length, std::u16string_view text) {
  const std::u16string with = with_lf(text);
  const std::size_t seen = line_starts()[std::min(first_visible_, line_count() - 1)];
  const auto moved_along = [&](std::size_t place) {
    if (place <= start) return place;
    return place >= start + length ? place - length + with.size()
                                   : start + std::min(place - start, with.size());
  };
  text_.replace(start, length, with);
  line_starts_.clear();
  anchor_ = moved_along(anchor_);
  focus_ = moved_along(focus_);
  first_visible_ = line_of(moved_along(seen));
  hits_.clear();
  done_.clear();
  undone_.clear();
  typing_run_ = false;
}

void PlainTextBox::show_hits(const std::vector<Stretch>& hits, std::size_t present) {
  hits_ = hits;
  present_hit_ = present;
}

void PlainTextBox::moved(std::size_t anchor, std::size_t focus) {
  if (anchor == anchor_ && focus == focus_) return;
  anchor_ = anchor;
  focus_ = focus;
  typing_run_ = false;
  const std::size_t line = line_of(focus_);
  if (line < first_visible_) scroll_to(line);
  if (line >= first_visible_ + visible_lines_) scroll_to(line + 1 - visible_lines_);
  if (handler()) handler()->SelChange();
}

// --- edits ---

void PlainTextBox::replace(std::size_t place, std::size_t removed, std::u16string_view inserted) {
  if (removed == 0 && inserted.empty()) return;
  record({place, text_.substr(place, removed), std::u16string(inserted)});
  text_.replace(place, removed, inserted);
  line_starts_.clear();
  const bool run = typing_run_;
  moved(place + inserted.size(), place + inserted.size());
  typing_run_ = run;
  if (handler()) handler()->Change();
}

// Letters typed one after the other are one step.
void PlainTextBox::record(Edit edit) {
  undone_.clear();
  if (typing_run_ && edit.removed.empty() && !done_.empty() &&
      done_.back().place + done_.back().inserted.size() == edit.place) {
    done_.back().inserted += edit.inserted;
    return;
  }
  done_.push_back(std::move(edit));
}

bool PlainTextBox::replay(std::vector<Edit>& from, std::vector<Edit>& to) {
  if (from.empty()) return false;
  Edit edit = std::move(from.back());
  from.pop_back();
  text_.replace(edit.place, edit.inserted.size(), edit.removed);
  line_starts_.clear();
  std::swap(edit.removed, edit.inserted);
  const std::size_t place = edit.place + edit.inserted.size();
  to.push_back(std::move(edit));
  moved(place, place);
  typing_run_ = false;
  if (handler()) handler()->Change();
  return true;
}

void PlainTextBox::type(std::u16string_view text) {
  const bool run = typing_run_ && text != u"\n";
  typing_run_ = run && SelLength() == 0;
  replace(SelStart(), SelLength(), text);
  typing_run_ = text != u"\n";
}

void PlainTextBox::erase(bool forward, bool word) {
  if (SelLength() > 0) return replace(SelStart(), SelLength(), {});
  const std::size_t to = word ? word_end(focus_, forward) : by_one(focus_, forward);
  replace(std::min(to, focus_), std::max(to, focus_) - std::min(to, focus_), {});
}

// --- lines ---

const std::vector<std::size_t>& PlainTextBox::line_starts() const {
  if (!line_starts_.empty()) return line_starts_;
  line_starts_.push_back(0);
  for (std::size_t at = text_.find(u'\n'); at != text_.npos; at = text_.find(u'\n', at + 1))
    line_starts_.push_back(at + 1);
  return line_starts_;
}

std::size_t PlainTextBox::line_count() const { return line_starts().size(); }

std::size_t PlainTextBox::line_of(std::size_t place) const {
  const auto& starts = line_starts();
  return static_cast<std::size_t>(std::ranges::upper_bound(starts, place) - starts.begin()) - 1;
}

std::size_t PlainTextBox::line_end(std::size_t line) const {
  return line + 1 < line_count() ? line_starts()[line + 1] - 1 : text_.size();
}

void PlainTextBox::scroll_to(std::size_t line) {
  line = std::min(line, line_count() - 1);
  if (std::exchange(first_visible_, line) != line) platform::SendMessage(handle(), platform::WM_VSCROLL);
}

// --- keys ---

void PlainTextBox::set_shown(bool shown) {
  shown_ = shown;
  if (!shown) focused_ = false;
}

void PlainTextBox::set_Enabled(bool enabled) {
  enabled_ = enabled;
  if (!enabled) focused_ = false;
}

void PlainTextBox::SetFocus() {
  if (!shown_ || !enabled_ || std::exchange(focused_, true)) return;
  if (handler()) handler()->GotFocus();
}

void PlainTextBox::key(std::int16_t key_code, std::int16_t shift, std::u16string_view text, bool down) {
  if (!enabled_) return;
  if (!down) {
    if (handler()) handler()->KeyUp(key_code, shift);
    return;
  }
  key_text_ = text;
  send_key_down(key_code, shift);
  key_text_.clear();
}

void PlainTextBox::on_key(std::int16_t key_code, std::int16_t shift) {
  if (command_key(key_code, shift) || caret_key(key_code, shift)) return;
  const bool control = (shift & control_bit) != 0;
  if (key_code == key_delete) return locked_ ? void() : erase(true, control);
  if (key_code == key_backspace) {
    std::int16_t character = key_backspace;
    if (!control && handler()) handler()->KeyPress(character);
    if (character != 0 && !locked_) erase(false, control);
    return;
  }
  const bool shifted_tab = key_code == key_tab && (shift & shift_bit);
  const std::u16string text = key_code == key_enter ? u"\n" : key_code == key_tab ? u"\t" : key_text_;
  if (shifted_tab || text.empty() || (shift & (control_bit | alt_bit))) return;
  auto character = static_cast<std::int16_t>(text == u"\n" ? u'\r' : text[0]);
  if (handler()) handler()->KeyPress(character);
  if (character != 0 && !locked_) type(text);
}

bool PlainTextBox::command_key(std::int16_t key_code, std::int16_t shift) {
  const auto tell = [&](platform::Message message) { platform::SendMessage(handle(), message); };
  if (key_code == key_insert && shift == control_bit) return tell(platform::WM_COPY), true;
  if (key_code == key_insert && shift == shift_bit) return tell(platform::WM_PASTE), true;
  if (key_code == key_delete && shift == shift_bit) return tell(platform::WM_CUT), true;
  if (shift != control_bit) return false;
  switch (key_code) {
    case u'A': select(0, text_.size()); return true;
    case u'C': tell(platform::WM_COPY); return true;
    case u'V': tell(platform::WM_PASTE); return true;
    case u'X': tell(platform::WM_CUT); return true;
    case u'Z': tell(platform::EM_UNDO); return true;
    case u'Y': tell(platform::EM_REDO); return true;
    default: return false;
  }
}

bool PlainTextBox::caret_key(std::int16_t key_code, std::int16_t shift) {
  const bool control = (shift & control_bit) != 0, extend = (shift & shift_bit) != 0;
  const auto page = static_cast<std::ptrdiff_t>(visible_lines_);
  std::size_t to;
  switch (key_code) {
    case key_left: to = control ? word_end(focus_, false) : by_one(focus_, false); break;
    case key_right: to = control ? word_end(focus_, true) : by_one(focus_, true); break;
    case key_up: to = vertical(-1); break;
    case key_down: to = vertical(1); break;
    case key_page_up: to = vertical(-page); break;
    case key_page_down: to = vertical(page); break;
    case key_home: to = control ? 0 : line_starts()[line_of(focus_)]; break;
    case key_end: to = control ? text_.size() : line_end(line_of(focus_)); break;
    default: return false;
  }
  if (!extend && SelLength() > 0 && !control && (key_code == key_left || key_code == key_right))
    to = key_code == key_left ? SelStart() : SelStart() + SelLength();
  moved(extend ? anchor_ : to, to);
  return true;
}

std::size_t PlainTextBox::by_one(std::size_t place, bool forward) const {
  if (forward) {
    if (place == text_.size()) return place;
    const bool pair =
        is_high_surrogate(text_[place]) && place + 1 < text_.size() && is_low_surrogate(text_[place + 1]);
    return place + (pair ? 2 : 1);
  }
  if (place == 0) return 0;
  const bool pair = is_low_surrogate(text_[place - 1]) && place > 1 && is_high_surrogate(text_[place - 2]);
  return place - (pair ? 2 : 1);
}

std::size_t PlainTextBox::word_end(std::size_t place, bool forward) const {
  if (forward) {
    while (place < text_.size() && !is_word(text_[place])) ++place;
    while (place < text_.size() && is_word(text_[place])) ++place;
  } else {
    while (place > 0 && !is_word(text_[place - 1])) --place;
    while (place > 0 && is_word(text_[place - 1])) --place;
  }
  return place;
}

std::size_t PlainTextBox::vertical(std::ptrdiff_t lines) const {
  const std::size_t line = line_of(focus_);
  const std::size_t column = focus_ - line_starts()[line];
  const auto last = static_cast<std::ptrdiff_t>(line_count()) - 1;
  const auto target = std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(line) + lines, 0, last);
  const auto to = static_cast<std::size_t>(target);
  return std::min(line_starts()[to] + column, line_end(to));
}

}  // namespace tvx::source
