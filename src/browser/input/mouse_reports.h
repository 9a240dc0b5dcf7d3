#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "tvx/browser/view/messages.h"
#include "tvx/dom/node.h"

namespace tvx::browser {

class Display;
class DragSession;
class HTMLDocument;

/// What the page reports of presses, releases and clicks, and what that does to the document. Where the tree
/// has changed under a report, the page is asked again about the same point.
class MouseReports {
 public:
  MouseReports(Display& display, DragSession& drags) : display_(display), drags_(drags) {}

  void show(std::shared_ptr<HTMLDocument> document);
  /// All that belongs to one press or release. A question that the page is asked, if the answer must be
  /// waited for.
  std::optional<QuestionId> handle(std::vector<ViewMouse> reports);
  bool asks() const { return !reports_.empty(); }
  /// The answer; null: there is none. May ask again.
  std::optional<QuestionId> answer(const ViewAnswer* answer);
  /// Whatever was asked for is no longer waited for.
  void forget() { reports_.clear(); }
  /// A report that came too late changes nothing here; what it has drawn in the page goes.
  void missed(const ViewMouse& report);
  /// What the press held was meant to be dragged.
  void drag_follows() { held_ = false; }

  /// The element that the last report named for this point.
  dom::Element* element_at(int x, int y) const;

 private:
  std::optional<QuestionId> deliver();
  void deliver(HTMLDocument& document, const ViewMouse& report);
  void release(HTMLDocument& document, const MouseInput& input);
  MouseInput input_of(const ViewMouse& report) const;

  Display& display_;
  DragSession& drags_;
  std::shared_ptr<HTMLDocument> document_;
  std::vector<ViewMouse> reports_;  // whose positions are asked for again
  int tries_ = 0;
  bool held_ = false;  // the last press was on what is selected
  struct {
    int x = 0, y = 0;
    dom::Ref<dom::Element> element;
  } last_hit_;
};

}  // namespace tvx::browser
