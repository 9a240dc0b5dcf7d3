#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "tvx/browser/resource_policy.h"
#include "tvx/browser/view/mark_display.h"
#include "tvx/browser/view/messages.h"

/// The interface between the document and what shows it. The document is the truth; the view is a mirror:
/// numbered patches go down, what the user did and where things are comes up.
namespace tvx::browser {

/// All marks of a kind in one text.
struct TextMarks {
  dom::NodeId text{};
  MarkKind kind = MarkKind::WrongWord;
  std::vector<MarkedStretch> stretches;
};

/// Whoever shows the document. Every call returns at once; nothing is read back. Messages are handed to
/// `receive` from a turn of the message loop of their own, never from within a call or a callback.
class View {
 public:
  virtual ~View() = default;
  virtual void set_receiver(std::function<void(ViewMessage)> receive) = 0;
  virtual void apply(const Patch& patch) = 0;
  virtual void select(const ViewSelection& selection) = 0;
  virtual void ask(const ViewQuestion& question) = 0;
  /// Draws marks on the screen alone. Instead of those of their kind that the texts had.
  virtual void mark(const std::vector<TextMarks>&) {}
  /// What pages that begin from now on may bring in.
  virtual void set_policy(const ResourcePolicy& policy) = 0;
  virtual void set_mode(const ViewMode& mode) = 0;
  /// The user thinks better of it, or may not: what is being dragged stays where it is.
  virtual void cancel_drag() = 0;
  virtual void set_input_context(const InputContext& context) = 0;
  /// A plain text instead of the document, with a button that asks for another try; empty: takes it
  /// away. The button's press comes up as ViewReady.
  virtual void show_notice(std::u16string_view text) = 0;
  virtual void scroll_to(int x, int y) = 0;
  /// The element's upper edge at the window's, or its lower one.
  virtual void scroll_into_view(dom::NodeId element, bool at_top) = 0;
  virtual void print(bool with_dialog, std::function<void(bool)> done) = 0;
};

}  // namespace tvx::browser
