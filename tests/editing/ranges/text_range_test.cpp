#include "tvx/editing/ranges/text_range.h"

#include "editing/editing_fixture.h"
#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/editing/ranges/control_range.h"

namespace tvx::editing::test {

class TextRanges : public EditingFixture {
 protected:
  TextRange from(std::string_view marked_html) {
    load(marked_html);
    return create_text_range(editor);
  }
  std::string html_text(std::string_view marked_html) { return to_utf8(from(marked_html).html_text()); }
  std::string text(std::string_view marked_html) { return to_utf8(from(marked_html).text()); }
  std::string parent(std::string_view marked_html) {
    return to_utf8(from(marked_html).parent_element()->display_name());
  }
  /// The result with the selection, after undo and redo have been tried.
  std::string pasted(std::string_view before, std::string_view markup) {
    TextRange range = from(before);
    const std::string first = marked();
    range.paste_html(from_utf8(markup));
    EXPECT_TRUE(range.collapsed());
    EXPECT_EQ(document->journal().depth(), 1u) << "one step: " << before;
    expect_laws(first);
    return marked();
  }
  std::string written(std::string_view before, std::string_view text) {
    TextRange range = from(before);
    const std::string first = marked();
    range.set_text(from_utf8(text));
    EXPECT_EQ(document->journal().depth(), 1u) << before;
    expect_laws(first);
    return marked();
  }
  /// The document with the range shown as the selection.
  std::string shown(TextRange& range) {
    range.select();
    return marked();
  }
  std::string expanded(std::string_view before, bool changes = true) {
    TextRange range = from(before);
    EXPECT_EQ(range.expand(u"word"), changes) << before;
    return shown(range);
  }
};

TEST_F(TextRanges, ShrinkToTheirCharacters) {
  EXPECT_EQ(html_text("<P>one [two] three</P>"), "two");
  EXPECT_EQ(html_text("<P>one{<B>two</B>} three</P>"), "<B>two</B>");
  EXPECT_EQ(parent("<P>one{<B>two</B>} three</P>"), "B");
  EXPECT_EQ(parent("<P>one{<B>two</B> t}hree</P>"), "P");
  EXPECT_EQ(html_text("<P>one[ two ]three</P>"), " two ");
  EXPECT_EQ(html_text("<P>a[b</P><P>c]d</P>"), "<P>b</P><P>c</P>");
  EXPECT_EQ(html_text("<P>a<B>b[c</B>d]e</P>"), "<B>c</B>d");
  EXPECT_EQ(html_text("<P>a{<IMG src=\"x\">}b</P>"), "<IMG src=\"x\">");
}

TEST_F(TextRanges, ACoveredElementStandsForItself) {
  EXPECT_EQ(html_text("<DIV>x<P class=\"a\">[one]</P></DIV>"), "<P class=\"a\">one</P>");
  EXPECT_EQ(html_text("<P>a<SPAN> [one]</SPAN> </P>"), "one") << "a blank that is seen is left out";
  EXPECT_EQ(html_text("<P>\n[one]\n</P>x"), "<P>\none\n</P>") << "white space at a block's edges is not";
  EXPECT_EQ(html_text("<P>[one}<BR></P>x"), "<P>one<BR></P>") << "nor is a break without effect";
  EXPECT_EQ(html_text("{<P><B>one</B></P>}"), "<B>one</B>") << "the innermost";
  EXPECT_EQ(html_text("<UL><LI>[a</LI><LI>b]</LI></UL>"), "<UL><LI>a</LI><LI>b</LI></UL>");
}

TEST_F(TextRanges, BodyHostAndPartsOfTablesNeverDo) {
  EXPECT_EQ(html_text("[one]"), "one") << "the host";
  EXPECT_EQ(html_text("<TABLE><TBODY><TR><TD>[a]</TD></TR></TBODY></TABLE>"), "a");
  EXPECT_EQ(html_text("<TABLE><TBODY><TR><TD>[a</TD><TD>b]</TD></TR><TR><TD>c</TD></TR></TBODY></TABLE>"),
            "<TD>a</TD><TD>b</TD>");
  EXPECT_EQ(html_text("{<TABLE><TBODY><TR><TD>a</TD><TD>b</TD></TR></TBODY></TABLE>}"),
            "<TABLE><TBODY><TR><TD>a</TD><TD>b</TD></TR></TBODY></TABLE>")
      << "all cells are the table";
  dom::set_inner_html(*document->body(), u"whole body");
  TextRange body = create_body_range(editor);
  EXPECT_EQ(body.html_text(), u"whole body");
}

TEST_F(TextRanges, AreEmptyWhenCollapsed) {
  EXPECT_EQ(html_text("<P>o[]ne</P>"), "");
  EXPECT_EQ(text("<P>o[]ne</P>"), "");
  EXPECT_EQ(html_text("<P>one[</P><P>]two</P>"), "") << "the edge of a paragraph is no character";
  EXPECT_EQ(parent("<P>o[]ne</P>"), "P");
}

TEST_F(TextRanges, GiveTextAsInnerText) {
  EXPECT_EQ(text("<P>one [two] three</P>"), "two");
  EXPECT_EQ(text("<P>one[ two ]three</P>"), " two ");
  EXPECT_EQ(text("<P>a[b</P><P>c]d</P>"), "b\n\nc");
  EXPECT_EQ(text("<DIV>a[b</DIV><DIV>c]d</DIV>"), "b\nc");
  EXPECT_EQ(text("a[b<BR>c]d"), "b\nc");
  EXPECT_EQ(text("<P>x [a\n  b]</P>"), "a b");
  EXPECT_EQ(text("<PRE>[a\n  b]</PRE>"), "a\n  b");
  EXPECT_EQ(text("<P>a[b<SPAN style=\"display:none\">x</SPAN>c]</P>"), "bc");
  EXPECT_EQ(text("<TABLE><TBODY><TR><TD>0</TD><TD>[a</TD><TD>b]</TD></TR></TBODY></TABLE>"), "a\tb");
  EXPECT_EQ(text("<P>a[b</P>x<P>cd</P><P>e]f</P>"), "b\n\nx\n\ncd\n\ne");
  for (const char* whole :
       {"<P>[a</P><P>b]</P>", "<DIV>[a<BR>b]</DIV>", "[a <B> b</B>]", "<UL><LI>[a</LI><LI>b]</LI></UL>"}) {
    const std::string of_range = text(whole);
    EXPECT_EQ(of_range, to_utf8(dom::inner_text(host))) << whole;
  }
}

TEST_F(TextRanges, ExpandToTheWordWithoutTheBlankBehind) {
  EXPECT_EQ(expanded("<P>one tw[]o three</P>"), "<P>one [two] three</P>");
  EXPECT_EQ(expanded("<P>one []two</P>"), "<P>one [two]</P>");
  EXPECT_EQ(expanded("<P>one two[] x</P>"), "<P>one [two] x</P>");
  EXPECT_EQ(expanded("<P>o[ne t]wo</P>"), "<P>[one two]</P>");
  EXPECT_EQ(expanded("<P>wo<B>r[]</B>d</P>"), "<P>[wo<B>r</B>d]</P>") << "elements in a line end no word";
  EXPECT_EQ(expanded("<P>one</P><P>[]two</P>"), "<P>one</P><P>[two]</P>") << "blocks do";
  EXPECT_EQ(expanded("one<BR>t[]wo"), "one<BR>[two]");
}

TEST_F(TextRanges, ExpandChangesNothingBesideNoWord) {
  EXPECT_EQ(expanded("<P>one [] two</P>", false), "<P>one [] two</P>");
  EXPECT_EQ(expanded("<P>one ,[], two</P>", false), "<P>one ,[], two</P>");
  EXPECT_EQ(expanded("<P>{}<BR></P>", false), "<P>{}<BR></P>");
  TextRange range = from("<P>o[]ne</P>");
  EXPECT_THROW(range.expand(u"furlong"), RuntimeError);
}

TEST_F(TextRanges, WordsHoldInAllScripts) {
  EXPECT_EQ(expanded("don't d[]on't"), "don't [don't]");
  EXPECT_EQ(expanded("l\xE2\x80\x99\xC3\xA9t[]\xC3\xA9 x"), "[l\xE2\x80\x99\xC3\xA9t\xC3\xA9] x");
  EXPECT_EQ(expanded("well-kn[]own"), "well-[known]");
  EXPECT_EQ(expanded("is 3.1[]4, yes"), "is [3.14], yes");
  EXPECT_EQ(expanded("(wo[]rd)."), "([word]).");
  EXPECT_EQ(expanded("\xD0\xB4[]\xD0\xB0 \xD0\xBD"), "[\xD0\xB4\xD0\xB0] \xD0\xBD");
  // Thai is written without blanks; the dictionary parts "hello" from "world".
  EXPECT_EQ(expanded("\xE0\xB8\xAA\xE0\xB8\xA7[]"
                     "\xE0\xB8\xB1\xE0\xB8\xAA\xE0\xB8\x94\xE0\xB8\xB5\xE0\xB9\x82\xE0\xB8\xA5\xE0\xB8\x81"),
            "[\xE0\xB8\xAA\xE0\xB8\xA7\xE0\xB8\xB1\xE0\xB8\xAA\xE0\xB8\x94\xE0\xB8\xB5]"
            "\xE0\xB9\x82\xE0\xB8\xA5\xE0\xB8\x81");
}

TEST_F(TextRanges, PasteLeavesACaretBehind) {
  EXPECT_EQ(pasted("<P>one []two</P>", "<B>x</B>"), "<P>one <B>x</B>{}two</P>");
  EXPECT_EQ(pasted("<P>one [two] three</P>", "<B>x</B>"), "<P>one <B>x</B>{} three</P>");
  EXPECT_EQ(pasted("<P>one [two] three</P>", "x<I>y</I><!--c--><U>z</U>"),
            "<P>one x<I>y</I><!--c--><U>z</U>{} three</P>");
  EXPECT_EQ(pasted("<P>{}<BR></P>", "<B>x</B>"), "<P><B>x</B>{}</P>");
  EXPECT_EQ(pasted("<P>a{<IMG>}b</P>", "x"), "<P>ax{}b</P>");
}

TEST_F(TextRanges, PasteSplitsWhatCannotHoldIt) {
  EXPECT_EQ(pasted("<P>one []two</P>", "<TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>"),
            "<P>one </P><TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>{}<P>two</P>");
  EXPECT_EQ(pasted("<P>a[b</P><P>c]d</P>", "X"), "<P>aX{}d</P>") << "paragraphs join";
}

TEST_F(TextRanges, PasteReplacesACoveredElement) {
  EXPECT_EQ(pasted("x<P>[one]</P>y", "<DIV>two</DIV>"), "x<DIV>two</DIV>{}y");
  EXPECT_EQ(pasted("<P>a<B>[one]</B>b</P>", "<I>two</I>"), "<P>a<I>two</I>{}b</P>");
  EXPECT_EQ(pasted("<P><B>[one]</B></P>", ""), "<P>{}<BR></P>") << "the line stays";
  EXPECT_EQ(pasted("<TABLE><TBODY><TR><TD>[a]</TD></TR></TBODY></TABLE>", "<B>x</B>"),
            "<TABLE><TBODY><TR><TD><B>x</B>{}</TD></TR></TBODY></TABLE>")
      << "a cell stays";
}

TEST_F(TextRanges, WrappingKeepsTheBlanksAround) {
  TextRange range = from("<P>one t[]wo three</P>");
  range.expand(u"word");
  range.paste_html(u"<B>" + range.html_text() + u"</B>");
  EXPECT_EQ(html(), "<P>one <B>two</B> three</P>");
}

TEST_F(TextRanges, PasteWithoutTheSelectionLeavesItAlone) {
  load("<P>[one] two</P><P>three</P>");
  TextRange range(editor, {});
  range.move_to_element_text(*dom::as<dom::Element>(host.last_child()));
  range.paste_html(u"<DIV>x</DIV>");
  EXPECT_EQ(marked(), "<P>[one] two</P><DIV>x</DIV>");
}

TEST_F(TextRanges, PasteNeedsNoEditingHost) {
  load("[]");
  dom::Element& outside = *dom::as<dom::Element>(host.next_sibling());
  TextRange range(editor, {{outside.first_child(), 1}, {outside.first_child(), 3}});
  range.paste_html(u"<B>x</B>");
  EXPECT_EQ(dom::outer_html(outside), u"<P>t<B>x</B>t</P>");
}

TEST_F(TextRanges, TextTakesTheLookOfWhatItReplaces) {
  EXPECT_EQ(written("<P>a <B>[wrng]</B> b</P>", "wrong"), "<P>a <B>wrong[]</B> b</P>");
  EXPECT_EQ(written("<P>a [b] c</P>", "<i> & \"q\""), "<P>a &lt;i&gt; &amp; \"q\"[] c</P>");
  EXPECT_EQ(written("<P>a[b<I>c</I>]d</P>", "x"), "<P>ax{}d</P>");
  EXPECT_EQ(written("<P>a[b]c</P>", "x\r\ny"), "<P>ax<BR>y{}c</P>");
  EXPECT_EQ(written("<P>a[b]c</P>", ""), "<P>a{}c</P>");
  TextRange range = from("<P>a[b]c</P>");
  range.set_text(u"x  y");
  range.move_to_element_text(*dom::first_child_element(host));
  EXPECT_EQ(range.text(), u"ax\u00A0 yc") << "both blanks are seen";
}

TEST_F(TextRanges, LiveThroughEdits) {
  TextRange range = from("<P>one [two] three</P>");
  TextRange copy = range.duplicate();
  editor.selection().collapse({host.first_child()->first_child(), 0});
  editor.execute(u"insertText", u"zero ");
  EXPECT_EQ(copy.text(), u"two");
  EXPECT_TRUE(copy.is_equal(range));
}

TEST_F(TextRanges, MoveByUnits) {
  TextRange range = from("<P>one two</P><P>t[]hree</P>");
  EXPECT_EQ(range.move_end(u"character", 2), 2);
  EXPECT_EQ(range.text(), u"hr");
  EXPECT_EQ(range.move_end(u"word"), 1);
  EXPECT_EQ(range.text(), u"hree");
  EXPECT_EQ(range.move_start(u"word", -3), -3);
  EXPECT_EQ(range.text(), u"one two\n\nthree");
  EXPECT_EQ(range.move_end(u"character", 1000) > 0, true) << "on into what follows the host";
  EXPECT_EQ(range.move(u"textedit", -1), -1);
  EXPECT_TRUE(range.collapsed());
  EXPECT_EQ(range.move(u"character", -1), 0);
  EXPECT_EQ(range.move_end(u"character", 3), 3);
  EXPECT_EQ(range.text(), u"one");
}

TEST_F(TextRanges, CompareTheirEnds) {
  TextRange outer = from("<P>[one two]</P>");
  TextRange inner = outer.duplicate();
  inner.move_start(u"word");
  EXPECT_EQ(inner.text(), u"two");
  EXPECT_TRUE(outer.in_range(inner));
  EXPECT_FALSE(inner.in_range(outer));
  EXPECT_EQ(inner.compare_end_points(u"StartToStart", outer), 1);
  EXPECT_EQ(inner.compare_end_points(u"EndToEnd", outer), 0);
  EXPECT_EQ(inner.compare_end_points(u"StartToEnd", outer), -1);
  outer.set_end_point(u"EndToStart", inner);
  EXPECT_EQ(outer.text(), u"one ");
  EXPECT_THROW(outer.compare_end_points(u"Middle", inner), RuntimeError);
}

TEST_F(TextRanges, FindText) {
  TextRange range = from("<P>[]one T<B>wo</B></P><P>three</P>");
  EXPECT_TRUE(range.find_text(u"two"));
  EXPECT_EQ(shown(range), "<P>one [T<B>wo]</B></P><P>three</P>");
  EXPECT_FALSE(range.find_text(u"one")) << "it looks ahead";
  EXPECT_FALSE(range.find_text(u"twothree")) << "not over a block's edge";
  EXPECT_FALSE(range.find_text(u"")) << "nothing is found nowhere";
  EXPECT_EQ(shown(range), "<P>one [T<B>wo]</B></P><P>three</P>");
}

TEST_F(TextRanges, CollapseGoesToTheEndsOfTheText) {
  TextRange range = from("<P>a</P>{<P>b</P>}<P>c</P>");
  range.collapse(false);
  range.paste_html(u"x");
  EXPECT_EQ(html(), "<P>a</P><P>bx</P><P>c</P>");
}

// --- control ranges and the selection ---

TEST_F(TextRanges, AControlSelectionHasNoTextRange) {
  load("<P>a<IMG src=\"x\">b</P>");
  dom::Element& image = *dom::as<dom::Element>(host.first_child()->first_child()->next_sibling());
  editor.selection().select_control(image);
  EXPECT_EQ(selection_type_name(editor), u"Control");
  AnyRange range = create_range(editor);
  EXPECT_THROW(text_range_of(range), RuntimeError);
  EXPECT_THROW(create_text_range(editor), RuntimeError);
  auto& controls = std::get<ControlRange>(range);
  ASSERT_EQ(controls.length(), 1u);
  EXPECT_EQ(&controls.item(0), &image);
  EXPECT_THROW(controls.item(1), RuntimeError);
  EXPECT_THROW(controls.add(*dom::first_child_element(host)), RuntimeError) << "a paragraph is no control";
}

TEST_F(TextRanges, DeletingControls) {
  load("<P>a<IMG>b</P>");
  editor.selection().select_control(
      *dom::as<dom::Element>(host.first_child()->first_child()->next_sibling()));
  const std::string first = marked();
  std::get<ControlRange>(create_range(editor)).execute(u"delete");
  EXPECT_EQ(html(), "<P>ab</P>");
  EXPECT_EQ(selection_type_name(editor), u"None");
  expect_laws(first);
}

TEST_F(TextRanges, ClearingASelectedTable) {
  load("<P>a</P><TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE><P>b</P>");
  editor.selection().select_control(*dom::as<dom::Element>(host.first_child()->next_sibling()));
  clear_selection(editor);
  EXPECT_EQ(html(), "<P>a</P><P>b</P>");
  EXPECT_EQ(document->journal().depth(), 1u);
}

TEST_F(TextRanges, SelectionTypes) {
  load("<P>o[]ne</P>");
  EXPECT_EQ(selection_type_name(editor), u"None");
  load("<P>[o]ne</P>");
  EXPECT_EQ(selection_type_name(editor), u"Text");
  empty_selection(editor);
  EXPECT_EQ(marked(), "<P>o[]ne</P>");
  load("<P>a[b]c</P>");
  clear_selection(editor);
  EXPECT_EQ(marked(), "<P>a[]c</P>");
  editor.selection().clear();
  EXPECT_EQ(selection_type_name(editor), u"None");
  EXPECT_EQ(create_text_range(editor).range().start, (dom::Boundary{document->body(), 0}));
}

}  // namespace tvx::editing::test
