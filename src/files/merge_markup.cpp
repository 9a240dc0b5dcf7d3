#include "tvx/files/merge_markup.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/parser/character_reference.h"
#include "tvx/source/differences.h"
#include "tvx/source/markup_scanner.h"
#include "tvx/source/tag_structure.h"

namespace tvx::files {
namespace {

/// The start of a tag, an attribute with the white space in front of it, an end tag, a comment, a word, a
/// character by itself, or white space up to a line's end.
struct Token {
  Offset begin, end;
  /// Of tokens that say the same, however they are written.
  std::uint32_t meaning;
  std::uint32_t letters;  // of tokens that are written alike
};
using Tokens = std::vector<Token>;

/// The same number for equal texts.
class Numbers {
 public:
  std::uint32_t of(std::u16string text) {
    return known_.try_emplace(std::move(text), static_cast<std::uint32_t>(known_.size())).first->second;
  }

 private:
  std::unordered_map<std::u16string, std::uint32_t> known_;
};

bool is_word(char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c) || c >= 0x80; }

/// What the reference at a place stands for; gives where it ends.
Offset read_reference(std::u16string_view text, Offset at, Offset end, dom::parser::InAttribute where,
                      std::u16string& out) {
  const char16_t* const after = dom::parser::read_character_reference(
      text.data() + at, text.data() + end, where, dom::parser::Halves::Joined, out);
  return static_cast<Offset>(after - text.data());
}

/// A character of a text, however it is written.
struct Letter {
  Offset begin, end;
  std::u16string meaning;
};

std::vector<Letter> letters_in(std::u16string_view text) {
  std::vector<Letter> letters;
  for (Offset at = 0; at < text.size();) {
    Letter letter{at, at + 1, std::u16string(1, text[at])};
    if (text[at] == u'&') {
      letter.meaning.clear();
      letter.end = read_reference(text, at, text.size(), dom::parser::InAttribute::No, letter.meaning);
    }
    at = letter.end;
    letters.push_back(std::move(letter));
  }
  return letters;
}

class Reader {
 public:
  Reader(std::u16string_view text, Numbers& numbers) : text_(text), numbers_(numbers) {}

  Tokens run() {
    source::MarkupScanner scanner(text_);
    while (const auto piece = scanner.next()) {
      switch (piece->kind) {
        case source::Piece::Kind::Text: words(piece->begin, piece->end); break;
        case source::Piece::Kind::Comment: add(piece->begin, piece->end, in(piece->begin, piece->end)); break;
        case source::Piece::Kind::StartTag: start_tag(*piece); break;
        case source::Piece::Kind::EndTag:
          add(piece->begin, piece->end, u"</" + ascii_lower(piece->name));
          break;
      }
    }
    return std::move(tokens_);
  }

 private:
  std::u16string in(Offset begin, Offset end) const {
    return std::u16string(text_.substr(begin, end - begin));
  }
  void add(Offset begin, Offset end, std::u16string meaning) {
    const std::uint32_t letters = numbers_.of(in(begin, end));
    add(begin, end, std::move(meaning), letters);
  }
  void add(Offset begin, Offset end, std::u16string meaning, std::uint32_t letters) {
    tokens_.push_back({begin, end, numbers_.of(std::move(meaning)), letters});
  }

  void start_tag(const source::Piece& piece) {
    const Offset name_end = piece.begin + 1 + piece.name.size();
    add(piece.begin, name_end, u"<" + ascii_lower(piece.name));
    const bool is_closed = piece.end > name_end && text_[piece.end - 1] == u'>';
    const Offset end = piece.end - (is_closed ? 1 : 0);
    Offset at = name_end;
    while (const auto after = attribute(at, end)) at = *after;
    // A slash belongs to the element that it ends: another one in its place has none.
    if (!is_closed) return;
    if (source::is_void_element(piece.name))
      add(at, piece.end, u"/>", numbers_.of(u"void" + in(at, piece.end)));
    else
      add(at, piece.end, u">" + ascii_lower(piece.name), numbers_.of(in(at, piece.end)));
  }

  // As lenient as a browser; what is no attribute is one with a strange name here, and is compared all the
  // same. Nothing where there is none any more.
  std::optional<Offset> attribute(Offset begin, Offset end) {
    const auto skip = [&](Offset at, auto&& is_one) {
      while (at < end && is_one(text_[at])) ++at;
      return at;
    };
    const Offset name = skip(begin, [](char16_t c) { return is_ascii_space(c) || c == u'/'; });
    if (name == end) return {};
    const Offset name_end =
        skip(name + 1, [](char16_t c) { return !is_ascii_space(c) && c != u'/' && c != u'='; });
    const Offset equals = skip(name_end, is_ascii_space);
    std::u16string meaning = u" " + ascii_lower(text_.substr(name, name_end - name)) + u"=";
    Offset at = name_end;
    if (equals < end && text_[equals] == u'=') {
      Offset value = skip(equals + 1, is_ascii_space), value_end = value;
      if (value < end && (text_[value] == u'"' || text_[value] == u'\'')) {
        const char16_t quote = text_[value++];
        value_end = std::min(text_.find(quote, value), end);
        at = std::min(value_end + 1, end);
      } else {
        at = value_end = skip(value, [](char16_t c) { return !is_ascii_space(c); });
      }
      meaning += decoded(value, value_end);
    }
    add(begin, at, std::move(meaning));
    return at;
  }
  std::u16string decoded(Offset begin, Offset end) const {
    std::u16string result;
    for (Offset at = begin; at < end;) {
      if (text_[at] == u'&')
        at = reference(at, end, dom::parser::InAttribute::Yes, result);
      else
        result += text_[at++];
    }
    return result;
  }
  Offset reference(Offset at, Offset end, dom::parser::InAttribute where, std::u16string& out) const {
    return read_reference(text_, at, end, where, out);
  }

  // Characters count, and not whether a reference stands for one.
  void words(Offset begin, Offset end) {
    std::u16string word;
    Offset word_begin = begin;
    const auto end_word = [&](Offset at) {
      if (!word.empty()) add(word_begin, at, word);
      word.clear();
      word_begin = at;
    };
    for (Offset at = begin; at < end;) {
      const Offset from = at;
      std::u16string meaning;
      if (text_[at] == u'&') {
        at = reference(at, end, dom::parser::InAttribute::No, meaning);
      } else {
        meaning = text_[at++];
      }
      if (!meaning.empty() && std::ranges::all_of(meaning, is_word)) {
        word += meaning;
        continue;
      }
      end_word(from);
      if (meaning.size() == 1 && is_ascii_space(meaning[0]))
        while (text_[at - 1] != u'\n' && at < end && is_ascii_space(text_[at])) meaning += text_[at++];
      add(from, at, std::move(meaning));
      word_begin = at;
    }
    end_word(end);
  }

  const std::u16string_view text_;
  Numbers& numbers_;
  Tokens tokens_;
};

std::vector<std::uint32_t> numbers_of(const Tokens& tokens, std::uint32_t Token::*number) {
  std::vector<std::uint32_t> result;
  result.reserve(tokens.size());
  for (const Token& token : tokens) result.push_back(token.*number);
  return result;
}

/// For each token of the base the one of the source, nothing where the source leaves it out.
std::vector<std::optional<std::size_t>> tokens_in_source(const Tokens& base, const Tokens& source) {
  std::vector<std::optional<std::size_t>> result(base.size());
  std::size_t i = 0, j = 0;
  const auto pair_up_to = [&](std::size_t end) {
    for (; i < end; ++i, ++j) result[i] = j;
  };
  for (const source::Difference& part :
       source::differences(numbers_of(base, &Token::meaning), numbers_of(source, &Token::meaning))) {
    pair_up_to(part.begin);
    i = part.end;
    j = part.new_end;
  }
  pair_up_to(base.size());
  return result;
}

}  // namespace

class MarkupMerge::Merge {
 public:
  Merge(std::u16string_view base, std::u16string_view source, std::u16string_view edited)
      : base_(base),
        source_(source),
        edited_(edited),
        base_tokens_(Reader(base, numbers_).run()),
        source_tokens_(Reader(source, numbers_).run()),
        edited_tokens_(Reader(edited, numbers_).run()),
        in_source_(tokens_in_source(base_tokens_, source_tokens_)) {}

  std::u16string run(std::size_t before, std::size_t after) {
    result_.clear();
    done_ = 0;
    for (const source::Difference& part : parts(before, after)) carry(part);
    return result_ += source_.substr(done_);
  }

 private:
  // Each with so many tokens on both sides; those that meet then are one.
  std::vector<source::Difference> parts(std::size_t most_before, std::size_t most_after) const {
    std::vector<source::Difference> parts;
    source::Difference last{0, 0, 0, 0};
    for (const source::Difference& part : source::differences(numbers_of(base_tokens_, &Token::letters),
                                                              numbers_of(edited_tokens_, &Token::letters))) {
      last = moved(part, last);
      if (most_before + most_after == 0) {
        parts.push_back(last);
        continue;
      }
      const std::size_t before = std::min(most_before, last.begin),
                        after = std::min(most_after, base_tokens_.size() - last.end);
      source::Difference wide{last.begin - before, last.end + after, last.new_begin - before,
                              last.new_end + after};
      // The end tags of a page that has none are left out still.
      if (wide.end == base_tokens_.size())
        while (wide.end > last.end && !in_source_[wide.end - 1]) --wide.end, --wide.new_end;
      if (!parts.empty() && wide.begin <= parts.back().end)
        parts.back().end = wide.end, parts.back().new_end = wide.new_end;
      else
        parts.push_back(wide);
    }
    return parts;
  }
  // An element that has come or gone is that one, and not the end of the one before it with its own
  // beginning.
  source::Difference moved(source::Difference part, const source::Difference& last) const {
    const bool has_come = part.begin == part.end;
    if (!has_come && part.new_begin != part.new_end) return part;
    const Tokens& tokens = has_come ? edited_tokens_ : base_tokens_;
    const std::u16string_view text = has_come ? edited_ : base_;
    std::size_t first = has_come ? part.new_begin : part.begin, end = has_come ? part.new_end : part.end;
    const std::size_t most = std::min(part.begin - last.end, part.new_begin - last.new_end);
    std::size_t best = 0, best_value = value_of(text, tokens[first], tokens[end - 1]);
    for (std::size_t by = 1; by <= most && tokens[--first].letters == tokens[--end].letters; ++by)
      if (const std::size_t value = value_of(text, tokens[first], tokens[end - 1]); value > best_value)
        best = by, best_value = value;
    return {part.begin - best, part.end - best, part.new_begin - best, part.new_end - best};
  }
  static std::size_t value_of(std::u16string_view text, const Token& first, const Token& last) {
    const auto is_tag = [&](const Token& token, bool is_end) {
      const std::u16string_view tag = text.substr(token.begin, token.end - token.begin);
      return tag.starts_with(u'<') && tag.starts_with(u"</") == is_end;
    };
    return (is_tag(first, false) ? 2u : 0u) + (is_tag(last, true) || text[last.end - 1] == u'\n' ? 2u : 0u);
  }

  void carry(const source::Difference& part) {
    std::optional<std::size_t> first, last;
    for (std::size_t i = part.begin; i < part.end; ++i) {
      if (!in_source_[i]) continue;
      if (!first) first = in_source_[i];
      last = in_source_[i];
    }
    if (first) return put(source_tokens_[*first].begin, source_tokens_[*last].end, part);
    const Offset at = place_of(part);
    put(at, at, part);
  }

  // What comes new stands beside the token that it follows, or the one that follows it.
  Offset place_of(const source::Difference& part) const {
    if (part.begin > 0 && in_source_[part.begin - 1]) return source_tokens_[*in_source_[part.begin - 1]].end;
    for (std::size_t i = part.end; i < in_source_.size(); ++i)
      if (in_source_[i]) return source_tokens_[*in_source_[i]].begin;
    return source_.size();
  }

  void put(Offset begin, Offset end, const source::Difference& part) {
    std::u16string_view now;
    if (part.new_begin < part.new_end) {
      const Offset from = edited_tokens_[part.new_begin].begin;
      now = edited_.substr(from, edited_tokens_[part.new_end - 1].end - from);
    }
    // White space in front of an attribute may be a line break, which stays.
    const std::size_t space = space_in_front(source_.substr(begin, end - begin)),
                      new_space = space_in_front(now);
    if (space > 0 && new_space > 0) {
      begin += space;
      now.remove_prefix(new_space);
    }
    keep_letters(begin, end, now);
    result_ += source_.substr(done_, begin - done_);
    result_ += now;
    done_ = end;
  }
  // What is typed beside a character leaves it written as it was, as a reference for instance.
  void keep_letters(Offset& begin, Offset& end, std::u16string_view& now) const {
    const std::u16string_view was = source_.substr(begin, end - begin);
    if (was.find(u'<') != was.npos || now.find(u'<') != now.npos || was.find(u'&') == was.npos) return;
    const std::vector<Letter> old = letters_in(was), letters = letters_in(now);
    const std::size_t shorter = std::min(old.size(), letters.size());
    std::size_t first = 0, last = 0;
    while (first < shorter && old[first].meaning == letters[first].meaning) ++first;
    // One without its semicolon may end otherwise before another letter.
    while (first > 0 && old[first - 1].end - old[first - 1].begin > 1 && was[old[first - 1].end - 1] != u';')
      --first;
    while (last < shorter - first &&
           old[old.size() - 1 - last].meaning == letters[letters.size() - 1 - last].meaning)
      ++last;
    const Offset kept = first > 0 ? old[first - 1].end : 0, left = first > 0 ? letters[first - 1].end : 0;
    now = now.substr(left, (last > 0 ? letters[letters.size() - last].begin : now.size()) - left);
    if (last > 0) end = begin + old[old.size() - last].begin;
    begin += kept;
  }
  /// Of a text that is more than white space.
  static std::size_t space_in_front(std::u16string_view text) {
    const std::size_t size = text.find_first_not_of(u" \t\n\f");
    return size == text.npos ? 0 : size;
  }

  const std::u16string_view base_, source_, edited_;
  Numbers numbers_;
  const Tokens base_tokens_, source_tokens_, edited_tokens_;
  const std::vector<std::optional<std::size_t>> in_source_;
  std::u16string result_;
  Offset done_ = 0;
};

MarkupMerge::MarkupMerge(std::u16string_view base, std::u16string_view source, std::u16string_view edited)
    : merge_(std::make_unique<Merge>(base, source, edited)) {}
MarkupMerge::MarkupMerge(MarkupMerge&&) noexcept = default;
MarkupMerge::~MarkupMerge() = default;

std::u16string MarkupMerge::run(std::size_t before, std::size_t after) const {
  return merge_->run(before, after);
}

std::u16string merge_markup(std::u16string_view base, std::u16string_view source,
                            std::u16string_view edited) {
  return MarkupMerge(base, source, edited).run(0, 0);
}

}  // namespace tvx::files
