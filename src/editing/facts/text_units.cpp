#include "tvx/editing/facts/text_units.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <algorithm>
#include <memory>

namespace tvx::editing {

namespace {

/// How far a break is looked for. Boundaries are local; a whole book need not be read for one of them.
constexpr Offset window = 512;

/// A break iterator over a part of a text, without a copy of it.
class Breaks {
 public:
  Breaks(icu::BreakIterator& iterator, std::u16string_view text) : iterator_(iterator) {
    UErrorCode status = U_ZERO_ERROR;
    text_ = utext_openUChars(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
    iterator_.setText(text_, status);
  }
  ~Breaks() { utext_close(text_); }
  Breaks(const Breaks&) = delete;
  Breaks& operator=(const Breaks&) = delete;

  icu::BreakIterator* operator->() const { return &iterator_; }

 private:
  icu::BreakIterator& iterator_;
  UText* text_ = nullptr;
};

// Making an iterator reads tables; one of each kind serves the process.
icu::BreakIterator& graphemes() {
  static UErrorCode status = U_ZERO_ERROR;
  static const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  return *iterator;
}

icu::BreakIterator& words() {
  static UErrorCode status = U_ZERO_ERROR;
  static const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
  return *iterator;
}

// Below U+0300 nothing combines, and nothing joins but CR and LF.
bool stands_alone(char16_t c) { return c < 0x300 && c != u'\r' && c != u'\n'; }

bool is_word(const Breaks& breaks) { return breaks->getRuleStatus() >= UBRK_WORD_NONE_LIMIT; }

}  // namespace

Offset previous_code_point(std::u16string_view text, Offset from) {
  if (from == 0) return 0;
  const bool pair = from >= 2 && is_low_surrogate(text[from - 1]) && is_high_surrogate(text[from - 2]);
  return from - (pair ? 2 : 1);
}

Offset previous_grapheme(std::u16string_view text, Offset from) {
  if (from == 0) return 0;
  if (stands_alone(text[from - 1])) return from - 1;
  const Offset base = from > window ? from - window : 0;
  const Breaks breaks(graphemes(), text.substr(base, from - base));
  const auto found = breaks->preceding(static_cast<std::int32_t>(from - base));
  return found == icu::BreakIterator::DONE ? 0 : base + static_cast<Offset>(found);
}

Offset next_grapheme(std::u16string_view text, Offset from) {
  if (from >= text.size()) return text.size();
  if (stands_alone(text[from]) && (from + 1 == text.size() || stands_alone(text[from + 1]))) return from + 1;
  const std::u16string_view part = text.substr(from, window);
  const Breaks breaks(graphemes(), part);
  const auto found = breaks->following(0);
  return found == icu::BreakIterator::DONE ? from + part.size() : from + static_cast<Offset>(found);
}

Offset previous_word(std::u16string_view text, Offset from) {
  const Offset base = from > window ? from - window : 0;
  const Breaks breaks(words(), text.substr(base, from - base));
  std::int32_t end = breaks->last();
  // The status tells of the segment before a boundary.
  while (end > 0) {
    const bool word = is_word(breaks);
    end = breaks->previous();
    if (word) return base + static_cast<Offset>(std::max(end, 0));
  }
  return base;
}

Offset next_word(std::u16string_view text, Offset from) {
  const std::u16string_view part = text.substr(from, window);
  const Breaks breaks(words(), part);
  breaks->first();
  for (std::int32_t end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next()) {
    if (is_word(breaks)) return from + static_cast<Offset>(end);
  }
  return from + part.size();
}

}  // namespace tvx::editing
