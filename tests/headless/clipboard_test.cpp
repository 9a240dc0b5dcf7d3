#include "tvx/headless/clipboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/base/fault.h"

namespace tvx::headless {
namespace {

using platform::ClipboardFormat;
using platform::RegisterClipboardFormat;
using testing::ElementsAre;

class ClipboardTest : public testing::Test {
 protected:
  ~ClipboardTest() override { clear_faults(); }
  Clipboard clipboard;
};

TEST_F(ClipboardTest, HoldsNothingAtFirst) {
  EXPECT_FALSE(clipboard.IsClipboardFormatAvailable(ClipboardFormat::text));
  EXPECT_EQ(clipboard.GetText(), u"");
  EXPECT_EQ(clipboard.GetClipboardData(ClipboardFormat::text), std::nullopt);
}

TEST_F(ClipboardTest, PlainTextAnswersToItsThreeNumbers) {
  clipboard.SetText(u"Grüße \U0001F600");
  for (ClipboardFormat format :
       {ClipboardFormat::text, ClipboardFormat::oem_text, ClipboardFormat::unicode_text}) {
    EXPECT_TRUE(clipboard.GetFormat(format));
    EXPECT_EQ(clipboard.GetText(format), u"Grüße \U0001F600");
  }
  EXPECT_FALSE(clipboard.GetFormat(ClipboardFormat::rich_text));
}

TEST_F(ClipboardTest, AsksForTheFormatAndNotForText) {
  clipboard.put({{"text/rtf", "{\\rtf1}"}});
  EXPECT_TRUE(clipboard.GetFormat(ClipboardFormat::rich_text));
  EXPECT_FALSE(clipboard.GetFormat(ClipboardFormat::text));
  clipboard.put({{"image/jpeg", "JFIF"}});
  EXPECT_TRUE(clipboard.GetFormat(ClipboardFormat::bitmap));
  EXPECT_TRUE(clipboard.GetFormat(ClipboardFormat::dib));
  EXPECT_FALSE(clipboard.GetFormat(ClipboardFormat::metafile));
  EXPECT_FALSE(clipboard.GetFormat(ClipboardFormat::palette));
  clipboard.put({{"text/uri-list", "file:///a\r\n"}});
  EXPECT_TRUE(clipboard.GetFormat(ClipboardFormat::file_list));
  clipboard.SetText(u"http://a/\nA", ClipboardFormat::link);
  EXPECT_TRUE(clipboard.GetFormat(ClipboardFormat::link));
  EXPECT_EQ(clipboard.GetText(ClipboardFormat::link), u"http://a/\nA");
}

TEST_F(ClipboardTest, ANameHasOneNumberForEver) {
  const ClipboardFormat format = RegisterClipboardFormat(u"HTML Format");
  EXPECT_GE(number_of(format), 0xC000);
  EXPECT_EQ(RegisterClipboardFormat(u"html format"), format);
  EXPECT_NE(RegisterClipboardFormat(u"Another"), format);
  EXPECT_EQ(platform::target_of(format), "HTML Format");
}

TEST_F(ClipboardTest, OthersSeeTheContentAtTheClose) {
  ASSERT_TRUE(clipboard.OpenClipboard());
  clipboard.EmptyClipboard();
  const std::string with_nul("a\0b", 3);
  clipboard.SetClipboardData(RegisterClipboardFormat(u"HTML Format"), with_nul);
  EXPECT_TRUE(clipboard.items().empty());
  clipboard.CloseClipboard();
  EXPECT_EQ(clipboard.GetClipboardData(RegisterClipboardFormat(u"HTML Format")), with_nul);
}

TEST_F(ClipboardTest, WhatIsNotEmptiedStaysBesideWhatIsSet) {
  clipboard.SetText(u"one");
  clipboard.OpenClipboard();
  clipboard.SetClipboardData(ClipboardFormat::rich_text, "{}");
  clipboard.CloseClipboard();
  EXPECT_EQ(clipboard.GetText(), u"one");
  EXPECT_TRUE(clipboard.GetFormat(ClipboardFormat::rich_text));
}

TEST_F(ClipboardTest, OneThatCantBeOpenedStaysAsItIs) {
  clipboard.SetText(u"one");
  set_fault(u"OpenClipboard", {.result = 0}, 2);
  clipboard.SetText(u"two");
  clipboard.Clear();
  EXPECT_EQ(clipboard.GetText(), u"one");
  EXPECT_FALSE(clipboard.SetClipboardData(ClipboardFormat::text, "three"));
  EXPECT_FALSE(clipboard.EmptyClipboard());
  clipboard.Clear();
  EXPECT_THAT(clipboard.targets(), ElementsAre());
}

TEST_F(ClipboardTest, IsOpenForOneAtATime) {
  ASSERT_TRUE(clipboard.OpenClipboard());
  EXPECT_FALSE(clipboard.OpenClipboard());
  clipboard.CloseClipboard();
  EXPECT_TRUE(clipboard.OpenClipboard());
  clipboard.CloseClipboard();
}

}  // namespace
}  // namespace tvx::headless
