#pragma once

#include <memory>
#include <optional>

#include "tvx/browser/html_document.h"

namespace tvx::browser {

/// One act of the user or of a command. However often it sets the selection, onselectionchange comes once,
/// when the outermost gesture ends; with the mouse's coordinates if it was the mouse's, else the caret's.
class HTMLDocument::Gesture {
 public:
  explicit Gesture(HTMLDocument& document) : document_(document.shared_from_this()) { ++document.gestures_; }
  /// Raises it now, moved or not, and with this event.
  void finish_with(Event event);
  ~Gesture();
  Gesture(const Gesture&) = delete;
  Gesture& operator=(const Gesture&) = delete;

 private:
  std::shared_ptr<HTMLDocument> document_;
  bool finished_ = false;
};

/// An event while it is being handled, with the state of the tree that its snapshot speaks of.
struct HTMLDocument::Living {
  Event* event;
  std::uint64_t structure;
};

}  // namespace tvx::browser
