#include "tvx/browser/natural_size.h"

#include <gtest/gtest.h>

namespace tvx::browser {
namespace {

TEST(PictureInAddress, IsWhatStandsThereInBase64) {
  EXPECT_EQ(picture_in_address(u"data:image/png;base64,YWI="), "ab");
  EXPECT_EQ(picture_in_address(u"data:image/png;BASE64,YWI="), "ab");
  EXPECT_EQ(picture_in_address(u"data:image/png;base64,"), "");
}

TEST(PictureInAddress, IsInNoOtherAddress) {
  for (const char16_t* other : {u"", u"data:", u"data:image/png;base64", u"data:image/png,YWI=",
                                u"http://example.org/x;base64,YWI=", u"file:///tmp/a.png"})
    EXPECT_EQ(picture_in_address(other), std::nullopt) << to_utf8(std::u16string_view(other));
}

}  // namespace
}  // namespace tvx::browser
