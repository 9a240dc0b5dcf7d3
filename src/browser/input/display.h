#pragma once

#include <cstdint>

#include "tvx/browser/view/messages.h"

namespace tvx::browser {

class Mirror;

/// The side that shows the document, as those see it who act on what the user does.
class Display {
 public:
  virtual ~Display() = default;
  virtual const Mirror& mirror() const = 0;
  virtual bool editable() const = 0;
  /// Whether the page stands, so that it can be asked.
  virtual bool answers() const = 0;
  /// The answer comes as a message of its own, or never.
  virtual QuestionId ask(ViewQuestion question) = 0;

  /// Brings the view up to date now, in the next turn.
  virtual void flush() = 0;
  virtual void schedule_flush() = 0;
  /// Whether the selection scrolls into sight when it is sent.
  virtual void reveal(bool reveal) = 0;

  // --- what the page has done by itself ---
  virtual void selection_drawn(const ViewPlace& anchor, const ViewPlace& focus) = 0;
  virtual void selection_unsure() = 0;
  virtual void mouse_dealt_with(std::uint32_t number) = 0;
  virtual void composing(bool composing) = 0;
  virtual void cancel_drag() = 0;
};

}  // namespace tvx::browser
