#pragma once

#include "tvx/dom/node.h"

namespace tvx::browser {

/// A stretch of an element's children that a view doesn't have yet.
struct Gap {
  dom::Ref<dom::Node> element;
  dom::Ref<dom::Node> last;  // the child before it; none: it starts with the first child
  dom::Ref<dom::Node> end;   // the child after it; none: it goes on to the last child
};

}  // namespace tvx::browser
