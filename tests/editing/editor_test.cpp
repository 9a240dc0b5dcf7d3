#include "tvx/editing/editor.h"
#include "tvx/editing/commands/command_table.h"

#include "editing_fixture.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/command_definition.h"

namespace tvx::editing::test {

using EditorTest = EditingFixture;

TEST_F(EditorTest, NamesCompareWithoutCase) {
  EXPECT_TRUE(editor.supported(u"BOLD"));
  EXPECT_TRUE(editor.supported(u"insertorderedlist"));
  EXPECT_TRUE(editor.supported(u"2D-POSITION"));
  EXPECT_FALSE(editor.supported(u"embolden"));
  EXPECT_FALSE(editor.supported(u""));
}

TEST_F(EditorTest, TheTableIsSortedAndHasEachNameOnce) {
  const auto rows = command_table();
  for (std::size_t i = 1; i < rows.size(); ++i) {
    EXPECT_LT(ascii_lower(rows[i - 1].name), ascii_lower(rows[i].name));
  }
  for (const CommandDefinition& row : rows) EXPECT_EQ(find_command(row.name), &row);
}

TEST_F(EditorTest, CommandsNeedAnEditablePlace) {
  EXPECT_FALSE(editor.enabled(u"bold")) << "no selection";
  load("o[n]e");
  EXPECT_TRUE(editor.enabled(u"bold"));
  dom::Node* outside = host.next_sibling()->first_child();
  editor.selection().collapse({outside, 0});
  EXPECT_FALSE(editor.enabled(u"bold"));
  EXPECT_FALSE(run({"bold"}));
  editor.selection().set({host.first_child(), 0}, {outside, 1});
  EXPECT_FALSE(editor.enabled(u"bold")) << "one end outside";
  EXPECT_TRUE(editor.enabled(u"styleWithCSS"));
}

TEST_F(EditorTest, HostsWithinHostsAreSeparate) {
  load("a<DIV contenteditable=\"false\">b<DIV contenteditable=\"true\">c</DIV></DIV>");
  dom::Node* outer = host.first_child();
  dom::Node* fixed = host.last_child();
  dom::Node* inner = fixed->last_child()->first_child();
  editor.selection().collapse({fixed->first_child(), 0});
  EXPECT_FALSE(editor.enabled(u"bold"));
  editor.selection().collapse({inner, 0});
  EXPECT_TRUE(editor.enabled(u"bold"));
  editor.selection().set({outer, 0}, {inner, 1});
  EXPECT_TRUE(editor.enabled(u"bold")) << "the outer host holds both";
}

TEST_F(EditorTest, InPlainTextNothingIsFormatted) {
  dom::set_attribute(host, dom::names::contenteditable, u"plaintext-only");
  load("o[n]e");
  EXPECT_FALSE(editor.enabled(u"bold"));
  EXPECT_TRUE(editor.enabled(u"insertText"));
  EXPECT_TRUE(editor.enabled(u"delete"));
}

TEST_F(EditorTest, InDesignModeTheBodyIsTheHost) {
  dom::remove_attribute(host, dom::names::contenteditable);
  load("o[n]e");
  EXPECT_FALSE(editor.enabled(u"bold"));
  editor.set_design_mode(true);
  EXPECT_TRUE(editor.enabled(u"bold"));
  EXPECT_TRUE(run({"bold"}));
  EXPECT_EQ(html(), "o<B>n</B>e");
  editor.set_design_mode(false);
  EXPECT_FALSE(editor.enabled(u"bold"));
}

TEST_F(EditorTest, ACommandIsOneStepWithItsLabel) {
  load("<P>[one</P><P>two]</P>");
  ASSERT_TRUE(run({"bold"}));
  EXPECT_EQ(document->journal().depth(), 1u);
  EXPECT_EQ(document->journal().undo_label(), u"Bold");
  ASSERT_TRUE(run({"undo"}));
  EXPECT_EQ(marked(), "<P>[one</P><P>two]</P>");
  EXPECT_FALSE(run({"undo"}));
  ASSERT_TRUE(run({"redo"}));
  EXPECT_EQ(marked(), "<P><B>[one</B></P><P><B>two]</B></P>");
}

TEST_F(EditorTest, ObserversHearOnceOfACommand) {
  struct Counter : SelectionObserver {
    void selection_changed() override { ++count; }
    int count = 0;
  } counter;
  load("o[n]e");
  editor.selection().add_observer(counter);
  run({"bold"});
  EXPECT_EQ(counter.count, 1);
  editor.selection().remove_observer(counter);
}

TEST_F(EditorTest, APendingLookWaitsAtTheCaretAndGoesWithIt) {
  load("one[]two");
  ASSERT_TRUE(run({"bold"}));
  EXPECT_TRUE(editor.state(u"bold"));
  EXPECT_FALSE(document->journal().can_undo()) << "nothing has changed yet";
  const dom::Boundary caret = editor.selection().anchor();
  editor.selection().collapse({caret.node, 1});
  editor.selection().collapse(caret);
  EXPECT_FALSE(editor.state(u"bold")) << "the caret was elsewhere meanwhile";
}

TEST_F(EditorTest, TypingTakesThePendingLook) {
  expect_edits("one[]two", {{"bold"}, {"insertText", "x"}}, "one<B>x[]</B>two");
  expect_edits("one[]two", {{"foreColor", "red"}, {"insertText", "x"}},
               "one<FONT color=\"#ff0000\">x[]</FONT>two");
}

TEST_F(EditorTest, BackColourAndHighlightArePendingAsOne) {
  load("one[]two");
  run({"backColor", "red"});
  EXPECT_EQ(editor.value(u"hiliteColor"), u"red");
  run({"hiliteColor", "blue"});
  EXPECT_EQ(editor.value(u"backColor"), u"blue");
}

TEST_F(EditorTest, Modes) {
  EXPECT_TRUE(run({"styleWithCSS", "true"}));
  EXPECT_TRUE(editor.state(u"styleWithCSS"));
  EXPECT_TRUE(run({"useCSS", "true"})) << "says the opposite";
  EXPECT_FALSE(editor.state(u"styleWithCSS"));
  EXPECT_TRUE(run({"defaultParagraphSeparator", "DIV"}));
  EXPECT_EQ(editor.value(u"defaultParagraphSeparator"), u"div");
  EXPECT_FALSE(run({"defaultParagraphSeparator", "span"}));
  EXPECT_EQ(editor.value(u"defaultParagraphSeparator"), u"div");
  EXPECT_TRUE(run({"AbsolutePosition", "true"}));
  EXPECT_TRUE(editor.absolute_position());
  EXPECT_TRUE(run({"Overwrite"}));
  EXPECT_TRUE(editor.overwrite());
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(EditorTest, SelectAllStaysInTheHost) {
  load("<P>o[]ne</P><P>two</P>");
  run({"selectAll"});
  EXPECT_EQ(marked(), "{<P>one</P><P>two</P>}");
  editor.selection().clear();
  run({"selectAll"});
  EXPECT_EQ(editor.selection().anchor().node, document->body());
}

}  // namespace tvx::editing::test
