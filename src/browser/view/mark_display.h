#pragma once

#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/node.h"

namespace tvx::browser {

/// A stretch of a text that the view underlines with a wave.
struct MarkedStretch {
  Offset from = 0, to = 0;
  friend bool operator==(const MarkedStretch&, const MarkedStretch&) = default;
};

/// What shows marks over the document's texts; a Viewport may be one. Marks are no part of the tree. While a
/// text is edited they go with the letters that they stand under, until they are told anew.
class MarkDisplay {
 public:
  virtual ~MarkDisplay() = default;
  /// All of one text; none takes them away.
  virtual void mark(const dom::Text& text, std::vector<MarkedStretch> stretches) = 0;
  virtual void clear_marks() = 0;
};

}  // namespace tvx::browser
