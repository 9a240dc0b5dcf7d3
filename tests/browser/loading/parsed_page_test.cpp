#include "tvx/browser/loading/parsed_page.h"

#include <gtest/gtest.h>

#include "tvx/browser/loading/page_source.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"

namespace tvx::browser {
namespace {

HttpAnswer found(std::string body, std::string type = {}) {
  HttpAnswer answer;
  answer.address = u"file:///page.html";
  answer.status = 200;
  answer.body = std::move(body);
  answer.content_type = std::move(type);
  return answer;
}

std::u16string text_in(const HttpAnswer& answer) {
  const auto page = make_page(answer);
  return page ? dom::inner_html(*page->tree().body()) : u"no page";
}

// Another tree than that of the bytes tells which of the two was taken.
TEST(ParsedPages, TheFirstLoadOfTheSameBytesTakesTheTree) {
  const std::string bytes = "<p>of the bytes";
  {
    ParsedPage parsed(bytes, dom::parse_document(u"<p>parsed before"), {"windows-1252", false});
    EXPECT_EQ(text_in(found("<p>of other bytes")), u"<P>of other bytes</P>");
    EXPECT_EQ(text_in(found(bytes, "text/html; charset=utf-8")), u"<P>of the bytes</P>")
        << "as its server says";
    const auto page = make_page(found(bytes));
    EXPECT_EQ(dom::inner_html(*page->tree().body()), u"<P>parsed before</P>");
    EXPECT_EQ(page->encoding().name, "windows-1252");
    EXPECT_EQ(page->readyState(), u"interactive");
    EXPECT_EQ(page->url(), u"file:///page.html");
    EXPECT_EQ(text_in(found(bytes)), u"<P>of the bytes</P>") << "a tree belongs to one document";
  }
  EXPECT_EQ(text_in(found(bytes)), u"<P>of the bytes</P>");
}

TEST(ParsedPages, NobodyTakesATreeThatIsGone) {
  const std::string bytes = "<p>of the bytes";
  { const ParsedPage parsed(bytes, dom::parse_document(u"<p>parsed before"), {}); }
  EXPECT_EQ(text_in(found(bytes)), u"<P>of the bytes</P>");
  const ParsedPage none(bytes, nullptr, {});
  EXPECT_EQ(text_in(found(bytes)), u"<P>of the bytes</P>");
}

TEST(ParsedPages, OneWithinAnother) {
  const std::string outer = "<p>outer", inner = "<p>inner";
  const ParsedPage first(outer, dom::parse_document(u"<p>1"), {});
  {
    const ParsedPage second(inner, dom::parse_document(u"<p>2"), {});
    EXPECT_EQ(text_in(found(outer)), u"<P>1</P>");
    EXPECT_EQ(text_in(found(inner)), u"<P>2</P>");
  }
  EXPECT_EQ(text_in(found(inner)), u"<P>inner</P>");
}

}  // namespace
}  // namespace tvx::browser
