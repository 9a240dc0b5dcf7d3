#include "tvx/base/url.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

using Text = std::u16string;

std::u16string resolved(std::u16string_view reference, std::u16string_view base) {
  return resolve_url(reference, base).value_or(u"(nothing)");
}

constexpr std::u16string_view base = u"http://host/a/b/page.html?q=1#top";

TEST(Url, IsTakenApart) {
  const auto url = Url::parse(u"HTTP://User:pw@Host.Example:8080/a/b.html?x=1&y=2#part");
  ASSERT_TRUE(url);
  EXPECT_EQ(url->scheme, u"http");
  EXPECT_EQ(url->authority, u"User:pw@host.example:8080");
  EXPECT_EQ(url->path, u"/a/b.html");
  EXPECT_EQ(url->query, u"x=1&y=2");
  EXPECT_EQ(url->fragment, u"part");
  EXPECT_EQ(url->text(), u"http://User:pw@host.example:8080/a/b.html?x=1&y=2#part");
  EXPECT_EQ(url->document(), u"http://User:pw@host.example:8080/a/b.html?x=1&y=2");
}

TEST(Url, KnowsAddressesWithoutFolders) {
  EXPECT_EQ(Url::parse(u"about:blank")->path, u"blank");
  EXPECT_EQ(Url::parse(u"data:text/html,<p>x y")->text(), u"data:text/html,<p>x y");
  EXPECT_EQ(Url::parse(u"javascript:alert('\u00e9')")->text(), u"javascript:alert('%C3%A9')");
  EXPECT_TRUE(Url::parse(u"mailto:a@b")->has_opaque_path());
  EXPECT_EQ(resolved(u"#x", u"about:blank"), u"about:blank#x");
  EXPECT_EQ(resolved(u"x", u"about:blank"), u"(nothing)");
  EXPECT_EQ(resolved(u"?x", u"about:blank"), u"(nothing)");
}

TEST(Url, RefusesWhatIsNoAddress) {
  for (const auto text : {u"", u"page.html", u"locahost", u"http://", u"http:///", u"https:?x",
                          u"http://a b/", u"http://a:65536/", u"http://a:x/", u"http://@/", u"http://[::1",
                          u"http://[]/", u"http://a<b/", u"http://%00/", u"1x:y", u":x"}) {
    EXPECT_FALSE(Url::parse(text)) << Text(text).size();
  }
}

TEST(Url, AnUnusableBaseMakesNothingAbsolute) {
  EXPECT_EQ(resolved(u"page.html", u"http://"), u"(nothing)");
  EXPECT_EQ(resolved(u"page.html", u""), u"(nothing)");
  EXPECT_EQ(resolved(u"http://x/y", u"http://"), u"http://x/y");
}

TEST(Url, ResolvesByTheExamplesOfRfc3986) {
  constexpr std::u16string_view rfc = u"http://a/b/c/d;p?q";
  const std::pair<const char16_t*, const char16_t*> cases[] = {{u"g:h", u"g:h"},
                                                               {u"g", u"http://a/b/c/g"},
                                                               {u"./g", u"http://a/b/c/g"},
                                                               {u"g/", u"http://a/b/c/g/"},
                                                               {u"/g", u"http://a/g"},
                                                               {u"//g", u"http://g/"},
                                                               {u"?y", u"http://a/b/c/d;p?y"},
                                                               {u"g?y", u"http://a/b/c/g?y"},
                                                               {u"#s", u"http://a/b/c/d;p?q#s"},
                                                               {u"g#s", u"http://a/b/c/g#s"},
                                                               {u";x", u"http://a/b/c/;x"},
                                                               {u"", u"http://a/b/c/d;p?q"},
                                                               {u".", u"http://a/b/c/"},
                                                               {u"./", u"http://a/b/c/"},
                                                               {u"..", u"http://a/b/"},
                                                               {u"../g", u"http://a/b/g"},
                                                               {u"../..", u"http://a/"},
                                                               {u"../../g", u"http://a/g"},
                                                               {u"../../../g", u"http://a/g"},
                                                               {u"/./g", u"http://a/g"},
                                                               {u"/../g", u"http://a/g"},
                                                               {u"g.", u"http://a/b/c/g."},
                                                               {u"..g", u"http://a/b/c/..g"},
                                                               {u"./../g", u"http://a/b/g"},
                                                               {u"g/./h", u"http://a/b/c/g/h"},
                                                               {u"g/../h", u"http://a/b/c/h"},
                                                               {u"g;x=1/../y", u"http://a/b/c/y"},
                                                               {u"g?y/../x", u"http://a/b/c/g?y/../x"},
                                                               {u"g#s/../x", u"http://a/b/c/g#s/../x"},
                                                               {u"http:g", u"http://a/b/c/g"}};
  for (const auto& [reference, expected] : cases) EXPECT_EQ(resolved(reference, rfc), expected);
}

TEST(Url, TakesBackslashesForSlashesWhereThereAreFolders) {
  EXPECT_EQ(resolved(u"..\\x\\y.gif", base), u"http://host/a/x/y.gif");
  EXPECT_EQ(resolved(u"\\\\other\\x", base), u"http://other/x");
  EXPECT_EQ(Url::parse(u"http:\\\\h\\p?a\\b")->text(), u"http://h/p?a\\b");
  EXPECT_EQ(Url::parse(u"x://h/a\\b")->path, u"/a\\b");
}

TEST(Url, EscapesByThePlace) {
  EXPECT_EQ(resolved(u"a b{\u00e9}|%41\"?c d'<#e f`g", base),
            u"http://host/a/b/a%20b%7B%C3%A9%7D|%41%22?c%20d%27%3C#e%20f%60g");
  EXPECT_EQ(resolved(u"%2e%2E/x", base), u"http://host/a/x");
}

TEST(Url, DropsBlanksAroundAndLineBreaksWithin) {
  EXPECT_EQ(resolved(u" \n x\r\n.ht\tml \u0001", base), u"http://host/a/b/x.html");
}

TEST(Url, KnowsPortsAndHosts) {
  EXPECT_EQ(Url::parse(u"http://h:80/")->authority, u"h");
  EXPECT_EQ(Url::parse(u"http://h:0081")->text(), u"http://h:81/");
  EXPECT_EQ(Url::parse(u"https://h:80/")->authority, u"h:80");
  EXPECT_EQ(Url::parse(u"http://[2001:DB8::1]:8080/")->authority, u"[2001:db8::1]:8080");
  EXPECT_EQ(Url::parse(u"http://B\u00fccher.example/")->authority, u"xn--bcher-kva.example");
  EXPECT_EQ(Url::parse(u"http:///h/p")->text(), u"http://h/p");
  EXPECT_EQ(Url::parse(u"x://H")->text(), u"x://H");
}

TEST(Url, AnAuthorityEndsBeforeQueryAndFragment) {
  EXPECT_EQ(Url::parse(u"http://h?x")->text(), u"http://h/?x");
  EXPECT_EQ(Url::parse(u"http://h#x@y")->text(), u"http://h/#x@y");
}

TEST(Url, KnowsFiles) {
  EXPECT_EQ(Url::parse(u"file:///home/x/a.html")->text(), u"file:///home/x/a.html");
  EXPECT_EQ(Url::parse(u"file://localhost/x")->text(), u"file:///x");
  EXPECT_EQ(Url::parse(u"file:/x")->text(), u"file:///x");
  EXPECT_EQ(Url::parse(u"file:////home/x")->path, u"//home/x");
  EXPECT_EQ(Url::parse(u"file://server/share/x")->authority, u"server");
  EXPECT_EQ(resolved(u"b.gif", u"file:///home/x/a.html"), u"file:///home/x/b.gif");
  EXPECT_EQ(resolved(u"/b.gif", u"file:///home/x/a.html"), u"file:///b.gif");
  EXPECT_EQ(resolved(u"//h/b.gif", u"file:///home/x/a.html"), u"file://h/b.gif");
  EXPECT_EQ(resolved(u"file:b.gif", u"file:///home/x/a.html"), u"file:///home/x/b.gif");
}

TEST(Url, KeepsTheDriveOfAFile) {
  EXPECT_EQ(Url::parse(u"file:C|\\x\\..\\..\\y")->text(), u"file:///C:/y");
  EXPECT_EQ(Url::parse(u"file://C:/x")->text(), u"file:///C:/x");
  EXPECT_EQ(resolved(u"/y", u"file:///C:/x/z"), u"file:///C:/y");
  EXPECT_EQ(resolved(u"../../y", u"file:///C:/x/z"), u"file:///C:/y");
  EXPECT_EQ(resolved(u"D:/y", u"file:///C:/x/z"), u"d:/y");
}

TEST(Url, AnAddressIsItsOwnForm) {
  for (const auto text :
       {u"http://h/a/b?c#d", u"file:///C:/x%20y", u"about:blank", u"x://h", u"x:/a", u"x:/.//a"}) {
    const auto url = Url::parse(text);
    ASSERT_TRUE(url);
    EXPECT_EQ(url->text(), text);
    EXPECT_EQ(Url::parse(url->text()), url);
  }
}

TEST(LocalPath, UndoesTheEscapes) {
  EXPECT_EQ(local_path(u"file:///tmp/a%20b%C3%A9.gif"), u"/tmp/a b\u00e9.gif");
  EXPECT_EQ(local_path(u"file:///tmp/x.html?q#f"), u"/tmp/x.html");
  EXPECT_EQ(local_path(u"http://h/x"), std::nullopt);
  EXPECT_EQ(local_path(u"file://server/x"), std::nullopt);
  EXPECT_EQ(local_path(u"file:///x%00.html"), std::nullopt);
  EXPECT_EQ(local_path(u"/tmp/x"), std::nullopt);
}

TEST(FileUrl, ComesBackAsTheSamePath) {
  for (const Text path : {u"/tmp/a b.html", u"/50%/x#1?.html", u"/\u00fc/\U0001F600", u"/a\\b", u"/"}) {
    EXPECT_EQ(local_path(file_url(path)), path);
  }
  EXPECT_EQ(file_url(u"/a b%20c"), u"file:///a%20b%2520c");
}

TEST(Url, CostsAsTheTextGrows) {
  Text deep = u"http://h";
  for (int i = 0; i < 200'000; ++i) deep += u"/x";
  for (int i = 0; i < 200'000; ++i) deep += u"/..";
  EXPECT_EQ(Url::parse(deep)->text(), u"http://h/");
}

}  // namespace
}  // namespace tvx
