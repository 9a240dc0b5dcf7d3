#include <QComboBox>
#include <QLineEdit>
#include <QWindow>

#include "tvx/core/chrome/toolbars.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// A form made by mouse and keys alone, as somebody does it who opens the program for the first time.
namespace tvx::x11 {
namespace {

class FormsOnScreen : public EditorOnScreen {
 protected:
  void start_with_forms(const QByteArray& page) {
    start(page);
    control().set_showFormToolbar(true);
    ASSERT_TRUE(settle());
  }
  /// Presses a button of the forms' toolbar.
  void insert(std::u16string_view key) {
    const std::string before = html();
    const auto* bar = window_->editor().findChild<qt::ToolbarFace*>(QStringLiteral("Toolbar2"));
    ASSERT_NE(bar, nullptr);
    hands::click(middle_of(*bar->button_widget(control().Toolbar2().Item(key).Index())));
    ASSERT_TRUE(wait_for([&] { return html() != before; })) << to_utf8(key);
    ASSERT_TRUE(settle());
  }
  /// Answers the dialog of the field, which a double click opens.
  void set_field(const QString& selector, const std::function<void(QDialog&)>& user) {
    answer_dialog([&](QDialog& dialog) {
      user(dialog);
      hands::press(QStringLiteral("Return"));
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
    });
    const QPoint middle = place_of(selector, 0.5, 0.5);
    hands::click(middle);
    hands::click(middle);
    ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
    hands::give_focus(*window_);
    ASSERT_TRUE(settle());
  }
  /// Into the field that the underlined letter leads to, over what stands there.
  static void write(QDialog& dialog, const char* name, const QString& keys, const QString& text) {
    hands::press(keys);
    ASSERT_TRUE(wait_for([&] {
      const QWidget* focus = QApplication::focusWidget();
      return focus && focus->objectName() == QLatin1String(name);
    })) << name
        << ", but " << QApplication::focusWidget()->objectName().toStdString();
    hands::press(QStringLiteral("ctrl+a"));
    hands::type(text);
    auto* box = dialog.findChild<QLineEdit*>(QLatin1String(name));
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(wait_for([&] { return box->text() == text; })) << name << ": " << box->text().toStdString();
  }
  void new_line() {
    hands::press(QStringLiteral("ctrl+End"));
    hands::press(QStringLiteral("Return"));
  }
  void write_line(const QString& text) {
    new_line();
    hands::type(text);
    ASSERT_TRUE(
        wait_for([&] { return this->text().find(text.trimmed().toStdString()) != std::string::npos; }));
    ASSERT_TRUE(settle());
  }
};

TEST_F(FormsOnScreen, ANewcomersFormIsMadeByMouseAndKeys) {
  start_with_forms("<body style='margin:20px'><p>Your order</p>");
  answer_dialog([&](QDialog& dialog) {
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("order"));
    write(dialog, "txtAction", QStringLiteral("alt+a"), QStringLiteral("order.php"));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  insert(u"Form");
  hands::give_focus(*window_);
  write_line(QStringLiteral("Name:"));
  insert(u"TextField");
  set_field(QStringLiteral("#Textbox1"), [&](QDialog& dialog) {
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("name"));
    write(dialog, "txtId", QStringLiteral("alt+i"), QStringLiteral("name"));
  });
  write_line(QStringLiteral("Street:"));
  insert(u"TextField");
  set_field(QStringLiteral("#Textbox1"), [&](QDialog& dialog) {
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("street"));
    write(dialog, "txtId", QStringLiteral("alt+i"), QStringLiteral("street"));
  });
  write_line(QStringLiteral("Small:"));
  insert(u"Radio");
  set_field(QStringLiteral("#Radio1"), [&](QDialog& dialog) {
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("pack"));
    write(dialog, "txtId", QStringLiteral("alt+i"), QStringLiteral("small"));
    write(dialog, "txtValue", QStringLiteral("alt+v"), QStringLiteral("small"));
  });
  write_line(QStringLiteral("Large:"));
  insert(u"Radio");
  set_field(QStringLiteral("#Radio1"), [&](QDialog& dialog) {
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("pack"));
    write(dialog, "txtId", QStringLiteral("alt+i"), QStringLiteral("large"));
    write(dialog, "txtValue", QStringLiteral("alt+v"), QStringLiteral("large"));
  });
  write_line(QStringLiteral("Tea:"));
  insert(u"dropdown");
  set_field(QStringLiteral("#Select1"), [&](QDialog& dialog) {
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("tea"));
    write(dialog, "txtId", QStringLiteral("alt+i"), QStringLiteral("tea"));
    for (const char* tea : {"Assam", "Ceylon", "Darjeeling", "Keemun", "Sencha"}) {
      auto* add = dialog.findChild<QAbstractButton*>(QStringLiteral("cmdAddOption"));
      hands::click(middle_of(*add));
      ASSERT_TRUE(wait_for([&] {
        const QWidget* focus = QApplication::focusWidget();
        return focus && focus->objectName() == QStringLiteral("txtOptionText");
      }));
      hands::type(QLatin1String(tea));
    }
    auto* text = dialog.findChild<QLineEdit*>(QStringLiteral("txtOptionText"));
    EXPECT_TRUE(wait_for([&] { return text->text() == QStringLiteral("Sencha"); }));
  });
  new_line();
  insert(u"Submit");
  EXPECT_EQ(html(),
            "<FORM name=\"order\" action=\"order.php\"><P>Your order</P>"
            "<P>Name:<INPUT type=\"text\" id=\"name\" name=\"name\"></P>"
            "<P>Street:<INPUT type=\"text\" id=\"street\" name=\"street\"></P>"
            "<P>Small:<INPUT type=\"radio\" id=\"small\" name=\"pack\" value=\"small\"></P>"
            "<P>Large:<INPUT type=\"radio\" id=\"large\" name=\"pack\" value=\"large\"></P>"
            "<P>Tea:<SELECT id=\"tea\" name=\"tea\"><OPTION>Assam</OPTION><OPTION>Ceylon</OPTION>"
            "<OPTION>Darjeeling</OPTION><OPTION>Keemun</OPTION><OPTION>Sencha</OPTION></SELECT></P>"
            "<P><INPUT type=\"submit\" id=\"Submit\"></P></FORM>");
}

TEST_F(FormsOnScreen, WhatWasTypedIsGoneWhereTheDialogWasCoveredAndUncovered) {
  start_with_forms("<body style='margin:20px'><form name=kept><p>text</p></form>");
  QString shown;
  answer_dialog([&](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("txtName"));
    write(dialog, "txtName", QStringLiteral("alt+n"), QStringLiteral("typed"));
    QWidget cover(nullptr, Qt::Window | Qt::X11BypassWindowManagerHint);
    cover.setGeometry(QRect(dialog.mapToGlobal(QPoint(0, 0)), dialog.size()));
    cover.show();
    wait_for([&] { return cover.windowHandle()->isExposed(); });
    cover.raise();
    cover.hide();
    wait_for([&] { return name->text() != QStringLiteral("typed"); });
    shown = name->text();
    hands::press(QStringLiteral("Escape"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  const auto* bar = window_->editor().findChild<qt::ToolbarFace*>(QStringLiteral("Toolbar2"));
  hands::click(middle_of(*bar->button_widget(1)));
  ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
  EXPECT_EQ(shown, QStringLiteral("kept"));
}

TEST_F(FormsOnScreen, WhatIsPickedFromAListStaysWhereTheListHasCoveredTheDialog) {
  start_with_forms("<body style='margin:20px'><form name=kept><p>text</p></form>");
  answer_dialog([&](QDialog& dialog) {
    auto* methods = dialog.findChild<QComboBox*>(QStringLiteral("cboMethod"));
    hands::press(QStringLiteral("alt+m"));
    hands::press(QStringLiteral("alt+Down"));
    EXPECT_TRUE(wait_for([] { return QApplication::activePopupWidget() != nullptr; }));
    hands::press(QStringLiteral("Home"));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([] { return !QApplication::activePopupWidget(); }));
    EXPECT_TRUE(wait_for([&] { return methods->currentText() == QStringLiteral("Post"); }))
        << methods->currentText().toStdString();
    settle();
    EXPECT_EQ(methods->currentText(), QStringLiteral("Post"));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  const auto* bar = window_->editor().findChild<qt::ToolbarFace*>(QStringLiteral("Toolbar2"));
  hands::click(middle_of(*bar->button_widget(1)));
  ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
  EXPECT_EQ(html(), "<FORM name=\"kept\" method=\"post\"><P>text</P></FORM>");
}

TEST_F(FormsOnScreen, TheFontIsSetByTheToolbarsButton) {
  start("<body style='margin:20px'><p>text</p>");
  hands::press(QStringLiteral("ctrl+a"));
  ASSERT_TRUE(wait_for([this] { return !document().editor().selection().collapsed(); }));
  answer_dialog([&](QDialog& dialog) {
    auto* size = dialog.findChild<QComboBox*>(QStringLiteral("Combo2"));
    hands::press(QStringLiteral("alt+s"));
    hands::press(QStringLiteral("ctrl+a"));
    hands::type(QStringLiteral("6"));
    EXPECT_TRUE(wait_for([&] { return size->currentText() == QStringLiteral("6"); }));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  hands::click(middle_of(*toolbar_button(u"Text")));
  ASSERT_TRUE(wait_for([this] { return answered() && !QApplication::activeModalWidget(); }));
  EXPECT_NE(html().find("size=\"6\""), std::string::npos) << html();
  EXPECT_TRUE(wait_for([this] { return window_->isWindowModified(); }));
}

TEST_F(FormsOnScreen, TheBoxesForAnImagesSizeTakeDigitsAndKeepTheProportion) {
  start("<body style='margin:20px'><p><img width=400 height=300 alt=x src='none.png'></p>");
  QString height;
  answer_dialog([&](QDialog& dialog) {
    auto* width = dialog.findChild<QLineEdit*>(QStringLiteral("txtWidth"));
    hands::click(middle_of(*dialog.findChild<QAbstractButton*>(QStringLiteral("chkConstrain"))));
    hands::press(QStringLiteral("alt+w"));
    wait_for([&] { return width->hasSelectedText(); });
    hands::type(QStringLiteral("2x0-0"));
    EXPECT_TRUE(wait_for([&] { return width->text() == QStringLiteral("200"); }))
        << width->text().toStdString();
    auto* other = dialog.findChild<QLineEdit*>(QStringLiteral("txtHeight"));
    EXPECT_TRUE(wait_for([&] { return other->text() == QStringLiteral("150"); }));
    height = other->text();
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  document().mouse_press({.element = document().first(dom::Tag::Img)});
  control().menu(u"mnuToolProperties")->choose();
  EXPECT_EQ(height, QStringLiteral("150"));
  EXPECT_EQ(html(), "<P><IMG width=\"200\" height=\"150\" alt=\"x\" src=\"none.png\"></P>");
  EXPECT_TRUE(wait_for([this] { return window_->isWindowModified(); }))
      << "nobody loses the new size unasked";
  hands::give_focus(*window_);
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(wait_for([this] { return html().find("width=\"400\"") != std::string::npos; })) << html();
  EXPECT_TRUE(wait_for([this] { return !window_->isWindowModified(); }));
}

}  // namespace
}  // namespace tvx::x11
