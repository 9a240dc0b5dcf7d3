#include <QLineEdit>
#include <QMenu>

#include "support/http_server.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Fields and pictures that the mouse can't simply get hold of: hidden and disabled ones, and pictures whose
/// size nobody has written.
namespace tvx::x11 {
namespace {

class FieldsOnScreen : public EditorOnScreen {
 protected:
  void double_click(const QString& selector) {
    const QPoint middle = place_of(selector, 0.5, 0.5);
    hands::click(middle);
    hands::click(middle);
    ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); })) << html();
    hands::give_focus(*window_);
    ASSERT_TRUE(settle());
  }
  /// Types into the first fields of the dialog, by the Tab key, and confirms.
  void fill_dialog(const QStringList& texts) {
    answer_dialog([texts](QDialog& dialog) {
      bool first = true;
      for (const QString& text : texts) {
        if (!std::exchange(first, false)) hands::press(QStringLiteral("Tab"));
        hands::press(QStringLiteral("ctrl+a"));
        hands::type(text);
        ASSERT_TRUE(wait_for([&] {
          const auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
          return box && box->text() == text;
        }));
      }
      hands::press(QStringLiteral("Return"));
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
    });
  }
  bool page_has(const QString& expression) {
    return wait_for([&] { return in_page(QStringLiteral("String(%1)").arg(expression)) == "true"; });
  }
};

TEST_F(FieldsOnScreen, AHiddenFieldIsSeenSelectedEditedAndDeleted) {
  start("<body style='margin:20px'><p>text</p>");
  control().set_showFormToolbar(true);
  ASSERT_TRUE(settle());
  const auto* bar = window_->editor().findChild<qt::ToolbarFace*>(QStringLiteral("Toolbar2"));
  hands::click(middle_of(*bar->button_widget(control().Toolbar2().Item(u"HiddenField").Index())));
  ASSERT_TRUE(wait_for([this] { return html().find("hidden") != std::string::npos; })) << html();
  ASSERT_TRUE(settle());
  hands::give_focus(*window_);
  hands::click(place_of(QStringLiteral("[tvx-hidden]"), 0.5, 0.5));
  ASSERT_TRUE(wait_for([this] { return document().editor().selection().control() != nullptr; }));
  EXPECT_TRUE(page_has(QStringLiteral("Boolean(tvxView.drawn().frame)")));
  fill_dialog({QStringLiteral("key")});
  double_click(QStringLiteral("[tvx-hidden]"));
  EXPECT_NE(html().find("<INPUT type=\"hidden\" id=\"Hidden1\" name=\"key\">"), std::string::npos) << html();
  EXPECT_TRUE(page_has(QStringLiteral("document.querySelector(\"[tvx-hidden]\").value === \"key\"")));
  hands::click(place_of(QStringLiteral("[tvx-hidden]"), 0.5, 0.5));
  ASSERT_TRUE(wait_for([this] { return document().editor().selection().control() != nullptr; }));
  ASSERT_TRUE(settle());
  hands::press(QStringLiteral("Delete"));
  EXPECT_TRUE(wait_for([this] { return html().find("INPUT") == std::string::npos; })) << html();
}

TEST_F(FieldsOnScreen, RulesOfTheDocumentHideNoHiddenField) {
  start(
      "<style>input { display: none; width: 500px; opacity: 0 } input[type=button] { display: none }</style>"
      "<body style='margin:20px'><p>text <input type=hidden name=key value=7></p>");
  EXPECT_TRUE(page_has(
      QStringLiteral("(() => { const box = document.querySelector(\"[tvx-hidden]\").getBoundingClientRect(); "
                     "return box.width > 30 && box.width < 200 && box.height > 10; })()")));
}

TEST_F(FieldsOnScreen, ADisabledFieldIsEditedByADoubleClick) {
  start("<body style='margin:20px'><p>text <input id=f value=x disabled></p>");
  fill_dialog({QStringLiteral("surname")});
  double_click(QStringLiteral("#f"));
  EXPECT_NE(html().find("name=\"surname\""), std::string::npos) << html();
}

TEST_F(FieldsOnScreen, AFieldOfADisabledGroupIsEditedByADoubleClick) {
  start(
      "<body style='margin:20px'><fieldset disabled><p>text <textarea id=f "
      "rows=3></textarea></p></fieldset>");
  fill_dialog({QStringLiteral("note")});
  double_click(QStringLiteral("#f"));
  EXPECT_NE(html().find("name=\"note\""), std::string::npos) << html();
}

TEST_F(FieldsOnScreen, AnImageIsEditedByADoubleClick) {
  start(
      "<body style='margin:20px'><p>text <a href='#a'><img id=i width=60 height=40 alt=cat "
      "src='data:image/gif;base64,R0lGODlhAQABAIAAAP8AAP///ywAAAAAAQABAAACAkQBADs='></a></p>");
  answer_dialog([this](QDialog& dialog) {
    EXPECT_TRUE(dialog.windowTitle().startsWith(QStringLiteral("Image Settings")))
        << dialog.windowTitle().toStdString();
    auto* width = dialog.findChild<QLineEdit*>(QStringLiteral("txtWidth"));
    hands::click(middle_of(*width));
    // A box for sizes takes digits and Backspace, and no other keys.
    hands::press({QStringLiteral("BackSpace"), QStringLiteral("BackSpace")});
    hands::type(QStringLiteral("90"));
    EXPECT_TRUE(wait_for([&] { return width->text() == QStringLiteral("90"); }))
        << width->text().toStdString();
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  double_click(QStringLiteral("#i"));
  EXPECT_NE(html().find("width=\"90\" height=\"40\""), std::string::npos) << html();
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([this] { return html().find("width=\"60\" height=\"40\"") != std::string::npos; }))
      << html();
}

TEST_F(FieldsOnScreen, ADoubleClickByAnUnsteadyHandFindsTheImage) {
  start("<body style='margin:20px'><p>text <img id=i width=60 height=40 alt=cat></p>");
  bool opened = false;
  answer_dialog([&](QDialog& dialog) {
    opened = true;
    hands::press(QStringLiteral("Escape"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  const QPoint middle = place_of(QStringLiteral("#i"), 0.5, 0.5);
  hands::click(middle);
  hands::drag(middle, middle + QPoint(1, 1));
  EXPECT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
  EXPECT_TRUE(opened);
}

// A bitmap of 3 by 2, whose form only the view can read.
const QByteArray bitmap =
    "<img id=i "
    "src='data:image/bmp;base64,Qk1OAAAAAAAAADYAAAAoAAAAAwAAAAIAAAABABgAAAAAABgAAAATCwAAEwsAAAAAAAAAAAAA"
    "AAD/AAD/AAD/AAAAAAD/AAD/AAD/AAAA'>";

TEST_F(FieldsOnScreen, APictureTellsItsSizeOnceItIsLoaded) {
  start("<body style='margin:20px'><p>" + bitmap + "</p>");
  ASSERT_TRUE(page_has(QStringLiteral("document.querySelector(\"#i\").naturalWidth === 3")));
  dom::Element* image = document().first(dom::Tag::Img);
  EXPECT_TRUE(wait_for([&] { return document().natural_size(*image) == platform::PictureSize{3, 2}; }));
  QString width, height, size;
  answer_menu([&](QWidget& popup) {
    auto& menu = static_cast<QMenu&>(popup);
    answer_dialog([&](QDialog& dialog) {
      width = dialog.findChild<QLineEdit*>(QStringLiteral("txtWidth"))->text();
      height = dialog.findChild<QLineEdit*>(QStringLiteral("txtHeight"))->text();
      hands::press(QStringLiteral("Escape"));
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
    });
    const auto* item = menu.findChild<QAction*>(QStringLiteral("mnuImgProperties"));
    ASSERT_NE(item, nullptr);
    hands::click(menu.mapToGlobal(menu.actionGeometry(const_cast<QAction*>(item)).center()));
  });
  hands::click(place_of(QStringLiteral("#i"), 0.5, 0.5), 3);
  ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
  EXPECT_EQ(window_->editor().DOM().get(u"images.item(0).width"), Value(3)) << "without an attribute";
  EXPECT_EQ(width, QStringLiteral("3"));
  EXPECT_EQ(height, QStringLiteral("2"));
}

TEST_F(FieldsOnScreen, APictureFromAServerTellsItsSizeWhenTheUserLetsItCome) {
  HttpServer server;
  server.serve(
      "/a.svg",
      "<svg xmlns='http://www.w3.org/2000/svg' width='70' height='50'><rect width='70' height='50'/></svg>",
      "image/svg+xml");
  start("<body style='margin:20px'><p><img src='" + QByteArray::fromStdString(server.url("/a.svg")) +
        "'></p>");
  dom::Element* image = document().first(dom::Tag::Img);
  EXPECT_FALSE(document().natural_size(*image)) << "it may not come yet";
  window_->editor().ShowRemoteContent();
  EXPECT_TRUE(wait_for([&] {
    dom::Element* shown = document().first(dom::Tag::Img);
    return document().natural_size(*shown) == platform::PictureSize{70, 50};
  }));
  EXPECT_EQ(window_->editor().DOM().get(u"images.item(0).height"), Value(50));
}

}  // namespace
}  // namespace tvx::x11
