#include "tvx/source/markup_troubles.h"

#include <algorithm>

#include "tvx/source/markup_scanner.h"
#include "tvx/source/tag_structure.h"

namespace tvx::source {
namespace {

bool is_unfinished(const Piece& piece, std::u16string_view source) {
  const std::u16string_view text = source.substr(piece.begin, piece.end - piece.begin);
  if (piece.kind == Piece::Kind::Comment) return !text.ends_with(u'>');
  if (piece.kind == Piece::Kind::Text) return false;
  return !text.ends_with(u'>') || text.find(u'<', 1) != text.npos;
}

}  // namespace

std::size_t markup_troubles(std::u16string_view source) {
  const TagStructure structure(source);
  auto troubles = static_cast<std::size_t>(std::ranges::count_if(
      structure.tags(), [](const SourceTag& tag) { return tag.trouble != TagTrouble::None; }));
  MarkupScanner scanner(source);
  while (const auto piece = scanner.next())
    if (is_unfinished(*piece, source)) ++troubles;
  return troubles;
}

}  // namespace tvx::source
