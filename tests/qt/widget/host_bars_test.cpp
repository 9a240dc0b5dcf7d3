#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QMetaEnum>
#include <QSignalSpy>
#include <QTest>
#include <set>

#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/actions.h"
#include "tvx/core/htmled.h"
#include "tvx/editing/editor.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"
#include "tvx/qt/widget/button_keys.h"

/// What the widget offers to programs that draw their own bars: actions that follow the document, news of it,
/// and the selection's format.
namespace tvx::qt {
namespace {

using Action = HTMLedWidget::Action;

class HostBarsOf : public testing::Test {
 protected:
  void show(const QString& html) {
    widget_.show();
    widget_.set_DocumentHTML(html);
    settle();
  }
  void settle() {
    const std::int64_t end = loop_.now() + 20'000;
    while (!widget_.document_view().settled() && loop_.now() < end) loop_.pump(20);
    loop_.pump(30);
  }
  void select(int from, int length) {
    widget_.selectText(from, length);
    settle();
  }
  void press(Qt::Key key, const QString& text, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QCoreApplication::postEvent(widget_.view().input_widget(),
                                new QKeyEvent(QEvent::KeyPress, key, held, text));
    QCoreApplication::postEvent(widget_.view().input_widget(),
                                new QKeyEvent(QEvent::KeyRelease, key, held, text));
  }

  MessageLoop loop_;
  HTMLedWidget widget_{loop_};
};

/// The page comes later than the window: who typed meanwhile and saves means both.
TEST_F(HostBarsOf, InputBeforeThePageIsThereIsFinishedToo) {
  widget_.set_DocumentHTML(QStringLiteral("<p>page</p>"));
  widget_.show();
  ASSERT_FALSE(widget_.document_view().settled());
  QTest::keyClick(widget_.view().widget(), 'o');
  QTest::keyClick(widget_.view().widget(), 'n');
  ASSERT_FALSE(widget_.DocumentHTML().contains(QStringLiteral("on")));
  widget_.finish_input();
  EXPECT_THAT(widget_.DocumentHTML().toStdString(), testing::HasSubstr("<P>onpage</P>"));
}

TEST_F(HostBarsOf, EachOperationHasAnActionWithItsWords) {
  const QMetaEnum names = QMetaEnum::fromType<Action>();
  std::set<std::u16string> offered;
  for (int i = 0; i < names.keyCount(); ++i) {
    QAction* action = widget_.action(QString::fromLatin1(names.key(i)));
    ASSERT_NE(action, nullptr) << names.key(i);
    EXPECT_EQ(action, widget_.action(Action(i)));
    EXPECT_EQ(action->objectName(), QString::fromLatin1(names.key(i))) << "the table's order";
    EXPECT_FALSE(action->text().isEmpty()) << names.key(i);
    offered.insert(from_qt(action->objectName()));
  }
  for (const auto name : core::ControlActions::operations())
    EXPECT_TRUE(offered.contains(std::u16string(name))) << to_qt(name).toStdString();
  EXPECT_EQ(offered.size(), core::ControlActions::operations().size() + 3) << "zoom is the widget's own";
  EXPECT_EQ(widget_.action(QStringLiteral("bold")), nullptr);
}

TEST_F(HostBarsOf, NoTwoActionsHaveTheSameKeys) {
  std::map<QString, QString> owners;
  const QMetaEnum names = QMetaEnum::fromType<Action>();
  for (int i = 0; i < names.keyCount(); ++i)
    for (const QKeySequence& keys : widget_.action(Action(i))->shortcuts()) {
      EXPECT_FALSE(keys.toString().isEmpty()) << names.key(i);
      const auto [owner, first] = owners.emplace(keys.toString(), QString::fromLatin1(names.key(i)));
      EXPECT_TRUE(first) << names.key(i) << " and " << owner->second.toStdString();
    }
}

TEST_F(HostBarsOf, ActionsFollowTheSelectionAndSayWhyTheyCantAct) {
  QAction *bold = widget_.action(Action::Bold), *cut = widget_.action(Action::Cut);
  EXPECT_FALSE(bold->isEnabled()) << "there is no document yet";
  show(QStringLiteral("<P><B>one</B> two</P>"));
  select(0, 3);
  EXPECT_TRUE(bold->isEnabled() && bold->isCheckable() && bold->isChecked());
  EXPECT_TRUE(cut->isEnabled());
  EXPECT_EQ(cut->toolTip(), QStringLiteral("Cut (Ctrl+X)"));
  select(5, 0);
  EXPECT_FALSE(bold->isChecked());
  EXPECT_FALSE(cut->isEnabled());
  EXPECT_EQ(cut->toolTip(), QStringLiteral("Cut (Ctrl+X)\nNothing is selected"));
}

TEST_F(HostBarsOf, ButtonsTellTheKeysThatAreValidNow) {
  const auto keys = [&](std::u16string_view button) {
    return keys_of_button(widget_, button).toString(QKeySequence::PortableText).toStdString();
  };
  EXPECT_EQ(keys(u"Bold"), "Ctrl+B") << "the page's own, without any action";
  EXPECT_EQ(keys(u"toggle"), "") << "without its action nothing answers to F9";
  QAction* source = widget_.action(Action::Source);
  EXPECT_EQ(keys(u"toggle"), "F9");
  source->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+F9")));
  EXPECT_EQ(keys(u"toggle"), "Ctrl+Shift+F9") << "the host's choice";
  EXPECT_EQ(keys(u"a host's own"), "");
}

TEST_F(HostBarsOf, ButtonsTellTheKeysOfTheWindowsOwnActions) {
  QWidget window;
  HTMLedWidget editor(loop_, &window);
  EXPECT_TRUE(keys_of_button(editor, u"Spell Check").isEmpty());
  QAction spelling(&window);
  spelling.setObjectName(QStringLiteral("spelling"));
  spelling.setShortcut(QKeySequence(QStringLiteral("F7")));
  EXPECT_EQ(keys_of_button(editor, u"Spell Check"), QKeySequence(QStringLiteral("F7")));
}

/// Each has its name among the actions: one that is written wrong would never show a key.
TEST_F(HostBarsOf, ButtonsOfTheBarFindTheirActions) {
  const QMetaEnum names = QMetaEnum::fromType<Action>();
  for (int i = 0; i < names.keyCount(); ++i) widget_.action(Action(i));
  std::string with_keys;
  platform::Toolbar& bar = widget_.control().Toolbar1();
  for (int i = 1; i <= bar.Count(); ++i)
    if (const QKeySequence keys = keys_of_button(widget_, bar.Item(i).Key()); !keys.isEmpty())
      with_keys += to_utf8(bar.Item(i).Key()) + "; ";
  EXPECT_EQ(
      with_keys,
      "toggle; Print; Copy; Cut; Paste; Align Left; Center; Align Right; Bold; Italic; Underline; indent; "
      "unindent; Spell Check; Undo; Redo; link; orderedlist; unorderedlist; ");
}

TEST_F(HostBarsOf, AnActionComesAfterWhatWasTypedBefore) {
  show(QStringLiteral("<P>one</P>"));
  select(3, 0);
  press(Qt::Key_A, QStringLiteral("a"));
  press(Qt::Key_B, QStringLiteral("b"));
  widget_.action(Action::Heading2)->trigger();
  EXPECT_EQ(widget_.DocumentHTML(), QStringLiteral("<H2>oneab</H2>"));
}

TEST_F(HostBarsOf, AVetoLeavesASwitchAsItWas) {
  show(QStringLiteral("<P>one</P>"));
  select(0, 3);
  QAction* bold = widget_.action(Action::Bold);
  const auto veto =
      QObject::connect(&widget_, &HTMLedWidget::ToolButtonClick,
                       [](const QString&, int, const QString&, bool& cancel) { cancel = true; });
  bold->trigger();
  EXPECT_EQ(widget_.DocumentHTML(), QStringLiteral("<P>one</P>"));
  EXPECT_FALSE(bold->isChecked());
  QObject::disconnect(veto);
  bold->trigger();
  EXPECT_TRUE(bold->isChecked());
}

TEST_F(HostBarsOf, NewsComesOnceATurn) {
  show(QStringLiteral("<P><B>one</B> two</P>"));
  select(0, 0);
  QSignalSpy selections(&widget_, &HTMLedWidget::selectionChanged),
      formats(&widget_, &HTMLedWidget::formatChanged);
  widget_.selectText(1, 1);
  settle();
  selections.clear();
  formats.clear();
  for (const int at : {5, 6, 1, 5}) widget_.selectText(at, 1);
  settle();
  EXPECT_EQ(selections.count(), 1);
  EXPECT_EQ(formats.count(), 0) << "it is the same text format";
  widget_.set_font_size(6);
  settle();
  EXPECT_EQ(formats.count(), 1);
  EXPECT_EQ(widget_.format().size, 6);
}

TEST_F(HostBarsOf, ModificationAndLoadingAreTold) {
  QSignalSpy loaded(&widget_, &HTMLedWidget::documentLoaded),
      modified(&widget_, &HTMLedWidget::modificationChanged);
  show(QStringLiteral("<P>one</P>"));
  EXPECT_GT(loaded.count(), 0);
  loaded.clear();
  modified.clear();
  select(3, 0);
  press(Qt::Key_A, QStringLiteral("a"));
  settle();
  widget_.set_font_size(6);
  settle();
  ASSERT_EQ(modified.count(), 1);
  EXPECT_TRUE(modified.at(0).at(0).toBool());
  EXPECT_EQ(loaded.count(), 0);
}

TEST_F(HostBarsOf, FormatsAreSetAndRead) {
  show(QStringLiteral("<P>one</P>"));
  select(0, 3);
  widget_.set_paragraph_style(QStringLiteral("h3"));
  widget_.set_font(QStringLiteral("Courier New"));
  widget_.set_font_size(5);
  widget_.set_text_colour(Qt::red);
  widget_.set_highlight(QColor(255, 255, 0));
  HTMLedWidget::Format format = widget_.format();
  EXPECT_EQ(format.paragraph_style, QStringLiteral("h3"));
  EXPECT_TRUE(format.font.contains(QStringLiteral("Courier New"))) << format.font.toStdString();
  EXPECT_EQ(format.size, 5);
  EXPECT_EQ(format.colour, QColor(Qt::red));
  EXPECT_EQ(format.highlight, QColor(255, 255, 0));
  widget_.set_highlight(QColor());
  EXPECT_FALSE(widget_.format().highlight.isValid());
}

TEST_F(HostBarsOf, ClassesAreThoseOfTheSheetThatAnElementCanHave) {
  widget_.set_CSShttp(false);
  widget_.set_CSSText(QStringLiteral(".note { color: green } .note:hover { color: red } p .x { } .big { }"));
  show(QStringLiteral("<P>one</P>"));
  EXPECT_EQ(widget_.style_classes(), QStringList({QStringLiteral("note"), QStringLiteral("big")}));
  select(0, 3);
  widget_.set_style_class(QStringLiteral("big"));
  EXPECT_TRUE(widget_.DocumentHTML().contains(QStringLiteral("class=\"big\"")))
      << widget_.DocumentHTML().toStdString();
  EXPECT_EQ(widget_.format().style_class, QStringLiteral("big"));
  widget_.set_style_class(QString());
  EXPECT_FALSE(widget_.DocumentHTML().contains(QStringLiteral("class")));
}

TEST_F(HostBarsOf, ZoomMovesNothingInTheDocument) {
  show(QStringLiteral("<P>one</P><P>two</P>"));
  QSignalSpy zoomed(&widget_, &HTMLedWidget::zoomChanged);
  widget_.set_zoom(2);
  EXPECT_EQ(widget_.zoom(), 2);
  EXPECT_TRUE(widget_.action(Action::ZoomReset)->isEnabled());
  settle();
  EXPECT_EQ(zoomed.count(), 1);
  EXPECT_EQ(widget_.DocumentHTML(), QStringLiteral("<P>one</P><P>two</P>"));
  for (int i = 0; i < 30; ++i) widget_.action(Action::ZoomIn)->trigger();
  EXPECT_EQ(widget_.zoom(), 5);
  EXPECT_FALSE(widget_.action(Action::ZoomIn)->isEnabled());
  widget_.action(Action::ZoomReset)->trigger();
  EXPECT_EQ(widget_.zoom(), 1);
}

/// Their keys act while the focus is in the editor, and in that one alone.
TEST_F(HostBarsOf, OneOfTwoEditorsTakesTheKeys) {
  QWidget window;
  MessageLoop loop;
  HTMLedWidget first(loop, &window), second(loop, &window);
  for (HTMLedWidget* each : {&first, &second})
    EXPECT_EQ(each->action(Action::Heading1)->shortcutContext(), Qt::WidgetWithChildrenShortcut);
  EXPECT_NE(first.action(Action::Heading1), second.action(Action::Heading1));
}

class Subclass : public HTMLedWidget {
 public:
  using HTMLedWidget::HTMLedWidget;
};

TEST_F(HostBarsOf, AWidgetCanBeSubclassedAndDeletedWithItsActionsInUse) {
  auto widget = std::make_unique<Subclass>(loop_);
  widget->show();
  widget->set_DocumentHTML(QStringLiteral("<P>one</P>"));
  widget->selectText(0, 3);
  QAction* bold = widget->action(Action::Bold);
  QObject::connect(widget.get(), &HTMLedWidget::ToolButtonClick,
                   [&](const QString&, int, const QString&, bool&) { widget.reset(); });
  bold->trigger();
  EXPECT_EQ(widget, nullptr);
  loop_.pump(50);
}

}  // namespace
}  // namespace tvx::qt
