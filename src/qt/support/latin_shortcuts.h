#pragma once

#include <QObject>

class QKeyEvent;

namespace tvx::qt {

/// The key of the Latin layout at the same place, for a key with Ctrl that types a letter of another script;
/// 0 for all other keys.
int latin_key(const QKeyEvent& event);

/// While it lives, shortcuts work on keyboards without Latin letters, by where their keys are. The toolkit
/// sees to that itself where a Latin layout stands beside the one in use, and only there.
class LatinShortcuts final : public QObject {
 public:
  explicit LatinShortcuts(QObject* parent);
  ~LatinShortcuts() override;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tvx::qt
