#pragma once

#include "tvx/dom/range.h"
#include "tvx/editing/walk/content_walk.h"

/// Blanks around words that are moved: where words were, one blank is left over, and where they arrive, they
/// may stand against another word.
namespace tvx::editing {

/// Whether the range is words from the first to the last letter, and no piece of one.
bool are_whole_words(const dom::Range& range);
/// Words with the blank that nothing would need without them.
dom::Range with_spare_blank(const dom::Range& words);

struct WordGaps {
  bool before = false, after = false;
};
/// Where whole words need a blank to be parted from those at the position; none within a word, for whoever
/// goes there means it.
WordGaps gaps_at(dom::Boundary place);

}  // namespace tvx::editing
