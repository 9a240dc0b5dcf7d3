#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::dom::parser {

/// What the tokenizer hands to the tree builder, one at a time and always in the same object, so that its
/// room is used again. The views are valid until the next token is read.
struct Token {
  enum class Kind : std::uint8_t { Text, StartTag, EndTag, Comment, DocumentType, EndOfFile };

  struct DocumentTypeData {
    std::u16string name, public_id, system_id;
    bool has_name = false, has_public_id = false, has_system_id = false;
    bool force_quirks = false;
  };

  bool is_start(Tag wanted) const { return kind == Kind::StartTag && tag == wanted; }
  bool is_end(Tag wanted) const { return kind == Kind::EndTag && tag == wanted; }

  Kind kind = Kind::EndOfFile;
  /// Text: nothing but U+0000 characters, whose meaning depends on where they stand. No other text holds any.
  bool null_characters = false;
  bool self_closing = false;
  Tag tag = Tag::Unknown;
  Name name;                 // of tags, in small letters
  std::u16string_view text;  // of texts and comments
  std::vector<Attribute> attributes;
  DocumentTypeData document_type;
};

}  // namespace tvx::dom::parser
