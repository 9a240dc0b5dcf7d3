#include "tvx/source/changed_markup.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/source/differences.h"

namespace tvx::source {
namespace {

bool has_line_break(std::u16string_view text) { return text.find(u'\n') != text.npos; }

/// A text cut into what it says and the white space on both sides.
struct Cut {
  std::u16string_view lead, core, trail;

  explicit Cut(std::u16string_view text) : lead(text), core(trimmed(text)) {
    if (core.empty()) return;
    lead = text.substr(0, static_cast<Offset>(core.data() - text.data()));
    trail = text.substr(lead.size() + core.size());
  }
};

/// A change, with the drawn white space that it touches.
struct Change {
  Offset begin, end;      // in the code as it was
  std::u16string text{};  // what stands there now
};

class ChangedMarkup {
 public:
  ChangedMarkup(std::u16string_view markup, std::u16string_view code, const std::vector<MappedPiece>& pieces,
                std::u16string_view left)
      : markup_(markup), code_(code), pieces_(pieces), left_(left) {}

  std::u16string run() {
    out_.reserve(markup_.size() + left_.size() - std::min(left_.size(), code_.size()));
    Change pending{0, 0};
    Offset compared = 0;  // in the code, with the pending change
    bool is_pending = false;
    for (const Difference& part : text_differences(code_, left_)) {
      const Offset begin = start_of_space(part.begin), end = end_of_space(part.end);
      // Two changes around the same drawn white space are one.
      if (is_pending && begin <= pending.end) {
        pending.text.resize(pending.text.size() - (pending.end - compared));
        pending.text += code_.substr(compared, part.begin - compared);
      } else {
        if (is_pending) carry(pending);
        pending = {begin, end, std::u16string(code_.substr(begin, part.begin - begin))};
      }
      pending.text += left_.substr(part.new_begin, part.new_end - part.new_begin);
      pending.text += code_.substr(part.end, end - part.end);
      pending.end = end;
      compared = part.end;
      is_pending = true;
    }
    if (is_pending) carry(pending);
    out_ += markup_.substr(done_);
    return std::move(out_);
  }

 private:
  // --- places in the code ---

  /// The first piece that ends after a place.
  std::size_t piece_after(Offset at) const {
    return static_cast<std::size_t>(std::ranges::upper_bound(pieces_, at, {}, &MappedPiece::end) -
                                    pieces_.begin());
  }
  /// Where the drawn white space starts that a place is in or beside; the place itself if there is none.
  Offset start_of_space(Offset at) const {
    const std::size_t next = piece_after(at);
    if (next < pieces_.size() && pieces_[next].at < at) return at;
    return next > 0 ? pieces_[next - 1].end() : 0;
  }
  Offset end_of_space(Offset at) const {
    const std::size_t next = piece_after(at);
    if (next == pieces_.size()) return code_.size();
    return std::max(at, pieces_[next].at);
  }

  /// The place in the markup of a place within a piece, or at its end.
  static Offset within(const MappedPiece& piece, Offset at) {
    if (at == piece.end()) return piece.markup_end();
    return piece.markup + std::min(at - piece.at, piece.markup_size);
  }
  /// Of the place where something copied ends, or starts.
  Offset markup_before(Offset at) const {
    const std::size_t next = piece_after(at);
    if (next < pieces_.size() && pieces_[next].at < at) return within(pieces_[next], at);
    return next > 0 ? pieces_[next - 1].markup_end() : 0;
  }
  Offset markup_after(Offset at) const {
    const std::size_t next = piece_after(at);
    return next < pieces_.size() ? within(pieces_[next], std::max(at, pieces_[next].at)) : markup_.size();
  }
  /// Whether white space that was left out in front of a place belongs to a block tag before it.
  bool space_is_before(Offset at) const {
    const std::size_t next = piece_after(at);
    return next < pieces_.size() && pieces_[next].at >= at && pieces_[next].space_is_before;
  }

  // --- from the code to the markup ---

  /// White space of the code and the markup's own in its place, on one side of what is taken out.
  struct Side {
    Offset code_size;
    std::u16string_view markup;
    bool is_before;
  };

  void carry(const Change& change) {
    const std::size_t first = piece_after(change.begin), next = first_piece_from(change.end);
    const Offset from = markup_before(change.begin), to = markup_after(change.end);
    put_markup(from);
    done_ = to;
    Cut now(change.text);
    // In front of all is nothing to part from.
    if (change.begin == 0) now.lead = {};
    if (first == next && first_copied(change) == change.end) {
      const Side all{change.end - change.begin, markup_.substr(from, to - from), space_is_before(change.end)};
      return now.core.empty() && all.code_size > 0 ? put_space(now.lead, all, {0, {}, false})
                                                   : insert(now, all);
    }
    const Offset copied = first_copied(change), copied_end = last_copied(change);
    const Offset inner = markup_after(copied), inner_end = markup_before(copied_end);
    const Side left{copied - change.begin, markup_.substr(from, inner - from), space_is_before(copied)};
    const Side right{change.end - copied_end, markup_.substr(inner_end, to - inner_end),
                     space_is_before(change.end)};
    if (now.core.empty() && change.begin == 0) {
      put_own(left.markup);
      return put_own(right.markup);
    }
    if (now.core.empty()) return put_space(now.lead, left, right);
    put_left(now.lead, left);
    put(now.core);
    put_right(now.trail, right);
  }

  /// The first piece that starts at a place or after it.
  std::size_t first_piece_from(Offset at) const {
    return static_cast<std::size_t>(std::ranges::lower_bound(pieces_, at, {}, &MappedPiece::at) -
                                    pieces_.begin());
  }
  Offset first_copied(const Change& change) const {
    const std::size_t next = piece_after(change.begin);
    return next == pieces_.size() ? change.end
                                  : std::min(std::max(change.begin, pieces_[next].at), change.end);
  }
  Offset last_copied(const Change& change) const {
    const std::size_t next = first_piece_from(change.end);
    return next == 0 ? change.begin : std::max(std::min(change.end, pieces_[next - 1].end()), change.begin);
  }

  // Nothing but white space is left. With a line break in it, it is the formatter's, whatever the user made
  // of it; on one line it is what has come between the two sides.
  void put_space(std::u16string_view space, const Side& left, const Side& right) {
    if (left.code_size + right.code_size == 0 || space.empty()) {
      if (left.code_size == 0 && left.is_before) put_own(left.markup);
      put(space);
      if (right.code_size == 0 && !right.is_before) put_own(right.markup);
      return;
    }
    // Blanks at the end of a line are text before the line break.
    if (left.markup.empty() && right.markup.empty())
      put(space.substr(0, std::min(space.find(u'\r'), space.size())));
    put_own(left.markup);
    put_own(right.markup);
  }

  // Something where only white space was, or nothing at all.
  void insert(const Cut& now, const Side& gap) {
    if (gap.code_size == 0) {
      if (gap.is_before) put_own(gap.markup);
      put(now.lead);
      put(now.core);
      put(now.trail);
      if (!gap.is_before) put_own(gap.markup);
      return;
    }
    const bool starts_line = has_line_break(now.lead), ends_line = has_line_break(now.trail);
    if (starts_line && !ends_line) put_own(gap.markup);
    if (!starts_line) put(now.lead);
    if (starts_line && ends_line) put(u"\n");
    put(now.core);
    if (!ends_line) put(now.trail);
    if (ends_line) put_own(gap.markup);
  }

  void put_left(std::u16string_view lead, const Side& side) {
    if (side.code_size == 0) {
      if (side.is_before) put_own(side.markup);
      return put(lead);
    }
    if (lead.empty()) return;
    has_line_break(lead) || !side.markup.empty() ? put_own(side.markup) : put(lead);
  }

  void put_right(std::u16string_view trail, const Side& side) {
    if (side.code_size == 0) {
      put(trail);
      if (!side.is_before) put_own(side.markup);
      return;
    }
    if (trail.empty()) return;
    has_line_break(trail) || !side.markup.empty() ? put_own(side.markup) : put(trail);
  }

  void put_markup(Offset to) {
    out_ += markup_.substr(done_, to - done_);
    done_ = to;
  }
  void put_own(std::u16string_view text) { out_ += text; }
  /// Text of the user's, with the line breaks of markup.
  void put(std::u16string_view text) {
    for (Offset at = 0; at < text.size(); ++at)
      if (text[at] != u'\r') out_ += text[at];
  }

  const std::u16string_view markup_, code_;
  const std::vector<MappedPiece>& pieces_;
  const std::u16string_view left_;
  std::u16string out_;
  Offset done_ = 0;  // of the markup
};

}  // namespace

std::u16string changed_markup(std::u16string_view markup, std::u16string_view code,
                              const std::vector<MappedPiece>& pieces, std::u16string_view left) {
  return ChangedMarkup(markup, code, pieces, left).run();
}

}  // namespace tvx::source
