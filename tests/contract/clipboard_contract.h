#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tvx/base/fault.h"
#include "tvx/platform/clipboard.h"

/// What every clipboard does.
namespace tvx::contract {

using platform::ClipboardFormat;

template <class Clipboard>
class ClipboardContract : public testing::Test {
 protected:
  ClipboardContract() { clipboard().Clear(); }
  ~ClipboardContract() override {
    clear_faults();
    clipboard().Clear();
  }
  platform::Clipboard& clipboard() { return clipboard_; }

 private:
  Clipboard clipboard_;
};

TYPED_TEST_SUITE_P(ClipboardContract);

TYPED_TEST_P(ClipboardContract, HoldsNothingWhenItIsCleared) {
  this->clipboard().SetText(u"one");
  this->clipboard().Clear();
  EXPECT_FALSE(this->clipboard().IsClipboardFormatAvailable(ClipboardFormat::text));
  EXPECT_EQ(this->clipboard().GetText(), u"");
  EXPECT_EQ(this->clipboard().GetClipboardData(ClipboardFormat::text), std::nullopt);
}

TYPED_TEST_P(ClipboardContract, TellsThoseWhoShowItOfEachContent) {
  struct : platform::ClipboardObserver {
    void clipboard_changed() override { ++heard; }
    int heard = 0;
  } observer;
  this->clipboard().add_observer(observer);
  this->clipboard().SetText(u"one");
  EXPECT_GT(observer.heard, 0);
  this->clipboard().remove_observer(observer);
  const int heard = observer.heard;
  this->clipboard().SetText(u"two");
  EXPECT_EQ(observer.heard, heard);
}

TYPED_TEST_P(ClipboardContract, PlainTextAnswersToItsThreeNumbers) {
  this->clipboard().SetText(u"Gr\u00FC\u00DFe \U0001F600\r\nline");
  for (const ClipboardFormat format :
       {ClipboardFormat::text, ClipboardFormat::oem_text, ClipboardFormat::unicode_text}) {
    EXPECT_TRUE(this->clipboard().GetFormat(format));
    EXPECT_EQ(this->clipboard().GetText(format), u"Gr\u00FC\u00DFe \U0001F600\r\nline");
  }
  EXPECT_FALSE(this->clipboard().GetFormat(ClipboardFormat::rich_text));
}

TYPED_TEST_P(ClipboardContract, AsksForTheFormatAndNotForText) {
  this->clipboard().put({{"text/rtf", "{\\rtf1}"}});
  EXPECT_TRUE(this->clipboard().GetFormat(ClipboardFormat::rich_text));
  EXPECT_FALSE(this->clipboard().GetFormat(ClipboardFormat::text));
  this->clipboard().put({{"text/uri-list", "file:///a\r\n"}});
  EXPECT_TRUE(this->clipboard().GetFormat(ClipboardFormat::file_list));
  this->clipboard().SetText(u"http://a/\nA", ClipboardFormat::link);
  EXPECT_TRUE(this->clipboard().GetFormat(ClipboardFormat::link));
  EXPECT_EQ(this->clipboard().GetText(ClipboardFormat::link), u"http://a/\nA");
}

TYPED_TEST_P(ClipboardContract, OthersSeeTheContentAtTheClose) {
  const ClipboardFormat html = platform::RegisterClipboardFormat(u"HTML Format");
  ASSERT_TRUE(this->clipboard().OpenClipboard());
  this->clipboard().EmptyClipboard();
  const std::string with_nul("a\0b", 3);
  EXPECT_TRUE(this->clipboard().SetClipboardData(html, with_nul));
  EXPECT_EQ(this->clipboard().read("HTML Format"), "");
  this->clipboard().CloseClipboard();
  EXPECT_EQ(this->clipboard().GetClipboardData(html), with_nul);
  EXPECT_EQ(this->clipboard().read("HTML Format"), with_nul);
}

TYPED_TEST_P(ClipboardContract, WhatIsNotEmptiedStaysBesideWhatIsSet) {
  this->clipboard().SetText(u"one");
  this->clipboard().OpenClipboard();
  this->clipboard().SetClipboardData(ClipboardFormat::rich_text, "{}");
  this->clipboard().CloseClipboard();
  EXPECT_EQ(this->clipboard().GetText(), u"one");
  EXPECT_TRUE(this->clipboard().GetFormat(ClipboardFormat::rich_text));
}

TYPED_TEST_P(ClipboardContract, OneThatCantBeOpenedStaysAsItIs) {
  this->clipboard().SetText(u"one");
  set_fault(u"OpenClipboard", {.result = 0}, 2);
  this->clipboard().SetText(u"two");
  this->clipboard().Clear();
  EXPECT_EQ(this->clipboard().GetText(), u"one");
  EXPECT_FALSE(this->clipboard().SetClipboardData(ClipboardFormat::text, "three"));
  EXPECT_FALSE(this->clipboard().EmptyClipboard());
}

TYPED_TEST_P(ClipboardContract, IsOpenForOneAtATime) {
  ASSERT_TRUE(this->clipboard().OpenClipboard());
  EXPECT_FALSE(this->clipboard().OpenClipboard());
  this->clipboard().CloseClipboard();
  EXPECT_TRUE(this->clipboard().OpenClipboard());
  this->clipboard().CloseClipboard();
}

TYPED_TEST_P(ClipboardContract, HoldsSeveralFormsOfOneContent) {
  this->clipboard().put({{"text/html", "<b>x</b>"}, {"text/plain", "x"}, {"application/x-own", "\x01\x02"}});
  EXPECT_THAT(this->clipboard().targets(),
              testing::IsSupersetOf({"text/html", "text/plain", "application/x-own"}));
  EXPECT_EQ(this->clipboard().read("text/html"), "<b>x</b>");
  EXPECT_EQ(this->clipboard().read("text/plain"), "x");
  EXPECT_EQ(this->clipboard().read("application/x-own"), "\x01\x02");
  EXPECT_EQ(this->clipboard().read("image/png"), "");
}

REGISTER_TYPED_TEST_SUITE_P(ClipboardContract, HoldsNothingWhenItIsCleared, TellsThoseWhoShowItOfEachContent,
                            PlainTextAnswersToItsThreeNumbers, AsksForTheFormatAndNotForText,
                            OthersSeeTheContentAtTheClose, WhatIsNotEmptiedStaysBesideWhatIsSet,
                            OneThatCantBeOpenedStaysAsItIs, IsOpenForOneAtATime,
                            HoldsSeveralFormsOfOneContent);

}  // namespace tvx::contract
