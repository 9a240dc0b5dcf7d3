#pragma once

#include <string>
#include <vector>

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/gestures/leftovers.h"
#include "tvx/editing/layout/source_lines.h"

/// What the undo steps of gestures have in common.
namespace tvx::editing {

/// Whether a step looks at what has come of it. Where nothing has, the markup being what it was whatever was
/// moved to and fro on the way, it is none. The blocks that are selected and those beside them are compared:
/// all of their markup, or what is seen of it, which is that without the white space between blocks.
enum class Compare { No, All, Seen };

/// One gesture: one undo step, which leaves nothing over that nobody sees (`leftovers.h`) and keeps the lines
/// of the source (`source_lines.h`), and observers hear of the selection once, at its end.
class Gesture {
 public:
  Gesture(Editor& editor, std::u16string_view label, dom::StepJoin join = dom::StepJoin::Never,
          Compare compare = Compare::No);
  ~Gesture();
  Gesture(const Gesture&) = delete;
  Gesture& operator=(const Gesture&) = delete;

 private:
  void note_blocks();
  void undo_nothing();
  std::u16string text() const;

  Editor& editor_;
  const std::size_t steps_;
  const bool within_another_;
  const HeldSelection held_;
  const dom::UndoStep step_;
  const LineMemo memo_;
  Leftovers leftovers_;
  SourceLines lines_;
  const Compare compare_;
  bool compares_ = false;
  std::uint64_t version_ = 0;
  dom::Ref<dom::Node> host_, before_, after_;  // the siblings that stay outside of the comparison
  std::u16string text_;
};

}  // namespace tvx::editing
