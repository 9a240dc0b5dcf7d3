#pragma once

#include <string>
#include <vector>

#include "tvx/dom/range.h"

/// Which links a selection touches.
namespace tvx::editing {

class Editor;

/// The links that the range contains or that hold one of its ends, in tree order.
std::vector<dom::Ref<dom::Element>> links_touched(const dom::Range& range);
/// The address of the first link that the selection touches, as it is written; empty if there is none.
std::u16string link_address(Editor& editor);

}  // namespace tvx::editing
