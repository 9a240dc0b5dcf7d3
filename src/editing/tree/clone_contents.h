#pragma once

#include "tvx/dom/range.h"

namespace tvx::editing {

/// A copy of what is in a range, elements cut at its ends included (DOM standard, section 5.5 "clone the
/// contents"), in a fragment that stands in no tree.
dom::Ref<dom::DocumentFragment> clone_contents(const dom::Range& range);

/// Takes out what is in a range (DOM standard, "delete contents"): elements that hold an end stay, cut.
void delete_contents(const dom::Range& range);

}  // namespace tvx::editing
