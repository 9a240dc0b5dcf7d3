#include "tvx/editing/search/text_count.h"

#include <unicode/brkiter.h>
#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace tvx::editing {
namespace {

// Units that a turn goes over at most, lines that are known among them: a few milliseconds.
constexpr std::size_t most_passed = std::size_t(1) << 20;

std::size_t words_in(std::u16string_view text) {
  static UErrorCode made = U_ZERO_ERROR;
  static const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), made));
  if (U_FAILURE(made)) return 0;
  UErrorCode status = U_ZERO_ERROR;
  UText* source = utext_openUChars(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
  iterator->setText(source, status);
  std::size_t words = 0;
  iterator->first();
  while (iterator->next() != icu::BreakIterator::DONE)
    words += iterator->getRuleStatus() >= UBRK_WORD_NONE_LIMIT;
  utext_close(source);
  return words;
}

TextCount count_line(std::u16string_view line) {
  const auto second_halves =
      std::ranges::count_if(line, [](char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; });
  return {words_in(line), line.size() - static_cast<std::size_t>(second_halves)};
}

std::u16string_view take_line(std::u16string_view& text) {
  const std::size_t end = std::min(text.find(u'\n'), text.size());
  const std::u16string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

}  // namespace

TextCount count_text(std::u16string_view text) {
  TextCounter counter;
  counter.begin(text);
  while (!counter.go_on(text.size() + 1)) {
  }
  return counter.count();
}

void TextCounter::begin(std::u16string_view text) {
  rest_ = text;
  count_ = {};
  known_.merge(seen_);
  seen_.clear();
}

bool TextCounter::go_on(std::size_t units) {
  std::size_t counted = 0, passed = 0;
  while (!rest_.empty() && counted < units && passed < most_passed) {
    const std::u16string_view line = take_line(rest_);
    passed += line.size() + 1;
    if (line.empty()) continue;
    const std::uint64_t key = std::hash<std::u16string_view>()(line);
    auto known = seen_.find(key);
    if (known == seen_.end()) {
      auto before = known_.extract(key);
      if (before.empty()) {
        known = seen_.emplace(key, count_line(line)).first;
        counted += line.size();
      } else {
        known = seen_.insert(std::move(before)).position;
      }
    }
    count_.words += known->second.words;
    count_.characters += known->second.characters;
  }
  if (rest_.empty()) known_.clear();
  return rest_.empty();
}

}  // namespace tvx::editing
