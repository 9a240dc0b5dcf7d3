#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// A style sheet with thousands of classes: its menu opens, and its last item can be reached.
namespace tvx::x11 {
namespace {

class ClassMenuOnScreen : public EditorOnScreen {};

TEST_F(ClassMenuOnScreen, TheLastOfFiveThousandClassesIsGivenToAWord) {
  QByteArray page("<html><head><style>");
  for (int i = 0; i < 5'000; ++i) page += ".c" + QByteArray::number(i) + " { color: red }\n";
  start(page + "</style></head><body style='margin:20px'><p id=a>a word</p></body></html>");
  const std::string before = html();
  answer_menu([&](QWidget& menu) {
    hands::press(QStringLiteral("Down"));  // "Style" is the first that can be chosen
    hands::press(QStringLiteral("Right"));
    ASSERT_TRUE(wait_for([&] { return QApplication::activePopupWidget() != &menu; }));
    const QWidget* classes = QApplication::activePopupWidget();
    EXPECT_LE(classes->width(), 400) << "in one column, for the screen ends after some";
    hands::press(QStringLiteral("End"));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !menu.isVisible(); }));
  });
  hands::click(place_of_character(QStringLiteral("#a"), 4), 3);
  ASSERT_TRUE(wait_for([&] { return answered() && html() != before; })) << html();
  EXPECT_NE(html().find("class=\"c4999\""), std::string::npos) << html();
  EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
}

}  // namespace
}  // namespace tvx::x11
