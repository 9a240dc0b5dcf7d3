#include <algorithm>

#include "tvx/dom/parser/character_reference.h"
#include "tvx/dom/parser/tokenizer.h"

// Texts that only one end tag can end: HTML standard, sections 13.2.5.2 to 13.2.5.5 with the states that
// belong to them, and CDATA sections.
namespace tvx::dom::parser {
namespace {

const std::u16string_view script_name = u"script";

constexpr bool ends_tag_name(char16_t c) { return is_ascii_space(c) || c == u'/' || c == u'>'; }

// Whether `name` stands at `at` and ends there.
bool is_tag_name(const char16_t* at, const char16_t* end, std::u16string_view name) {
  if (static_cast<std::size_t>(end - at) <= name.size()) return false;
  return ends_tag_name(at[name.size()]) &&
         equals_ignoring_ascii_case(std::u16string_view(at, name.size()), name);
}

}  // namespace

// `at` points at a "<".
bool Tokenizer::at_appropriate_end_tag(const char16_t* at) const {
  return end_ - at > 2 && at[1] == u'/' && !last_start_tag_.empty() &&
         is_tag_name(at + 2, end_, last_start_tag_.text());
}

bool Tokenizer::read_raw_end_tag(Token& token) {
  if (at_end()) return false;
  at_ += 2;
  model_ = ContentModel::Data;
  return read_tag(token, Token::Kind::EndTag);
}

bool Tokenizer::read_replaceable_text(Token& token) {
  const char16_t* run = at_;
  bool copied = false;
  buffer_.clear();
  for (; !at_end(); ++at_) {
    if (*at_ == u'<' && at_appropriate_end_tag(at_)) break;
    if (*at_ != u'&' && *at_ != u'\0') continue;
    buffer_.append(run, at_);
    copied = true;
    if (*at_ == u'&') {
      run = read_character_reference(at_, end_, InAttribute::No, halves_, buffer_);
      at_ = run - 1;
    } else {
      buffer_ += u'\uFFFD';
      run = at_ + 1;
    }
  }
  return finish_text(token, run, copied);
}

bool Tokenizer::read_raw_text(Token& token) {
  const char16_t* run = at_;
  while (!at_end() && !(*at_ == u'<' && at_appropriate_end_tag(at_))) ++at_;
  set_text(token, without_nulls(std::u16string_view(run, static_cast<std::size_t>(at_ - run))));
  return run != at_;
}

// "<!--" opens the escaped state, "<script" in it the double escaped state, in which "</script" only leads
// back; "-->" ends both.
bool Tokenizer::read_script_data(Token& token) {
  enum class Escape : std::uint8_t { None, Single, Double } escape = Escape::None;
  const char16_t* run = at_;
  for (; !at_end(); ++at_) {
    if (*at_ == u'>') {
      if (escape != Escape::None && at_[-1] == u'-' && at_[-2] == u'-') escape = Escape::None;
    } else if (*at_ == u'<') {
      if (escape != Escape::Double && at_appropriate_end_tag(at_)) break;
      if (escape == Escape::None && looking_at(u"<!--")) {
        escape = Escape::Single;
        at_ += 3;
      } else if (escape == Escape::Single && is_tag_name(at_ + 1, end_, script_name)) {
        escape = Escape::Double;
        at_ += 1 + script_name.size();
      } else if (escape == Escape::Double && at_ + 1 != end_ && at_[1] == u'/' &&
                 is_tag_name(at_ + 2, end_, script_name)) {
        escape = Escape::Single;
        at_ += 2 + script_name.size();
      }
    }
  }
  set_text(token, without_nulls(std::u16string_view(run, static_cast<std::size_t>(at_ - run))));
  return run != at_;
}

bool Tokenizer::read_plain_text(Token& token) {
  const std::u16string_view text(at_, static_cast<std::size_t>(end_ - at_));
  at_ = end_;
  set_text(token, without_nulls(text));
  return !text.empty();
}

// Inside the section; U+0000 is left to the tree builder.
bool Tokenizer::read_cdata_section(Token& token) {
  const std::u16string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  if (rest.starts_with(u"]]>")) {
    at_ += 3;
    model_ = ContentModel::Data;
    return false;
  }
  if (rest.empty()) return false;
  const bool null_characters = rest.front() == u'\0';
  std::size_t length = 0;
  while (length < rest.size() && (rest[length] == u'\0') == null_characters) {
    if (rest[length] == u']' && rest.substr(length).starts_with(u"]]>")) break;
    ++length;
  }
  at_ += length;
  set_text(token, rest.substr(0, length), null_characters);
  return true;
}

std::u16string_view Tokenizer::without_nulls(std::u16string_view text) {
  if (text.find(u'\0') == text.npos) return text;
  buffer_ = text;
  std::replace(buffer_.begin(), buffer_.end(), u'\0', u'\uFFFD');
  return buffer_;
}

}  // namespace tvx::dom::parser
