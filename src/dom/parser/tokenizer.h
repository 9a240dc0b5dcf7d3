#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>

#include "tvx/dom/parser/character_reference.h"
#include "tvx/dom/parser/token.h"

namespace tvx::dom::parser {

/// How text is read: the tokenizer's state between tokens.
enum class ContentModel : std::uint8_t {
  Data,
  ReplaceableText,
  RawText,
  ScriptData,
  PlainText,
  CdataSection
};

/// HTML standard, section 13.2.5 "tokenization". The whole text is at hand, so the states that only read
/// ahead are plain scans, and a run of text up to the next tag is one token: a view of the source where it
/// stands there as it is, else of a buffer in which its references are resolved.
/// Parse errors are not reported; position() tells where a reporter would be.
class Tokenizer {
 public:
  /// The view must outlive the tokenizer.
  explicit Tokenizer(std::u16string_view html, Halves halves = Halves::Joined);
  Tokenizer(const Tokenizer&) = delete;
  Tokenizer& operator=(const Tokenizer&) = delete;

  /// Reads the next token. `cdata_allowed`: the adjusted current node is no HTML element.
  void next(Token& token, bool cdata_allowed);

  void set_content_model(ContentModel model) { model_ = model; }
  /// The name that ends a raw text.
  void set_last_start_tag(Name name) { last_start_tag_ = name; }
  /// 16-bit units read so far, of the text with its line ends made one.
  Offset position() const { return static_cast<Offset>(at_ - begin_); }
  /// From 0 to 1.
  double part_read() const {
    return begin_ == end_ ? 1 : static_cast<double>(at_ - begin_) / static_cast<double>(end_ - begin_);
  }

 private:
  // tokenizer.cpp
  bool read_data(Token& token);
  bool read_markup(Token& token, bool cdata_allowed);
  bool finish_text(Token& token, const char16_t* run, bool copied);
  void set_text(Token& token, std::u16string_view text, bool null_characters = false);

  // tokenizer_tags.cpp
  bool read_tag(Token& token, Token::Kind kind);
  Name read_tag_name();
  bool read_attributes(Token& token);
  Name read_attribute_name();
  void read_attribute_value(std::u16string& value);
  void read_quoted_value(char16_t quote, std::u16string& value);
  void read_unquoted_value(std::u16string& value);
  bool is_duplicate(const Token& token, Name name);

  // tokenizer_raw_text.cpp
  bool read_replaceable_text(Token& token);
  bool read_raw_text(Token& token);
  bool read_script_data(Token& token);
  bool read_plain_text(Token& token);
  bool read_cdata_section(Token& token);
  bool at_appropriate_end_tag(const char16_t* at) const;
  bool read_raw_end_tag(Token& token);

  // tokenizer_declarations.cpp
  void read_declaration(Token& token, bool cdata_allowed);
  void read_comment(Token& token);
  void read_bogus_comment(Token& token);
  void read_document_type(Token& token);
  void read_document_type_ids(Token::DocumentTypeData& data);
  bool read_document_type_id(std::u16string& id, bool& has_id, bool& force_quirks);
  void skip_bogus_document_type();
  std::u16string_view without_nulls(std::u16string_view text);

  Name intern(std::u16string_view text);
  bool at_end() const { return at_ == end_; }
  void skip_space();
  bool looking_at(std::u16string_view text) const;
  bool looking_at_ignoring_case(std::u16string_view text) const;

  std::u16string normalised_;  // the source with LF line ends, if it had others
  const char16_t* begin_ = nullptr;
  const char16_t* at_ = nullptr;
  const char16_t* end_ = nullptr;
  const Halves halves_;
  ContentModel model_ = ContentModel::Data;
  Name last_start_tag_;
  std::u16string buffer_;  // the text of the token, where it isn't in the source as it stands
  std::u16string name_buffer_;
  std::array<Name, 64> recent_names_;
  std::unordered_set<const void*> attribute_names_;  // of a tag with many attributes
};

}  // namespace tvx::dom::parser
