#include "tvx/editing/commands/platform_values.h"

#include "editing/editing_fixture.h"
#include "tvx/base/error.h"

namespace tvx::editing::test {

class PlatformValues : public EditingFixture {
 protected:
  PlatformValue value(std::u16string_view command) { return platform_value(editor, command); }
};

TEST_F(PlatformValues, TogglesAreTrueOrFalse) {
  load("<B>o[n]e</B>");
  EXPECT_EQ(value(u"Bold"), PlatformValue(true));
  EXPECT_EQ(value(u"Italic"), PlatformValue(false));
  EXPECT_EQ(value(u"Overwrite"), PlatformValue(false));
}

TEST_F(PlatformValues, ColoursAreNumbersWithRedInTheLowByte) {
  load("<FONT color=\"#010203\">o[n]e</FONT>");
  EXPECT_EQ(value(u"ForeColor"), PlatformValue(0x030201));
  EXPECT_EQ(value(u"BackColor"), PlatformValue(0xFFFFFF)) << "the paper's";
}

TEST_F(PlatformValues, OthersAreTexts) {
  load("<FONT face=\"Arial\" size=\"5\">o[n]e</FONT>");
  EXPECT_EQ(value(u"FontName"), PlatformValue(u"Arial"));
  EXPECT_EQ(value(u"FontSize"), PlatformValue(u"5"));
}

TEST_F(PlatformValues, OfSeveralValuesNoneIsTheAnswer) {
  load("<P>[a<FONT face=\"Arial\" size=\"5\" color=\"#010203\">b]</FONT></P>");
  for (const char16_t* command : {u"FontName", u"FontSize", u"ForeColor"})
    EXPECT_EQ(value(command), PlatformValue(std::monostate())) << to_utf8(command);
  EXPECT_EQ(value(u"Bold"), PlatformValue(false));
  load("<P>[a</P><H1>b]</H1>");
  EXPECT_EQ(value(u"FormatBlock"), PlatformValue(std::monostate()));
}

TEST_F(PlatformValues, ClipboardCommandsHaveNone) {
  for (const char16_t* command : {u"Copy", u"CUT", u"paste"}) EXPECT_EQ(value(command), PlatformValue(false));
}

TEST_F(PlatformValues, AnUnknownCommandFails) { EXPECT_THROW(value(u"embolden"), RuntimeError); }

}  // namespace tvx::editing::test
