#include "htmled/writing_choices.h"

#include <gtest/gtest.h>

#include <utility>

namespace tvx::htmled {
namespace {

using writing_choices::is_on, writing_choices::turn, writing_choices::Writing;

TEST(WritingChoices, AreOnUntilOneIsTurnedOffAndTheOtherStays) {
  for (const auto& [one, other] :
       {std::pair(Writing::Waves, Writing::AutoFormat), std::pair(Writing::AutoFormat, Writing::Waves)}) {
    EXPECT_TRUE(is_on(one));
    turn(one);
    EXPECT_FALSE(is_on(one));
    EXPECT_TRUE(is_on(other));
    turn(one);
    EXPECT_TRUE(is_on(one));
  }
}

}  // namespace
}  // namespace tvx::htmled
