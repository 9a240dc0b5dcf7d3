#include <algorithm>

#include "tvx/dom/parser/tokenizer.h"

// What begins with "<!" or "<?": HTML standard, sections 13.2.5.41 to 13.2.5.68.
namespace tvx::dom::parser {
namespace {

// A comment that the text's end cuts off loses the part of "--!>" that was there already.
std::u16string_view without_cut_end(std::u16string_view data) {
  for (const std::u16string_view part : {u"--!", u"--", u"-"}) {
    if (data.ends_with(part)) return data.substr(0, data.size() - part.size());
  }
  return data;
}

}  // namespace

void Tokenizer::read_declaration(Token& token, bool cdata_allowed) {
  if (looking_at(u"--")) {
    at_ += 2;
    read_comment(token);
  } else if (looking_at_ignoring_case(u"doctype")) {
    at_ += 7;
    read_document_type(token);
  } else if (cdata_allowed && looking_at(u"[CDATA[")) {
    at_ += 7;
    model_ = ContentModel::CdataSection;
  } else {
    read_bogus_comment(token);
  }
}

// After "<!--".
void Tokenizer::read_comment(Token& token) {
  token.kind = Token::Kind::Comment;
  token.text = {};
  if (looking_at(u">") || looking_at(u"->")) {
    at_ += *at_ == u'>' ? 1 : 2;
    return;
  }
  const std::u16string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  for (std::size_t dashes = rest.find(u"--"); dashes != rest.npos; dashes = rest.find(u"--", dashes + 1)) {
    const std::u16string_view behind = rest.substr(dashes + 2);
    if (!behind.starts_with(u'>') && !behind.starts_with(u"!>")) continue;
    at_ += dashes + 2 + (behind.front() == u'>' ? 1 : 2);
    token.text = without_nulls(rest.substr(0, dashes));
    return;
  }
  at_ = end_;
  token.text = without_nulls(without_cut_end(rest));
}

void Tokenizer::read_bogus_comment(Token& token) {
  const char16_t* close = std::find(at_, end_, u'>');
  token.kind = Token::Kind::Comment;
  token.text = without_nulls(std::u16string_view(at_, static_cast<std::size_t>(close - at_)));
  at_ = close == end_ ? end_ : close + 1;
}

// After "<!DOCTYPE".
void Tokenizer::read_document_type(Token& token) {
  token.kind = Token::Kind::DocumentType;
  Token::DocumentTypeData& data = token.document_type;
  data = {};
  skip_space();
  for (; !at_end() && *at_ != u'>' && !is_ascii_space(*at_); ++at_) {
    data.name += *at_ == u'\0' ? u'\uFFFD' : ascii_lower(*at_);
  }
  data.has_name = !data.name.empty();
  skip_space();
  if (data.has_name && !at_end() && *at_ != u'>') {
    read_document_type_ids(data);
  } else if (!data.has_name) {
    data.force_quirks = true;
  }
  if (at_end()) {
    data.force_quirks = true;
  } else {
    skip_bogus_document_type();
  }
}

// After the name. Leaves at_ at the ">", at something bogus, or at the end.
void Tokenizer::read_document_type_ids(Token::DocumentTypeData& data) {
  const bool is_public = looking_at_ignoring_case(u"public");
  if (!is_public && !looking_at_ignoring_case(u"system")) {
    data.force_quirks = true;
    return;
  }
  at_ += 6;
  skip_space();
  if (is_public) {
    if (!read_document_type_id(data.public_id, data.has_public_id, data.force_quirks)) return;
    skip_space();
    if (at_end() || *at_ == u'>') return;
  }
  read_document_type_id(data.system_id, data.has_system_id, data.force_quirks);
  skip_space();
}

// False, and quirks, if no whole identifier is there.
bool Tokenizer::read_document_type_id(std::u16string& id, bool& has_id, bool& force_quirks) {
  force_quirks = true;
  if (at_end() || (*at_ != u'"' && *at_ != u'\'')) return false;
  const char16_t quote = *at_++;
  has_id = true;
  for (; !at_end() && *at_ != quote && *at_ != u'>'; ++at_) id += *at_ == u'\0' ? u'\uFFFD' : *at_;
  if (at_end() || *at_ == u'>') return false;
  ++at_;
  force_quirks = false;
  return true;
}

void Tokenizer::skip_bogus_document_type() {
  at_ = std::find(at_, end_, u'>');
  if (!at_end()) ++at_;
}

}  // namespace tvx::dom::parser
