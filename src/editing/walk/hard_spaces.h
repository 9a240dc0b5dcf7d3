#pragma once

#include <memory>
#include <vector>

#include "tvx/dom/range.h"

namespace tvx::editing {

/// Between two words a no-break space is one that somebody wanted: a blank would do there.
bool is_hard_space(std::u16string_view text, Offset at);

/// A space that no line is broken at stays one where a letter beside it goes. Commands write the white space
/// beside what they delete anew, as blanks where these are seen.
class HardSpaceKeeper {
 public:
  explicit HardSpaceKeeper(const dom::Range& deleted);
  void put_back();

 private:
  void note(const dom::Boundary& place, bool before);
  std::vector<std::unique_ptr<dom::LiveRange>> kept_;
};

}  // namespace tvx::editing
