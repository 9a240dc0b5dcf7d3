#include "tvx/editing/walk/word_bounds.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;

namespace {

/// How much is read at once, and at most where no position to cut comes.
constexpr Offset chunk_size = 64, longest_chunk = 8192;

// No word goes on after these.
bool is_cut(char16_t c) { return u_isUWhiteSpace(c) || (c >= 0x3000 && c <= 0x3002); }

struct Word {
  Offset begin, end;
};

std::vector<Word> words_in(std::u16string_view text) {
  static UErrorCode made = U_ZERO_ERROR;
  static const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), made));
  UErrorCode status = U_ZERO_ERROR;
  UText* source = utext_openUChars(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status);
  iterator->setText(source, status);
  std::vector<Word> words;
  Offset begin = 0;
  iterator->first();
  for (auto at = iterator->next(); at != icu::BreakIterator::DONE; at = iterator->next()) {
    const auto end = static_cast<Offset>(at);
    if (iterator->getRuleStatus() >= UBRK_WORD_NONE_LIMIT) words.push_back({begin, end});
    begin = end;
  }
  utext_close(source);
  return words;
}

/// A part of one line's text, and where in the document its units stand.
class Chunk {
 public:
  void append(dom::Text& node, Offset from, Offset to) {
    text_.append(node.data(), from, to - from);
    pieces_.push_back({&node, from, to});
  }
  void prepend(dom::Text& node, Offset from, Offset to) {
    text_.insert(0, node.data(), from, to - from);
    pieces_.insert(pieces_.begin(), {&node, from, to});
  }
  const std::u16string& text() const { return text_; }
  Offset length() const { return text_.size(); }

  /// The position before a unit, and the position after the one before.
  Boundary begin_at(Offset unit) const { return place(unit, 0); }
  Boundary end_at(Offset unit) const { return place(unit, 1); }

 private:
  struct Piece {
    dom::Text* node;
    Offset from, to;
  };
  Boundary place(Offset unit, Offset at_end) const {
    for (const Piece& piece : pieces_) {
      const Offset length = piece.to - piece.from;
      if (unit < length + at_end) return {piece.node, piece.from + unit};
      unit -= length;
    }
    return {pieces_.back().node, pieces_.back().to};
  }
  std::u16string text_;
  std::vector<Piece> pieces_;
};

/// Reads a line's text on one side of a position, as much as is asked for.
class Reader {
 public:
  Reader(Boundary from, Direction direction) : walk_(from, direction) {}

  /// Reads on to the first position to cut after `least` units, or to the end of the line.
  void read(Chunk& chunk, Offset least) {
    for (Offset done = 0;;) {
      if (rest_.kind == ContentKind::End) {
        rest_ = walk_.next();
        ended_ = rest_.kind == ContentKind::End;
        if (rest_.kind != ContentKind::Text) {
          rest_ = {};
          return;
        }
      }
      const Offset length = rest_.to - rest_.from;
      const Offset taken = part_to_take(done, least);
      take(chunk, taken);
      if (taken < length) return;
      done += taken;
      rest_ = {};
    }
  }
  /// Nothing follows any more.
  bool ended() const { return ended_; }

 private:
  char16_t unit(Offset number) const {
    const std::u16string& text = rest_.text().data();
    return walk_.forward() ? text[rest_.from + number] : text[rest_.to - 1 - number];
  }

  Offset part_to_take(Offset done, Offset least) const {
    const Offset length = rest_.to - rest_.from;
    for (Offset at = done < least ? least - done : 0; at < length; ++at) {
      if (is_cut(unit(at))) return at + 1;
      if (done + at >= longest_chunk && !is_high_surrogate(unit(at)) && !is_low_surrogate(unit(at)))
        return at;
    }
    return length;
  }

  void take(Chunk& chunk, Offset count) {
    if (walk_.forward()) {
      chunk.append(rest_.text(), rest_.from, rest_.from + count);
      rest_.from += count;
    } else {
      chunk.prepend(rest_.text(), rest_.to - count, rest_.to);
      rest_.to -= count;
    }
  }

  ContentWalk walk_;
  Content rest_;  // a text that was not read to its end; else End
  bool ended_ = false;
};

enum class EdgeKind : std::uint8_t { Begin, End };

Boundary place_of(const Chunk& chunk, const Word& word, EdgeKind edge) {
  return edge == EdgeKind::Begin ? chunk.begin_at(word.begin) : chunk.end_at(word.end);
}

std::optional<Boundary> next_edge(Boundary from, EdgeKind kind) {
  Reader behind(from, Direction::Backward), ahead(from, Direction::Forward);
  Chunk chunk;
  behind.read(chunk, 0);
  // What stands before the position only tells where words begin. Begins at the position count between nodes.
  Offset passed = chunk.length();
  bool at_place_too = kind == EdgeKind::Begin && !from.node->is_text();
  for (;;) {
    ahead.read(chunk, chunk_size);
    for (const Word& word : words_in(chunk.text())) {
      const Offset edge = kind == EdgeKind::Begin ? word.begin : word.end;
      if (edge > passed || (edge == passed && at_place_too)) return place_of(chunk, word, kind);
    }
    if (ahead.ended()) return std::nullopt;
    chunk = {};
    passed = 0;
    at_place_too = kind == EdgeKind::Begin;
  }
}

std::optional<Boundary> previous_edge(Boundary from, EdgeKind kind) {
  Reader behind(from, Direction::Backward), ahead(from, Direction::Forward);
  Chunk chunk, rest;
  behind.read(chunk, chunk_size);
  Offset limit = chunk.length();
  ahead.read(rest, 0);
  std::u16string text = chunk.text() + rest.text();
  bool at_place_too = kind == EdgeKind::End && !from.node->is_text();
  for (;;) {
    const std::vector<Word> words = words_in(text);
    for (auto word = words.rbegin(); word != words.rend(); ++word) {
      const Offset edge = kind == EdgeKind::Begin ? word->begin : word->end;
      if (edge < limit || (edge == limit && at_place_too)) return place_of(chunk, *word, kind);
    }
    if (behind.ended()) return std::nullopt;
    chunk = {};
    behind.read(chunk, chunk_size);
    text = chunk.text();
    limit = chunk.length();
    at_place_too = kind == EdgeKind::End;
  }
}

}  // namespace

struct WordReader::State {
  explicit State(Boundary from) : ahead(from, Direction::Forward) {}
  Reader ahead;
  Chunk chunk;
  std::vector<Word> words;
  std::size_t given = 0;  // of these words
};

WordReader::WordReader(Boundary from) : state_(std::make_unique<State>(from)) {}
WordReader::~WordReader() = default;
WordReader::WordReader(WordReader&&) noexcept = default;
WordReader& WordReader::operator=(WordReader&&) noexcept = default;

std::optional<dom::Range> WordReader::next() {
  State& state = *state_;
  while (state.given == state.words.size()) {
    if (state.ahead.ended()) return std::nullopt;
    state.chunk = {};
    state.given = 0;
    state.ahead.read(state.chunk, chunk_size);
    state.words = words_in(state.chunk.text());
  }
  const Word& word = state.words[state.given++];
  return dom::Range{state.chunk.begin_at(word.begin), state.chunk.end_at(word.end)};
}

Boundary WordReader::checkpoint() const {
  return state_->given == 0 ? Boundary() : state_->chunk.begin_at(0);
}
std::size_t WordReader::given_since() const { return state_->given; }

std::optional<dom::Range> word_at(Boundary place) {
  Chunk chunk;
  Reader(place, Direction::Backward).read(chunk, 0);
  const Offset at = chunk.length();
  Reader(place, Direction::Forward).read(chunk, 0);
  std::optional<Word> found;
  for (const Word& word : words_in(chunk.text())) {
    if (word.begin <= at && at <= word.end) found = word;
  }
  if (!found) return std::nullopt;
  return dom::Range{chunk.begin_at(found->begin), chunk.end_at(found->end)};
}

std::optional<Boundary> next_word_begin(Boundary from) { return next_edge(from, EdgeKind::Begin); }
std::optional<Boundary> next_word_end(Boundary from) { return next_edge(from, EdgeKind::End); }
std::optional<Boundary> previous_word_begin(Boundary from) { return previous_edge(from, EdgeKind::Begin); }
std::optional<Boundary> previous_word_end(Boundary from) { return previous_edge(from, EdgeKind::End); }

}  // namespace tvx::editing
