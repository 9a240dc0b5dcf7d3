#pragma once

#include <QWidget>

namespace tvx::qt {

/// The toolkit tells screen readers of a name that is given again, though it is the same: they would be busy
/// with that at each move of the caret.
inline void name_for_readers(QWidget& widget, const QString& name) {
  if (widget.accessibleName() != name) widget.setAccessibleName(name);
}
inline void describe_for_readers(QWidget& widget, const QString& description) {
  if (widget.accessibleDescription() != description) widget.setAccessibleDescription(description);
}

}  // namespace tvx::qt
