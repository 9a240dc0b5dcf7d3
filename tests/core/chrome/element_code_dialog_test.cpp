#include "tvx/core/chrome/element_code_dialog.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::core {
namespace {

class ElementCode : public testing::Test {
 protected:
  platform::FormControl& text() { return dialog.form().Controls(u"txtEleCode"); }
  ElementCodeDialog dialog;
};

TEST_F(ElementCode, ShowsTheOpeningTagAlone) {
  dialog.set_outerHTML(u"<A href=\"x\">text</A>");
  EXPECT_EQ(dialog.form().Name(), u"frmEleCode");
  EXPECT_EQ(text().Text(), u"<A href=\"x\">");
  EXPECT_EQ(dialog.outerHTML(), u"<A href=\"x\">text</A>");
  text().set_Text(u"<A href=\"y\" title=\"t\">");
  EXPECT_EQ(dialog.outerHTML(), u"<A href=\"y\" title=\"t\">text</A>");
}

TEST_F(ElementCode, ATagOverLinesStandsOnOneAndKeepsThemUntouched) {
  dialog.set_outerHTML(u"<P title=\"one\r\ntwo\nthree\">a\r\nb</P>");
  EXPECT_EQ(text().Text(), u"<P title=\"onetwothree\">");
  EXPECT_EQ(dialog.outerHTML(), u"<P title=\"one\r\ntwo\nthree\">a\r\nb</P>");
  text().set_Text(u"<P>");
  EXPECT_EQ(dialog.outerHTML(), u"<P>a\r\nb</P>");
}

TEST_F(ElementCode, AnAngleInAValueEndsTheTagEarly) {
  dialog.set_outerHTML(u"<P title=\"a>b\">c</P>");
  EXPECT_EQ(text().Text(), u"<P title=\"a>");
  text().set_Text(u"<P title=\"x>");
  EXPECT_EQ(dialog.outerHTML(), u"<P title=\"x>b\">c</P>");
}

TEST_F(ElementCode, WithoutAnElementItIsEmpty) {
  EXPECT_EQ(text().Text(), u"");
  EXPECT_EQ(dialog.outerHTML(), u"");
  dialog.set_outerHTML(u"");
  EXPECT_EQ(dialog.outerHTML(), u"");
}

TEST_F(ElementCode, ItsButtons) {
  EXPECT_FALSE(dialog.booCancel());
  dialog.form().Controls(u"OKButton").click();
  EXPECT_FALSE(dialog.booCancel());
  dialog.form().Controls(u"CancelButton").click();
  EXPECT_TRUE(dialog.booCancel());
  EXPECT_EQ(dialog.form().default_button(), &dialog.form().Controls(u"OKButton"));
  EXPECT_EQ(dialog.form().cancel_button(), &dialog.form().Controls(u"CancelButton"));
}

TEST(NewTags, PartsOfTablesAndDocumentsRefuseThem) {
  for (const char16_t* tag : {u"caption", u"col", u"tbody", u"colgroup", u"html", u"head", u"body",
                              u"frameset", u"td", u"tfoot", u"th", u"thead", u"tr"})
    EXPECT_TRUE(refuses_new_tag(tag));
  for (const char16_t* tag : {u"table", u"p", u"a", u"span", u"TD", u""}) EXPECT_FALSE(refuses_new_tag(tag));
}

std::string stripped(std::u16string_view html, std::u16string_view base) {
  const auto document = dom::parse_document(html);
  dom::Element& element = *dom::first_child_element(*document->body());
  make_address_relative(element, base);
  return to_utf8(dom::outer_html(element));
}

TEST(RelativeAddresses, LoseTheBaseWhereverItStands) {
  EXPECT_EQ(stripped(u"<a href='http://b.org/x.html'></a>", u"http://b.org/"), "<A href=\"x.html\"></A>");
  EXPECT_EQ(stripped(u"<a href='HTTP://B.ORG/x?u=http://b.org/'></a>", u"http://b.org/"),
            "<A href=\"x?u=\"></A>");
  EXPECT_EQ(stripped(u"<img src='http://b.org/i.png'>", u"http://b.org/"), "<IMG src=\"i.png\">");
  EXPECT_EQ(stripped(u"<input type=Image src='http://b.org/i.png'>", u"http://b.org/"),
            "<INPUT type=\"Image\" src=\"i.png\">");
  EXPECT_EQ(stripped(u"<p><script src='http://b.org/s.js'></script>", u"http://b.org/"),
            "<P><SCRIPT src=\"http://b.org/s.js\"></SCRIPT></P>")
      << "of the element itself";
}

TEST(RelativeAddresses, OtherElementsAndMissingAddressesStay) {
  EXPECT_EQ(stripped(u"<input type=text src='http://b.org/i.png'>", u"http://b.org/"),
            "<INPUT type=\"text\" src=\"http://b.org/i.png\">");
  EXPECT_EQ(stripped(u"<embed src='http://b.org/i.png'>", u"http://b.org/"),
            "<EMBED src=\"http://b.org/i.png\">");
  EXPECT_EQ(stripped(u"<a name=x></a>", u"http://b.org/"), "<A name=\"x\"></A>");
  EXPECT_EQ(stripped(u"<a href='http://b.org/x'></a>", u""), "<A href=\"http://b.org/x\"></A>");
}

TEST(RelativeAddresses, AScriptsOwn) {
  const auto document = dom::parse_document(u"<body><script src='http://b.org/s.js'></script>");
  dom::Element& script = *dom::first_child_element(*document->body());
  make_address_relative(script, u"http://b.org/");
  EXPECT_EQ(script.attribute_or_empty(dom::names::src), u"s.js");
}

}  // namespace
}  // namespace tvx::core
