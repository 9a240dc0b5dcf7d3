#pragma once

#include <cstdint>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/node.h"

namespace tvx::browser {

/// A stretch of a text that the view marks.
struct MarkedStretch {
  Offset from = 0, to = 0;
  friend bool operator==(const MarkedStretch&, const MarkedStretch&) = default;
};

/// What a mark says: a wrong word (a wave under it), a hit of a search (its ground), the hit in hand,
/// the text that the user is at elsewhere.
enum class MarkKind : std::uint8_t { WrongWord, Hit, PresentHit, Place };

/// What shows marks over the document's texts; a Viewport may be one. Marks are no part of the tree. While a
/// text is edited they go with the letters that they stand under, until they are told anew.
class MarkDisplay {
 public:
  virtual ~MarkDisplay() = default;
  /// All of a kind in one text; none takes them away.
  virtual void mark(MarkKind kind, const dom::Text& text, std::vector<MarkedStretch> stretches) = 0;
  virtual void clear_marks(MarkKind kind) = 0;
  /// Whether a document is still coming into the view: who has much to mark leaves the time to it.
  virtual bool is_busy() const { return false; }
};

}  // namespace tvx::browser
