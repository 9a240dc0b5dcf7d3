#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWindow>

#include "qt/modal_user.h"
#include "qt/shown_widget.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/htmled_widget.h"
#include "tvx/library/members/member_table.h"
#include "tvx/platform/menu.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"
#include "tvx/qt/widget/substitutes.h"
#include "tvx/settings_store.h"

namespace tvx::qt {
namespace {

using library::MemberKind;
using library::Type;

QByteArray latin(std::u16string_view name) { return to_qt(name).toLatin1(); }

/// What Qt must know a type as.
QByteArray qt_name_of(Type type) {
  switch (type) {
    case Type::Boolean: return "bool";
    case Type::Integer16:
    case Type::Integer32: return "int";
    case Type::EdBorderStyle:
    case Type::EdHighLightStyle:
    case Type::ed_FTPTransferType:
    case Type::ed_InsertType: return "tvx::qt::HTMLedWidget::" + latin(library::name_of(type));
    default: return "QString";
  }
}

const QMetaObject& meta() { return HTMLedWidget::staticMetaObject; }

/// The method of that name with the most parameters.
QMetaMethod method_named(const QByteArray& name, QMetaMethod::MethodType type) {
  QMetaMethod found;
  for (int i = meta().methodOffset(); i < meta().methodCount(); ++i) {
    const QMetaMethod method = meta().method(i);
    if (method.name() == name && method.methodType() == type &&
        (!found.isValid() || method.parameterCount() > found.parameterCount()))
      found = method;
  }
  return found;
}

QList<QByteArray> names_of(std::span<const library::Parameter> parameters) {
  QList<QByteArray> names;
  for (const library::Parameter& parameter : parameters) names << latin(parameter.name);
  return names;
}

// --- against the table ---

TEST(WidgetMembers, PropertiesAreThoseOfTheTable) {
  int properties = 0;
  for (const library::Member& member : library::members()) {
    if (member.kind != MemberKind::Property || member.type == Type::Object) continue;
    const QByteArray name = latin(member.name);
    const int index = meta().indexOfProperty(name);
    ASSERT_GE(index, 0) << name.constData();
    const QMetaProperty property = meta().property(index);
    const QByteArray expected = qt_name_of(member.type);
    EXPECT_EQ(QByteArray(property.metaType().name()).toStdString(), expected.toStdString())
        << name.constData();
    const bool settable =
        member.access == library::Access::ReadWrite || member.access == library::Access::DesignTime;
    EXPECT_EQ(property.isWritable(), settable) << name.constData();
    ++properties;
  }
  EXPECT_EQ(meta().propertyCount() - meta().propertyOffset(), properties) << "none beside the table's";
}

TEST(WidgetMembers, DefaultsAreThoseOfTheTable) {
  const HTMLedWidget widget;
  for (const library::Member& member : library::members()) {
    if (member.kind != MemberKind::Property || member.initial.kind == library::DefaultValue::Kind::None)
      continue;
    const QVariant value = widget.property(latin(member.name));
    switch (member.initial.kind) {
      case library::DefaultValue::Kind::Text:
        EXPECT_EQ(from_qt(value.toString()), member.initial.text) << to_utf8(member.name);
        break;
      case library::DefaultValue::Kind::Boolean:
        EXPECT_EQ(value.toBool(), member.initial.number != 0) << to_utf8(member.name);
        break;
      default: EXPECT_EQ(value.toInt(), member.initial.number) << to_utf8(member.name);
    }
  }
}

TEST(WidgetMembers, OperationsAreSlotsWithTheTablesArguments) {
  for (const library::Member& member : library::members()) {
    if (member.kind != MemberKind::Method) continue;
    if (member.name == u"InCodeView") continue;  // gives its answer as a result here
    const QMetaMethod slot = method_named(latin(member.name), QMetaMethod::Slot);
    ASSERT_TRUE(slot.isValid()) << to_utf8(member.name);
    EXPECT_EQ(slot.parameterNames(), names_of(member.parameters)) << to_utf8(member.name);
  }
}

TEST(WidgetMembers, EventsAreSignalsWithTheTablesArguments) {
  for (const library::EventMember& event : library::events()) {
    const QMetaMethod signal = method_named(latin(event.name), QMetaMethod::Signal);
    ASSERT_TRUE(signal.isValid()) << to_utf8(event.name);
    EXPECT_EQ(signal.parameterNames(), names_of(event.parameters)) << to_utf8(event.name);
    for (int i = 0; i < signal.parameterCount(); ++i) {
      const QByteArray name = signal.parameterNames().at(i);
      const bool told_only = !signal.parameterTypes().at(i).endsWith('&');
      if (name == "cancel" || name == "CancelNavigate" || name == "CurrentDocumentHTML") {
        EXPECT_FALSE(told_only) << to_utf8(event.name);
      }
    }
  }
}

TEST(WidgetMembers, EnumerationsAreTheTables) {
  for (const library::Enumeration& enumeration : library::enumerations()) {
    const int index = meta().indexOfEnumerator(latin(enumeration.name));
    if (index < 0) {
      EXPECT_EQ(enumeration.name, u"EdToolbar") << "no member takes it";
      continue;
    }
    const QMetaEnum own = meta().enumerator(index);
    ASSERT_EQ(own.keyCount(), int(enumeration.members.size()));
    for (const auto& member : enumeration.members)
      EXPECT_EQ(own.keyToValue(latin(member.name)), member.number) << to_utf8(member.name);
  }
}

// --- in use ---

class Widget : public ShownWidget {};

TEST_F(Widget, WhatIsSetBeforeTheFirstShowIsWhatItStartsWith) {
  widget_->set_DocumentHTML(QStringLiteral("<P>early</P>"));
  widget_->set_HighlightDOMSelection(false);  // the designer's alone, once it runs
  widget_->set_EditorEnabled(false);
  widget_->setProperty("SelectionBorderStyle", HTMLedWidget::edRidge);
  EXPECT_FALSE(widget_->started());
  widget_->show();
  EXPECT_TRUE(widget_->started());
  EXPECT_EQ(widget_->DocumentHTML(), QStringLiteral("<P>early</P>"));
  EXPECT_FALSE(widget_->HighlightDOMSelection());
  EXPECT_EQ(widget_->control().DOM()->designMode(), u"Off");
  EXPECT_EQ(widget_->property("SelectionBorderStyle").toInt(), 6);
  EXPECT_EQ(widget_->control().table_labels().cell, u"Cell");
}

TEST_F(Widget, WhatCantBeSetAnyMoreStaysAndIsWarnedOf) {
  static QStringList warned;
  warned.clear();
  widget_->show();
  const auto before = qInstallMessageHandler(
      [](QtMsgType, const QMessageLogContext&, const QString& text) { warned << text; });
  widget_->set_HighlightDOMSelection(false);
  widget_->setProperty("IsDirty", true);
  qInstallMessageHandler(before);
  EXPECT_TRUE(widget_->HighlightDOMSelection());
  EXPECT_FALSE(widget_->IsDirty());
  ASSERT_EQ(warned.size(), 1);
  EXPECT_TRUE(warned[0].contains(QStringLiteral("HighlightDOMSelection"))) << warned[0].toStdString();
  EXPECT_TRUE(warned[0].contains(QStringLiteral("(382)"))) << warned[0].toStdString();
}

TEST_F(Widget, ASlotStopsAToolbarButton) {
  show(QStringLiteral("<P>word</P>"));
  QStringList pressed;
  QObject::connect(widget_.get(), &HTMLedWidget::ToolButtonClick,
                   [&](const QString& toolbar, int, const QString& name, bool& cancel) {
                     pressed << toolbar + u' ' + name;
                     cancel = pressed.size() == 1;
                   });
  widget_->selectText(0, 4);
  widget_->control().press(widget_->control().Toolbar1(), u"Bold");
  EXPECT_EQ(widget_->DocumentHTML(), QStringLiteral("<P>word</P>"));
  widget_->control().press(widget_->control().Toolbar1(), u"Bold");
  EXPECT_EQ(widget_->DocumentHTML(), QStringLiteral("<P><B>word</B></P>"));
  EXPECT_EQ(pressed, QStringList(2, QStringLiteral("Toolbar1 Bold")));
}

TEST_F(Widget, ASlotChangesWhatAReaderGets) {
  show(QStringLiteral("<P>word</P>"));
  QObject::connect(widget_.get(), &HTMLedWidget::BeforeGetDocumentHTML,
                   [](QString& html) { html = html.toLower(); });
  EXPECT_EQ(widget_->DocumentHTML(), QStringLiteral("<p>word</p>"));
}

TEST_F(Widget, OperationsGiveTheirResults) {
  show(QStringLiteral("<P>one <B>two</B></P>"));
  EXPECT_EQ(widget_->selectText(4, 100), QStringLiteral("<B>two</B>"));
  EXPECT_EQ(widget_->GetCurrentSelection(false), QStringLiteral("two"));
  widget_->InsertAtCursor(QStringLiteral("<I>x</I>"), HTMLedWidget::ed_InsertAfterSelection);
  EXPECT_TRUE(widget_->IsDirty());
  EXPECT_TRUE(widget_->DocumentHTML().contains(QStringLiteral("<I>x</I>")));
  EXPECT_FALSE(widget_->InCodeView());
  widget_->show_Code();
  EXPECT_TRUE(widget_->InCodeView());
}

TEST_F(Widget, PropertiesGoIntoSettingsAndComeBack) {
  const QTemporaryDir folder;
  QSettings settings(folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
  show(QStringLiteral("<P>stored, \"quoted\"; and so on</P>"));
  widget_->set_EditorEnabled(false);
  widget_->set_FTPPort(2121);
  widget_->set_FTPHost(QStringLiteral("true"));
  widget_->set_SelectionBorderStyle(HTMLedWidget::edDouble);
  SettingsStore store(settings);
  widget_->write_properties(store);
  settings.sync();
  EXPECT_FALSE(settings.contains(QStringLiteral("FTPUser"))) << "what is as ever is not stored";

  // A second run of the program: the file gives texts.
  QSettings read(folder.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
  HTMLedWidget again(loop_);
  again.read_properties(SettingsStore(read));
  again.show();
  EXPECT_EQ(again.DocumentHTML(), QStringLiteral("<P>stored, \"quoted\"; and so on</P>"));
  EXPECT_FALSE(again.EditorEnabled());
  EXPECT_TRUE(again.CSShttp());
  EXPECT_EQ(again.FTPPort(), 2121);
  EXPECT_EQ(again.FTPHost(), QStringLiteral("true"));
  EXPECT_EQ(again.SelectionBorderStyle(), HTMLedWidget::edDouble);

  // Set back to its default, a key leaves the settings.
  widget_->set_FTPPort(21);
  widget_->write_properties(store);
  EXPECT_FALSE(settings.contains(QStringLiteral("FTPPort")));
}

TEST_F(Widget, InADesignerItShowsWhatItIsAndNeverStarts) {
  widget_->set_design_mode(true);
  widget_->show();
  EXPECT_FALSE(widget_->started());
  EXPECT_EQ(widget_->control().DOM(), nullptr);
  EXPECT_EQ(widget_->findChild<QWidget*>(QStringLiteral("page")), nullptr) << "no engine was brought for it";
  EXPECT_TRUE(widget_->control().txtCode().Text().starts_with(u"Orvel HTML Editor - version : "));
  widget_->set_HighlightDOMSelection(false);
  EXPECT_FALSE(widget_->HighlightDOMSelection());
}

TEST_F(Widget, TwoInOneWindowDoNotMeet) {
  HTMLedWidget other(loop_);
  show(QStringLiteral("<P>first</P>"));
  other.show();
  other.set_DocumentHTML(QStringLiteral("<P>second</P>"));
  QSignalSpy told(&other, &HTMLedWidget::property_changed);
  widget_->selectText(0, 5);
  widget_->bold_document();
  other.undo_document();
  EXPECT_EQ(widget_->DocumentHTML(), QStringLiteral("<P><B>first</B></P>"));
  EXPECT_EQ(other.DocumentHTML(), QStringLiteral("<P>second</P>"));
  EXPECT_EQ(told.count(), 1) << "its own undo, and nothing of the other's";
  EXPECT_NE(widget_->hwnd(), other.hwnd());
}

// --- focus ---

TEST_F(Widget, TheFocusMakesAnElementCurrentAndTakesItsBorderAway) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  layout->addWidget(widget_.get());
  auto* line = new QLineEdit;
  layout->addWidget(line);
  window.show();
  window.activateWindow();
  widget_->set_DocumentHTML(QStringLiteral("<H1>one</H1><P>two</P>"));
  ASSERT_TRUE(settle());
  line->setFocus();
  loop_.pump(0);
  EXPECT_EQ(widget_->control().highlightElement(), nullptr);
  widget_->view().input_widget()->setFocus();
  EXPECT_TRUE(wait_for([&] { return widget_->control().highlightElement() != nullptr; }));
  EXPECT_TRUE(widget_->control().highlightElement()->is(dom::Tag::H1));
  line->setFocus();
  EXPECT_TRUE(wait_for([&] { return widget_->control().highlightElement() == nullptr; }));
  widget_->setParent(nullptr);
}

/// Keys as the window system sends them: to the window, which gives them to the widget that has the focus.
void type_into(QWindow* window, const QString& text) {
  for (const QChar letter : text) QTest::keyClick(window, letter.toLatin1());
}

TEST_F(Widget, TypingWorksAfterTheStartWithoutAClick) {
  show(QStringLiteral("<P>text</P>"));
  widget_->activateWindow();
  const auto has_caret = [&] {
    QWidget* input = widget_->view().input_widget();
    return input && input->hasFocus() &&
           widget_->control().DOM()->editor().selection().type() == editing::SelectionType::Text;
  };
  ASSERT_TRUE(wait_for(has_caret));
  ASSERT_TRUE(settle());
  type_into(widget_->windowHandle(), QStringLiteral("typed "));
  EXPECT_TRUE(wait_for([&] { return widget_->DocumentHTML() == QStringLiteral("<P>typed text</P>"); }))
      << widget_->DocumentHTML().toStdString();
}

TEST_F(Widget, AWidgetThatHasTheFocusKeepsIt) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  auto* line = new QLineEdit;
  layout->addWidget(line);
  layout->addWidget(widget_.get());
  line->setFocus();
  window.show();
  window.activateWindow();
  ASSERT_TRUE(settle());
  EXPECT_TRUE(line->hasFocus());
  widget_->setFocus();
  EXPECT_TRUE(wait_for([&] { return widget_->view().input_widget()->hasFocus(); }))
      << "it stands for its page";
  widget_->setParent(nullptr);
}

// The host says where the editor comes among its fields; buttons and the engine's widgets come later than
// that.
TEST_F(Widget, TabGoesThroughBarsPageAndPathWhereTheHostPutTheEditor) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  QLineEdit before, between, after;
  const auto add = [&](QWidget& field, const char16_t* name) {
    field.setObjectName(QString::fromUtf16(name));
    layout->addWidget(&field);
  };
  add(after, u"after");
  add(before, u"before");
  HTMLedWidget second(loop_);
  layout->addWidget(&second);
  layout->addWidget(widget_.get());
  const auto own = qScopeGuard([&] { widget_->setParent(nullptr); });  // before the window goes
  add(between, u"between");
  QWidget::setTabOrder(&before, widget_.get());
  QWidget::setTabOrder(widget_.get(), &between);
  QWidget::setTabOrder(&between, &second);
  QWidget::setTabOrder(&second, &after);
  window.resize(900, 900);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for([&] { return second.view().input_widget() && widget_->view().input_widget(); }));
  const auto name_of_focus = [&] {
    const QWidget* part = QApplication::focusWidget();
    if (!part) return QStringLiteral("nothing");
    const bool in_second = second.isAncestorOf(part);
    while (part->parentWidget() && part->parentWidget() != widget_.get() && part->parentWidget() != &second &&
           part->parentWidget() != &window)
      part = part->parentWidget();
    const QString name = part->objectName().isEmpty() ? QStringLiteral("page") : part->objectName();
    return in_second ? name + QStringLiteral(" 2") : name;
  };
  // In the page Tab is the document's: from there on with Ctrl.
  const auto go = [&](Qt::Key key) {
    QWidget* from = QApplication::focusWidget();
    const bool in_page = name_of_focus().startsWith(QStringLiteral("page"));
    Qt::KeyboardModifiers held = key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
    held.setFlag(Qt::ControlModifier, in_page);
    QTest::keyClick(window.windowHandle(), key, held);
    EXPECT_TRUE(wait_for([&] { return QApplication::focusWidget() && QApplication::focusWidget() != from; }))
        << name_of_focus().toStdString();
  };
  const QStringList order{QStringLiteral("before"), QStringLiteral("Toolbar1"), QStringLiteral("page"),
                          QStringLiteral("tlbDOM"), QStringLiteral("between"),  QStringLiteral("Toolbar1 2"),
                          QStringLiteral("page 2"), QStringLiteral("tlbDOM 2"), QStringLiteral("after")};
  before.setFocus();
  for (int i = 0; i < 2 * order.size(); ++i) {
    ASSERT_EQ(name_of_focus().toStdString(), order[i % order.size()].toStdString()) << i;
    go(Qt::Key_Tab);
  }
  for (qsizetype i = 2 * order.size(); i > 0; --i) {
    ASSERT_EQ(name_of_focus().toStdString(), order[i % order.size()].toStdString()) << i << " back";
    go(Qt::Key_Backtab);
  }
}

TEST_F(Widget, ItStandsForItsPage) {
  show(QStringLiteral("<P>text</P>"));
  ASSERT_TRUE(settle());
  widget_->activateWindow();
  widget_->setFocus();
  ASSERT_TRUE(wait_for([&] { return widget_->view().input_widget()->hasFocus(); }));
  EXPECT_TRUE(widget_->hasFocus());
  widget_->show_Code();
  ASSERT_TRUE(wait_for([&] { return widget_->control().InCodeView(); }));
  widget_->setFocus();
  EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("TextBox1"));
  EXPECT_TRUE(widget_->hasFocus());
}

TEST_F(Widget, BorderStyleIsSeen) {
  show(QStringLiteral("<P>text</P>"));
  const auto corner = [&] { return widget_->grab().toImage().pixelColor(0, 0); };
  const QColor with_line = corner();
  EXPECT_EQ(widget_->view().widget()->x(), 1);
  widget_->setProperty("BorderStyle", 0);
  EXPECT_EQ(widget_->view().widget()->x(), 0);
  EXPECT_NE(corner(), with_line);
  widget_->setProperty("BorderStyle", 1);
  EXPECT_EQ(corner(), with_line);
}

/// Menus that stay open until a test has looked.
class OpenMenu final : public platform::PopupMenus {
 public:
  std::function<void()> while_open;
  int shown = 0;

 private:
  platform::Menu* show(platform::Menu&, platform::WindowHandle,
                       const std::optional<platform::PopupPlace>&) override {
    if (while_open) while_open();
    ++shown;
    return nullptr;
  }
};

TEST_F(Widget, UnderTheMenuOfARightPressTheNewCaretIsSeen) {
  OpenMenu menus;
  Substitutes substitutes;
  substitutes.popups = &menus;
  widget_ = std::make_unique<HTMLedWidget>(loop_, nullptr, substitutes);
  show(QStringLiteral("<P id=a>first</P><P id=b>second</P>"));
  ASSERT_TRUE(settle());
  const auto caret_is_in = [&](const QString& paragraph) {
    QString found;
    bool told = false;
    widget_->view().page()->runJavaScript(
        QStringLiteral("getSelection().rangeCount ? getSelection().focusNode.parentElement.id : ''"),
        QWebEngineScript::ApplicationWorld, [&](const QVariant& answer) {
          found = answer.toString();
          told = true;
        });
    return wait_for([&] { return told; }) && found == paragraph;
  };
  widget_->control().DOM()->select([&](editing::Selection& selection) {
    selection.collapse({widget_->control().DOM()->first(dom::Tag::P)->first_child(), 1});
  });
  ASSERT_TRUE(settle());
  ASSERT_TRUE(caret_is_in(QStringLiteral("a")));
  bool seen = false;
  menus.while_open = [&] {
    const std::int64_t end = loop_.now() + 3000;
    while (!seen && loop_.now() < end) seen = caret_is_in(QStringLiteral("b"));
  };
  QWidget* input = widget_->view().input_widget();
  const QPoint at{20, 60};
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
    QCoreApplication::postEvent(
        input,
        new QMouseEvent(type, at, input->mapToGlobal(at), Qt::RightButton,
                        type == QEvent::MouseButtonPress ? Qt::RightButton : Qt::NoButton, Qt::NoModifier));
  ASSERT_TRUE(wait_for([&] { return menus.shown > 0; }));
  EXPECT_TRUE(seen);
  widget_.reset();
}

// What stands for a toolbar's holder must not keep the keys from the document.
TEST_F(Widget, TheHolderOfAToolbarGivesTheFocusBack) {
  show(QStringLiteral("<P>x</P>"));
  ASSERT_TRUE(settle());
  widget_->activateWindow();
  widget_->setFocus();
  QWidget* input = widget_->view().input_widget();
  ASSERT_TRUE(wait_for([&] { return input->hasFocus(); }));
  QWidget holder(widget_.get()), other(widget_.get());
  holder.setObjectName(QStringLiteral("Picture9"));
  other.setObjectName(QStringLiteral("another"));
  for (QWidget* each : {&holder, &other}) {
    each->setFocusPolicy(Qt::StrongFocus);
    each->show();
  }
  holder.setFocus();
  ASSERT_TRUE(holder.hasFocus());
  EXPECT_TRUE(wait_for([&] { return input->hasFocus(); }));
  other.setFocus();
  for (int i = 0; i < 10; ++i) loop_.pump(20);
  EXPECT_TRUE(other.hasFocus()) << "what is no holder keeps it";
}

// --- a host that ends it within an event ---

class WidgetDeletedWithin : public Widget {
 protected:
  void end() {
    widget_.reset();
    loop_.pump(0);
  }
  /// What is left goes by itself.
  void rest() {
    const std::int64_t end = loop_.now() + 100;
    while (loop_.now() < end) loop_.pump(20);
  }
};

TEST_F(WidgetDeletedWithin, ToolButtonClick) {
  show(QStringLiteral("<P>x</P>"));
  QObject::connect(widget_.get(), &HTMLedWidget::ToolButtonClick, [&] { end(); });
  core::HTMLed& control = widget_->control();
  control.press(control.Toolbar1(), u"Bold");
  EXPECT_EQ(widget_, nullptr);
  rest();
}

TEST_F(WidgetDeletedWithin, BeforeGetDocumentHTML) {
  show(QStringLiteral("<P>x</P>"));
  QObject::connect(widget_.get(), &HTMLedWidget::BeforeGetDocumentHTML, [&] { end(); });
  HTMLedWidget* raw = widget_.get();
  raw->control().DocumentHTML();
  EXPECT_EQ(widget_, nullptr);
  rest();
}

TEST_F(WidgetDeletedWithin, BeforeCodeViewChange) {
  show(QStringLiteral("<P>x</P>"));
  QObject::connect(widget_.get(), &HTMLedWidget::BeforeCodeViewChange, [&] { end(); });
  widget_->control().show_Code();
  EXPECT_EQ(widget_, nullptr);
  rest();
}

TEST_F(WidgetDeletedWithin, AKeyInTheView) {
  show(QStringLiteral("<P>x</P>"));
  ASSERT_TRUE(settle());
  QObject::connect(widget_.get(), &HTMLedWidget::ASCIIKeyPress, [&] { end(); });
  QCoreApplication::postEvent(
      widget_->view().input_widget(),
      new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a")));
  EXPECT_TRUE(wait_for([&] { return !widget_; }));
  rest();
}

TEST_F(WidgetDeletedWithin, PropertyChanged) {
  show(QStringLiteral("<P>x</P>"));
  QObject::connect(widget_.get(), &HTMLedWidget::property_changed, [&] { end(); });
  widget_->control().insert_HR();
  EXPECT_EQ(widget_, nullptr);
  rest();
}

TEST_F(WidgetDeletedWithin, ThePrintDialog) {
  show(QStringLiteral("<P>words</P>"));
  widget_->set_print_file(QStringLiteral("/nowhere.pdf"));
  when_dialog_opens(nullptr, [&](QWidget&) { end(); });
  widget_->control().print_Document(false);
  EXPECT_EQ(widget_, nullptr);
  rest();
}

TEST_F(WidgetDeletedWithin, AColourDialogOverATablesDialog) {
  show(QStringLiteral("<P>words</P>"));
  bool over_it = false;
  when_dialog_opens(nullptr, [&](QWidget& dialog) {
    when_dialog_opens(&dialog, [&](QWidget&) {
      over_it = true;
      end();
    });
    QTest::mouseClick(dialog.findChild<QWidget*>(QStringLiteral("cmdBackColour")), Qt::LeftButton);
  });
  widget_->control().Table_Document();
  EXPECT_TRUE(over_it);
  EXPECT_EQ(widget_, nullptr);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  rest();
}

}  // namespace
}  // namespace tvx::qt
