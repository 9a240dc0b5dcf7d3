#include "tvx/transfer/listing_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/transfer/name_pattern.h"

namespace tvx::transfer {
namespace {

using platform::ListingForm;
using testing::ElementsAre;

// 2026-11-22 06:00 UTC
constexpr std::int64_t now = 1'795'327'200;

struct Read {
  std::vector<ListedEntry> entries;
  int skipped = 0;
};

Read read(std::string_view text, ListingForm form = ListingForm::Lines) {
  ListingParser parser(form, now);
  parser.add(text);
  parser.finish();
  return {{parser.entries().begin(), parser.entries().end()}, parser.skipped()};
}

std::vector<std::string> names(const Read& read) {
  std::vector<std::string> result;
  for (const ListedEntry& entry : read.entries) result.push_back(to_utf8(entry.name));
  return result;
}

bool is_folder(const ListedEntry& entry) { return entry.facts.attributes == attribute_directory; }

TEST(Listing, OfUnix) {
  const Read list = read(
      "total 24\r\n"
      "drwxr-xr-x    2 1000     1000         4096 Mar 01  2000 pictures\r\n"
      "-rw-r--r--    1 ada      users       12345 Nov 21 18:30 photo.gif\r\n"
      "lrwxrwxrwx    1 ada      users           9 Nov 21 18:30 latest -> photo.gif\r\n"
      "-rw-r--r--    1 ada      users           0 Dec 24 18:30 last-year.txt\r\n");
  EXPECT_THAT(names(list), ElementsAre("pictures", "photo.gif", "latest", "last-year.txt"));
  EXPECT_EQ(list.skipped, 0);
  EXPECT_TRUE(is_folder(list.entries[0]));
  EXPECT_DOUBLE_EQ(list.entries[0].facts.last_write, 36586.0);
  EXPECT_FALSE(is_folder(list.entries[1]));
  EXPECT_EQ(list.entries[1].facts.size, 12345u);
  EXPECT_NEAR(list.entries[1].facts.last_write, 46347 + 18.5 / 24, 1e-6);
  EXPECT_NEAR(list.entries[3].facts.last_write, 46015 + 18.5 / 24, 1e-6);  // 2025: it would be yet to come
  EXPECT_EQ(list.entries[1].facts.creation, -109205.0);
}

TEST(Listing, OfUnixWithoutAGroupWithoutLinksAndWithOtherDates) {
  const Read list = read(
      "-rw-r--r-- 1 ada 12 Nov 21 18:30 no-group\n"
      "-rw-r--r-- ada users 12 Nov 21 18:30 no-links\n"
      "-rw-r--r-- 1 ada users 12 2026-11-21 18:30 iso\n"
      "-rw-r--r--+ 1 ada domain users 12 Nov 1 2026 group of two words\n");
  EXPECT_THAT(names(list), ElementsAre("no-group", "no-links", "iso", "group of two words"));
  for (const ListedEntry& entry : list.entries) EXPECT_EQ(entry.facts.size, 12u);
  EXPECT_NEAR(list.entries[2].facts.last_write, 46347 + 18.5 / 24, 1e-6);
}

TEST(Listing, NamesKeepTheirBlanksQuotesAndLetters) {
  const Read list = read(
      "-rw-r--r-- 1 ada users 1 Nov 21 18:30  two leading\n"
      "-rw-r--r-- 1 ada users 1 Nov 21 18:30 \"quoted\" 'name'\n"
      "-rw-r--r-- 1 ada users 1 Nov 21 18:30 \xC3\xA4\xE2\x82\xAC.gif\n"
      "-rw-r--r-- 1 ada users 1 Nov 21 18:30 \xE4.gif\n"
      "-rw-r--r-- 1 ada users 1 Nov 21 18:30 trailing \r\n"
      "-rw-r--r-- 1 ada users 1 Nov 21 18:30 12 Nov 21 18:30 odd\n");
  EXPECT_THAT(names(list), ElementsAre(" two leading", "\"quoted\" 'name'", "ä€.gif", "ä.gif", "trailing ",
                                       "12 Nov 21 18:30 odd"));
}

TEST(Listing, OfDos) {
  const Read list = read(
      "11-22-26  05:59AM       <DIR>          pictures\r\n"
      "11-22-26  12:05PM                 1234 photo one.gif\r\n"
      "11-22-2026  12:05AM             5368709120 big.iso\r\n"
      "2026-11-22  17:05                    7 iso.txt\r\n"
      "11-22-26  05:59AM       <DIR>           leading\r\n");
  EXPECT_THAT(names(list), ElementsAre("pictures", "photo one.gif", "big.iso", "iso.txt", " leading"));
  EXPECT_TRUE(is_folder(list.entries[0]));
  EXPECT_NEAR(list.entries[0].facts.last_write, 46348 + (5 + 59 / 60.0) / 24, 1e-6);
  EXPECT_NEAR(list.entries[1].facts.last_write, 46348 + (12 + 5 / 60.0) / 24, 1e-6);
  EXPECT_NEAR(list.entries[2].facts.last_write, 46348 + (5 / 60.0) / 24, 1e-6);
  EXPECT_EQ(list.entries[2].facts.size, 5'368'709'120u);
}

TEST(Listing, OfFacts) {
  const Read list = read(
      "type=cdir;modify=20000301120000; .\r\n"
      "type=pdir;modify=20000301120000; ..\r\n"
      "Type=dir;Modify=20000301120000;perm=el; pictures\r\n"
      "type=file;size=5;modify=20000301120000.123;  leading and ; odd = name\r\n"
      "type=OS.unix=slink:/etc;size=4; link\r\n"
      " without facts\r\n",
      ListingForm::Facts);
  EXPECT_THAT(names(list), ElementsAre("pictures", " leading and ; odd = name", "link", "without facts"));
  EXPECT_TRUE(is_folder(list.entries[0]));
  EXPECT_EQ(list.entries[1].facts.size, 5u);
  constexpr std::int64_t noon_of_2000_03_01 = (11'644'473'600 + 951'912'000) * 10'000'000;
  EXPECT_DOUBLE_EQ(list.entries[1].facts.last_write, FileTimeToDate(noon_of_2000_03_01));
}

TEST(Listing, WhatMakesNoSenseIsSkippedWithACount) {
  EXPECT_EQ(
      read("hello\n-rw-r--r-- 1 ada users x Nov 21 18:30 a\n\n-rw-r--r-- 1 a b 1 Nov 99 18:30 b\n").skipped,
      3);
  EXPECT_EQ(read("hello\nnonsense here\n", ListingForm::Facts).skipped, 2);
  EXPECT_EQ(read("13-45-26  05:59AM   1 a\n").skipped, 1);
}

TEST(Listing, NamesThatLeadOutOfTheFolderAreSkipped) {
  const Read list = read(
      "type=file; ../x\r\ntype=file; /etc/passwd\r\ntype=file; ..\\x\r\ntype=file; ..\r\ntype=file; a/b\r\n"
      "type=file; ~\r\ntype=file; ...\r\n",
      ListingForm::Facts);
  EXPECT_THAT(names(list), ElementsAre("~", "..."));
  EXPECT_EQ(list.skipped, 4);
}

TEST(Listing, ANameEndsAtItsFirstZeroCharacter) {
  EXPECT_THAT(names(read(std::string_view("type=file; a\0b\r\n", 16), ListingForm::Facts)), ElementsAre("a"));
}

TEST(Listing, LinesMayArriveInPieces) {
  const std::string text = "type=file;size=1; a\r\ntype=file;size=2; b\r\ntype=file;size=3; c";
  for (std::size_t step = 1; step < text.size(); ++step) {
    ListingParser parser(ListingForm::Facts, now);
    for (std::size_t at = 0; at < text.size(); at += step)
      parser.add(std::string_view(text).substr(at, step));
    parser.finish();
    ASSERT_EQ(parser.entries().size(), 3u) << step;
    EXPECT_EQ(parser.entries()[2].facts.size, 3u);
  }
}

TEST(Listing, ALineWithoutAnEndDoesNotTakeAllMemory) {
  ListingParser parser(ListingForm::Facts, now);
  const std::string much(1 << 20, 'x');
  for (int i = 0; i < 64; ++i) parser.add(much);
  parser.finish();
  EXPECT_EQ(parser.skipped(), 1);
}

TEST(Pattern, StarsAndQuestionMarks) {
  const auto fits = [](std::u16string_view name, std::u16string_view pattern) {
    return fits_pattern(name, pattern, LetterCase::Ignored);
  };
  EXPECT_TRUE(fits(u"photo.GIF", u"*.gif"));
  EXPECT_FALSE(fits(u"photo.gif.txt", u"*.gif"));
  EXPECT_TRUE(fits(u"noextension", u"*.*"));
  EXPECT_TRUE(fits(u"anything", u""));
  EXPECT_TRUE(fits(u"a b.gif", u"a?b.gif"));
  EXPECT_FALSE(fits(u"ab.gif", u"a?b.gif"));
  EXPECT_TRUE(fits(u"aXbXc", u"a*b*c"));
  EXPECT_FALSE(fits(u"aXbX", u"a*b*c"));
  EXPECT_TRUE(fits(u"abc", u"***"));
  EXPECT_FALSE(fits_pattern(u"A.gif", u"a.gif", LetterCase::Counts));
  EXPECT_FALSE(fits(std::u16string(3000, u'a'), u"*a*a*a*a*a*a*a*a*b"));
}

}  // namespace
}  // namespace tvx::transfer
