#pragma once

#include <memory>

#include "tvx/core/enumerations.h"

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::core {

struct Layout;

/// Who shows the control: told when there is something else to show.
class HTMLedObserver {
 public:
  virtual ~HTMLedObserver() = default;
  /// The browser shows another document.
  virtual void document_replaced(const std::shared_ptr<browser::HTMLDocument>&) {}
  virtual void layout_changed(const Layout&) {}
  /// Whether the document may be edited; a view that may not starts no selection.
  virtual void editor_enabled_changed(bool) {}
  virtual void border_changed(EdBorderStyle) {}
  /// The code view has come to the front, or gone.
  virtual void view_switched(bool /*in_code_view*/) {}
  /// A document has come with all that it brings.
  virtual void document_loaded() {}
  /// What the user can do, or how the selection is formatted, may be something else now. Told often; who
  /// hears of it asks later.
  virtual void state_changed() {}
  /// A dialog has changed the document without a word to the container, whose mark stays as it is.
  virtual void document_changed() {}
  /// The form of the pointer over the control, as hosts count them: 1 an arrow, 13 an arrow with an
  /// hourglass, 0 the usual one.
  virtual void mouse_pointer_changed(int) {}
};

}  // namespace tvx::core
