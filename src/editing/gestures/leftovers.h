#pragma once

#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"

namespace tvx::editing {

/// What commands and keys leave over where they took something away or moved it: elements of a line with
/// nothing in them, lists without items, what stands among items instead of in one, the line in the source of
/// a block that has gone. It is noted as it happens, wherever in the document that is, and tidied at the
/// gesture's end. What stood there before the gesture, and that the gesture didn't touch, stays as it was.
class Leftovers final : private dom::MutationObserver {
 public:
  explicit Leftovers(Editor& editor);
  ~Leftovers();
  Leftovers(const Leftovers&) = delete;
  Leftovers& operator=(const Leftovers&) = delete;

  void tidy();

 private:
  void mutated(const dom::Mutation& mutation) override;

  Editor& editor_;
  std::vector<dom::Ref<dom::Element>> lost_;     // have nothing in them, or are lists that lost something
  std::vector<dom::Ref<dom::Element>> strays_;   // put among items, and none itself
  std::vector<dom::Ref<dom::Node>> after_gone_;  // texts that stood after a block that was removed
};

}  // namespace tvx::editing
