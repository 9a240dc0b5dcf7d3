#include "tvx/transfer/directory_list.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace tvx::transfer {
namespace {

/// The local time of these tests, whatever the machine's is.
class Zone {
 public:
  explicit Zone(const char* zone) {
    if (const char* set = std::getenv("TZ")) before_ = set;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~Zone() {
    before_.empty() ? unsetenv("TZ") : setenv("TZ", before_.c_str(), 1);
    tzset();
  }

 private:
  std::string before_;
};

TEST(DirectoryList, AnEmptyListGivesTheFolderAbove) {
  const clsDirectoryList list;
  const clsDirectoryItem item = list.item(1);
  EXPECT_TRUE(item.Directory);
  EXPECT_TRUE(item.System);
  EXPECT_EQ(item.Filename, u"..");
  EXPECT_EQ(list.item(u"no").Filename, u"..");
  EXPECT_EQ(list.item(0).Filename, u"..");
}

TEST(DirectoryList, NamesAreKeysWithoutRegardToCase) {
  clsDirectoryList list;
  list.add({.attributes = attribute_normal, .size = 3}, u"a.gif");
  EXPECT_EQ(list.item(u"a.gif").FileSize, 3);
  EXPECT_EQ(list.item(u"A.GIF").Filename, u"a.gif");
  EXPECT_EQ(list.item(1).Filename, u"a.gif");
}

TEST(DirectoryList, OfTwoNamesThatDifferInCaseOnlyTheFirstStays) {
  clsDirectoryList list;
  list.add({.size = 1}, u"Photo.gif");
  EXPECT_EQ(list.add({.size = 2}, u"photo.GIF").FileSize, 2);
  list.add({.size = 3}, u"other.gif");
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.item(u"PHOTO.gif").FileSize, 1);
  EXPECT_EQ(list.item(2).Filename, u"other.gif");
}

TEST(DirectoryList, AttributesAreBits) {
  clsDirectoryList list;
  const clsDirectoryItem all =
      list.add({.attributes = 0x1 | 0x2 | 0x4 | 0x10 | 0x20 | 0x80 | 0x100 | 0x800 | 0x1000}, u"a");
  EXPECT_TRUE(all.readonly && all.Hidden && all.System && all.Directory && all.Archive && all.Normal &&
              all.Temporary && all.Compressed && all.Offline);
  const clsDirectoryItem none = list.add({}, u"b");
  EXPECT_FALSE(none.readonly || none.Hidden || none.System || none.Directory || none.Archive || none.Normal ||
               none.Temporary || none.Compressed || none.Offline);
}

TEST(DirectoryList, FiveGigabytesAreTheirLowPart) {
  clsDirectoryList list;
  EXPECT_EQ(list.add({.size = 5'368'709'120}, u"a").FileSize, 1'073'741'824);
  EXPECT_EQ(list.add({.size = 3'221'225'472}, u"b").FileSize, -1'073'741'824);
}

TEST(DirectoryList, ClearingThinsTheListOut) {
  clsDirectoryList list;
  for (const char16_t* name : {u"1", u"2", u"3", u"4", u"5"}) list.add({}, name);
  list.clear();
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.item(1).Filename, u"2");
  EXPECT_EQ(list.item(u"4").Filename, u"4");
}

TEST(FileTime, ZeroIsTheFirstDayOfTheSystem) { EXPECT_EQ(FileTimeToDate(0), -109205.0); }

TEST(FileTime, ATimeIsInLocalTime) {
  constexpr std::int64_t noon_of_2000_03_01 = (11'644'473'600 + 951'912'000) * 10'000'000;
  {
    const Zone utc("UTC0");
    EXPECT_DOUBLE_EQ(FileTimeToDate(noon_of_2000_03_01), 36586.5);
  }
  const Zone east("EST-3");
  EXPECT_DOUBLE_EQ(FileTimeToDate(noon_of_2000_03_01), 36586.5 + 3.0 / 24);
}

TEST(FileTime, WhatIsNoTimeIsTheFirstDate) { EXPECT_EQ(FileTimeToDate(-5), 0); }

}  // namespace
}  // namespace tvx::transfer
