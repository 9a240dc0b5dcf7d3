#include "tvx/platform/html_block.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

std::string page(const std::string& block) {
  const auto text = page_of_html_block(block);
  return text ? to_utf8(*text) : "none";
}

/// A block whose header names these positions, with bytes after it from 100 on.
std::string block(const std::string& header, const std::string& bytes) {
  return "Version:0.9\r\n" + header + std::string(87 - header.size(), ' ') + bytes;
}

TEST(HtmlBlock, GivesBackWhatWasPutIn) {
  EXPECT_EQ(page(html_block(u"<b>\u00FC</b>")),
            "<html><body>\r\n<!--StartFragment--><b>\xC3\xBC</b><!--EndFragment-->\r\n</body>\r\n</html>");
}

// Styles of its head belong to a fragment.
TEST(HtmlBlock, WithItsMarksIsTakenWhole) {
  const std::string whole = "<html><style>p{}</style><!--StartFragment--><p>a</p><!--EndFragment--></html>";
  EXPECT_EQ(page(block("StartHTML:100\r\nStartFragment:144\r\nEndFragment:152\r\n", whole)), whole);
}

TEST(HtmlBlock, WithoutMarksGivesTheFragmentThatItsHeaderNames) {
  const std::string header = "StartHTML:100\r\nStartFragment:103\r\nEndFragment:106\r\n";
  EXPECT_EQ(page(block(header, "<p>abc</p>")), "<!--StartFragment-->abc<!--EndFragment-->");
  EXPECT_EQ(page(block("StartFragment:103\r\nEndFragment:110\r\n", "<p>abc</p>")),
            "<!--StartFragment-->abc</p><!--EndFragment-->")
      << "up to the last byte";
  EXPECT_EQ(page(block("StartFragment:103\r\nEndFragment:103\r\n", "<p>abc</p>")),
            "<!--StartFragment--><!--EndFragment-->");
}

TEST(HtmlBlock, ThatDoesNotSayWhereItsPageStartsStartsAtItsFragment) {
  const std::string marked = "<!--StartFragment-->abc<!--EndFragment-->";
  for (const char* start : {"", "StartHTML:0\r\n", "StartHTML:-1\r\n", "StartHTML:9000\r\n"})
    EXPECT_EQ(page(block(start + std::string("StartFragment:120\r\nEndFragment:123\r\n"), marked)),
              "abc<!--EndFragment-->")
        << start;
}

TEST(HtmlBlock, WhosePositionsMakeNoSenseIsNone) {
  for (const char* header :
       {"", "StartFragment:103\r\n", "EndFragment:103\r\n", "StartFragment:104\r\nEndFragment:103\r\n",
        "StartFragment:103\r\nEndFragment:111\r\n", "StartFragment:x\r\nEndFragment:y\r\n"})
    EXPECT_EQ(page(block(header, "<p>abc</p>")), "none") << header;
}

}  // namespace
}  // namespace tvx::platform
