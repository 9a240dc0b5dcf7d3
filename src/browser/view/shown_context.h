#pragma once

#include "tvx/browser/view/messages.h"

namespace tvx::browser {

class HTMLDocument;
class View;

/// What the view may answer an input method with: sent where it has changed.
class ShownContext {
 public:
  explicit ShownContext(View& view) : view_(view) {}

  /// Whether the input method holds text that it hasn't committed, as its last report says.
  void composing(bool composing) { composing_ = composing; }
  void send(HTMLDocument& document, bool editable);

 private:
  View& view_;
  InputContext shown_;
  bool composing_ = false;
};

}  // namespace tvx::browser
