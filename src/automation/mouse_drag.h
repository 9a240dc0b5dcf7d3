#pragma once

#include <optional>
#include <string>

#include "tvx/browser/html_document.h"

namespace tvx::automation {

/// A drag of the mouse without a screen: a press, the way, and the release.
struct MouseDrag {
  browser::MouseInput from, to;
  /// "e", "s" or "se": of the selected element; "column": the edge after the cell where the drag begins;
  /// empty: the element itself.
  std::u16string handle;
};

/// Does what such a drag does in a window. With a handle the element's corner or the edge of the column goes
/// to `to`; an absolutely positioned element moves by the way while "2D-Position" is on; all else that is
/// selected goes to the place at `to`, as a copy with the control key. False: the document's handler forbids
/// it. Throws RuntimeError(5) where no column stands after the cell.
bool run_drag(browser::HTMLDocument& document, const MouseDrag& drag);

}  // namespace tvx::automation
