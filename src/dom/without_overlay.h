#pragma once

#include "tvx/dom/document.h"
#include "tvx/dom/journal.h"

namespace tvx::dom {

/// While it lives the tree has no overlay: whoever reads what is the document's, and not the view's, reads
/// here. What is written meanwhile is one step of undo; where nothing is written there is none.
class WithoutOverlay {
 public:
  explicit WithoutOverlay(Document& document, std::u16string_view label = u"")
      : step_(document.journal(), label) {}

 private:
  UndoStep step_;  // no record of the journal has a trace of an overlay, so that an open step has none
};

}  // namespace tvx::dom
