#pragma once

#include <string_view>
#include <vector>

#include "tvx/source/preparation.h"

namespace tvx::source {

/// The same stretch in the code and in the markup of which the code was made.
struct InBoth {
  std::u16string_view code, markup;

  bool empty() const { return code.empty() && markup.empty(); }
};

/// The white space between two letters that stand next to each other in code and markup. Either text can have
/// some where the other has none: the code's line breaks and indentations are drawn, and white space that
/// means nothing in the markup isn't shown. Both together are the run's gap.
struct SpaceRun {
  InBoth before;  // text at the end of a line of the code, or all of the run where it has no gap
  InBoth gap;     // drawn here, left out there
  InBoth after;   // text at the start of a line of the code, after its indentation
  bool has_gap = false;
  /// Of a gap with nothing drawn: it belongs to the tag before it, and not to one that follows.
  bool belongs_before = false;
  bool at_start = false, at_end = false;  // of the texts

  InBoth whole() const;
  bool is_drawn() const { return !gap.code.empty(); }
  bool is_hidden() const { return has_gap && gap.code.empty(); }
  bool breaks_line() const {
    return at_start || at_end || whole().code.find(u'\n') != std::u16string_view::npos;
  }
  bool is_text() const { return !has_gap && !(before.empty() && (at_start || at_end)); }
};

/// Which position in the code is which in the markup.
class PieceMap {
 public:
  PieceMap(std::u16string_view markup, std::u16string_view code, const std::vector<MappedPiece>& pieces)
      : markup_(markup), code_(code), pieces_(pieces) {}

  /// Where in the markup the letter ends that ends there in the code; the start of both texts.
  Offset end_of_letter(Offset in_code) const;
  /// Where in the markup the letter starts that starts there in the code; the end of both texts.
  Offset start_of_letter(Offset in_code) const;
  /// From the end of a letter to the start of the next one.
  SpaceRun run(Offset begin, Offset end) const;

 private:
  std::size_t piece_after(Offset at) const;
  static Offset within(const MappedPiece& piece, Offset at);

  const std::u16string_view markup_, code_;
  const std::vector<MappedPiece>& pieces_;
};

}  // namespace tvx::source
