#include "tvx/base/text_pattern.h"

#include <unicode/brkiter.h>
#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <algorithm>
#include <chrono>
#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds longest_search{1000};
constexpr char16_t no_break_space = 0xA0;

[[noreturn]] void fail(std::u16string_view text) {
  throw RuntimeError(errors::invalid_call, std::u16string(text));
}

/// Unit by unit: no character becomes longer or shorter, so that positions stay what they are.
char16_t folded(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  if (unit >= 0xD800 && unit < 0xE000) return unit;
  const UChar32 other = u_foldCase(unit, U_FOLD_CASE_DEFAULT);
  return other < 0x10000 ? static_cast<char16_t>(other) : unit;
}

std::u16string folded(std::u16string_view text, bool keep_case) {
  std::u16string result(text);
  for (char16_t& unit : result) {
    if (unit == no_break_space) unit = u' ';
    if (!keep_case) unit = folded(unit);
  }
  return result;
}

UChar32 character_at(std::u16string_view text, std::size_t at) {
  UChar32 character = 0;
  U16_GET(text.data(), 0, at, text.size(), character);
  return character;
}

bool is_accent(UChar32 character) { return (U_GET_GC_MASK(character) & U_GC_M_MASK) != 0; }

bool ends_within_character(std::u16string_view text, std::size_t at) {
  if (at >= text.size() || text[at] < 0x300) return false;
  return is_low_surrogate(text[at]) || is_accent(character_at(text, at));
}

bool is_plain_letter(char16_t unit) { return is_ascii_alpha(unit) || is_ascii_digit(unit) || unit == u'_'; }

}  // namespace

/// Word boundaries of a text, asked for from its start on.
class TextPattern::Words {
 public:
  explicit Words(std::u16string_view text) : text_(text) {}

  bool is_boundary(std::size_t at) {
    if (at == 0 || at == text_.size()) return true;
    const char16_t before = text_[at - 1], after = text_[at];
    // Most positions are known without asking, and asking is expensive.
    if (is_plain_letter(before) && is_plain_letter(after)) return false;
    if (is_ascii_space(before) != is_ascii_space(after)) return true;
    return is_boundary_of_line(at);
  }

 private:
  bool is_boundary_of_line(std::size_t at) {
    if (!iterator_ || at < start_ || at > end_) read_line(at);
    return iterator_->isBoundary(static_cast<std::int32_t>(at - start_)) != 0;
  }
  // A line may be all of a text of many megabytes: a part around the position is enough.
  void read_line(std::size_t at) {
    constexpr std::size_t reach = 2000;
    start_ = at > reach ? at - reach : 0;
    end_ = std::min(at + reach, text_.size());
    if (const std::size_t line = text_.substr(start_, at - start_).rfind(u'\n'); line != text_.npos)
      start_ += line + 1;
    if (start_ > 0 && is_low_surrogate(text_[start_])) ++start_;
    UErrorCode status = U_ZERO_ERROR;
    if (!iterator_) iterator_.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    UText* source =
        utext_openUChars(nullptr, text_.data() + start_, static_cast<std::int64_t>(end_ - start_), &status);
    iterator_->setText(source, status);
    utext_close(source);
  }

  std::u16string_view text_;
  std::size_t start_ = 0, end_ = 0;  // of what the iterator has
  std::unique_ptr<icu::BreakIterator> iterator_;
};

/// A regular expression on its way through a text.
class TextPattern::Expression {
 public:
  Expression(std::u16string_view sought, const Options& options) : across_lines_(options.across_lines) {
    std::uint32_t flags = 0;
    if (!options.match_case) flags |= UREGEX_CASE_INSENSITIVE;
    if (options.across_lines) flags |= UREGEX_MULTILINE;
    UErrorCode status = U_ZERO_ERROR;
    UParseError where;
    const icu::UnicodeString text(false, sought.data(), static_cast<std::int32_t>(sought.size()));
    pattern_.reset(icu::RegexPattern::compile(text, flags, where, status));
    if (U_FAILURE(status) || !pattern_) fail(not_an_expression);
  }

  template <class Take>
  void each_hit(std::u16string_view text, const Take& take) const {
    Walk walk(*pattern_, text);
    for (std::size_t line = 0; line <= text.size();) {
      const std::size_t end = across_lines_ ? text.size() : std::min(text.find(u'\n', line), text.size());
      walk.enter(line, end, line);
      while (const auto hit = walk.next()) take(*hit, walk.matcher());
      line = end + 1;
    }
  }

  std::vector<std::u16string> replacements_of(std::span<const Hit> hits, std::u16string_view text,
                                              std::u16string_view replacement) const {
    std::vector<std::u16string> all;
    each_hit(text, [&](const Hit& hit, icu::RegexMatcher& matcher) {
      if (all.size() < hits.size() && hits[all.size()] == hit)
        all.push_back(with_groups(matcher, replacement));
    });
    all.resize(hits.size(), std::u16string(replacement));
    return all;
  }

 private:
  class Walk {
   public:
    Walk(const icu::RegexPattern& pattern, std::u16string_view text) : end_(Clock::now() + longest_search) {
      UErrorCode status = U_ZERO_ERROR;
      matcher_.reset(pattern.matcher(status));
      source_ = utext_openUChars(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
      matcher_->reset(source_);
      matcher_->setMatchCallback(&Walk::may_go_on, this, status);
      matcher_->setFindProgressCallback(&Walk::may_find_on, this, status);
      check(status);
    }
    ~Walk() {
      matcher_.reset();
      utext_close(source_);
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    void enter(std::size_t line, std::size_t end, std::size_t from) {
      UErrorCode status = U_ZERO_ERROR;
      matcher_->region(static_cast<std::int64_t>(line), static_cast<std::int64_t>(end),
                       static_cast<std::int64_t>(from), status);
      check(status);
      if (Clock::now() > end_) fail(takes_too_long);
    }
    std::optional<Hit> next() {
      for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const bool found = matcher_->find(status) != 0;
        check(status);
        if (!found) return std::nullopt;
        const Hit hit{static_cast<std::size_t>(matcher_->start64(status)),
                      static_cast<std::size_t>(matcher_->end64(status))};
        if (hit.to > hit.from) return hit;
      }
    }
    icu::RegexMatcher& matcher() { return *matcher_; }

   private:
    static UBool may_go_on(const void* self, std::int32_t) {
      return Clock::now() <= static_cast<const Walk*>(self)->end_;
    }
    static UBool may_find_on(const void* self, std::int64_t) { return may_go_on(self, 0); }
    static void check(UErrorCode status) {
      if (U_FAILURE(status)) fail(takes_too_long);
    }

    std::unique_ptr<icu::RegexMatcher> matcher_;
    UText* source_ = nullptr;
    Clock::time_point end_;
  };

  static std::u16string group(icu::RegexMatcher& matcher, std::int32_t number) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = matcher.group(number, status);
    if (U_FAILURE(status)) fail(no_such_group);
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
  }

  static std::u16string with_groups(icu::RegexMatcher& matcher, std::u16string_view replacement) {
    std::u16string result;
    for (std::size_t at = 0; at < replacement.size(); ++at) {
      const char16_t unit = replacement[at];
      if (unit == u'\\' && at + 1 < replacement.size()) {
        const char16_t escaped = replacement[++at];
        result += escaped == u'n' ? u'\n' : escaped == u't' ? u'\t' : escaped;
      } else if (unit == u'$') {
        result += group(matcher, group_number(matcher, replacement, at));
      } else {
        result += unit;
      }
    }
    return result;
  }

  // Leaves `at` on the last character of the group's name.
  static std::int32_t group_number(icu::RegexMatcher& matcher, std::u16string_view replacement,
                                   std::size_t& at) {
    if (at + 1 < replacement.size() && replacement[at + 1] == u'{') {
      const std::size_t end = replacement.find(u'}', at);
      if (end == replacement.npos) fail(no_such_group);
      const std::u16string_view name = replacement.substr(at + 2, end - at - 2);
      at = end;
      UErrorCode status = U_ZERO_ERROR;
      const std::int32_t number = matcher.pattern().groupNumberFromName(
          icu::UnicodeString(false, name.data(), static_cast<std::int32_t>(name.size())), status);
      if (U_FAILURE(status)) fail(no_such_group);
      return number;
    }
    // As many digits as make the number of a group.
    std::int32_t number = -1;
    while (at + 1 < replacement.size() && is_ascii_digit(replacement[at + 1])) {
      const std::int32_t longer = std::max(number, 0) * 10 + (replacement[at + 1] - u'0');
      if (longer > matcher.groupCount()) break;
      number = longer;
      ++at;
    }
    if (number < 0) fail(no_such_group);
    return number;
  }

  bool across_lines_;
  std::unique_ptr<icu::RegexPattern> pattern_;
};

TextPattern::TextPattern(std::u16string_view sought, const Options& options) : options_(options) {
  if (options.regular_expression)
    expression_ = std::make_unique<Expression>(sought, options);
  else
    sought_ = folded(sought, options.match_case);
}

TextPattern::~TextPattern() = default;
TextPattern::TextPattern(TextPattern&&) noexcept = default;
TextPattern& TextPattern::operator=(TextPattern&&) noexcept = default;

std::vector<TextPattern::Hit> TextPattern::hits_in(std::u16string_view text) const {
  if (!expression_) return plain_hits(text);
  std::vector<Hit> hits;
  Words words(text);
  expression_->each_hit(text, [&](const Hit& hit, icu::RegexMatcher&) {
    if (ends_within_character(text, hit.to)) return;
    if (options_.whole_words && !(words.is_boundary(hit.from) && words.is_boundary(hit.to))) return;
    hits.push_back(hit);
  });
  return hits;
}

std::vector<TextPattern::Hit> TextPattern::plain_hits(std::u16string_view text) const {
  std::vector<Hit> hits;
  if (sought_.empty()) return hits;
  const std::u16string letters = folded(text, options_.match_case);
  Words words(text);
  for (std::size_t at = letters.find(sought_); at != letters.npos;) {
    const Hit hit{at, at + sought_.size()};
    const bool counts = !ends_within_character(text, hit.to) &&
                        (!options_.whole_words || (words.is_boundary(hit.from) && words.is_boundary(hit.to)));
    if (counts) hits.push_back(hit);
    at = letters.find(sought_, counts ? hit.to : at + 1);
  }
  return hits;
}

std::vector<std::u16string> TextPattern::replacements_of(std::span<const Hit> hits, std::u16string_view text,
                                                         std::u16string_view replacement) const {
  if (expression_) return expression_->replacements_of(hits, text, replacement);
  return std::vector<std::u16string>(hits.size(), std::u16string(replacement));
}

}  // namespace tvx
