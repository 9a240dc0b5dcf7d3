#include "tvx/dom/style/selectors.h"

#include <gtest/gtest.h>

#include "tvx/dom/document.h"
#include "tvx/dom/parse.h"

namespace tvx::dom::style {
namespace {

/// The ids of all elements that match, in document order.
std::string matching(const Document& document, std::u16string_view selector) {
  const auto list = SelectorList::parse(selector);
  if (!list) return "invalid";
  std::string ids;
  for (const Element* element : document.all()) {
    if (list->matches(*element)) ids += to_utf8(element->attribute_or_empty(names::id));
  }
  return ids;
}

TEST(Selectors, Match) {
  const Ref<Document> document = parse_document(
      u"<!DOCTYPE html><html id=h><body id=B><div id=a class='one two'><p id=b lang=en-US title='Hello "
      u"World'>x"
      u"<i id=c></i></p><p id=d class=One><a id=e href=x></a><a id=f></a></p>"
      u"<ul id=g><li id=1><li id=2 class=two><li id=3><li id=4></ul></div>"
      u"<input id=k type=CheckBox checked><svg id=s><foreignObject id=t>");
  const std::pair<const char16_t*, const char*> cases[] = {
      {u"p", "bd"},
      {u"P", "bd"},
      {u"*|p", "bd"},
      {u"#b", "b"},
      {u".one", "a"},
      {u".one.two", "a"},
      {u".One", "d"},
      {u"div p", "bd"},
      {u"body > p", ""},
      {u"body > div > p", "bd"},
      {u"div>p i", "c"},
      {u"p + p", "d"},
      {u"p ~ ul", "g"},
      {u"i, #g , a", "cefg"},
      {u"[lang]", "b"},
      {u"[lang|=en]", "b"},
      {u"[title~=World]", "b"},
      {u"[title~=world]", ""},
      {u"[title=\"hello world\" i]", "b"},
      {u"[title^=Hel][title$=ld][title*=o]", "b"},
      {u"[type=checkbox]", "k"},
      {u":checked", "k"},
      {u"a:link", "e"},
      {u":visited", ""},
      {u"a:hover", ""},
      {u"li:first-child", "1"},
      {u"li:last-child", "4"},
      {u"li:nth-child(odd)", "13"},
      {u"li:nth-child( 2n + 2 )", "24"},
      {u"li:nth-child(-n+2)", "12"},
      {u"li:nth-child(3)", "3"},
      {u"li:nth-last-child(1)", "4"},
      {u"p:nth-of-type(2)", "d"},
      {u"i:only-child", "c"},
      {u"i:empty", "c"},
      {u"li:not(.two, :first-child)", "34"},
      {u":is(p, ul) > :is(i, li):not(:last-child)", "123"},
      {u":where(#b)", "b"},
      {u":root", "h"},
      {u"html body div p i", "c"},
      {u"foreignObject", "t"},
      {u"foreignobject", ""},
      {u"\\70", "bd"},
      {u"p::before", ""},
      {u"", "invalid"},
      {u"p >", "invalid"},
      {u"> p", "invalid"},
      {u"p,", "invalid"},
      {u"p:", "invalid"},
      {u"p:frobnicate", "invalid"},
      {u"1p", "invalid"},
      {u".1a", "invalid"},
      {u"[", "invalid"},
      {u"[a=]", "invalid"},
      {u"p..a", "invalid"},
      {u"ns|p", "invalid"},
      {u"p:not(", "invalid"},
      {u"li:nth-child(2.5)", "invalid"}};
  for (const auto& [selector, ids] : cases) {
    EXPECT_EQ(matching(*document, selector), ids) << to_utf8(selector);
  }
}

TEST(Selectors, Specificity) {
  const auto weight = [](std::u16string_view text) {
    return SelectorList::parse(text)->selectors()[0].specificity;
  };
  EXPECT_LT(weight(u"*"), weight(u"p"));
  EXPECT_LT(weight(u"html body div p"), weight(u".a"));
  EXPECT_EQ(weight(u".a"), weight(u"[a]"));
  EXPECT_EQ(weight(u".a"), weight(u":hover"));
  EXPECT_LT(weight(u".a.b.c"), weight(u"#a"));
  EXPECT_EQ(weight(u":not(#a, p)"), weight(u"#a"));
  EXPECT_EQ(weight(u":where(#a) p"), weight(u"p"));
}

// Each part of a chain could be tried at each ancestor: the work must not multiply.
TEST(Selectors, LongChainsOverDeepTreesStayLinear) {
  std::u16string html = u"<!DOCTYPE html>";
  for (int i = 0; i < 400; ++i) html += u"<div>";
  const Ref<Document> document = parse_document(html + u"<p id=x>");
  std::u16string selector = u"b";
  for (int i = 0; i < 60; ++i) selector += u" div";
  EXPECT_EQ(matching(*document, selector), "");
  EXPECT_EQ(matching(*document, u"body" + selector.substr(1) + u" p"), "x");
}

}  // namespace
}  // namespace tvx::dom::style
