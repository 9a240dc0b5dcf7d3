#include "tvx/source/piece_map.h"

#include <algorithm>

namespace tvx::source {
namespace {

std::u16string_view joined(std::u16string_view first, std::u16string_view last) {
  return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

}  // namespace

InBoth SpaceRun::whole() const {
  return {joined(before.code, after.code), joined(before.markup, after.markup)};
}

/// The first piece that ends after a position.
std::size_t PieceMap::piece_after(Offset at) const {
  return static_cast<std::size_t>(std::ranges::upper_bound(pieces_, at, {}, &MappedPiece::end) -
                                  pieces_.begin());
}

// A piece of other white space than in the markup is never cut at a letter.
Offset PieceMap::within(const MappedPiece& piece, Offset at) {
  return at == piece.end() ? piece.markup_end() : piece.markup + std::min(at - piece.at, piece.markup_size);
}

Offset PieceMap::end_of_letter(Offset in_code) const {
  if (in_code == 0) return 0;
  return within(pieces_[piece_after(in_code - 1)], in_code);
}

Offset PieceMap::start_of_letter(Offset in_code) const {
  return in_code == code_.size() ? markup_.size() : within(pieces_[piece_after(in_code)], in_code);
}

SpaceRun PieceMap::run(Offset begin, Offset end) const {
  SpaceRun run{.at_start = begin == 0, .at_end = end == code_.size()};
  const Offset markup_begin = end_of_letter(begin), markup_end = start_of_letter(end);
  Offset at = begin, markup_at = markup_begin;
  Offset gap_begin = end, gap_end = end, markup_gap_begin = markup_end, markup_gap_end = markup_end;
  // What the pieces leave out is the gap, from the first time to the last.
  const auto pass = [&](Offset to, Offset markup_to, bool belongs_before) {
    if (to == at && markup_to == markup_at) return;
    if (!run.has_gap) gap_begin = at, markup_gap_begin = markup_at;
    gap_end = to, markup_gap_end = markup_to;
    run.has_gap = true;
    run.belongs_before = belongs_before;
  };
  std::size_t i = piece_after(begin);
  for (; i < pieces_.size() && pieces_[i].at < end; ++i) {
    const MappedPiece& piece = pieces_[i];
    const Offset from = std::max(piece.at, begin), to = std::min(piece.end(), end);
    pass(from, within(piece, from), piece.space_is_before);
    at = to, markup_at = within(piece, to);
  }
  pass(end, markup_end, i < pieces_.size() && pieces_[i].at == end && pieces_[i].space_is_before);
  run.belongs_before = run.at_start || (run.belongs_before && !run.at_end);
  const auto stretch = [&](Offset from, Offset to, Offset markup_from, Offset markup_to) {
    return InBoth{code_.substr(from, to - from), markup_.substr(markup_from, markup_to - markup_from)};
  };
  run.before = stretch(begin, gap_begin, markup_begin, markup_gap_begin);
  run.gap = stretch(gap_begin, gap_end, markup_gap_begin, markup_gap_end);
  run.after = stretch(gap_end, end, markup_gap_end, markup_end);
  return run;
}

}  // namespace tvx::source
