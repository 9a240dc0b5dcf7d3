#include "tvx/files/kept_page.h"

#include <gtest/gtest.h>

namespace tvx::files {
namespace {

KeptPage some_page() {
  KeptPage page;
  page.path = u"/home/ada/größe.html";
  page.time = 1234567890;
  page.page = u"<p>a\nb</p>\n";
  page.code = u"code 0\n";
  return page;
}

TEST(KeptPage, ComesBackAsItWas) {
  for (const bool in_code_view : {false, true}) {
    KeptPage page = some_page();
    if (!in_code_view) page.code.reset();
    const auto read = read_kept_page(kept_bytes(page));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->path, page.path);
    EXPECT_EQ(read->time, page.time);
    EXPECT_EQ(read->page, page.page);
    EXPECT_EQ(read->code, page.code);
  }
}

TEST(KeptPage, WithoutAFileHasNoPath) {
  const auto read = read_kept_page(kept_bytes(KeptPage()));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->path.empty());
  EXPECT_TRUE(read->page.empty());
  EXPECT_FALSE(read->code);
}

TEST(KeptPage, KnowsHowTheUserWantsTheFileSpelled) {
  for (const LineEnd end : {LineEnd::Lf, LineEnd::CrLf, LineEnd::Cr})
    for (const bool without_mark : {false, true}) {
      KeptPage page = some_page();
      page.line_end = end;
      page.without_mark = without_mark;
      const auto read = read_kept_page(kept_bytes(page));
      ASSERT_TRUE(read);
      EXPECT_EQ(read->line_end, end);
      EXPECT_EQ(read->without_mark, without_mark);
      EXPECT_EQ(read->code, page.code);
    }
  EXPECT_FALSE(read_kept_page(kept_bytes(some_page()))->line_end);
  std::string bytes = kept_bytes(some_page()) + "line_end 2\nxx\n";
  EXPECT_FALSE(read_kept_page(bytes)) << "no way in which lines end";
}

TEST(KeptPage, APartOfOneIsNone) {
  KeptPage page = some_page();
  page.code.reset();
  const std::string bytes = kept_bytes(page);
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_FALSE(read_kept_page(std::string_view(bytes).substr(0, length))) << length;
  EXPECT_FALSE(read_kept_page(bytes + "x"));
  EXPECT_FALSE(read_kept_page("tvxHTML unsaved page 1\npath 99999999999999999999\n"));
}

TEST(KeptPage, LinesThatLookLikeItsOwnAreText) {
  KeptPage page = some_page();
  page.page = u"\ncode 3\nabc\n";
  const auto read = read_kept_page(kept_bytes(page));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->page, page.page);
  EXPECT_EQ(read->code, page.code);
}

}  // namespace
}  // namespace tvx::files
