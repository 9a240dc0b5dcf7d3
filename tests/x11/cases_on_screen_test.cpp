#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>
#include <algorithm>
#include <cstdio>
#include <map>
#include <utility>

#include "editing/case_file.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/editing/walk/marks.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"
#include "x11/x_display.h"

/// The cases of tests/editing/cases that a keyboard and the desktop's clipboard can make, in the window: what
/// comes of them is what the editor makes of them without a screen.
namespace tvx::x11 {
namespace {

using editing::test::Action;
using editing::test::Case;

/// Each shows a window of its own, so that no test takes long on a busy machine.
constexpr unsigned shards = 6;

/// The X server's names of keys, one after the other; nothing where nobody can press them here.
using Keys = QStringList;

/// The key that writes a character on an American keyboard.
QString key_writing(char c) {
  if (std::isalnum(static_cast<unsigned char>(c))) return QString(QLatin1Char(c));
  static const std::map<char, const char*> names{
      {' ', "space"},     {'.', "period"},     {',', "comma"},       {'-', "minus"},       {'/', "slash"},
      {':', "colon"},     {';', "semicolon"},  {'#', "numbersign"},  {'>', "greater"},     {'<', "less"},
      {'*', "asterisk"},  {'(', "parenleft"},  {')', "parenright"},  {'!', "exclam"},      {'?', "question"},
      {'@', "at"},        {'_', "underscore"}, {'+', "plus"},        {'=', "equal"},       {'&', "ampersand"},
      {'"', "quotedbl"},  {'%', "percent"},    {'\'', "apostrophe"}, {'[', "bracketleft"}, {'\n', "Return"},
      {'{', "braceleft"}, {'}', "braceright"}, {'\\', "backslash"},  {']', "bracketright"}};
  const auto name = names.find(c);
  return name == names.end() ? QString() : QLatin1String(name->second);
}

Keys keys_writing(const std::string& text) {
  Keys keys;
  for (const char c : text) {
    keys += key_writing(c);
    if (keys.back().isEmpty()) return {};
  }
  return keys;
}

/// The key that the DOM calls `name`, with its modifiers.
Keys key_on_board(std::string name) {
  static const std::map<std::string, const char*> names{
      {"Enter", "Return"}, {"Backspace", "BackSpace"}, {"Delete", "Delete"},    {"Tab", "Tab"},
      {"Home", "Home"},    {"ArrowLeft", "Left"},      {"ArrowRight", "Right"}, {"End", "End"},
      {"ArrowUp", "Up"},   {"ArrowDown", "Down"}};
  QString modifiers;
  for (bool found = true; found;) {
    found = false;
    for (const auto& [prefix, key] : {std::pair("Ctrl+", "ctrl+"), std::pair("Shift+", "shift+")}) {
      if (!name.starts_with(prefix)) continue;
      modifiers += QLatin1String(key);
      name.erase(0, std::string(prefix).size());
      found = true;
    }
  }
  const auto known = names.find(name);
  const QString key = known != names.end() ? QString(QLatin1String(known->second))
                      : name.size() == 1   ? key_writing(name[0])
                                           : QString();
  return key.isEmpty() ? Keys() : Keys{modifiers + key};
}

Keys keys_of(const Action& action) {
  if (action.kind == "type" || action.kind == "type-formatting") return keys_writing(action.value);
  if (action.kind == "press") return key_on_board(action.value);
  if (action.kind == "paste" || action.kind == "paste-text") return {QStringLiteral("ctrl+v")};
  if (action.kind == "command" && action.value == "undo") return {QStringLiteral("ctrl+z")};
  if (action.kind == "command" && action.value == "redo") return {QStringLiteral("ctrl+y")};
  return {};
}

bool is_made_by_keys(const Case& tested) {
  return std::ranges::all_of(tested.actions, [](const Action& action) { return !keys_of(action).isEmpty(); });
}

/// Counts the keys that the X server has told a window of: all before the last one have come then.
class KeyCount final : public QObject {
 public:
  explicit KeyCount(QWindow* window) : window_(window) {
    QCoreApplication::instance()->installEventFilter(this);
  }
  int released() const { return released_; }

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (receiver == window_ && event->type() == QEvent::KeyRelease && !is_modifier(*event)) ++released_;
    return false;
  }

 private:
  static bool is_modifier(const QEvent& event) {
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt;
  }
  QWindow* window_;
  int released_ = 0;
};

class CasesOnScreen : public EditorOnScreen, public testing::WithParamInterface<unsigned> {
 protected:
  std::string marked() {
    const dom::WithoutOverlay without(document().tree());
    return to_utf8(editing::dump_marked(document().editor(), *document().body(), dom::Letters::Upper));
  }

  /// As fast as the server takes them, and until all of them have come to what they mean.
  void press_waiting() {
    if (waiting_.isEmpty()) return;
    const auto last = count_->released() + waiting_.size();
    hands::press(std::exchange(waiting_, {}));
    ASSERT_TRUE(wait_for([&] { return count_->released() >= last; }));
    ASSERT_TRUE(settle());
  }

  void act(const Action& action) {
    const bool formats = action.kind == "type-formatting", pastes = action.kind.starts_with("paste");
    if (pastes || formats != control().AutoFormat()) press_waiting();
    control().set_AutoFormat(formats);
    if (action.kind == "paste")
      offer(QByteArray::fromStdString("<!--StartFragment-->" + action.value + "<!--EndFragment-->"),
            QStringLiteral("text/html"));
    if (action.kind == "paste-text")
      offer(QByteArray::fromStdString(action.value), QStringLiteral("UTF8_STRING"));
    waiting_ += keys_of(action);
    if (pastes) press_waiting();
  }

  void play(const Case& tested) {
    SCOPED_TRACE(tested.file + ":" + std::to_string(tested.line) + ": " + tested.title);
    editing::load_marked(document().editor(), *document().body(), from_utf8(tested.before));
    for (const Action& action : tested.actions) {
      act(action);
      if (HasFatalFailure()) return;
    }
    press_waiting();
    EXPECT_EQ(marked(), tested.after) << "from " << tested.before;
  }

  Keys waiting_;  // not pressed yet
  std::unique_ptr<KeyCount> count_;
};

TEST_P(CasesOnScreen, ComeToTheSame) {
  start("<!DOCTYPE html><p>A paragraph");
  count_ = std::make_unique<KeyCount>(window_->windowHandle());
  unsigned number = 0, played = 0, all = 0;
  for (const auto& file : editing::test::case_files())
    for (const Case& tested : editing::test::read_cases(file)) {
      ++all;
      if (!is_made_by_keys(tested) || number++ % shards != GetParam()) continue;
      ++played;
      play(tested);
      if (HasFatalFailure()) return;
    }
  EXPECT_GT(played * shards * 3, all) << "a third of the cases at least";
  std::printf("%u of %u cases by keys in the window\n", played, all);
}

INSTANTIATE_TEST_SUITE_P(Shards, CasesOnScreen, testing::Range(0u, shards));

}  // namespace
}  // namespace tvx::x11
