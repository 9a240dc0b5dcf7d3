#include "tvx/files/brought_files.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"

namespace tvx::files {
namespace {

class BroughtFiles : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = (std::filesystem::temp_directory_path() / "brought-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(name.data()));
    folder_ = name;
    std::filesystem::create_directory(folder_ / "in side");
    for (const char* file : {"logo.png", "page.css", "other.html", "in side/größe.png"})
      std::ofstream(folder_ / file) << "x";
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string moved(const std::string& page) {
    return with_brought_files(page, from_utf8(folder_.string()), file_url);
  }
  std::string url(const std::string& file) const {
    return to_utf8(file_url(from_utf8((folder_ / file).string())));
  }

  std::filesystem::path folder_;
};

TEST_F(BroughtFiles, HaveOtherAddressesAndNothingElseHas) {
  EXPECT_EQ(moved("<!DOCTYPE html>\r\n<LINK rel=stylesheet href=page.css>\r\n<body background='logo.png'>\r\n"
                  "<p>one<img src=logo.png alt=a><img src=\"in%20side/gr%C3%B6%C3%9Fe.png\">\r\n"
                  "<a href=other.html>two</a>"),
            "<!DOCTYPE html>\r\n<LINK rel=stylesheet href=\"" + url("page.css") +
                "\">\r\n<body background=\"" + url("logo.png") + "\">\r\n<p>one<img src=\"" +
                url("logo.png") + "\" alt=a><img src=\"" + url("in side/größe.png") +
                "\">\r\n<a href=other.html>two</a>");
}

TEST_F(BroughtFiles, WhatIsNotBesideThePageStays) {
  for (const std::string page :
       {"<p><img src=gone.png>", "<p><img src=\"https://example.org/logo.png\">",
        "<p><img src=\"data:image/png;base64,AAAA\">", "<p><img src=\"\"><img src=\"#x\">",
        "<p><img src=\"/logo.png\">", "<p><img src=\"in%20side\">",
        "<base href=\"https://example.org/\"><p><img src=logo.png>"})
    EXPECT_EQ(moved(page), page);
}

TEST_F(BroughtFiles, APageKeepsItsCharacterSet) {
  const std::string page = "<meta charset=iso-8859-1><p>gr\xFC\xDF<img src=logo.png>";
  EXPECT_EQ(moved(page), "<meta charset=iso-8859-1><p>gr\xFC\xDF<img src=\"" + url("logo.png") + "\">");
}

TEST_F(BroughtFiles, AnEmptyAnswerLeavesTheAddress) {
  const std::string page = "<p><img src=logo.png>";
  EXPECT_EQ(with_brought_files(page, from_utf8(folder_.string()),
                               [](std::u16string_view) { return std::u16string(); }),
            page);
}

}  // namespace
}  // namespace tvx::files
