#include "tvx/platform/transfer_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tvx::platform {
namespace {

using testing::ElementsAre;

TEST(TransferData, FetchesEachFormOnce) {
  const TransferItemSource source({{"text/html", "<b>x</b>"},
                                   {"text/plain", "x"},
                                   {"image/jpeg", "jpeg"},
                                   {"image/png", "png"},
                                   {"text/uri-list", "# note\r\nfile:///a%20b\r\n\r\nhttp://c/\r\n"}});
  const TransferData data = fetch(source);
  EXPECT_EQ(data.html, u"<b>x</b>");
  EXPECT_EQ(data.text, u"x");
  EXPECT_EQ(data.image, "png");
  EXPECT_EQ(data.image_type, "image/png");
  EXPECT_THAT(data.uris, ElementsAre(u"file:///a%20b", u"http://c/"));
}

TEST(TransferData, IsEmptyWhereNothingIsOfUse) {
  const TransferData data =
      fetch(TransferItemSource({{"application/x-other", "bytes"}, {"image/x-xpixmap", "!"}}));
  EXPECT_TRUE(data.empty());
  EXPECT_EQ(data.image_type, "");
}

TEST(TransferData, ReadsTextWithMarksAndNuls) {
  EXPECT_EQ(decode_transfer_text("\xEF\xBB\xBFä"), u"ä");
  EXPECT_EQ(decode_transfer_text(std::string("a\0", 2)), u"a");
  EXPECT_EQ(decode_transfer_text(std::string("\xFF\xFE<\0\x3D\xD8\x00\xDE", 8)), u"<\U0001F600");
  EXPECT_EQ(decode_transfer_text(std::string("\xFE\xFF\0<", 4)), u"<");
}

TEST(TransferData, OnlyTheTextWhereOnlyTextIsWanted) {
  const TransferData data = fetch_text(TransferItemSource({{"text/html", "<b>x</b>"}, {"text/plain", "x"}}));
  EXPECT_EQ(data.text, u"x");
  EXPECT_EQ(data.html, u"");
}

}  // namespace
}  // namespace tvx::platform
