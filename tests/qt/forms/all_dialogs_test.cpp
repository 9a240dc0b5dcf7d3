#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "qt/modal_user.h"
#include "tvx/core/chrome/element_code_dialog.h"
#include "tvx/dialogs/field_dialog.h"
#include "tvx/dialogs/font_dialog.h"
#include "tvx/dialogs/form_dialog.h"
#include "tvx/dialogs/image_dialog.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/localise/localizer.h"
#include "tvx/qt/dialogs/dialogs.h"
#include "tvx/qt/forms/form_dialog.h"
#include "tvx/qt/forms/form_face.h"
#include "tvx/qt/support/strings.h"
#include "tvx/tables/cell_dialog.h"
#include "tvx/tables/table_dialog.h"

/// What holds for each dialog that the control has for elements: it is heard, gone through with the keyboard,
/// and read, whatever its language.
namespace tvx::qt {
namespace {

using platform::Form;
using platform::FormControl;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr const char* languages[] = {"en", "de", "fr", "es", "ja", "ar"};

class AllDialogs : public testing::Test {
 protected:
  AllDialogs() {
    window_.resize(500, 300);
    window_.show();
    window_.activateWindow();
  }
  dom::Element& the(dom::Tag tag) {
    for (dom::Element* each : tree_->all())
      if (each->is(tag)) return *each;
    throw std::logic_error("no such element");
  }

  /// Calls with each dialog, filled and not yet shown, and its section of a language file.
  void with_each(const std::function<void(Form&, std::u16string_view section)>& use) {
    with_those_of_tables(use);
    for (const dom::Tag tag : {dom::Tag::Input, dom::Tag::Select, dom::Tag::Textarea, dom::Tag::Button}) {
      dialogs::FieldDialog field(the(tag));
      use(field.form(), u"FieldSettings");
    }
    dialogs::FormDialog form(the(dom::Tag::Form));
    use(form.form(), u"FormSettings");
    dialogs::FontValues values{u"#123456", u"#FFFFFF", u"Arial", u"3"};
    dialogs::FontDialog font(dialogs_, {u"Arial", u"Times"}, values);
    use(font.form(), u"FontSettings");
    dialogs::ImageDialog image(dialogs_, [](std::u16string_view) {
      return dialogs::ImageDialog::Picture{{}, platform::PictureSize{640, 480}};
    });
    image.form().Controls(u"txtSrc").set_Text(u"a.png");
    use(image.form(), u"ImageSettings");
    core::ElementCodeDialog code;
    code.set_outerHTML(u"<p class=\"x\">text</p>");
    use(code.form(), u"ElementTagEdit");
  }
  void with_those_of_tables(const std::function<void(Form&, std::u16string_view)>& use) {
    tables::TableDialog table(dialogs_), settings(dialogs_);
    use(table.form(), u"TableSettings");
    settings.show_settings_of(dom::TableObject(the(dom::Tag::Table)));
    use(settings.form(), u"TableSettings");
    tables::CellDialog cell(dialogs_), row(dialogs_);
    cell.set_oCell(dom::Ref<dom::Element>(&the(dom::Tag::Td)));
    use(cell.form(), u"TableCellSettings");
    row.set_oRow(dom::Ref<dom::Element>(&the(dom::Tag::Tr)));
    use(row.form(), u"TableRowSettings");
  }
  void show(Form& form, const std::function<void(FormDialog&)>& user) {
    bool opened = false;
    when_dialog_opens(nullptr, [&](QWidget& front) {
      opened = true;
      user(dynamic_cast<FormDialog&>(front));
      if (form.Visible()) form.Hide();
    });
    faces_.Show(form, platform::WindowHandle::none);
    EXPECT_TRUE(opened) << to_qt(form.Name()).toStdString();
  }
  static bool is_used(const FormControl& control) {
    using enum platform::ControlKind;
    return control.reachable() && control.kind() != Label && control.kind() != Frame &&
           control.kind() != PictureBox;
  }
  static QWidget* widget(const FormDialog& dialog, const FormControl& control) {
    for (QWidget* each : dialog.findChildren<QWidget*>(to_qt(control.Name())))
      if (!qobject_cast<QAbstractSpinBox*>(each->parentWidget())) return each;
    return nullptr;
  }

  QWidget window_;
  Dialogs dialogs_{window_};
  Forms faces_{window_};
  const dom::Ref<dom::Document> tree_ = dom::parse_document(
      u"<form><table border=1 width=50%><tr><td width=4>1</table><input name=a value=b><select "
      u"name=s><option>"
      u"one</select><textarea name=t></textarea><button name=b>go</button></form>");
};

TEST_F(AllDialogs, ReadingProgramsHearLabelAndValueOfEachField) {
  with_each([this](Form& form, std::u16string_view) {
    SCOPED_TRACE(to_qt(form.Name()).toStdString());
    show(form, [&](FormDialog& dialog) {
      for (const auto& control : form.controls()) {
        if (!is_used(*control)) continue;
        const QWidget* found = widget(dialog, *control);
        ASSERT_NE(found, nullptr) << to_qt(control->Name()).toStdString();
        auto* heard = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(found));
        EXPECT_FALSE(heard->text(QAccessible::Name).isEmpty()) << found->objectName().toStdString();
        const bool has_value = control->kind() == platform::ControlKind::TextBox ||
                               control->kind() == platform::ControlKind::ComboBox;
        if (!has_value) continue;
        EXPECT_EQ(heard->text(QAccessible::Value), to_qt(control->Text()))
            << found->objectName().toStdString();
      }
    });
  });
}

TEST_F(AllDialogs, TabGoesThroughAllFieldsInTheirOrder) {
  with_each([this](Form& form, std::u16string_view) {
    SCOPED_TRACE(to_qt(form.Name()).toStdString());
    show(form, [&](FormDialog& dialog) {
      QStringList wanted, met;
      for (const auto& control : form.controls())
        if (is_used(*control) &&
            !dialog.findChild<QDialogButtonBox*>()->isAncestorOf(widget(dialog, *control)))
          wanted << to_qt(control->Name());
      QList<QAbstractButton*> closing = dialog.findChild<QDialogButtonBox*>()->buttons();
      std::ranges::sort(closing, {}, [](const QWidget* button) { return button->x(); });
      for (const QWidget* button : closing) wanted << button->objectName();
      for (qsizetype i = 0; i < wanted.size(); ++i) {
        met << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (QApplication::focusWidget()->objectName() == met.back()) break;
      }
      // The boxes for an image's size take the Tab key away, as they do all that types no number.
      const bool takes_tab = form.Name() == u"frmImageSettings";
      if (takes_tab) wanted = wanted.mid(0, met.size());
      EXPECT_EQ(met.join(u' ').toStdString(), wanted.join(u' ').toStdString());
    });
  });
}

TEST_F(AllDialogs, EscapeCancelsAndOneButtonIsTheDefault) {
  with_each([this](Form& form, std::u16string_view) {
    SCOPED_TRACE(to_qt(form.Name()).toStdString());
    show(form, [&](FormDialog& dialog) {
      ASSERT_NE(form.default_button(), nullptr);
      EXPECT_TRUE(static_cast<QPushButton*>(widget(dialog, *form.default_button()))->isDefault());
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
      EXPECT_FALSE(form.Visible());
      EXPECT_TRUE(form.given_up());
    });
  });
}

class AllDialogsIn : public AllDialogs, public testing::WithParamInterface<const char*> {
 protected:
  void localise(Form& form, std::u16string_view section) {
    localise::clsLocalize localizer;
    localizer.set_TheForm(&form);
    localizer.set_LocalizationFile(
        from_qt(QStringLiteral(TVX_SOURCE_DIR "/languages/%1.xml").arg(QLatin1String(GetParam()))));
    localizer.set_Error(
        [](std::int32_t, const std::u16string& what) { ADD_FAILURE() << to_qt(what).toStdString(); });
    localizer.Localise(section);
  }
};

TEST_P(AllDialogsIn, NoWordIsCutAndEachFieldHasALetterOfItsOwn) {
  with_each([this](Form& form, std::u16string_view section) {
    SCOPED_TRACE(to_qt(form.Name()).toStdString());
    localise(form, section);
    show(form, [&](FormDialog& dialog) {
      expect_nothing_clipped(dialog);
      EXPECT_LT(dialog.width(), 800);
      QStringList letters;
      for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy() && label->isVisible()) letters << QKeySequence::mnemonic(label->text()).toString();
      for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
        if (button->isVisible()) letters << QKeySequence::mnemonic(button->text()).toString();
      letters.removeAll(QString());
      EXPECT_EQ(letters.size(), QSet<QString>(letters.begin(), letters.end()).size())
          << letters.join(u' ').toStdString();
    });
  });
}

TEST_P(AllDialogsIn, OnASmallScreenTheMiddleScrollsAndTheButtonsStay) {
  with_each([this](Form& form, std::u16string_view section) {
    SCOPED_TRACE(to_qt(form.Name()).toStdString());
    localise(form, section);
    show(form, [&](FormDialog& dialog) {
      dialog.resize(260, 220);
      QTest::qWait(20);
      const auto* buttons = dialog.findChild<QDialogButtonBox*>();
      EXPECT_TRUE(dialog.rect().contains(buttons->geometry()));
      for (const auto& control : form.controls()) {
        if (!is_used(*control)) continue;
        QWidget* box = widget(dialog, *control);
        box->setFocus(Qt::TabFocusReason);
        QTest::qWait(0);
        const QRect seen = box->visibleRegion().boundingRect();
        EXPECT_GT(seen.width() * seen.height(), 0) << box->objectName().toStdString();
      }
    });
  });
}

INSTANTIATE_TEST_SUITE_P(Languages, AllDialogsIn, testing::ValuesIn(languages),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace tvx::qt
