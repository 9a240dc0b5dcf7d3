#include "tvx/files/file_addresses.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"

namespace tvx::files {
namespace {

namespace fs = std::filesystem;

class FileAddresses : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = (fs::temp_directory_path() / "addresses-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(name.data()));
    folder_ = fs::canonical(name);
    for (const char* each : {"site/pics", "site/100% #1", "other"}) fs::create_directories(folder_ / each);
    for (const char* each :
         {"site/a b.png", "site/pics/größe.png", "site/100% #1/c?.png", "site/x:y.png", "other/d.png"})
      std::ofstream(folder_ / each) << "x";
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::u16string path(const std::string& name) const { return from_utf8((folder_ / name).string()); }
  std::string from_site(const std::string& name) const {
    return to_utf8(address_from(path("site"), path(name)));
  }
  /// Each as "path from the folder on|rest|relative or whole|shown or link".
  std::string found(const std::string& html) const {
    const auto page = dom::parse_document(from_utf8(html));
    std::string all;
    for (const FileAddress& each : file_addresses(*page, file_url(path("site/page.html")))) {
      all += all.empty() ? "" : " ";
      all += fs::path(to_utf8(each.path)).lexically_relative(folder_).string() + "|" + to_utf8(each.rest);
      all += each.relative ? "|relative" : "|whole";
      all += each.shown ? "|shown" : "|link";
    }
    return all;
  }

  fs::path folder_;
};

TEST_F(FileAddresses, AreThoseOfFilesThatAreThere) {
  EXPECT_EQ(found("<p><img src=\"a%20b.png\"><img src=gone.png><img src=pics>"),
            "site/a b.png||relative|shown");
  EXPECT_EQ(found("<p><img src=\"" + to_utf8(file_url(path("other/d.png"))) + "\">"),
            "other/d.png||whole|shown");
  EXPECT_EQ(found("<table background=../other/d.png><td><a href=\"a b.png?x#y\">"),
            "other/d.png||relative|shown site/a b.png|?x#y|relative|link");
}

TEST_F(FileAddresses, StandInListsOfPicturesAndInStylesToo) {
  EXPECT_EQ(found("<p><img srcset=\"a%20b.png 1x, gone.png 2x, ../other/d.png 3x\">"),
            "site/a b.png||relative|shown other/d.png||relative|shown");
  EXPECT_EQ(found("<p style=\"background: url('a b.png?x')\">"), "site/a b.png|?x|relative|shown");
  EXPECT_EQ(
      found("<style>@import \"../other/d.png\"; p { background: url(a%20b.png), url(gone.png) }</style>"),
      "other/d.png||relative|shown site/a b.png||relative|shown");
}

TEST_F(FileAddresses, AreChangedEachInItsPlace) {
  const auto page = dom::parse_document(
      u"<style>p { background: url(../other/d.png) /* url(../other/d.png) */ }</style>"
      u"<p style='background: url( ../other/d.png ), url(\"a b.png\")'>"
      u"<img src='../other/d.png' srcset='../other/d.png 1x,\n a%20b.png, gone.png 2x'>");
  std::vector<Readdressed> others;
  for (const FileAddress& each : file_addresses(*page, file_url(path("site/page.html"))))
    others.emplace_back(each, each.rest + (each.path.ends_with(u"d.png") ? u"d's (1),.png" : u"b.png"));
  ASSERT_EQ(others.size(), 6u);
  for (const AddressedText& each : texts_with(others)) each.place.set_text(each.text);
  EXPECT_EQ(
      to_utf8(dom::outer_html(*page->document_element())),
      "<HTML><HEAD><STYLE>p { background: url(d%27s%20%281%29,.png) /* url(../other/d.png) */ "
      "}</STYLE></HEAD><BODY><P style=\"background: url(d%27s%20%281%29,.png), url(&quot;b.png&quot;)\"><IMG "
      "src=\"d's (1),.png\" srcset=\"d's%20(1)%2C.png 1x,\n b.png, gone.png 2x\"></P></BODY></HTML>");
}

TEST_F(FileAddresses, OfOtherMachinesRootsAndTheWebAreNone) {
  EXPECT_EQ(
      found(
          "<p><img src=\"https://example.org/a.png\"><img src=\"data:image/png;base64,AAAA\"><img src=\"\">"
          "<a href=\"#x\">1</a><a href=\"?x\">2</a><img src=\"//host/a.png\"><img src=\"file://host/a.png\">"
          "<img src=\"" +
          (folder_ / "other/d.png").string() + "\"><a href=\"mailto:a@b.org\">3</a>"),
      "");
}

TEST_F(FileAddresses, OfAPageThatNamesItsBaseAreNone) {
  EXPECT_EQ(found("<base href=\"https://example.org/\"><p><img src=\"a%20b.png\">"), "");
  EXPECT_EQ(found("<base target=x><p><img src=\"a%20b.png\">"), "site/a b.png||relative|shown");
}

TEST_F(FileAddresses, AreSeenFromTheFolderThatAFileLiesIn) {
  EXPECT_EQ(from_site("site/a b.png"), "a%20b.png");
  EXPECT_EQ(from_site("site/pics/größe.png"), "pics/gr%C3%B6%C3%9Fe.png");
  EXPECT_EQ(from_site("site/100% #1/c?.png"), "100%25%20%231/c%3F.png");
  EXPECT_EQ(from_site("site/x:y.png"), "./x:y.png") << "no scheme";
}

TEST_F(FileAddresses, AreReadBackAsTheSameFile) {
  for (const std::string name : {"site/a b.png", "site/100% #1/c?.png", "site/x:y.png", "other/d.png"})
    EXPECT_EQ(found("<p><img src=\"" + from_site(name) + "\">"), name + "||relative|shown");
}

TEST_F(FileAddresses, OfAFolderNearByAreSeenFromTheFolderToo) {
  EXPECT_EQ(from_site("other/d.png"), "../other/d.png");
}

TEST_F(FileAddresses, OfWhatHasNothingInCommonAreWhole) {
  EXPECT_EQ(from_site("/usr/share/d.png"), "file:///usr/share/d.png");
  const std::string home = ::getenv("HOME") ? ::getenv("HOME") : "";
  ::setenv("HOME", folder_.c_str(), 1);
  EXPECT_EQ(from_site("other/d.png"), to_utf8(file_url(path("other/d.png"))))
      << "all folders of a user have the user's home in common";
  ::setenv("HOME", home.c_str(), 1);
}

TEST_F(FileAddresses, AFolderIsTheSameByWhicheverWay) {
  fs::create_directory_symlink(folder_ / "site", folder_ / "way");
  EXPECT_TRUE(lies_in(path("way/a b.png"), path("site")));
  EXPECT_TRUE(lies_in(path("site/a b.png"), path("way/")));
  EXPECT_EQ(to_utf8(address_from(path("way"), path("site/pics/größe.png"))), "pics/gr%C3%B6%C3%9Fe.png");
  fs::create_symlink(folder_ / "other/d.png", folder_ / "site/link.png");
  EXPECT_EQ(from_site("site/link.png"), "link.png") << "the link lies there, wherever its file does";
  EXPECT_FALSE(lies_in(path("other/d.png"), path("site")));
  EXPECT_FALSE(lies_in(path("site"), path("site")));
  EXPECT_FALSE(lies_in(path("site-2/a.png"), path("site")));
}

}  // namespace
}  // namespace tvx::files
