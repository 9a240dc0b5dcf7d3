#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tvx/dom/range.h"

namespace tvx::editing {

/// The text below a node as a reader sees it, in lines that end with LF: elements within a line are nothing,
/// white space that collapses is one blank, and what nobody sees isn't there. Blocks, line breaks, images and
/// form fields end a line. True as long as nothing of the tree changes.
class ReadText {
 public:
  /// A stretch of one text node.
  struct Piece {
    dom::Text* node = nullptr;
    Offset from = 0, to = 0;
    friend bool operator==(const Piece&, const Piece&) = default;
  };

  explicit ReadText(dom::Node& top);

  const std::u16string& text() const { return text_; }
  /// From before its first unit to after its last. The stretch isn't empty and goes over no line's end.
  dom::Range range_of(Offset from, Offset to) const;
  /// The nodes that such a stretch stands in, one piece for each, in their order. White space that collapses
  /// within the stretch is part of them.
  std::vector<Piece> pieces_of(Offset from, Offset to) const;
  /// The first unit at or after a position.
  Offset unit_at(const dom::Boundary& place) const;

 private:
  friend class ReadInTurns;
  class Reading;
  ReadText() = default;
  /// Units that stand one after the other in a node too.
  struct Run {
    dom::Text* node;
    Offset from, start, length;  // in the node, in the text
  };
  const Run& run_of(Offset unit) const;

  std::u16string text_;
  std::vector<Run> runs_;
};

/// Reads the same text in several turns, so that nobody waits for a long one.
class ReadInTurns {
 public:
  explicit ReadInTurns(dom::Node& top);
  ~ReadInTurns();
  ReadInTurns(const ReadInTurns&) = delete;
  ReadInTurns& operator=(const ReadInTurns&) = delete;

  /// Reads on, over that many texts, objects and edges of blocks; true at the end. Starts again if the tree
  /// has changed since the last call. Where the document is gone there is nothing to read any more.
  bool go_on(std::size_t things);
  /// What was read so far.
  const std::u16string& text() const;
  /// The same, at the end; nothing more is read after it.
  std::u16string take_text();

 private:
  struct State;
  void start();

  dom::Ref<dom::Node> top_;
  std::uint64_t version_ = 0;  // of the document, at the last call
  std::unique_ptr<State> state_;
};

}  // namespace tvx::editing
