#include "tvx/dom/parser/character_reference.h"
#include "tvx/dom/parser/tokenizer.h"

// Tags and their attributes: HTML standard, sections 13.2.5.8 and 13.2.5.32 to 13.2.5.40.
namespace tvx::dom::parser {
namespace {

constexpr bool ends_tag_name(char16_t c) { return is_ascii_space(c) || c == u'/' || c == u'>'; }

// Letters are made small, U+0000 becomes U+FFFD.
constexpr char16_t name_character(char16_t c) { return c == u'\0' ? u'\uFFFD' : ascii_lower(c); }

// Up to here every new attribute is compared with the others; from here on their names stand in a set.
constexpr std::size_t few_attributes = 16;

}  // namespace

// At the first letter of the name. False if the text ends inside the tag, which then is nothing.
bool Tokenizer::read_tag(Token& token, Token::Kind kind) {
  token.name = read_tag_name();
  token.tag = token.name.tag();
  token.attributes.clear();
  token.self_closing = false;
  if (!read_attributes(token)) {
    at_ = end_;
    return false;
  }
  token.kind = kind;
  if (kind == Token::Kind::StartTag) last_start_tag_ = token.name;
  return true;
}

Name Tokenizer::read_tag_name() {
  name_buffer_.clear();
  for (; !at_end() && !ends_tag_name(*at_); ++at_) name_buffer_ += name_character(*at_);
  return intern(name_buffer_);
}

// After the tag's name. Reads the ">" too; false if there is none.
bool Tokenizer::read_attributes(Token& token) {
  for (;;) {
    skip_space();
    if (at_end()) return false;
    if (*at_ == u'>') {
      ++at_;
      return true;
    }
    if (*at_ == u'/') {
      ++at_;
      token.self_closing = !at_end() && *at_ == u'>';
      continue;
    }
    const Name name = read_attribute_name();
    std::u16string value;
    skip_space();
    if (!at_end() && *at_ == u'=') {
      ++at_;
      read_attribute_value(value);
    }
    if (!is_duplicate(token, name)) token.attributes.push_back({name, std::move(value)});
  }
}

Name Tokenizer::read_attribute_name() {
  name_buffer_.assign(1, name_character(*at_));  // a name may begin with "="
  ++at_;
  for (; !at_end() && !ends_tag_name(*at_) && *at_ != u'='; ++at_) name_buffer_ += name_character(*at_);
  return intern(name_buffer_);
}

void Tokenizer::read_attribute_value(std::u16string& value) {
  skip_space();
  if (at_end() || *at_ == u'>') return;
  if (*at_ == u'"' || *at_ == u'\'') {
    const char16_t quote = *at_++;
    read_quoted_value(quote, value);
  } else {
    read_unquoted_value(value);
  }
}

void Tokenizer::read_quoted_value(char16_t quote, std::u16string& value) {
  for (;;) {
    const char16_t* run = at_;
    while (!at_end() && *at_ != quote && *at_ != u'&' && *at_ != u'\0') ++at_;
    value.append(run, at_);
    if (at_end()) return;
    if (*at_ == quote) {
      ++at_;
      return;
    }
    if (*at_ == u'&') {
      at_ = read_character_reference(at_, end_, InAttribute::Yes, halves_, value);
    } else {
      value += u'\uFFFD';
      ++at_;
    }
  }
}

void Tokenizer::read_unquoted_value(std::u16string& value) {
  while (!at_end() && !is_ascii_space(*at_) && *at_ != u'>') {
    if (*at_ == u'&') {
      at_ = read_character_reference(at_, end_, InAttribute::Yes, halves_, value);
    } else {
      value += *at_ == u'\0' ? u'\uFFFD' : *at_;
      ++at_;
    }
  }
}

bool Tokenizer::is_duplicate(const Token& token, Name name) {
  if (token.attributes.size() < few_attributes) {
    for (const Attribute& attribute : token.attributes) {
      if (attribute.name == name) return true;
    }
    return false;
  }
  if (token.attributes.size() == few_attributes) {
    attribute_names_.clear();
    for (const Attribute& attribute : token.attributes) attribute_names_.insert(attribute.name.key());
  }
  return !attribute_names_.insert(name.key()).second;
}

}  // namespace tvx::dom::parser
