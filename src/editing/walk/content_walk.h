#pragma once

#include <optional>

#include "tvx/editing/facts/gap.h"
#include "tvx/editing/walk/caret.h"

/// The content as a reader meets it, one thing after the other: texts, images, line breaks, the edges of
/// blocks. Ranges, markup pointers and word boundaries stand on this one walk.
namespace tvx::editing {

enum class ContentKind : std::uint8_t {
  Text,
  Object,     // an image, a form field: one thing, whatever is in it
  LineBreak,  // BR
  Rule,       // HR
  EnterBlock,
  LeaveBlock,
  End
};

struct Content {
  ContentKind kind = ContentKind::End;
  dom::Node* node = nullptr;
  Offset from = 0, to = 0;  // of a text: the units that were passed, in document order

  dom::Text& text() const { return *dom::as<dom::Text>(node); }
  /// Something that is seen in a line, or a line of its own.
  bool is_substance() const {
    return kind == ContentKind::Text || kind == ContentKind::Object || kind == ContentKind::LineBreak ||
           kind == ContentKind::Rule;
  }
};

/// Passes over content in one direction; hidden elements, what is folded away and comments are nothing. A
/// step costs what it passes, never the number of siblings.
class ContentWalk {
 public:
  /// Whether the words on buttons, and those that run along, are passed as part of one thing, or read as
  /// lines.
  enum class Words : bool { Pass, Read };

  /// Ends at the edge of `root`, or of the body if that is null.
  ContentWalk(dom::Boundary from, Direction direction, const dom::Node* root = nullptr,
              Words words = Words::Pass);
  /// Moves over the next thing and names it; of a text, what was left of it.
  Content next();
  bool forward() const { return forward_; }

 private:
  void enter(dom::Node& child);
  void leave();
  bool is_read(const dom::Node& node) const;
  WalkPosition spot_;
  bool forward_;
  const Words words_;
  const dom::Node* root_;
};

/// One thing for a reader, whatever is in it: an image, a form field, a drawing.
bool is_object(const dom::Node& node);
/// Whether white space collapses in this text (CSS Text, section 3).
bool collapses(const dom::Text& text);
/// Whether a run of collapsing white space is seen: neither at a line's edge nor after other white space.
bool shows_space(dom::Text& text, Offset from, Offset to);
/// What a reader meets first: white space that nobody sees is passed over.
Content content_beside(dom::Boundary place, Direction direction);

/// One character on: a grapheme, a run of white space that shows as one, an object, or one step over the edge
/// of a block or a BR. A position between blocks counts as the next line's start. None where the content
/// ends.
std::optional<dom::Boundary> next_character(dom::Boundary from, Direction direction);

/// The range from its first to its last character, line break or object. A range that holds nothing of that
/// kind becomes its start.
dom::Range shrunk_to_characters(const dom::Range& range);
/// Whether nothing that is seen stands in `element` outside the range.
bool covers_content_of(const dom::Range& range, dom::Element& element);

/// Whether a range reaches from its last character, where `seen` ends, to the line after it. The way from
/// cell to cell is no line's end.
bool takes_line_end(const dom::Range& range, const dom::Range& seen);

}  // namespace tvx::editing
