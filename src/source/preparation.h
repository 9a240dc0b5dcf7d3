#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::source {

/// A piece of a text, and the piece of the markup that it was made of: the same letters, or other white space
/// for white space where the lengths differ.
struct MappedPiece {
  Offset at, size;
  Offset markup, markup_size;
  /// White space of the markup that was left out in front of this piece belongs to a block tag before it, and
  /// not to one that follows.
  bool space_is_before = false;

  Offset end() const { return at + size; }
  Offset markup_end() const { return markup + markup_size; }
  bool is_copied() const { return size == markup_size; }
};

struct Span {
  Offset begin, end;
};

struct PreparedText {
  std::u16string text;
  std::vector<MappedPiece> pieces;
  /// What the formatter must not read, because it is no markup or because its lines count.
  std::vector<Span> hidden;
  /// Where content begins and ends that has lines of its own: the formatter's line breaks don't belong there.
  std::vector<Offset> joints;
};

/// Brings a document's text into the form that FormatHTMLSource was made for: outside elements and comments
/// whose line breaks count, each run of white space with a line break becomes one blank, and none at the
/// edges of blocks; inside them, and in tags, each line break becomes CR LF. All else stays as it is.
PreparedText prepare_for_formatting(std::u16string_view text);

}  // namespace tvx::source
