#pragma once

#include <optional>
#include <string_view>

#include "tvx/base/strings.h"

namespace tvx::source {

/// A stretch of a source.
struct Piece {
  enum class Kind : std::uint8_t { Text, StartTag, EndTag, Comment };
  Kind kind = Kind::Text;
  Offset begin = 0, end = 0;
  std::u16string_view name;  // of a tag, in the letters of the source
  /// Within an element whose line breaks and indents count: PRE and its like, TEXTAREA, SCRIPT, STYLE.
  bool kept = false;
};

/// Cuts a source into tags, comments and the text between, as a browser would read it, quotes and raw text
/// included. A source that ends within a tag or a comment ends there.
class MarkupScanner {
 public:
  explicit MarkupScanner(std::u16string_view text) : text_(text) {}
  std::optional<Piece> next();

 private:
  Piece text();
  Piece comment();
  Piece tag(bool is_end_tag);
  Offset end_of_tag(Offset from) const;
  void enter(const Piece& tag);
  bool starts_markup(Offset at) const;
  Offset end_of_raw_text() const;

  const std::u16string_view text_;
  Offset at_ = 0;
  std::u16string_view raw_, preformatted_;  // names of the open elements, empty: none
  std::size_t depth_ = 0;                   // of the open one within others of its name
  bool raw_is_kept_ = false;
};

}  // namespace tvx::source
