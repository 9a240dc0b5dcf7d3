#pragma once

#include <QObject>

#include "tvx/platform/form.h"
#include "tvx/qt/forms/form_widgets.h"

class QKeyEvent;

namespace tvx::qt {

/// Tells a form's handler of the keys of a box, and lets none through that it takes away. It lives as long as
/// the box.
class KeyReporter final : public QObject {
 public:
  KeyReporter(platform::FormControl& control, QWidget& box, UserAct act);

 private:
  bool eventFilter(QObject* box, QEvent* event) override;
  bool key_pressed(QObject& box, const QKeyEvent& event);
  /// False where the character is taken away or replaced: the key isn't for the box any more.
  bool character_passes(QObject& box, const QKeyEvent& event, std::int16_t typed);

  platform::FormControl& control_;
  const UserAct act_;
  bool replacing_ = false;
};

}  // namespace tvx::qt
