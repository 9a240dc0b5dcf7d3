#include "tvx/htmled.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/strings.h"
#include "tvx/library/members/member_table.h"

namespace tvx {
namespace {

using testing::ElementsAre;

class Heard final : public HTMLedEvents {
 public:
  void Error(std::int32_t& errNo, std::u16string&) override {
    said.push_back("Error " + std::to_string(errNo));
  }
  void BeforeCodeViewChange(bool& CurrentlyWYSIWYG, bool& cancel) override {
    said.push_back(CurrentlyWYSIWYG ? "to the source" : "from the source");
    cancel = refuse;
  }
  void DocumentClick(Object& CurrentElement) override { said.push_back(to_utf8(CurrentElement.kind())); }

  std::vector<std::string> said;
  bool refuse = false;
};

TEST(HTMLed, BeforeItsStartItHasTheTablesDefaults) {
  const HTMLed editor;
  for (const library::Member& member : library::members()) {
    if (member.kind != library::MemberKind::Property || member.type == library::Type::Object) continue;
    const Value value = editor.part(member.name);
    const std::string name = to_utf8(member.name);
    switch (member.initial.kind) {
      case library::DefaultValue::Kind::Text:
        EXPECT_EQ(std::get<std::u16string>(value), member.initial.text) << name;
        break;
      case library::DefaultValue::Kind::Boolean:
        EXPECT_EQ(std::get<bool>(value), member.initial.number != 0) << name;
        break;
      case library::DefaultValue::Kind::Number:
        EXPECT_EQ(std::get<std::int32_t>(value), member.initial.number) << name;
        break;
      case library::DefaultValue::Kind::None: break;
    }
  }
  EXPECT_FALSE(editor.started());
  EXPECT_FALSE(editor.DOM());
}

TEST(HTMLed, WhatIsSetBeforeTheStartIsWhatItStartsWith) {
  HTMLed editor;
  editor.set_DocumentHTML(u"<P>early</P>");
  editor.set_HighlightDOMSelection(false);
  editor.start();
  EXPECT_EQ(editor.DocumentHTML(), u"<P>early</P>");
  EXPECT_FALSE(editor.HighlightDOMSelection());
  EXPECT_EQ(number_of_failure([&] { editor.set_HighlightDOMSelection(true); }),
            errors::set_not_supported_at_runtime);
}

TEST(HTMLed, AnEventCanBeRefused) {
  Heard heard;
  HTMLed editor;
  editor.set_events(&heard);
  editor.start();
  editor.set_DocumentHTML(u"<P>text</P>");
  heard.refuse = true;
  editor.show_Code();
  EXPECT_FALSE(editor.InCodeView());
  heard.refuse = false;
  editor.show_Code();
  EXPECT_TRUE(editor.InCodeView());
  EXPECT_THAT(heard.said, ElementsAre("to the source", "to the source"));
}

TEST(HTMLed, WhatAsksAUserIsCancelled) {
  HTMLed editor;
  editor.start();
  editor.set_DocumentHTML(u"<P>text</P>");
  EXPECT_EQ(editor.Open_document(), u"");
  editor.Table_Document();
  EXPECT_EQ(editor.DocumentHTML(), u"<P>text</P>");
}

TEST(HTMLed, CopiesAndPastesWithinTheProgram) {
  HTMLed editor;
  editor.start();
  editor.set_DocumentHTML(u"<P>one two</P>");
  editor.selectText(0, 3);
  editor.copy_document();
  editor.selectText(4, 3);
  editor.paste_document();
  EXPECT_EQ(editor.DocumentHTML(), u"<P>one one</P>");
}

TEST(HTMLed, ButtonsTellHowTheyStand) {
  HTMLed editor;
  editor.start();
  editor.set_DocumentHTML(u"<P><B>bold</B> plain</P>");
  editor.selectText(0, 4);
  editor.pump();
  EXPECT_TRUE(editor.button_state(u"Toolbar1", u"Bold").exists);
  EXPECT_TRUE(editor.button_state(u"Toolbar1", u"Bold").enabled);
  EXPECT_FALSE(editor.button_state(u"Toolbar1", u"NoSuchButton").exists);
  EXPECT_FALSE(editor.press_button(u"NoSuchToolbar", u"Bold"));
  EXPECT_FALSE(editor.press_button(u"Toolbar1", u"NoSuchButton"));
  editor.set_part(u"Toolbar1.Buttons(\"Bold\").Enabled", false);
  EXPECT_FALSE(editor.button_state(u"Toolbar1", u"Bold").enabled);
  EXPECT_FALSE(editor.press_button(u"Toolbar1", u"Bold"));
}

// --- objects by names ---

TEST(HTMLed, ObjectsAreReachedAndChangedByPaths) {
  HTMLed editor;
  editor.start();
  editor.set_DocumentHTML(u"<P id=\"a\">text</P>");
  const Object p = editor.DOM().object(u"all.tags(\"P\").item(0)");
  ASSERT_TRUE(p);
  EXPECT_EQ(p.kind(), u"element");
  EXPECT_EQ(p.get(u"tagName"), Value(std::u16string(u"P")));
  p.set(u"innerHTML", std::u16string(u"<I>other</I>"));
  EXPECT_EQ(editor.DocumentHTML(), u"<P id=\"a\"><I>other</I></P>");
  EXPECT_FALSE(p.object(u"getAttribute(\"missing\")"));
  EXPECT_EQ(number_of_failure([&] { p.get(u"noSuchMember"); }), errors::unknown_member);
  EXPECT_EQ(number_of_failure([&] { p.get(u"a b("); }), errors::invalid_call);
  EXPECT_EQ(number_of_failure([] { Object().get(u"tagName"); }), errors::object_not_set);
}

}  // namespace
}  // namespace tvx
