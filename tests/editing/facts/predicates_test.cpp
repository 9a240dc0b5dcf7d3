#include "tvx/editing/facts/predicates.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class Predicates : public EditingFixture {
 protected:
  /// Loads, and gives the node after the mark.
  const dom::Node& at(std::string_view marked_html) {
    load(marked_html);
    const dom::Boundary place = editor.selection().anchor();
    if (place.node->is_text()) return *place.node;
    return *dom::child_at(*place.node, place.offset);
  }
};

TEST_F(Predicates, LineBreaksThatDoNothing) {
  EXPECT_TRUE(is_extraneous_line_break(at("<P>one{}<BR></P>")));
  EXPECT_TRUE(is_extraneous_line_break(at("one{}<BR><P>two</P>")));
  EXPECT_TRUE(is_extraneous_line_break(at("<P><B>one</B><I>{}<BR></I> </P>")));
  EXPECT_FALSE(is_extraneous_line_break(at("<P>{}<BR></P>"))) << "holds the line open";
  EXPECT_FALSE(is_extraneous_line_break(at("<P>one{}<BR>two</P>")));
  EXPECT_FALSE(is_extraneous_line_break(at("<P>one<BR>{}<BR></P>"))) << "makes an empty line";
  EXPECT_FALSE(is_extraneous_line_break(at("<P>one{}<BR><IMG></P>")));
  EXPECT_FALSE(is_extraneous_line_break(at("<UL><LI>{}<BR></LI></UL>")));
}

TEST_F(Predicates, LineBreaksWithNothingBehind) {
  EXPECT_TRUE(is_collapsed_line_break(at("<P>{}<BR></P>")));
  EXPECT_TRUE(is_collapsed_line_break(at("<P>one{}<BR></P>")));
  EXPECT_FALSE(is_collapsed_line_break(at("<P>{}<BR><BR></P>")));
  EXPECT_FALSE(is_collapsed_line_break(at("<P>{}<BR> a</P>")));
}

TEST_F(Predicates, CollapsedBlockProps) {
  EXPECT_TRUE(is_collapsed_block_prop(at("<P>{}<BR></P>")));
  EXPECT_TRUE(is_collapsed_block_prop(at("<P>{}<SPAN><B><BR></B> </SPAN></P>")));
  EXPECT_FALSE(is_collapsed_block_prop(at("<P>{}<SPAN>a<BR></SPAN></P>")));
  EXPECT_FALSE(is_collapsed_block_prop(at("<P>{}<SPAN></SPAN></P>")));
}

TEST_F(Predicates, WhiteSpaceThatShows) {
  EXPECT_TRUE(is_collapsed_whitespace_node(at("<P>[] <B>a</B></P>")));
  EXPECT_TRUE(is_collapsed_whitespace_node(at("<P><B>a</B>[] </P>")));
  EXPECT_TRUE(is_collapsed_whitespace_node(at("<P>a</P>[] <P>b</P>")));
  EXPECT_FALSE(is_collapsed_whitespace_node(at("<P><B>a</B>[] <B>b</B></P>")));
  EXPECT_FALSE(is_whitespace_node(at("<PRE>[] </PRE>")));
  EXPECT_FALSE(is_whitespace_node(at("[]\xC2\xA0"))) << "a no-break space is a character";
}

TEST_F(Predicates, WhatIsSeen) {
  EXPECT_TRUE(is_visible(at("{}<P></P>"))) << "blocks are";
  EXPECT_TRUE(is_visible(at("a{}<SPAN><IMG></SPAN>")));
  EXPECT_TRUE(is_visible(at("a{}<INPUT>")));
  EXPECT_FALSE(is_visible(at("a{}<SPAN></SPAN>")));
  EXPECT_FALSE(is_visible(at("a{}<!--b-->")));
  EXPECT_FALSE(is_visible(at("<DIV style=\"display: none\">{}<P>a</P></DIV>")));
}

TEST_F(Predicates, WhatMayStandInWhat) {
  using dom::Name;
  using dom::Tag;
  EXPECT_TRUE(is_allowed_child_name(Name(Tag::P), Name(Tag::Div)));
  EXPECT_FALSE(is_allowed_child_name(Name(Tag::P), Name(Tag::Span)));
  EXPECT_FALSE(is_allowed_child_name(Name(Tag::Li), Name(Tag::Div)));
  EXPECT_TRUE(is_allowed_child_name(Name(Tag::Tr), Name(Tag::Table)));
  EXPECT_FALSE(is_allowed_child_name(Name(Tag::H1), Name(Tag::H2)));
  EXPECT_FALSE(is_allowed_child_name(Name(Tag::A), at("<A href=x>{}<B>a</B></A>")));
  EXPECT_FALSE(is_allowed_child(at("[]a"), Name(Tag::Tr)));
  EXPECT_TRUE(is_allowed_child(at("[] "), Name(Tag::Tr)));
  EXPECT_FALSE(is_allowed_child(at("{}<B>a</B>"), Name(Tag::Xmp)));
}

TEST_F(Predicates, ElementsThatSayOneThing) {
  for (const char* html : {"{}<B>a</B>", "{}<A href=x>a</A>", "{}<FONT color=red>a</FONT>",
                           "{}<SPAN style=\"color: red\">a</SPAN>", "{}<B style=\"font-weight: bold\">a</B>",
                           "{}<U style=\"text-decoration: none\">a</U>", "{}<I style=\"\">a</I>"}) {
    EXPECT_TRUE(is_simple_modifiable_element(at(html))) << html;
  }
  for (const char* html : {"{}<FONT color=red size=3>a</FONT>", "{}<B style=\"color: red\">a</B>",
                           "{}<SPAN style=\"color: red; top: 0\">a</SPAN>"}) {
    EXPECT_FALSE(is_simple_modifiable_element(at(html))) << html;
    EXPECT_TRUE(is_modifiable_element(at(html))) << html;
  }
  EXPECT_FALSE(is_modifiable_element(at("{}<B id=x>a</B>")));
  EXPECT_FALSE(is_modifiable_element(at("{}<DFN>a</DFN>")));
}

}  // namespace tvx::editing::test
