#include "qt/real_view.h"
#include "tvx/base/strings.h"

namespace tvx::qt {
namespace {

/// Caret moves in lines with text that runs from right to left.
class Bidi : public RealView {
 protected:
  void caret(Offset offset) {
    document_->editor().selection().collapse({document_->body()->first_child()->first_child(), offset});
    ASSERT_TRUE(settle());
  }
  Offset after(int key, int times = 1, Qt::KeyboardModifiers held = Qt::NoModifier) {
    for (int i = 0; i < times; ++i) post_key(key, {}, held);
    EXPECT_TRUE(settle());
    return document_->editor().selection().focus().offset;
  }
};

TEST_F(Bidi, LeftGoesOnInAHebrewParagraph) {
  open(u"<!DOCTYPE html><body><p dir=rtl>\u05D0\u05D1\u05D2\u05D3 \u05D4\u05D5\u05D6</p>");
  caret(0);
  EXPECT_EQ(after(Qt::Key_Left), 1u);
  EXPECT_EQ(after(Qt::Key_Left, 2), 3u);
  EXPECT_EQ(after(Qt::Key_Right), 2u);
}

TEST_F(Bidi, LeftGoesOnInAnArabicParagraph) {
  open(u"<!DOCTYPE html><body><p dir=rtl>\u0645\u0631\u062D\u0628\u0627</p>");
  caret(0);
  EXPECT_EQ(after(Qt::Key_Left, 5), 5u);
  EXPECT_EQ(after(Qt::Key_Right, 2), 3u);
}

TEST_F(Bidi, HomeAndEndAreTheLinesEnds) {
  open(u"<!DOCTYPE html><body><p dir=rtl>\u05D0\u05D1\u05D2\u05D3</p>");
  caret(2);
  EXPECT_EQ(after(Qt::Key_Home), 0u);
  EXPECT_EQ(after(Qt::Key_End), 4u);
}

TEST_F(Bidi, WordsFollowTheParagraph) {
  open(u"<!DOCTYPE html><body><p dir=rtl>\u05D0\u05D1\u05D2 \u05D3\u05D4</p>");
  caret(0);
  const Offset on = after(Qt::Key_Left, 1, Qt::ControlModifier);
  EXPECT_GE(on, 3u);
  EXPECT_LT(after(Qt::Key_Right, 1, Qt::ControlModifier), on);
}

TEST_F(Bidi, ShiftExtendsAndAStretchCollapsesToTheSideOfTheKey) {
  open(u"<!DOCTYPE html><body><p dir=rtl>\u05D0\u05D1\u05D2\u05D3</p>");
  caret(0);
  EXPECT_EQ(after(Qt::Key_Left, 2, Qt::ShiftModifier), 2u);
  EXPECT_EQ(document_->editor().selection().anchor().offset, 0u);
  EXPECT_EQ(after(Qt::Key_Right), 0u);
  EXPECT_TRUE(document_->editor().selection().collapsed());
}

TEST_F(Bidi, WhatIsTypedStandsAtTheCaret) {
  open(u"<!DOCTYPE html><body><p dir=rtl>\u05D0\u05D1\u05D2</p>");
  caret(0);
  post_key(Qt::Key_Left);
  post_key(0x05E9, QStringLiteral("\u05E9"));
  ASSERT_TRUE(settle());
  EXPECT_EQ(from_utf8(html()), u"<P dir=\"rtl\">\u05D0\u05E9\u05D1\u05D2</P>");
}

// The engine's keys go by the direction of the paragraph, through each character once.
TEST_F(Bidi, HebrewWithinEnglishIsPassedAsItIsRead) {
  open(u"<!DOCTYPE html><body><p>abc \u05D0\u05D1\u05D2 def</p>");
  caret(3);
  for (Offset expected = 4; expected <= 9; ++expected) EXPECT_EQ(after(Qt::Key_Right), expected);
  for (Offset expected = 8; expected >= 3; --expected) EXPECT_EQ(after(Qt::Key_Left), expected);
}

}  // namespace
}  // namespace tvx::qt
