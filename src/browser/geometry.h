#pragma once

#include <utility>

namespace tvx::dom {
class Element;
}

/// What a document may know of the window that shows it.
namespace tvx::browser {

class HTMLDocument;

/// Where things are, for questions that no event answers: the view's last report, or a fixed geometry.
class Geometry {
 public:
  virtual ~Geometry() = default;
  virtual dom::Element* element_at(const HTMLDocument& document, int x, int y) const = 0;
  /// The box of the caret or the selected control, left and top; for events that no mouse made.
  virtual std::pair<int, int> caret_place(const HTMLDocument& document) const = 0;
};

/// The window that shows the document, as far as a script may move it. Both return at once; the page is there
/// in a later turn.
class Viewport {
 public:
  virtual ~Viewport() = default;
  /// In CSS pixels; positions after the end mean the end.
  virtual void scroll_to(int x, int y) = 0;
  /// Its upper edge at the window's, or its lower one.
  virtual void scroll_into_view(dom::Element& element, bool at_top) = 0;
  /// Other pictures are on their way to a server.
  virtual void under_way_changed() {}
  /// The document may bring in something else than before.
  virtual void resource_policy_changed() {}
};

}  // namespace tvx::browser
