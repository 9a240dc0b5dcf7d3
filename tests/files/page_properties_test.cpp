#include "tvx/files/page_properties.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace tvx::files {
namespace {

constexpr std::u16string_view full =
    u"<!DOCTYPE html><html lang=\"de\"><head><meta charset=\"utf-8\"><title>T</title>"
    u"<base href=\"https://e.org/\"><meta name=\"Description\" content=\"d\"><meta name=\"keywords\" "
    u"content=\"k, l\">"
    u"<link rel=\"icon\" href=\"i.png\"><link rel=\"stylesheet\" href=\"a.css\"><style>p { color: red "
    u"}</style></head>"
    u"<body style=\"background-color: white\" text=\"black\" link=\"#00f\"><p>x</p></body></html>";

std::string text_of(const dom::Document& document) {
  return to_utf8(dom::serialise_node(document, dom::Letters::Small));
}

class PagePropertiesTest : public testing::Test {
 protected:
  void open(std::u16string_view text) {
    document_ = dom::parse_document(text);
    properties_ = page_properties(*document_);
  }
  std::string written() {
    set_page_properties(*document_, properties_);
    return text_of(*document_);
  }

  dom::Ref<dom::Document> document_;
  PageProperties properties_;
};

TEST_F(PagePropertiesTest, AreReadFromHeadAndBody) {
  open(full);
  EXPECT_EQ(properties_.title, u"T");
  EXPECT_EQ(properties_.language, u"de");
  EXPECT_EQ(properties_.charset, u"utf-8");
  EXPECT_EQ(properties_.base, u"https://e.org/");
  EXPECT_EQ(properties_.description, u"d");
  EXPECT_EQ(properties_.keywords, u"k, l");
  EXPECT_EQ(properties_.background, u"white");
  EXPECT_EQ(properties_.text, u"black");
  EXPECT_EQ(properties_.link, u"#00f");
  ASSERT_EQ(properties_.sheets.size(), 2u) << "an icon is no sheet";
  EXPECT_TRUE(properties_.sheets[0].linked);
  EXPECT_EQ(properties_.sheets[0].text, u"a.css");
  EXPECT_EQ(properties_.sheets[1].text, u"p { color: red }");
}

TEST_F(PagePropertiesTest, UnchangedWriteNothing) {
  open(full);
  EXPECT_EQ(written(), to_utf8(full));
  EXPECT_EQ(document_->journal().depth(), 0u);
}

TEST_F(PagePropertiesTest, ChangedAreOneStep) {
  open(full);
  properties_.title = u"New & old";
  properties_.language = u"";
  properties_.description = u"";
  properties_.background = u"#eee";
  properties_.text = u"";
  properties_.visited = u"purple";
  EXPECT_EQ(
      written(),
      "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>New &amp; old</title>"
      "<base href=\"https://e.org/\"><meta name=\"keywords\" content=\"k, l\">"
      "<link rel=\"icon\" href=\"i.png\"><link rel=\"stylesheet\" href=\"a.css\"><style>p { color: red }"
      "</style></head><body style=\"background-color: #eee\" link=\"#00f\" "
      "vlink=\"purple\"><p>x</p></body></html>");
  EXPECT_EQ(document_->journal().depth(), 1u);
  ASSERT_TRUE(document_->journal().undo());
  EXPECT_EQ(text_of(*document_), to_utf8(full));
}

TEST_F(PagePropertiesTest, OfABarePageAreAdded) {
  open(u"<p>x</p>");
  properties_.title = u"T";
  properties_.charset = u"utf-8";
  properties_.keywords = u"k";
  properties_.base = u"b/";
  properties_.sheets.push_back({true, u"a.css"});
  properties_.sheets.push_back({false, u"b { x: y }"});
  EXPECT_EQ(
      written(),
      "<html><head><meta charset=\"utf-8\"><title>T</title><base href=\"b/\"><meta name=\"keywords\" "
      "content=\"k\"><link rel=\"stylesheet\" href=\"a.css\"><style>b { x: y }</style></head><body><p>x</p>"
      "</body></html>");
  EXPECT_EQ(page_properties(*document_).title, u"T");
}

TEST_F(PagePropertiesTest, SheetsAreChangedRemovedAndReordered) {
  open(full);
  properties_.sheets[1].text = u"p { color: blue }";
  EXPECT_NE(written().find("<style>p { color: blue }</style>"), std::string::npos);
  properties_ = page_properties(*document_);
  std::swap(properties_.sheets[0], properties_.sheets[1]);
  EXPECT_NE(written().find("<style>p { color: blue }</style><link rel=\"stylesheet\" href=\"a.css\"></head>"),
            std::string::npos)
      << text_of(*document_);
  properties_ = page_properties(*document_);
  properties_.sheets.erase(properties_.sheets.begin());
  EXPECT_EQ(written().find("<style>"), std::string::npos);
  EXPECT_NE(written().find("a.css"), std::string::npos);
}

}  // namespace
}  // namespace tvx::files
