#include "contract/text_box_contract.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "tvx/qt/source/code_box.h"
#include "tvx/qt/support/clipboard.h"

namespace tvx::contract {
namespace {

struct KeyName {
  std::u16string_view name;
  Qt::Key key;
};
constexpr KeyName key_names[] = {{u"Enter", Qt::Key_Return},   {u"Tab", Qt::Key_Tab},
                                 {u"Delete", Qt::Key_Delete},  {u"Backspace", Qt::Key_Backspace},
                                 {u"Home", Qt::Key_Home},      {u"End", Qt::Key_End},
                                 {u"ArrowLeft", Qt::Key_Left}, {u"ArrowRight", Qt::Key_Right},
                                 {u"ArrowDown", Qt::Key_Down}, {u"F5", Qt::Key_F5}};

/// The box on a window of the desktop.
class QtRoom {
 public:
  QtRoom() {
    window_.resize(400, 200);
    other_.setFocus();
    face_.resize(400, 200);
    box_.widget()->resize(400, 200);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }
  platform::TextBox& box() { return box_; }
  platform::Clipboard& clipboard() { return clipboard_; }
  void show(bool shown) { face_.setVisible(shown); }
  void key(std::u16string_view name, int held) {
    press(name, held);
    QApplication::processEvents();
  }

 private:
  void press(std::u16string_view name, int held) {
    Qt::KeyboardModifiers modifiers;
    if (held & shift_key) modifiers |= Qt::ShiftModifier;
    if (held & control_key) modifiers |= Qt::ControlModifier;
    for (const KeyName& each : key_names) {
      if (each.name != name) continue;
      const bool back = each.key == Qt::Key_Tab && (held & shift_key);
      return QTest::keyClick(box_.widget(), back ? Qt::Key_Backtab : each.key, modifiers);
    }
    QTest::keyClick(box_.widget(), static_cast<char>(name[0]), modifiers);
  }

  qt::Clipboard clipboard_;
  QWidget window_;
  QLineEdit other_{&window_};  // which has the keyboard at first, and gets it where the box is hidden
  QWidget face_{&window_};     // the box is shown and hidden with what it stands in
  qt::CodeBox box_{&face_};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TextBoxContract, QtRoom);

}  // namespace tvx::contract
