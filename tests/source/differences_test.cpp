#include "tvx/source/differences.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>

#include "tvx/base/strings.h"
#include "tvx/source/likeness.h"
#include "tvx/source/text_differences.h"

namespace tvx::source {

void PrintTo(const Difference& part, std::ostream* out) {
  *out << "{" << part.begin << ", " << part.end << ", " << part.new_begin << ", " << part.new_end << "}";
}

namespace {

using Items = std::vector<std::uint32_t>;
using Parts = std::vector<Difference>;

/// The second sequence, made of the first and of what differs.
Items applied(const Items& before, const Items& after, const Parts& parts) {
  Items result;
  std::size_t done = 0;
  for (const Difference& part : parts) {
    result.insert(result.end(), before.begin() + std::ptrdiff_t(done),
                  before.begin() + std::ptrdiff_t(part.begin));
    result.insert(result.end(), after.begin() + std::ptrdiff_t(part.new_begin),
                  after.begin() + std::ptrdiff_t(part.new_end));
    done = part.end;
  }
  result.insert(result.end(), before.begin() + std::ptrdiff_t(done), before.end());
  return result;
}

constexpr Matching all_ways[] = {Matching::Unique, Matching::Most, Matching::Both};

TEST(Differences, OfNothingAreNone) {
  for (const Matching way : all_ways) {
    EXPECT_EQ(differences({}, {}, way), Parts());
    EXPECT_EQ(differences({}, Items{1, 2}, way), (Parts{{0, 0, 0, 2}}));
    EXPECT_EQ(differences(Items{1, 2}, {}, way), (Parts{{0, 2, 0, 0}}));
  }
}

TEST(Differences, OfEqualsAreNone) {
  for (const Matching way : all_ways) EXPECT_EQ(differences(Items{1, 1, 2}, Items{1, 1, 2}, way), Parts());
}

TEST(Differences, WhereNothingIsSharedAllIsOne) {
  for (const Matching way : all_ways)
    EXPECT_EQ(differences(Items{1, 2, 3}, Items{4, 5}, way), (Parts{{0, 3, 0, 2}}));
}

TEST(Differences, AreNoMoreThanWhatDiffers) {
  for (const Matching way : all_ways) {
    EXPECT_EQ(differences(Items{1, 2, 3}, Items{1, 9, 2, 3}, way), (Parts{{1, 1, 1, 2}}));
    EXPECT_EQ(differences(Items{1, 2, 3}, Items{1, 3}, way), (Parts{{1, 2, 1, 1}}));
    EXPECT_EQ(differences(Items{1, 2, 3, 4, 5}, Items{9, 2, 3, 8, 5}, way),
              (Parts{{0, 1, 0, 1}, {3, 4, 3, 4}}));
  }
}

TEST(Differences, OfRepeatsNeedTheWayThatSharesMost) {
  const Items before{7, 1, 7, 7, 2, 7}, after{7, 7, 7, 2, 2, 7};
  EXPECT_EQ(differences(before, after, Matching::Most), (Parts{{1, 2, 1, 1}, {4, 4, 3, 4}}));
  EXPECT_EQ(applied(before, after, differences(before, after, Matching::Unique)), after);
}

TEST(Differences, WhatStandsOnceInBothCountsFirst) {
  // More could be shared without the 5, which is what surely has stayed.
  EXPECT_EQ(differences(Items{5, 1, 1, 1}, Items{1, 1, 1, 5}, Matching::Both),
            (Parts{{0, 0, 0, 3}, {1, 4, 4, 4}}));
  EXPECT_EQ(differences(Items{5, 1, 1, 1}, Items{1, 1, 1, 5}, Matching::Most),
            (Parts{{0, 1, 0, 0}, {4, 4, 3, 4}}));
}

TEST(Differences, LeadFromOneSequenceToTheOther) {
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i) {
    Items before(random() % 40), after;
    for (std::uint32_t& item : before) item = random() % (1 + i % 17);
    for (const std::uint32_t item : before) {
      if (random() % 6 == 0) after.push_back(random() % 17);
      if (random() % 6 != 0) after.push_back(item);
    }
    for (const Matching way : all_ways)
      ASSERT_EQ(applied(before, after, differences(before, after, way)), after) << i;
  }
}

/// Processor time of the better of two runs.
template <class Run>
double milliseconds(Run&& run) {
  double best = 1e9;
  for (int i = 0; i < 2; ++i) {
    const std::clock_t start = std::clock();
    run();
    best = std::min(best, 1e3 * double(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return best;
}

TEST(Differences, OfLargeSequencesCostAsMuchAsTheirLength) {
  const auto cost = [](std::size_t size, std::uint32_t kinds) {
    std::mt19937 random(2);
    Items before(size), after;
    for (std::uint32_t& item : before) item = random() % kinds;
    for (const std::uint32_t item : before)
      if (random() % 50 != 0) after.push_back(random() % 50 == 0 ? 0 : item);
    return milliseconds([&] { EXPECT_FALSE(differences(before, after).empty()); });
  };
  // Few kinds: nothing stands once. Many: nearly everything does.
  for (const std::uint32_t kinds : {3u, 1'000'000'000u}) {
    const double small = cost(80'000, kinds), large = cost(320'000, kinds);
    EXPECT_LT(large, 10 * small + 20) << kinds << " kinds: " << small << " ms, then " << large << " ms";
  }
}

// --- texts ---

Parts of(std::u16string_view before, std::u16string_view after) { return text_differences(before, after); }

TEST(TextDifferences, GoFromLetterToLetter) {
  EXPECT_EQ(of(u"", u""), Parts());
  EXPECT_EQ(of(u"a b", u"a b"), Parts());
  EXPECT_EQ(of(u"", u"a"), (Parts{{0, 0, 0, 1}}));
  EXPECT_EQ(of(u"a b", u"a  b"), (Parts{{1, 2, 1, 3}}));
  EXPECT_EQ(of(u"a b c", u"a c"), (Parts{{1, 4, 1, 2}}));
  EXPECT_EQ(of(u"one\r\n  two\r\n", u"one\r\ntwo\r\n"), (Parts{{3, 7, 3, 5}}));
}

TEST(TextDifferences, ALineIsKnownWhateverItsIndentation) {
  EXPECT_EQ(of(u"<P>a\r\n<P>b\r\n", u"<DIV>\r\n  <P>a\r\n  <P>b\r\n"), (Parts{{0, 0, 0, 9}, {4, 6, 13, 17}}));
}

TEST(TextDifferences, OfEqualLinesTheOneWithTheSameIndentationStays) {
  EXPECT_EQ(of(u"<UL>\r\n  </DIV>\r\n5\r\n</DIV>\r\n", u"<UL>\r\n  </DIV>\r\n"), (Parts{{14, 27, 14, 16}}));
}

TEST(TextDifferences, TagsArePutInWhole) {
  EXPECT_EQ(of(u"a<P>b", u"a<B><P>b"), (Parts{{1, 1, 1, 4}}));
  EXPECT_EQ(of(u"a<I>b</I>c", u"a<I><I>b</I></I>c"), (Parts{{4, 4, 4, 7}, {5, 5, 8, 12}}));
  EXPECT_EQ(of(u"a<I><P>b", u"a<P>b"), (Parts{{1, 4, 1, 1}}));
}

TEST(TextDifferences, AnEditIsFoundInItsLineThoughTheNextOneIsGone) {
  EXPECT_EQ(of(u"<P>one</P>\r\n<P>two</P>\r\n", u"<P>two new</P>\r\n"),
            (Parts{{0, 12, 0, 0}, {18, 18, 6, 10}}));
}

TEST(TextDifferences, OfLargeTextsCostAsMuchAsTheirLength) {
  const auto cost = [](std::size_t lines) {
    std::u16string before, after;
    for (std::size_t i = 0; i < lines; ++i) {
      const std::u16string line = u"<P>line " + to_text(std::int64_t(i)) + u"</P>\r\n";
      before += line;
      after += u"  " + line;
      if (i % 10 == 0) after += u"<HR>\r\n";
    }
    return milliseconds([&] { EXPECT_FALSE(text_differences(before, after).empty()); });
  };
  const double small = cost(7'500), large = cost(30'000);
  EXPECT_LT(large, 10 * small + 20) << small << " ms, then " << large << " ms";
}

TEST(TextDifferences, OneLineWithoutEndIsNoTrouble) {
  std::u16string before, after;
  for (std::size_t i = 0; i < 20'000; ++i) {
    before += u"<I>" + to_text(std::int64_t(i)) + u"</I> ";
    after += u"<B>" + to_text(std::int64_t(i)) + u"</B> ";
  }
  EXPECT_LT(milliseconds([&] { EXPECT_FALSE(text_differences(before, after).empty()); }), 1'000);
}

// --- how much lines have in common ---

TEST(Likeness, CountsLettersAndPairsOfLetters) {
  EXPECT_EQ(Likeness(u"abc").most(), 5u);
  EXPECT_EQ(Likeness(u"abc").with(u"abc"), 5u);
  EXPECT_EQ(Likeness(u"abc").with(u""), 0u);
  EXPECT_EQ(Likeness(u"").with(u"abc"), 0u);
  EXPECT_EQ(Likeness(u"abc").with(u"axbxc"), 3u);
  EXPECT_EQ(Likeness(u"abc").with(u"bcx"), 3u);
}

TEST(Likeness, IsTheLongestCommonSubsequenceAtAnyLength) {
  std::mt19937 random(3);
  const auto longest = [](std::u16string_view a, std::u16string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (const char16_t c : a)
      for (std::size_t j = 0, diagonal = 0; j < b.size(); ++j) {
        const std::size_t above = row[j + 1];
        row[j + 1] = c == b[j] ? diagonal + 1 : std::max(above, row[j]);
        diagonal = above;
      }
    return row.back();
  };
  const auto pairs = [](std::u16string_view text) {
    std::u16string result;
    for (std::size_t i = 1; i < text.size(); ++i) result += char16_t(text[i - 1] * 16 + text[i]);
    return result;
  };
  for (int i = 0; i < 200; ++i) {
    std::u16string a(random() % 200, 0), b(random() % 200, 0);
    for (std::u16string* text : {&a, &b})
      for (char16_t& c : *text) c = char16_t(1 + random() % 4);
    ASSERT_EQ(Likeness(a).with(b), longest(a, b) + longest(pairs(a), pairs(b))) << i;
  }
}

}  // namespace
}  // namespace tvx::source
