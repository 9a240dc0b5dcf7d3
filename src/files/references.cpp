#include "tvx/files/references.h"

#include <algorithm>

#include "tvx/base/strings.h"

namespace tvx::files {
namespace {

enum class Language { Markup, Style, Script };

std::u16string hexadecimal(char32_t number, std::size_t digits) {
  std::u16string text;
  for (; number > 0; number >>= 4) text += u"0123456789abcdef"[number & 0xF];
  while (text.size() < digits) text += u'0';
  std::ranges::reverse(text);
  return text;
}

/// Goes over markup from part to part. It was written by the serialiser, so every "<" begins a tag or a
/// comment, and every value stands in double quotes.
class ReferenceWriter {
 public:
  ReferenceWriter(std::u16string_view markup, const std::function<bool(char32_t)>& holds)
      : markup_(markup), holds_(holds) {
    out_.reserve(markup.size() + 64);
  }

  std::u16string run() {
    while (at_ < markup_.size()) {
      copy_to(std::min(markup_.find(u'<', at_), markup_.size()), Language::Markup);
      if (markup_.substr(at_).starts_with(u"<!--"))
        copy_to(behind(u"-->"), Language::Markup);
      else
        copy_tag();
    }
    return std::move(out_);
  }

 private:
  std::size_t behind(std::u16string_view text) const {
    const std::size_t found = markup_.find(text, at_);
    return found == markup_.npos ? markup_.size() : found + text.size();
  }

  void copy_tag() {
    const std::size_t begin = at_;
    bool quoted = false;
    std::size_t end = begin;
    while (end < markup_.size() && (quoted || markup_[end] != u'>')) quoted ^= markup_[end++] == u'"';
    copy_to(std::min(end + 1, markup_.size()), Language::Markup);
    const std::u16string_view tag = markup_.substr(begin, at_ - begin);
    const std::u16string name = ascii_lower(tag.substr(0, tag.find_first_of(u" >")));
    if (name == u"<style") copy_raw_text(u"</style", Language::Style);
    if (name == u"<script") copy_raw_text(u"</script", Language::Script);
  }

  void copy_raw_text(std::u16string_view end_tag, Language language) {
    const auto end = std::search(markup_.begin() + std::ptrdiff_t(at_), markup_.end(), end_tag.begin(),
                                 end_tag.end(), [](char16_t a, char16_t b) { return ascii_lower(a) == b; });
    copy_to(std::size_t(end - markup_.begin()), language);
  }

  void copy_to(std::size_t end, Language language) {
    while (at_ < end) {
      const char16_t unit = markup_[at_++];
      if (unit < 0x80) {
        out_ += unit;
        continue;
      }
      char32_t c = unit;
      if (is_high_surrogate(unit) && at_ < end && is_low_surrogate(markup_[at_]))
        c = 0x10000 + ((c - 0xD800) << 10) + (markup_[at_++] - 0xDC00u);
      if (holds_(c))
        out_ += to_utf16(c);
      else
        write_escaped(c, language);
    }
  }

  void write_escaped(char32_t c, Language language) {
    switch (language) {
      case Language::Markup: (out_ += u"&#").append(to_text(std::int64_t(c))) += u';'; break;
      case Language::Style: (out_ += u'\\').append(hexadecimal(c, 1)) += u' '; break;
      case Language::Script:
        for (const char16_t unit : to_utf16(c)) (out_ += u"\\u").append(hexadecimal(unit, 4));
        break;
    }
  }

  std::u16string_view markup_;
  const std::function<bool(char32_t)>& holds_;
  std::size_t at_ = 0;
  std::u16string out_;
};

}  // namespace

std::u16string to_utf16(char32_t character) {
  if (character < 0x10000) return std::u16string(1, char16_t(character));
  const char32_t rest = character - 0x10000;
  return {char16_t(0xD800 + (rest >> 10)), char16_t(0xDC00 + (rest & 0x3FF))};
}

std::u16string with_references(std::u16string_view markup, const std::function<bool(char32_t)>& holds) {
  return ReferenceWriter(markup, holds).run();
}

}  // namespace tvx::files
