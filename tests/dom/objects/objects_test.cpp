#include "document_with_html.h"
#include "tvx/dom/objects/address.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/objects/form.h"
#include "tvx/dom/objects/media.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/serialise.h"

namespace tvx::dom::test {

constexpr std::u16string_view here = u"http://example.org/folder/page.html";

// --- attributes ---

TEST_F(Objects, AttributesByTheNamesOfTheObjectModel) {
  load("<p CLASS=a Title=' x '>");
  Element& p = the(Tag::P);
  EXPECT_EQ(get_attribute(p, u"className"), u"a");
  EXPECT_EQ(get_attribute(p, u"TITLE"), u" x ") << "as written";
  EXPECT_EQ(get_attribute(p, u"id"), std::nullopt);
  set_attribute(p, attribute_named(u"title"), u" x ");
  EXPECT_EQ(steps(), 0u) << "an equal value is no change";
  EXPECT_TRUE(remove_attribute_named(p, u"className"));
  EXPECT_FALSE(remove_attribute_named(p, u"className"));
  EXPECT_EQ(html(), "<P title=\" x \"></P>");
}

// --- addresses ---

TEST_F(Objects, AddressesReadAbsoluteAndAreWrittenAsGiven) {
  load("<a href='../x.html#end' target=top><img src=pic.png>");
  LinkObject link(the(Tag::A), here);
  EXPECT_EQ(link.href(), u"http://example.org/x.html#end");
  EXPECT_EQ(link.hash(), u"#end");
  EXPECT_EQ(link.protocol(), u"http:");
  EXPECT_EQ(link.target(), u"top");
  EXPECT_EQ(ImageObject(the(Tag::Img), here).src(), u"http://example.org/folder/pic.png");
  link.set_href(u"y.html");
  EXPECT_EQ(get_attribute(the(Tag::A), u"href"), u"y.html");
  link.set_hash(u"here");
  EXPECT_EQ(get_attribute(the(Tag::A), u"href"), u"y.html#here");
  link.set_hash(u"");
  EXPECT_EQ(link.href(), u"http://example.org/folder/y.html");
  EXPECT_EQ(link.hash(), u"");
}

TEST_F(Objects, TheBaseComesFirst) {
  document = parse_document(u"<head><base href='http://other.net/a/'><body><a href=b></a><a></a>");
  EXPECT_EQ(LinkObject(the(Tag::A), here).href(), u"http://other.net/a/b");
  EXPECT_EQ(LinkObject(the(Tag::A, 1), here).href(), u"") << "no address is none";
  BaseObject base(the(Tag::Base));
  EXPECT_EQ(base.href(), u"http://other.net/a/");
  base.set_href(u"http://third.net");
  EXPECT_EQ(LinkObject(the(Tag::A), here).href(), u"http://third.net/b");
}

TEST_F(Objects, AnUnusableBaseLeavesAddressesAsWritten) {
  document =
      parse_document(u"<head><base href='http://'><body><a href='b c'></a><img src='file:///tmp/x.png'>");
  EXPECT_EQ(LinkObject(the(Tag::A), u"file:///tmp/123tvx.html").href(), u"b c");
  EXPECT_EQ(BaseObject(the(Tag::Base)).href(), u"http://");
  EXPECT_EQ(ImageObject(the(Tag::Img), u"").src(), u"file:///tmp/x.png");
}

TEST_F(Objects, LocalFilesHaveTheirOwnProtocol) {
  load("<img src='file:///tmp/x.png'><img src='HTTPS://x/y'><img>");
  EXPECT_EQ(ImageObject(the(Tag::Img), here).protocol(), u"File Protocol");
  EXPECT_EQ(ImageObject(the(Tag::Img, 1), here).protocol(), u"https:");
  EXPECT_EQ(ImageObject(the(Tag::Img, 2), here).protocol(), u"");
}

// --- images ---

TEST_F(Objects, ImagesHaveTheirOwnSizeWhereNoneIsWritten) {
  load("<img width=40 height=' 30px'><img width=50%><img>");
  const PixelSize natural{200, 100};
  EXPECT_EQ(ImageObject(the(Tag::Img), here, natural).width(), 40);
  EXPECT_EQ(ImageObject(the(Tag::Img), here, natural).height(), 30);
  EXPECT_EQ(ImageObject(the(Tag::Img, 1), here, natural).width(), 200);
  EXPECT_EQ(ImageObject(the(Tag::Img, 1), here, natural).height(), 100);
  EXPECT_EQ(ImageObject(the(Tag::Img, 2), here).width(), 0);
  ImageObject image(the(Tag::Img, 2), here);
  image.set_width(12);
  image.set_border(u"1");
  image.set_border(u"");
  image.set_align(u"absmiddle");
  EXPECT_EQ(to_utf8(outer_html(the(Tag::Img, 2))), "<IMG width=\"12\" align=\"absmiddle\">");
  EXPECT_EQ(failure([&] { image.set_align(u"justify"); }), errors::invalid_property_value);
  EXPECT_EQ(failure([&] { image.set_height(-1); }), errors::invalid_property_value);
}

// --- forms ---

TEST_F(Objects, Forms) {
  load("<form name=f action=send.php><input><div><select></select></div></form><input>");
  FormObject form(the(Tag::Form));
  EXPECT_EQ(form.name(), u"f");
  EXPECT_EQ(form.method(), u"get");
  EXPECT_EQ(form.encoding(), u"application/x-www-form-urlencoded");
  EXPECT_EQ(form.action(), u"send.php") << "a dialog writes it back";
  EXPECT_EQ(form.elements().size(), 2u);
  form.set_method(u"Post");
  EXPECT_EQ(form.method(), u"post");
  form.set_encoding(u"multipart/form-data");
  EXPECT_EQ(get_attribute(the(Tag::Form), u"enctype"), u"multipart/form-data");
  form.set_target(u"<- type frame name ->");
  EXPECT_EQ(form.target(), u"<- type frame name ->");
  EXPECT_EQ(failure([&] { form.set_method(u"delete"); }), errors::invalid_property_value);
  EXPECT_EQ(form.method(), u"post");
}

TEST_F(Objects, Fields) {
  load(
      "<form><input type=CHECKBOX checked><input type=odd "
      "value=v><textarea>t</textarea><button>b</button></form>");
  FieldObject box(the(Tag::Input)), text(the(Tag::Input, 1)), area(the(Tag::Textarea));
  EXPECT_EQ(box.type(), u"checkbox");
  EXPECT_EQ(box.value(), u"on");
  EXPECT_TRUE(box.checked());
  box.set_checked(false);
  EXPECT_FALSE(box.checked());
  EXPECT_EQ(box.form(), &the(Tag::Form));
  EXPECT_EQ(text.type(), u"text");
  EXPECT_EQ(text.value(), u"v");
  text.set_type(u"password");
  EXPECT_EQ(text.type(), u"password");
  EXPECT_EQ(failure([&] { text.set_type(u"odd"); }), errors::invalid_property_value);
  EXPECT_EQ(area.value(), u"t");
  area.set_value(u"<two>");
  EXPECT_EQ(to_utf8(outer_html(the(Tag::Textarea))), "<TEXTAREA>&lt;two&gt;</TEXTAREA>");
  EXPECT_EQ(failure([&] { area.set_type(u"text"); }), errors::set_not_permitted_here);
  EXPECT_EQ(FieldObject(the(Tag::Button)).type(), u"submit");
}

TEST_F(Objects, ListsIgnoreATextThatIsNoOption) {
  load("<select><option value=1>one<option> two  words <option selected>three</select>");
  FieldObject list(the(Tag::Select));
  EXPECT_EQ(list.type(), u"select-one");
  EXPECT_EQ(list.value(), u"three");
  list.set_value(u"four");
  EXPECT_EQ(list.value(), u"three");
  list.set_value(u"two words");
  EXPECT_EQ(list.value(), u"two words");
  EXPECT_EQ(steps(), 1u);
  list.set_value(u"1");
  EXPECT_EQ(list.value(), u"1");
}

// --- content ---

TEST_F(Objects, ContentIsAssignedInOneStep) {
  load("<div>a<b>b</b></div><p>c");
  assign_inner_html(the(Tag::Div), u"<i>x</i>y");
  assign_inner_text(the(Tag::P), u"1\n2");
  EXPECT_EQ(html(), "<DIV><I>x</I>y</DIV><P>1<BR>2</P>");
  assign_outer_html(the(Tag::I), u"<u>z</u>!");
  assign_outer_text(the(Tag::P), u"<end>");
  EXPECT_EQ(html(), "<DIV><U>z</U>!y</DIV>&lt;end&gt;");
  EXPECT_EQ(steps(), 4u);
  while (document->journal().undo()) {
  }
  EXPECT_EQ(html(), "<DIV>a<B>b</B></DIV><P>c</P>");
}

TEST_F(Objects, WhereContentCannotBeWrittenItIsRefused) {
  load("<table><caption></caption><colgroup><col><thead><tr><td>x</table><img>");
  const std::string before = html();
  for (const Tag tag :
       {Tag::Table, Tag::Colgroup, Tag::Col, Tag::Thead, Tag::Tr, Tag::Html, Tag::Head, Tag::Img}) {
    EXPECT_EQ(failure([&] { assign_inner_html(the(tag), u"x"); }), errors::not_supported) << int(tag);
    EXPECT_EQ(failure([&] { assign_inner_text(the(tag), u"x"); }), errors::not_supported) << int(tag);
  }
  for (const Tag tag : {Tag::Body, Tag::Html, Tag::Head, Tag::Caption, Tag::Colgroup, Tag::Col, Tag::Thead,
                        Tag::Tr, Tag::Td}) {
    EXPECT_EQ(failure([&] { assign_outer_html(the(tag), u"x"); }), errors::not_supported) << int(tag);
    EXPECT_EQ(failure([&] { assign_outer_text(the(tag), u"x"); }), errors::not_supported) << int(tag);
    EXPECT_EQ(failure([&] { assign_outer_nodes(the(tag), document->create_fragment()); }),
              errors::not_supported)
        << int(tag);
  }
  const Ref<Element> loose = document->create_element(Tag::P);
  EXPECT_EQ(failure([&] { assign_outer_html(*loose, u"x"); }), errors::not_supported);
  EXPECT_EQ(failure([&] { assign_outer_nodes(*loose, document->create_fragment()); }), errors::not_supported);
  EXPECT_EQ(html(), before);
  EXPECT_EQ(steps(), 0u);
  assign_inner_html(the(Tag::Td), u"<b>y</b>");
  assign_outer_html(the(Tag::Table), u"<hr>");
  EXPECT_EQ(html(), "<HR><IMG>") << "cells and whole tables are not";
}

// What stands in no element, or beside the body, is read as content of a body.
TEST_F(Objects, ContentOutsideOfTheBodyIsReplacedToo) {
  load("x");
  const Ref<DocumentFragment> fragment = document->create_fragment();
  const Ref<Element> loose = document->create_element(Tag::P);
  insert(*fragment, loose);
  assign_outer_html(*loose, u"<i>a</i>b");
  EXPECT_EQ(to_utf8(serialise_children(*fragment)), "<I>a</I>b");
  const Ref<Element> aside = document->create_element(Tag::Div);
  insert(*document->document_element(), aside);
  assign_outer_html(*aside, u"<i>a</i>b");
  EXPECT_EQ(to_utf8(serialise_children(*document->document_element())),
            "<HEAD></HEAD><BODY>x</BODY><I>a</I>b");
}

}  // namespace tvx::dom::test
