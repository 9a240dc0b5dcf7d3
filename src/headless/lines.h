#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "tvx/browser/events.h"
#include "tvx/browser/view/messages.h"
#include "tvx/headless/shadow_tree.h"

namespace tvx::headless {

/// The lines of a page without a layout. What a block holds beside other blocks is one line, however long it
/// is; the cells of a row stand beside each other, and a rule is none.
class Lines {
 public:
  explicit Lines(const ShadowTree& tree);
  /// Where a caret comes to. A move from the last line or the first stays.
  std::optional<browser::ViewPlace> move(browser::ViewMove move, browser::ViewPlace from) const;

 private:
  using Node = ShadowTree::Node;
  struct Line {
    const Node* block;
    std::vector<const Node*> texts;
  };
  using At = std::vector<Line>::const_iterator;

  At line_of(const Node& block) const;
  /// The next line on that side; the end where none is.
  At next(At line, bool up) const;
  At beside(const Node& block, std::size_t offset, bool up) const;
  At beyond(At line, bool up) const;
  static browser::ViewPlace place_in(const Line& line, std::size_t column);

  const ShadowTree& tree_;
  std::vector<Line> lines_;
};

}  // namespace tvx::headless
