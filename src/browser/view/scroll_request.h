#pragma once

#include <optional>

#include "tvx/browser/view/messages.h"
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
  /// What the scroll bar asks for. It is looked for when it can be sent.
  void to(const ViewScrollBar& bar) { bar_ = bar; }
  void clear() {
    wanted_.reset();
    bar_.reset();
  }
  bool waits() const { return wanted_.has_value(); }
  /// The element that waits to come into sight; null: none does.
  dom::Element* element() const { return wanted_ ? wanted_->element.get() : nullptr; }

  /// Finds the element that the scroll bar asks for, if it does and another one is there.
  void find(const dom::Document& document, const Mirror& mirror);

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
  std::optional<ViewScrollBar> bar_;
};

}  // namespace tvx::browser
