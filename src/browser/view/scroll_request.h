#pragma once

#include <optional>

#include "tvx/dom/node.h"

namespace tvx::browser {

class Mirror;
class View;

/// Where a script wants the window to scroll. What was asked for last counts; it waits until the view has
/// what it means.
class ScrollRequest {
 public:
  void to(int x, int y);
  /// Its upper edge at the window's, or its lower one.
  void into_view(dom::Element& element, bool at_top);
  void clear() { wanted_.reset(); }
  bool waits() const { return wanted_.has_value(); }
  /// The element that waits to come into sight; null: none does.
  dom::Element* element() const { return wanted_ ? wanted_->element.get() : nullptr; }

  /// A page that is still coming is too short for the point, and may lack the element: both wait. Instead of
  /// what isn't shown itself, the innermost element around it that is shown comes into sight.
  void send(View& view, const Mirror& mirror);

 private:
  struct Wanted {
    int x = 0, y = 0;
    dom::Ref<dom::Element> element;  // or none: the point
    bool at_top = true;
  };
  std::optional<Wanted> wanted_;
};

}  // namespace tvx::browser
