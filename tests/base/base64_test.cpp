#include "tvx/base/base64.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

// RFC 4648, section 10.
TEST(Base64, CodesTheVectorsOfTheStandard) {
  const std::pair<std::string, std::string> vectors[] = {
      {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"foobar", "Zm9vYmFy"}};
  for (const auto& [bytes, text] : vectors) {
    EXPECT_EQ(to_base64(bytes), text);
    EXPECT_EQ(from_base64(text), bytes);
  }
}

TEST(Base64, KeepsEveryByte) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(from_base64(to_base64(bytes)), bytes);
}

TEST(Base64, ReadsLinesAndMissingPadding) {
  EXPECT_EQ(from_base64("Zm9v\r\nYmE"), "fooba");
  EXPECT_EQ(from_base64("Zm9v*"), std::nullopt);
  EXPECT_EQ(from_base64("Z"), std::nullopt);
}

}  // namespace
}  // namespace tvx
