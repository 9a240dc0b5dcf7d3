#include "tvx/platform/common_dialogs.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tvx::platform {
namespace {

TEST(MessageBox, ClosingItIsOneOfItsAnswers) {
  for (const auto buttons : {MessageButtons::ok, MessageButtons::ok_cancel, MessageButtons::yes_no,
                             MessageButtons::yes_no_cancel}) {
    const auto answers = answers_of(buttons);
    EXPECT_EQ(std::count(answers.begin(), answers.end(), answer_when_closed(buttons)), 1);
  }
}

TEST(MessageBox, ClosingItNeverAgrees) {
  EXPECT_EQ(answer_when_closed(MessageButtons::ok_cancel), MessageAnswer::cancel);
  EXPECT_EQ(answer_when_closed(MessageButtons::yes_no), MessageAnswer::no);
  EXPECT_EQ(answer_when_closed(MessageButtons::yes_no_cancel), MessageAnswer::cancel);
}

TEST(MessageBox, BearsTheControlsName) { EXPECT_EQ(MessageBox{}.title, u"HTMLed"); }

}  // namespace
}  // namespace tvx::platform
