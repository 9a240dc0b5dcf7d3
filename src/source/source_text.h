#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/source/preparation.h"

namespace tvx::source {

/// A document's text as the code view shows it, which remembers where each piece of it came from: what the
/// user changes in the code can so be done in the text itself, which stays as it is everywhere else.
class SourceText {
 public:
  using Shared = std::shared_ptr<const std::u16string>;

  /// The formatter's text. Preformatted text, fields, scripts, style sheets and comments stand in it line by
  /// line as they are. Throws RuntimeError(14) where it would be too long.
  static SourceText formatted(Shared markup);
  /// The text itself, with CR LF.
  static SourceText as_it_is(Shared markup);

  const std::u16string& markup() const { return *markup_; }
  /// What is shown. Every line ends with CR LF.
  const Shared& code() const { return code_; }
  /// The markup with all that is different in `left`, which has CR LF, and what the code has become. White
  /// space between lines that the formatter had drawn doesn't count, nor does what the user makes of it.
  std::u16string markup_after(std::u16string_view left) const;

 private:
  explicit SourceText(Shared markup) : markup_(std::move(markup)) {}

  Shared markup_, code_;
  std::vector<MappedPiece> pieces_;
  bool is_serialised_ = false;  // the markup is what the document was written as
};

/// The text of a document as the code view shows it.
std::u16string code_of(std::u16string_view text);

}  // namespace tvx::source
