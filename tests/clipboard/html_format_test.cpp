#include "tvx/clipboard/html_format.h"

#include <gtest/gtest.h>

#include "tvx/base/code_page.h"
#include "tvx/base/fault.h"
#include "tvx/headless/clipboard.h"

namespace tvx::clipboard {
namespace {

using platform::ClipboardFormat;

class HtmlFormat : public testing::Test {
 protected:
  ~HtmlFormat() override { clear_faults(); }

  std::string put(const std::u16string& fragment, std::u16string prefix = u"", std::u16string suffix = u"") {
    PutHTMLOnClipboard(clipboard, fragment, prefix, suffix);
    return clipboard.GetClipboardData(GetHTMLFormatId()).value_or("nothing");
  }
  std::u16string get(std::string block) {
    clipboard.put({{"HTML Format", std::move(block)}});
    return GetHTMLFromClipboard(clipboard);
  }

  headless::Clipboard clipboard;
};

TEST_F(HtmlFormat, TheBlockIsWrittenByteForByte) {
  EXPECT_EQ(put(u"x"),
            "Version:1.0\r\nStartHTML:0000000105\r\nEndHTML:0000000146\r\nStartFragment:0000000126\r\n"
            "EndFragment:0000000127\r\n<!--StartFragment -->x<!--EndFragment -->");
  EXPECT_EQ(
      put(u"<B>x</B>", u"<HTML><BODY>", u"</BODY></HTML>"),
      "Version:1.0\r\nStartHTML:0000000105\r\nEndHTML:0000000179\r\nStartFragment:0000000138\r\n"
      "EndFragment:0000000146\r\n<HTML><BODY><!--StartFragment --><B>x</B><!--EndFragment --></BODY></HTML>");
}

TEST_F(HtmlFormat, TheCallersTextsGetTheMarks) {
  const std::u16string fragment = u"x";
  std::u16string prefix = u"<HTML>", suffix = u"</HTML>";
  PutHTMLOnClipboard(clipboard, fragment, prefix, suffix);
  EXPECT_EQ(prefix, u"<HTML><!--StartFragment -->");
  EXPECT_EQ(suffix, u"<!--EndFragment --></HTML>");
}

TEST_F(HtmlFormat, AFragmentWithAPlaceholderIsChangedAsWell) {
  const std::string block = put(u"aaaaaaaaaa cccccccccc");
  EXPECT_EQ(block.substr(126, 21), "0000000105 0000000126");
}

TEST_F(HtmlFormat, PlacesCountCharactersOfTheCodePage) {
  const SystemCodePageScope page(CodePage::windows_1252());
  const std::string block = put(u"\u00E9\u20AC\u0416");
  EXPECT_EQ(block.substr(126, 3), "\xE9\x80?");
  EXPECT_EQ(block.substr(69, 10), "0000000126");
  EXPECT_EQ(GetHTMLFromClipboard(clipboard), u"\u00E9\u20AC?");
}

TEST_F(HtmlFormat, WhatIsPutComesBackInEveryCodePage) {
  for (const CodePage& page : {CodePage::utf8(), CodePage::windows_1252()}) {
    const SystemCodePageScope scope(page);
    put(u"<P>\u00E9\u00FC</P>", u"<HTML><BODY>", u"</BODY></HTML>");
    EXPECT_EQ(GetHTMLFromClipboard(clipboard), u"<P>\u00E9\u00FC</P>");
  }
}

TEST_F(HtmlFormat, PlacesInBytesAreTakenAsCharacters) {
  const SystemCodePageScope page(CodePage::windows_1252());
  // Another program's: UTF-8, places in bytes.
  EXPECT_EQ(get("StartFragment:0000000052EndFragment:0000000055......\xC3\xA9x"), u"\u00C3\u00A9x");
}

TEST_F(HtmlFormat, TheNumberIsRegisteredOnce) {
  const ClipboardFormat format = GetHTMLFormatId();
  EXPECT_NE(format, ClipboardFormat::none);
  set_fault(u"RegisterClipboardFormat", {.result = 0}, 100);
  EXPECT_EQ(GetHTMLFormatId(), format);
}

TEST_F(HtmlFormat, AClipboardWithoutABlockGivesNothing) {
  EXPECT_EQ(GetHTMLFromClipboard(clipboard), u"");
  clipboard.put({{"text/html", "<b>x</b>"}, {"text/plain", "x"}});
  EXPECT_EQ(GetHTMLFromClipboard(clipboard), u"");
  clipboard.put({{"HTML Format", ""}});
  EXPECT_EQ(GetHTMLFromClipboard(clipboard), u"");
}

TEST_F(HtmlFormat, OddHeadersGiveNothing) {
  EXPECT_EQ(get("StartFragment:0000000000EndFragment:0000000060 text"), u"");
  EXPECT_EQ(get("startfragment:0000000001endfragment:0000000002"), u"");
  EXPECT_EQ(get("StartFragment:0000000020EndFragment:0000000010 text"), u"");
  EXPECT_EQ(get("StartFragment:9999999999EndFragment:9999999999"), u"");
  EXPECT_EQ(get("StartFragment:xEndFragment:y"), u"");
  EXPECT_EQ(get("EndFragment:0000000010"), u"");
}

TEST_F(HtmlFormat, TheBlockIsReadByItsLength) {
  std::string block = put(u"a");
  block.replace(126, 1, std::string(1, '\0'));
  EXPECT_EQ(get(block), std::u16string(1, u'\0'));
}

TEST_F(HtmlFormat, FailuresLeaveTheClipboardAsItWas) {
  clipboard.SetText(u"kept");
  set_fault(u"OpenClipboard", {.result = 0});
  put(u"x");
  EXPECT_EQ(clipboard.GetText(), u"kept");
  set_fault(u"GlobalAlloc", {.result = 0});
  put(u"x");
  EXPECT_EQ(clipboard.GetText(), u"kept");
  ASSERT_TRUE(clipboard.OpenClipboard());  // it was closed again
  clipboard.CloseClipboard();
  put(u"x");
  EXPECT_EQ(clipboard.GetText(), u"");
  set_fault(u"OpenClipboard", {.result = 0});
  EXPECT_EQ(GetHTMLFromClipboard(clipboard), u"");
}

TEST_F(HtmlFormat, TextHtmlIsOfferedBesideIt) {
  put(u"<P>\u0416</P>");
  EXPECT_EQ(clipboard.read("text/html"), "<P>\u0416</P>");
}

}  // namespace
}  // namespace tvx::clipboard
