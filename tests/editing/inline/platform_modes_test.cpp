#include "editing/editing_fixture.h"
#include "tvx/editing/commands/platform_values.h"
#include "tvx/editing/gestures/control_box.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::editing::test {

/// The platform's own modes: "AbsolutePosition", "2D-Position" and "Overwrite". They outlive a command,
/// change no document and make no step of undo.
class PlatformModes : public EditingFixture {
 protected:
  static constexpr const char* modes[] = {"AbsolutePosition", "2D-Position", "Overwrite"};

  dom::Element& first_element() { return *dom::first_child_element(host); }
  bool state(const char* mode) { return editor.state(from_utf8(mode)); }
  PlatformValue value(const char* mode) { return platform_value(editor, from_utf8(mode)); }
};

TEST_F(PlatformModes, AreOffAtFirstAndSwitchedByTrueAndFalse) {
  load("<P>a[]b</P>");
  for (const char* mode : modes) {
    EXPECT_TRUE(editor.supported(from_utf8(mode))) << mode;
    EXPECT_TRUE(editor.enabled(from_utf8(mode))) << mode;
    EXPECT_FALSE(state(mode)) << mode;
    EXPECT_TRUE(run({mode, "true"})) << mode;
    EXPECT_TRUE(state(mode)) << mode;
    EXPECT_TRUE(run({mode, "true"})) << "said again";
    EXPECT_TRUE(state(mode)) << mode;
    EXPECT_TRUE(run({mode, "FALSE"})) << "without regard to case";
    EXPECT_FALSE(state(mode)) << mode;
  }
}

TEST_F(PlatformModes, WithoutAValueTheyAreSwitchedOver) {
  for (const char* mode : modes) {
    run({mode});
    EXPECT_TRUE(state(mode)) << mode;
    run({mode});
    EXPECT_FALSE(state(mode)) << mode;
  }
}

TEST_F(PlatformModes, NamesHaveNoCase) {
  run({"absoluteposition", "true"});
  run({"2d-POSITION", "true"});
  run({"OVERWRITE", "true"});
  for (const char* mode : modes) EXPECT_TRUE(state(mode)) << mode;
}

TEST_F(PlatformModes, EachIsItsOwn) {
  for (const char* mode : modes) {
    run({mode, "true"});
    for (const char* other : modes) EXPECT_EQ(state(other), std::string_view(mode) == other) << other;
    run({mode, "false"});
  }
}

TEST_F(PlatformModes, ValuesAreTrueAndFalseInThePlatformsWay) {
  for (const char* mode : modes) {
    EXPECT_EQ(value(mode), PlatformValue(false)) << mode;
    run({mode, "true"});
    EXPECT_EQ(value(mode), PlatformValue(true)) << mode;
    EXPECT_EQ(editor.value(from_utf8(mode)), u"") << "the standard's value of a state";
    EXPECT_FALSE(editor.indeterminate(from_utf8(mode)));
  }
}

TEST_F(PlatformModes, WorkWithNoSelectionAndOnAControlAndMakeNoStep) {
  load("<P>a<IMG>b</P>");
  editor.selection().clear();
  for (const char* mode : modes) EXPECT_TRUE(run({mode, "true"})) << mode;
  editor.selection().select_control(*dom::first_child_element(first_element()));
  for (const char* mode : modes) EXPECT_TRUE(run({mode})) << mode;
  EXPECT_EQ(editor.selection().type(), SelectionType::Control);
  EXPECT_EQ(html(), "<P>a<IMG>b</P>");
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(PlatformModes, OutliveUndoAndNewContent) {
  load("<P>a[]b</P>");
  run({"Overwrite", "true"});
  type_text(editor, u"x");
  EXPECT_EQ(marked(), "<P>ax[]</P>");
  document->journal().undo();
  EXPECT_TRUE(state("Overwrite"));
  load("<P>c[]d</P>");
  EXPECT_TRUE(state("Overwrite"));
}

// --- moving what is absolutely positioned ---

TEST_F(PlatformModes, OnlyWhatItsOwnStylePositionsMovesAndOnlyInTheMode) {
  load("<DIV style=\"position: absolute; left: 3px; top: 4px\">{}a</DIV>");
  EXPECT_TRUE(is_absolutely_positioned(first_element()));
  run({"AbsolutePosition", "true"});
  EXPECT_FALSE(is_movable(editor, first_element())) << "that is the other mode";
  run({"2D-Position", "true"});
  EXPECT_TRUE(is_movable(editor, first_element()));
  load("<DIV style=\"position: relative\">{}a</DIV>");
  EXPECT_FALSE(is_movable(editor, first_element()));
  load("<DIV style=\"POSITION: ABSOLUTE\">{}a</DIV>");
  EXPECT_TRUE(is_movable(editor, first_element()));
}

TEST_F(PlatformModes, AMoveIsOneStepWithItsSelection) {
  load("<DIV style=\"position: absolute; right: 3px; bottom: 4px; color: red\">a[]b</DIV>");
  run({"2D-Position", "true"});
  const std::string first = marked();
  EXPECT_TRUE(move_positioned(editor, first_element(), -5, 12));
  EXPECT_EQ(marked(), "<DIV style=\"position: absolute; color: red; left: -5px; top: 12px\">a[]b</DIV>");
  EXPECT_EQ(document->journal().depth(), 1u);
  expect_laws(first);
}

TEST_F(PlatformModes, AMoveToWhereItStandsIsNoStep) {
  load("<DIV style=\"position: absolute; left: 3px; top: 4px\">{}a</DIV>");
  run({"2D-Position", "true"});
  EXPECT_TRUE(move_positioned(editor, first_element(), 3, 4));
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(PlatformModes, WhatCannotBeEditedDoesNotMove) {
  load("<P>{}a</P>");
  auto& outside = static_cast<dom::Element&>(*host.next_sibling());
  dom::set_attribute(outside, dom::names::style, u"position: absolute");
  run({"2D-Position", "true"});
  EXPECT_FALSE(move_positioned(editor, outside, 1, 1));
  EXPECT_EQ(outside.attribute_or_empty(dom::names::style), u"position: absolute");
}

// --- typing over ---

class Overwriting : public PlatformModes {
 protected:
  void expect_over(std::string_view before, std::u16string_view text, std::string_view after) {
    load(before);
    const std::string first = marked();
    run({"Overwrite", "true"});
    type_text(editor, text);
    run({"Overwrite", "false"});
    EXPECT_EQ(marked(), after) << "from " << before;
    expect_laws(first);
  }
};

TEST_F(Overwriting, EachCharacterTakesTheOneBehind) {
  expect_over("<P>[]abc</P>", u"xy", "<P>xy[]c</P>");
  expect_over("<P>a[]b</P>", u"xyz", "<P>axyz[]</P>");
}

TEST_F(Overwriting, ASelectionIsReplacedAndNothingBehindIt) {
  expect_over("<P>a[bc]de</P>", u"x", "<P>ax[]de</P>");
}

TEST_F(Overwriting, TheEndOfALineIsNotOverwritten) {
  expect_over("<P>ab[]<BR>cd</P>", u"x", "<P>abx[]<BR>cd</P>");
  expect_over("<P>ab[]</P><P>cd</P>", u"x", "<P>abx[]</P><P>cd</P>");
  expect_over("<P>a[]<IMG>b</P>", u"x", "<P>ax[]<IMG>b</P>");
}

TEST_F(Overwriting, BlanksTakeAndAreTaken) {
  expect_over("<P>a[] b</P>", u"x", "<P>ax[]b</P>");
  expect_over("<P>a[]bc</P>", u" ", "<P>a []c</P>");
  expect_over("<P>ab[]c</P>", u" ", "<P>ab&nbsp;[]</P>");
}

TEST_F(Overwriting, ARunIsOneStep) {
  load("<P>[]abcdef</P>");
  run({"Overwrite", "true"});
  for (const char16_t c : std::u16string_view(u"xyz")) type_text(editor, std::u16string_view(&c, 1));
  EXPECT_EQ(marked(), "<P>xyz[]def</P>");
  EXPECT_EQ(document->journal().depth(), 1u);
  document->journal().undo();
  EXPECT_EQ(marked(), "<P>[]abcdef</P>");
}

// --- the platform's values, beside the standard's ---

TEST_F(PlatformModes, ColoursOfNamedAndTransparentAndShortForms) {
  load("<SPAN style=\"background-color: #f80\"><FONT color=\"red\">o[n]e</FONT></SPAN>");
  EXPECT_EQ(value("forecolor"), PlatformValue(0x0000FF));
  EXPECT_EQ(value("BACKCOLOR"), PlatformValue(0x0088FF));
  EXPECT_EQ(value("HiliteColor"), PlatformValue(0x0088FF));
  EXPECT_EQ(editor.value(u"foreColor"), u"rgb(255, 0, 0)") << "the standard's";
}

TEST_F(PlatformModes, TogglesOfMixedTextFollowTheState) {
  load("<P>[a<B>b</B>]</P>");
  EXPECT_EQ(value("bold"), PlatformValue(editor.state(u"bold")));
  load("<UL><LI>[a]</LI></UL>");
  EXPECT_EQ(value("InsertUnorderedList"), PlatformValue(true));
  EXPECT_EQ(value("InsertOrderedList"), PlatformValue(false));
  load("<P align=\"center\">a[]</P>");
  EXPECT_EQ(value("JustifyCenter"), PlatformValue(true));
  EXPECT_EQ(value("JustifyLeft"), PlatformValue(false));
}

TEST_F(PlatformModes, BlocksAndSizesAreTexts) {
  load("<H2>a[]</H2>");
  EXPECT_EQ(value("FormatBlock"), PlatformValue(u"h2"));
  EXPECT_EQ(value("DefaultParagraphSeparator"), PlatformValue(u"p"));
  EXPECT_EQ(value("Delete"), PlatformValue(u"")) << "a command that has none";
}

}  // namespace tvx::editing::test
