#pragma once

#include <QObject>
#include <QPointer>
#include <map>
#include <string_view>
#include <vector>

class QAction;
class QMenu;
class QPoint;

namespace tvx::htmled {

class Window;

/// One line of the window's menus.
struct Command {
  enum class Kind { Menu, End, Line, Own, Editor, Filled } kind;
  /// What stands there in English, with its access key. Of an editor's operation the editor has it.
  const char* text = nullptr;
  /// The object's name; of an editor's operation its own.
  const char* name = nullptr;
  const char* keys = nullptr;  // as QKeySequence reads them, separated by blanks
  const char* icon = nullptr;  // as desktops name them; what they don't have is drawn by the editor's set
  void (*act)(Window&) = nullptr;
  /// Why it can't act now, in English; null, or null from it: it can.
  const char* (*obstacle)(Window&) = nullptr;
  /// Whether it is on; null: it is no switch.
  bool (*is_on)(Window&) = nullptr;
  /// What a menu of kind Filled has in it, made once.
  void (*fill)(Window&, QMenu&) = nullptr;
};

/// The menus of a window, from one table. What an editor does is that of the editor in front, as it stands
/// there; all else is the window's.
class Commands final : public QObject {
  Q_OBJECT
 public:
  explicit Commands(Window& window);

  /// The editor in front is another one.
  void show_editor();
  /// Another language may be spoken by now.
  void show_words();
  /// The table, in the order of the menus.
  static const std::vector<Command>& table();
  /// All menus of the bar, in their order.
  const std::vector<QMenu*>& menus() const { return tops_; }
  QAction* own(std::string_view name) const;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  QMenu* make_menu(const Command& command, QMenu* above);
  QAction* make_own(const Command& command);
  QAction* action_of(const Command& command);
  void show_state(const Command& command);
  void show_states(const QMenu& menu);
  void trigger(const Command& command);
  void offer_bars(const QPoint& at);
  void run(const Command& command);

  struct Entry {
    const Command* command;
    QMenu* in;              // where it stands; null: in the bar
    QPointer<QAction> own;  // of a menu and of the window's own
  };
  Window& window_;
  std::vector<Entry> entries_;
  std::vector<QMenu*> tops_;
};

}  // namespace tvx::htmled
