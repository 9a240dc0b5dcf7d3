#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// What reaches the document from its user, and what the document reports to its control.
namespace tvx::browser {

enum class MouseButton : std::uint8_t { None = 0, Left = 1, Right = 2, Middle = 4 };

/// A moment of user input, kept as it was: coordinates, button, keys, and the element under them. It stays
/// the same whatever the tree does later; elementFromPoint at its point answers from here.
struct Event {
  std::u16string type;  // "keydown", "selectionchange", ...
  dom::Ref<dom::Element> target;
  int client_x = 0, client_y = 0;  // CSS pixels of the viewport
  MouseButton button = MouseButton::None;
  int key_code = 0;  // virtual-key number; a handler takes a key away by setting it to 0
  bool shift = false, control = false, alt = false;

  int x() const { return client_x; }
  int y() const { return client_y; }
};

/// What the control hears of a document. One document has one handler at most: connecting another, or none,
/// disconnects the one before. A boolean result answers whether the default action may go on.
class DocumentHandler {
 public:
  virtual ~DocumentHandler() = default;
  /// False: the user may read but not edit. Events are raised all the same; calls of programs act.
  virtual bool user_may_edit() const { return true; }
  virtual void onkeydown() {}
  virtual bool onkeypress() { return true; }
  virtual void onkeyup() {}
  virtual void onmousedown() {}
  virtual bool onclick() { return true; }
  virtual bool ondblclick() { return true; }
  virtual bool oncontextmenu() { return true; }
  virtual bool oncontrolselect() { return true; }
  virtual bool onselectstart() { return true; }
  virtual bool ondragstart() { return true; }
  virtual void onselectionchange() {}
  /// Something that the user did has changed the tree: a key, a drag, a drop. Told when it is done, however
  /// it was done.
  virtual void onuserchange() {}
};

/// A key going down or up, as the window system gave it.
struct KeyInput {
  std::u16string key;   // UI Events name: "Enter", "ArrowLeft", "a"
  std::u16string text;  // what it types
  int key_code = 0;     // virtual-key number by the layout's Latin group; 229 for input-method text
  bool shift = false, control = false, alt = false;
};

/// What a caret move that needs the layout asks of the view.
enum class ViewMove : std::uint8_t { LineUp, LineDown, LineStart, LineEnd, PageUp, PageDown, Left, Right };

/// A mouse event with the document's position under it, as the view's layout has it.
struct MouseInput {
  MouseButton button = MouseButton::Left;
  int x = 0, y = 0;  // CSS pixels of the viewport
  bool shift = false, control = false, alt = false;
  dom::Ref<dom::Element> element;  // the innermost element under the point, empty outside the document
  /// The caret position nearest to the point; none where no caret can stand. For a drag in plain text the
  /// view reports the whole native selection instead (anchor and focus).
  std::optional<dom::Boundary> place;
  std::optional<dom::Boundary> anchor;
  /// The press takes this as a whole, wherever it is: it was on its edge, or on a handle of it.
  dom::Ref<dom::Element> whole;
  bool held = false;  // a press on what is selected: a drag may follow, the selection stays
};

}  // namespace tvx::browser
