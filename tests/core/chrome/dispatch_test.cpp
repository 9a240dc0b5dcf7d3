#include "core/fake_context.h"
#include "tvx/core/chrome/actions.h"
#include "tvx/core/chrome/class_menus.h"
#include "tvx/core/chrome/element_path.h"
#include "tvx/core/chrome/menu_commands.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/table_tools.h"
#include "tvx/core/chrome/toolbar_commands.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/commands/formatting.h"
#include "tvx/core/content/style_sheet.h"
#include "tvx/core/dialogs/field_settings.h"
#include "tvx/core/dialogs/form_elements.h"
#include "tvx/core/dialogs/image_settings.h"
#include "tvx/core/spelling/speller.h"
#include "tvx/core/spelling/spelling_marks.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/edit_window.h"
#include "tvx/core/views/panes.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/tree.h"

/// Buttons, menus and the element path with a table of actions that only writes down what it was asked for.
namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct WrittenActions : Actions {
  std::vector<std::string> asked;
  bool press(std::u16string_view key) override {
    asked.push_back(to_utf8(key));
    return true;
  }
  bool choose(const platform::Menu& item) override {
    asked.push_back(to_utf8(item.Name()));
    return true;
  }
};

struct ChromeAlone : testing::Test {
  void press(std::u16string_view key) { toolbars.Toolbar1.press(toolbars.Toolbar1.Item(key)); }

  FakeContext context;
  WrittenActions actions;
  TableLabels labels{u"Cell", u"Row", u"Delete Row", u"Delete Cell"};
  Toolbars toolbars;
  ContextMenus menus;
  SelectionHighlight highlight;
  CodePane code{context};
  Panes panes{context, toolbars, code};
  EditWindow edit_window{context};
  TableTools tables{context, highlight, labels};
  ElementPath path{context, toolbars, menus, highlight, panes, labels};
  ToolbarCommands toolbar_commands{context, toolbars, panes, path, actions};
  StyleSheetBinding sheet{context, {}};
  Formatting formatting{context, toolbars, code, edit_window};
  ClassMenus classes{context, highlight, sheet};
  ImageSettings images{context, highlight};
  FormElements forms{context};
  FieldSettings fields{context, forms};
  Speller speller{context};
  SpellingMarks marks{context, speller};
  MenuCommands menu_commands{
      context, {menus, toolbars, highlight, tables, formatting, classes, marks, actions, images, fields}};
};

TEST_F(ChromeAlone, APressedButtonAsksTheHostThenActs) {
  press(u"Bold");
  EXPECT_THAT(context.host.heard, ElementsAre("ToolButtonClick: Toolbar1 10 Bold"));
  EXPECT_THAT(actions.asked, ElementsAre("Bold"));
  EXPECT_TRUE(context.values.IsDirty);
}

TEST_F(ChromeAlone, AForbiddenButtonDoesNothing) {
  context.host.on_button = [](std::u16string&, bool& cancel) { cancel = true; };
  press(u"Bold");
  EXPECT_THAT(actions.asked, IsEmpty());
  EXPECT_FALSE(context.values.IsDirty);
}

TEST_F(ChromeAlone, UndoNeedsAChange) {
  press(u"Undo");
  EXPECT_THAT(actions.asked, IsEmpty());
  context.values.IsDirty = true;
  press(u"Undo");
  EXPECT_THAT(actions.asked, ElementsAre("Undo"));
}

TEST_F(ChromeAlone, AnItemAsksTheHostByItsKeyThenActs) {
  menus.item(u"mnuMiscCut").choose();
  EXPECT_THAT(context.host.heard, ElementsAre("MenuClick: ContextMiscCut"));
  EXPECT_THAT(actions.asked, ElementsAre("mnuMiscCut"));
  context.host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  menus.item(u"mnuMiscCut").choose();
  EXPECT_EQ(actions.asked.size(), 1u);
}

TEST_F(ChromeAlone, TheMenuIsThatOfTheCurrentElement) {
  EXPECT_THROW(menu_commands.open(), RuntimeError);
  context.load(u"<p><a href=x>One</a></p>");
  highlight.set_element(dom::first_child_element(context.body()));
  menu_commands.open();
  highlight.set_element(context.document().first(dom::Tag::A));
  menu_commands.open();
  EXPECT_THAT(context.menus.shown(), ElementsAre(u"mnuMisc", u"mnuLinks"));
}

TEST_F(ChromeAlone, APendingCommandIsCarriedOutWhenTheMenuHasClosed) {
  context.load(u"<p><a href=x>One</a></p>");
  highlight.set_element(context.document().first(dom::Tag::A));
  menu_commands.pend(u"Remove Link");
  menu_commands.open();
  EXPECT_EQ(context.html(), "<P>One</P>");
  menu_commands.forget_pending_command();
  EXPECT_EQ(menu_commands.pending_command(), u"");
}

TEST_F(ChromeAlone, ThePathHasAButtonForEachElementAndAPressMakesItCurrent) {
  context.load(u"<p><b>One</b></p>");
  context.values.HighlightDOMSelection = false;
  highlight.set_element(context.document().first(dom::Tag::B));
  path.BuildBranchToolbar();
  ASSERT_EQ(toolbars.tlbDOM.Count(), 2);
  toolbars.tlbDOM.press(toolbars.tlbDOM.Item(1));
  EXPECT_TRUE(highlight.element()->is(dom::Tag::P));
  EXPECT_THAT(context.menus.shown(), ElementsAre(u"mnuToolProp"));
}

TEST_F(ChromeAlone, AClassIsGivenToTheCurrentElementIfTheHostAgrees) {
  context.load(u"<style>.a {}</style><p>One</p>");
  sheet.LoadStyleClasses();
  highlight.set_element(context.document().first(dom::Tag::P));
  context.host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  classes.give_to_element(1);
  EXPECT_EQ(highlight.element()->attribute(dom::Name(u"class")), nullptr);
  context.host.on_menu = {};
  classes.give_to_element(1);
  EXPECT_EQ(highlight.element()->attribute_or_empty(dom::Name(u"class")), u"a");
}

TEST_F(ChromeAlone, ATableDialogThatIsCancelledInsertsNothing) {
  context.load(u"<p>One</p>");
  tables.insert_table();
  EXPECT_THAT(context.shown, ElementsAre("TableSettings"));
  EXPECT_EQ(context.html(), "<P>One</P>");
  EXPECT_FALSE(context.values.IsDirty);
}

TEST_F(ChromeAlone, ARowIsInsertedByTheItemOfTheCellsMenu) {
  context.load(u"<table><tbody><tr><td>a</td></tr></tbody></table>");
  highlight.set_element(context.document().first(dom::Tag::Tr));
  tables.act_on_cell_or_row(menus.item(u"MnuCellRowActionsInsertRowBelow"));
  const std::string html = context.html();
  EXPECT_NE(html.find("<TR>"), html.rfind("<TR>"));
  EXPECT_TRUE(context.values.IsDirty);
}

}  // namespace
}  // namespace tvx::core
