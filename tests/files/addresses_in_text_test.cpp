#include "tvx/files/addresses_in_text.h"

#include <gtest/gtest.h>

#include <functional>

#include "tvx/base/strings.h"

namespace tvx::files {
namespace {

using Reader = std::function<std::vector<AddressInText>(std::u16string_view)>;

/// The addresses, each with what stands there for it.
std::string found(const Reader& read, const std::string& text) {
  const std::u16string all = from_utf8(text);
  std::string told;
  for (const AddressInText& each : read(all))
    told += "[" + to_utf8(each.address) + "=" + to_utf8(all.substr(each.begin, each.length)) + "]";
  return told;
}
std::string in_list(const std::string& text) { return found(addresses_in_srcset, text); }
std::string in_css(const std::string& text) { return found(addresses_in_css, text); }

std::string changed(const Reader& read, const std::string& text, std::u16string_view address) {
  const std::u16string all = from_utf8(text);
  return to_utf8(with_address(all, read(all).at(0), address));
}

TEST(AddressesInLists, StandBetweenBlanksAndCommas) {
  EXPECT_EQ(in_list("a.png"), "[a.png=a.png]");
  EXPECT_EQ(in_list(" a.png 1x , b.png 480w,c.png"), "[a.png=a.png][b.png=b.png][c.png=c.png]");
  EXPECT_EQ(in_list("a.png, b.png"), "[a.png=a.png][b.png=b.png]");
  EXPECT_EQ(in_list("a,b.png 1x"), "[a,b.png=a,b.png]") << "a comma within is a letter";
  EXPECT_EQ(in_list("a.png x(1,2), b.png"), "[a.png=a.png][b.png=b.png]");
  EXPECT_EQ(in_list("data:image/png;base64,AAAA 1x, b.png"),
            "[data:image/png;base64,AAAA=data:image/png;base64,AAAA][b.png=b.png]");
  EXPECT_EQ(in_list(",, ,"), "");
  EXPECT_EQ(in_list(""), "");
}

TEST(AddressesInStyles, AreThoseOfPicturesFontsAndImports) {
  EXPECT_EQ(in_css("a { background: red url(a.png) no-repeat, URL( 'b c.png' ) }"),
            "[a.png=url(a.png)][b c.png='b c.png']");
  EXPECT_EQ(in_css("@import 'a.css' screen; @IMPORT url(b.css); @import/**/\"c.css\";"),
            "[a.css='a.css'][b.css=url(b.css)][c.css=\"c.css\"]");
  EXPECT_EQ(in_css("@font-face { src: url(a.woff) format(\"woff\"), local(\"A\") }"), "[a.woff=url(a.woff)]");
  EXPECT_EQ(in_css("background: image-set('a.png' 1x type('image/png'), url(b.png) 2x, \"c.png\")"),
            "[a.png='a.png'][b.png=url(b.png)][c.png=\"c.png\"]");
}

TEST(AddressesInStyles, AreNotInCommentsAndTexts) {
  EXPECT_EQ(in_css("/* url(a.png) */ a::before { content: 'url(b.png)' } /* @import 'c.css' */"), "");
  EXPECT_EQ(in_css("a { width: calc(1px) } @media (x) {} @charset \"utf-8\";"), "");
  EXPECT_EQ(in_css("a { background: url(b c.png) }"), "") << "no address, and the rule has none";
}

TEST(AddressesInStyles, HaveTheirEscapesResolved) {
  EXPECT_EQ(in_css("url(a\\20 b\\).png)"), "[a b).png=url(a\\20 b\\).png)]");
}

TEST(AddressesInTexts, AreWrittenSoThatTheyEndWhereTheyEnd) {
  EXPECT_EQ(changed(addresses_in_srcset, "x 1x, y 2x", u"a b,c.png"), "a%20b%2Cc.png 1x, y 2x");
  EXPECT_EQ(changed(addresses_in_css, "a { b: url(x) c }", u"d's (1).png"),
            "a { b: url(d%27s%20%281%29.png) c }");
  EXPECT_EQ(changed(addresses_in_css, "a { b: url( \"x\" ) c }", u"d\"s (1).png"),
            "a { b: url( \"d%22s%20(1).png\" ) c }");
  EXPECT_EQ(changed(addresses_in_css, "@import 'x';", u"d's.css"), "@import 'd%27s.css';");
}

}  // namespace
}  // namespace tvx::files
