#include "tvx/editing/search/text_count.h"

#include <gtest/gtest.h>

namespace tvx::editing {
namespace {

TEST(TextCount, CountsWordsAndCharacters) {
  EXPECT_EQ(count_text(u""), (TextCount{0, 0}));
  EXPECT_EQ(count_text(u"One, two – three!"), (TextCount{3, 17}));
  EXPECT_EQ(count_text(u"a\nb\n\nc"), (TextCount{3, 3})) << "a line's end is no character";
  EXPECT_EQ(count_text(u"don't 3.14 x"), (TextCount{3, 12}));
}

TEST(TextCount, ACharacterOfTwoUnitsIsOne) { EXPECT_EQ(count_text(u"\U0001F600a").characters, 2u); }

TEST(TextCount, CountsScriptsWithoutBlanksBetweenWords) {
  EXPECT_EQ(count_text(u"こんにちは世界").words, 2u);
  EXPECT_EQ(count_text(u"مرحبا بالعالم").words, 2u);
}

TEST(TextCounter, CountsAgainWhatWasEditedAndNothingElse) {
  std::u16string text;
  for (int i = 0; i < 1000; ++i)
    text += u"line number " + std::u16string(std::size_t(i % 7 + 1), u'x') + u" of many\n";
  TextCounter counter;
  counter.begin(text);
  while (!counter.go_on(10)) {
  }
  EXPECT_EQ(counter.count(), count_text(text));
  text.insert(0, u"new ");
  counter.begin(text);
  EXPECT_TRUE(counter.go_on(40)) << "one line is new";
  EXPECT_EQ(counter.count(), count_text(text));
}

TEST(TextCounter, PausesInALongTextThatIsKnown) {
  std::u16string text;
  for (int i = 0; i < 300'000; ++i) text += u"ten letters\n";
  TextCounter counter;
  counter.begin(text);
  int turns = 1;
  for (; !counter.go_on(10'000); ++turns) {
  }
  EXPECT_EQ(turns, 4) << "3.6 million units";
  EXPECT_EQ(counter.count(), (TextCount{600'000, 3'300'000}));
  EXPECT_EQ(count_text(text), counter.count());
}

TEST(TextCounter, StopsInTheMiddleOfWhatIsNew) {
  const std::u16string text = u"a b\nc d\ne f\n";
  TextCounter counter;
  counter.begin(text);
  EXPECT_FALSE(counter.go_on(1));
  EXPECT_EQ(counter.count().words, 2u);
  counter.begin(text);
  EXPECT_TRUE(counter.go_on(100));
  EXPECT_EQ(counter.count().words, 6u);
}

}  // namespace
}  // namespace tvx::editing
