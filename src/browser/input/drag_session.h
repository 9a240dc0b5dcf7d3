#pragma once

#include <memory>

#include "tvx/browser/view/messages.h"
#include "tvx/dom/node.h"

namespace tvx::browser {

class Display;
class HTMLDocument;

/// A drag within the page, from its start to the release: a handle, an element, the edge of a column, or what
/// is selected. The page draws it; the document says whether it may be and does what it comes to.
class DragSession {
 public:
  explicit DragSession(Display& display) : display_(display) {}

  void show(std::shared_ptr<HTMLDocument> document);
  void handle(const ViewDrag& drag);
  /// What the mouse carries stays where it is. False: it carries nothing.
  bool cancel();
  /// Another press or a release: nothing is carried any more.
  void end() { carried_ = {}; }

 private:
  void start(const ViewDrag& drag);
  void drop(const ViewDrag& drag);

  Display& display_;
  std::shared_ptr<HTMLDocument> document_;
  struct {
    bool active = false;
    dom::Ref<dom::Element> element;
  } carried_;
};

}  // namespace tvx::browser
