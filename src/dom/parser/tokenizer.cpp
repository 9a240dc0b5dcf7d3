#include "tvx/dom/parser/tokenizer.h"

#include <algorithm>
#include <cstring>

#include "tvx/dom/parser/character_reference.h"

namespace tvx::dom::parser {
namespace {

// HTML standard, section 13.2.3.5 "preprocessing the input stream": CR LF and CR become LF.
std::u16string with_single_line_ends(std::u16string_view html) {
  std::u16string result;
  result.reserve(html.size());
  std::size_t from = 0;
  for (std::size_t at; (at = html.find(u'\r', from)) != html.npos;) {
    result.append(html, from, at - from);
    result += u'\n';
    from = at + 1 < html.size() && html[at + 1] == u'\n' ? at + 2 : at + 1;
  }
  result.append(html, from, html.npos);
  return result;
}

// What interrupts a run of text in the data state.
constexpr bool is_special(char16_t c) { return c == u'<' || c == u'&' || c == u'\0'; }

constexpr std::uint64_t in_all_four(char16_t c) { return 0x0001000100010001u * c; }

// Not 0 if one of the four units is 0.
constexpr std::uint64_t find_zero(std::uint64_t units) {
  return (units - in_all_four(1)) & ~units & in_all_four(0x8000);
}

// Four units at a time: most of a document is text, and most of its time is spent here.
const char16_t* find_special(const char16_t* at, const char16_t* end) {
  for (; end - at >= 4; at += 4) {
    std::uint64_t units;
    std::memcpy(&units, at, sizeof units);
    if (find_zero(units) | find_zero(units ^ in_all_four(u'<')) | find_zero(units ^ in_all_four(u'&'))) break;
  }
  while (at != end && (*at > u'<' || !is_special(*at))) ++at;
  return at;
}

}  // namespace

Tokenizer::Tokenizer(std::u16string_view html, Halves halves) : halves_(halves) {
  if (html.find(u'\r') != html.npos) {
    normalised_ = with_single_line_ends(html);
    html = normalised_;
  }
  begin_ = at_ = html.data();
  end_ = begin_ + html.size();
}

void Tokenizer::next(Token& token, bool cdata_allowed) {
  for (;;) {
    bool found = false;
    switch (model_) {
      case ContentModel::Data: found = read_data(token) || read_markup(token, cdata_allowed); break;
      case ContentModel::ReplaceableText:
        found = read_replaceable_text(token) || read_raw_end_tag(token);
        break;
      case ContentModel::RawText: found = read_raw_text(token) || read_raw_end_tag(token); break;
      case ContentModel::ScriptData: found = read_script_data(token) || read_raw_end_tag(token); break;
      case ContentModel::PlainText: found = read_plain_text(token); break;
      case ContentModel::CdataSection: found = read_cdata_section(token); break;
    }
    if (found) return;
    if (at_end()) {
      token.kind = Token::Kind::EndOfFile;
      return;
    }
  }
}

void Tokenizer::set_text(Token& token, std::u16string_view text, bool null_characters) {
  token.kind = Token::Kind::Text;
  token.text = text;
  token.null_characters = null_characters;
}

// A text ends at at_; `run` is where its last part that isn't in the buffer yet begins.
bool Tokenizer::finish_text(Token& token, const char16_t* run, bool copied) {
  if (copied) {
    buffer_.append(run, at_);
    set_text(token, buffer_);
    return !buffer_.empty();
  }
  set_text(token, std::u16string_view(run, static_cast<std::size_t>(at_ - run)));
  return run != at_;
}

// Text up to the next tag, comment or the like. False if there is none.
bool Tokenizer::read_data(Token& token) {
  const char16_t* run = at_;
  bool copied = false;
  buffer_.clear();
  for (;;) {
    at_ = find_special(at_, end_);
    if (at_end()) break;
    if (*at_ == u'&') {
      buffer_.append(run, at_);
      copied = true;
      run = at_ = read_character_reference(at_, end_, InAttribute::No, halves_, buffer_);
      continue;
    }
    if (*at_ == u'\0') {
      if (copied || run != at_) break;
      while (!at_end() && *at_ == u'\0') ++at_;
      set_text(token, std::u16string_view(run, static_cast<std::size_t>(at_ - run)), true);
      return true;
    }
    const char16_t* next = at_ + 1;
    if (next != end_ && (is_ascii_alpha(*next) || *next == u'!' || *next == u'?')) break;
    if (next != end_ && *next == u'/' && next + 1 != end_) break;
    ++at_;  // a "<" that begins nothing is text
  }
  return finish_text(token, run, copied);
}

// At a "<" that begins something, or at the end. False if what was read is no token.
bool Tokenizer::read_markup(Token& token, bool cdata_allowed) {
  if (at_end()) return false;
  ++at_;
  switch (*at_) {
    case u'!':
      ++at_;
      read_declaration(token, cdata_allowed);
      return model_ != ContentModel::CdataSection;
    case u'?': read_bogus_comment(token); return true;
    case u'/':
      ++at_;
      if (is_ascii_alpha(*at_)) return read_tag(token, Token::Kind::EndTag);
      if (*at_ == u'>') {  // "</>" is nothing
        ++at_;
        return false;
      }
      read_bogus_comment(token);
      return true;
    default: return read_tag(token, Token::Kind::StartTag);
  }
}

void Tokenizer::skip_space() {
  while (!at_end() && is_ascii_space(*at_)) ++at_;
}

// Documents have few names and use them over and over; what was interned a moment ago is found without the
// table of all names.
Name Tokenizer::intern(std::u16string_view text) {
  const std::size_t slot = (text.size() * 5 + text.front() * 3u + text.back()) % recent_names_.size();
  Name& recent = recent_names_[slot];
  if (recent.text() != text) recent = Name(text);
  return recent;
}

bool Tokenizer::looking_at(std::u16string_view text) const {
  return static_cast<std::size_t>(end_ - at_) >= text.size() && std::equal(text.begin(), text.end(), at_);
}

bool Tokenizer::looking_at_ignoring_case(std::u16string_view text) const {
  return static_cast<std::size_t>(end_ - at_) >= text.size() &&
         equals_ignoring_ascii_case(std::u16string_view(at_, text.size()), text);
}

}  // namespace tvx::dom::parser
