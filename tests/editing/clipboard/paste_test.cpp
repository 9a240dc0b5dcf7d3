#include "tvx/editing/clipboard/paste.h"

#include "editing/clipboard_of_one_editor.h"
#include "editing/editing_fixture.h"
#include "tvx/editing/clipboard/clipboard_door.h"

namespace tvx::editing {
namespace {

class Paste : public test::EditingFixture {
 protected:
  Paste() { editor.set_clipboard(&door); }
  ~Paste() override { editor.set_clipboard(nullptr); }

  std::string copied(std::string_view marked_html) {
    load(marked_html);
    door.html.clear();
    run({"copy"});
    return to_utf8(door.html);
  }
  void expect_paste(std::string_view html, std::string_view before, std::string_view after) {
    door.html = from_utf8(html);
    expect_edits(before, {{"paste"}}, after);
  }
  /// What is copied is pasted over the same selection: nothing changes.
  void expect_same(std::string_view marked_html) {
    load(marked_html);
    const std::string before = html();
    const std::string first = this->marked();
    ASSERT_TRUE(run({"copy"})) << marked_html;
    ASSERT_TRUE(run({"paste"})) << marked_html;
    EXPECT_EQ(html(), before) << "from " << marked_html << "\ncopied " << to_utf8(door.html);
    while (document->journal().can_undo()) document->journal().undo();
    EXPECT_EQ(html(), before) << "undone";
    EXPECT_EQ(this->marked(), first) << "undone";
  }

  test::ClipboardOfOneEditor door;
};

// --- what is copied ---

TEST_F(Paste, WhatCannotBePutAnywhereIsNotCut) {
  editor.set_clipboard(nullptr);
  for (const char* command : {"copy", "cut", "paste"}) {
    load("<p>a[b]c</p>");
    EXPECT_FALSE(run({command})) << command;
    EXPECT_EQ(marked(), "<P>a[b]c</P>") << command;
  }
}

TEST_F(Paste, CellsAreCutByEmptyingThem) {
  load("<table><tbody><tr><td>[a</td><td>b]</td><td>c</td></tr></tbody></table>");
  EXPECT_TRUE(run({"cut"}));
  EXPECT_NE(door.html.find(u"<TD>b</TD>"), door.html.npos) << to_utf8(door.html);
  EXPECT_EQ(document->all().size(), 13u) << html();
  EXPECT_EQ(html().find("b</TD>"), std::string::npos) << html();
}

TEST_F(Paste, ALineOverAPartOfALineStaysInIt) {
  expect_paste("<h1>x</h1>", "<p>a[b]c</p>", "<P>ax[]c</P>");
  expect_paste("<h1>x</h1>", "<p>[b]c</p>", "<P>x[]c</P>");
  expect_paste("<h1>x</h1>", "<p>[b]</p>", "<H1>x[]</H1>");
}

TEST_F(Paste, BlocksOverItemsOfAListLeaveNoItemOver) {
  expect_paste("<p>x</p><p>y</p>", "<ul><li>a[b</li><li>c]d</li></ul>", "<UL><LI>ax</LI><LI>y[]d</LI></UL>");
  expect_paste("<p>x</p><p>y</p>", "<ul><li>x</li><li>[a</li><li>b]</li></ul>",
               "<UL><LI>x</LI><LI>x</LI><LI>y[]</LI></UL>");
}

TEST_F(Paste, NothingIsCopiedOfACaret) {
  load("<p>a[]b</p>");
  EXPECT_FALSE(editor.enabled(u"copy"));
  EXPECT_FALSE(run({"copy"}));
  EXPECT_FALSE(run({"cut"}));
  EXPECT_EQ(door.html, u"");
}

TEST_F(Paste, CopiesTextWithItsLook) {
  EXPECT_EQ(copied("<p>a <b>b[c <i>d]e</i></b></p>"), "<B>c <I>d</I></B>");
  EXPECT_EQ(copied("<p>x<a href=\"#\">one [two]</a></p>"), "<A href=\"#\">two</A>");
  EXPECT_EQ(door.text, u"two");
}

TEST_F(Paste, CopiesABlockThatIsWhollySelected) {
  EXPECT_EQ(copied("<h1><b>[Title]</b></h1><p>x</p>"), "<H1><B>Title</B></H1>");
  EXPECT_EQ(copied("<h1>[Tit]le</h1>"), "Tit");
  EXPECT_EQ(copied("<h1>[A</h1><p>b]c</p>"), "<H1>A</H1><P>b</P>");
}

TEST_F(Paste, CopiesItemsWithTheirList) {
  EXPECT_EQ(copied("<ul class=\"c\"><li>o[ne</li><li>t]wo</li></ul>"),
            "<UL class=\"c\"><LI>ne</LI><LI>t</LI></UL>");
  EXPECT_EQ(copied("<ul><li>[one]</li></ul>"), "one");
}

TEST_F(Paste, CopiesCellsWithTheirTable) {
  EXPECT_EQ(copied("<table><tbody><tr><td>[a</td><td>b]</td><td>c</td></tr></tbody></table>"),
            "<TABLE><TBODY><TR><TD>a</TD><TD>b</TD></TR></TBODY></TABLE>");
}

TEST_F(Paste, CopiesFromACellIntoAListElsewhere) {
  EXPECT_EQ(
      copied("<table><tbody><tr><td>a</td><td>b[c</td></tr></tbody></table><p>d</p><ul><li>e]f</li></ul>"),
      "<TABLE><TBODY><TR><TD>c</TD></TR></TBODY></TABLE><P>d</P><UL><LI>e</LI></UL>");
}

TEST_F(Paste, CopiesAnElementSelectedAsAWhole) {
  load("<p>a<img src=\"x.png\">b</p>");
  editor.selection().select_control(*dom::first_child_element(*dom::first_child_element(host)));
  EXPECT_TRUE(run({"copy"}));
  EXPECT_EQ(door.html, u"<IMG src=\"x.png\">");
  EXPECT_EQ(door.text, u"");
}

TEST_F(Paste, CutIsOneStep) {
  expect_edit("<p>a[b]c</p>", {"cut"}, "<P>a[]c</P>");
  EXPECT_EQ(door.html, u"b");
}

// --- lines into lines ---

// --- blocks ---

TEST_F(Paste, AnElementSelectedAsAWholeIsReplaced) {
  load("<p>a<img src=\"x.png\">b</p>");
  editor.selection().select_control(*dom::first_child_element(*dom::first_child_element(host)));
  door.html = u"<b>x</b>";
  EXPECT_TRUE(run({"paste"}));
  EXPECT_EQ(marked(), "<P>a<B>x[]</B>b</P>");
}

// --- plain text ---

TEST_F(Paste, NothingIsNothing) {
  load("<p>a[b]c</p>");
  door.html.clear();
  EXPECT_FALSE(run({"paste"}));
  EXPECT_EQ(marked(), "<P>a[b]c</P>");
  EXPECT_FALSE(document->journal().can_undo());
}

// --- back to where it came from ---

TEST_F(Paste, OverItsOwnPlaceNothingChanges) {
  expect_same("<p>a[b]c</p>");
  expect_same("<p>[abc]</p><p>d</p>");
  expect_same("<p>a<b>b[c</b>d]e</p>");
  expect_same("<p>a<b>b[c</b>d<b>e]f</b></p>");
  expect_same("<p>a<b>b[cd]e</b>f</p>");
  expect_same("<p>a[b</p><p>c]d</p>");
  expect_same("<h1>a[b</h1><p>x</p><h2>c]d</h2>");
  expect_same("<ul><li>a[b</li><li>c]d</li></ul>");
  expect_same("<ul><li>[ab</li><li>cd]</li></ul><p>x</p>");
  expect_same("<p>a[b</p><ul><li>c</li><li>d]e</li></ul>");
  expect_same("<ul><li>a[b</li></ul><p>c]d</p>");
  expect_same("<blockquote><p>a[b</p></blockquote><p>c]d</p>");
  expect_same("<p>a[b<br>c]d</p>");
  expect_same("<div>a[b<p>c]d</p></div>");
  expect_same("<p>a</p><p>[b<img src=\"x\">]</p>");
  expect_same("<p>a </p>\n<p>b [c</p>\n<p>d] e</p>\n");
}

TEST_F(Paste, FromACellIntoAListAndBackNothingChanges) {
  expect_same(
      "<table><tbody><tr><td>a</td><td>b[c</td></tr><tr><td>d</td><td>e</td></tr></tbody></table><p>f</p>"
      "<ul><li>g</li><li>h]i</li></ul>");
  expect_same("<p>a[b</p><table><tbody><tr><td>c]d</td><td>e</td></tr></tbody></table>");
  expect_same("<table><tbody><tr><td>a[b</td><td>c]d</td></tr></tbody></table>");
  expect_same("<table><tbody><tr><td>a[b</td></tr><tr><td>c]d</td></tr></tbody></table>");
  expect_same("<p>x</p><table><tbody><tr><td>[ab</td><td>cd]</td></tr></tbody></table><p>y</p>");
}

TEST_F(Paste, ATableThatDoesNotFitLeavesTheGridWhole) {
  door.html = u"<p>x</p><p>y</p>";
  load("<table><tbody><tr><td>a[b</td><td>c]d</td></tr></tbody></table>");
  ASSERT_TRUE(run({"paste"}));
  EXPECT_EQ(marked(), "<TABLE><TBODY><TR><TD><P>x</P><P>y[]</P></TD><TD><BR></TD></TR></TBODY></TABLE>");
}

// --- a line's end, copied along ---

TEST_F(Paste, TheEndOfALineIsCopiedAlong) {
  EXPECT_EQ(copied("<P>one</P><P>[two</P><P>]three</P>"), "<P>two</P><P></P>");
  EXPECT_EQ(copied("<P>one</P>{<P>two</P>}<P>three</P>"), "<P>two</P><P></P>");
  EXPECT_EQ(copied("<P>t[wo</P><P>]three</P>"), "wo<P></P>");
  EXPECT_EQ(copied("<UL><LI>[one</LI><LI>]two</LI></UL>"), "<UL><LI>one</LI></UL><P></P>");
  EXPECT_EQ(copied("<UL><LI>o[ne</LI><LI>]two</LI></UL>"), "ne<P></P>");
  EXPECT_EQ(copied("<P>[two]</P><P>three</P>"), "<P>two</P>") << "the line's end is not in it";
  EXPECT_EQ(copied("{<P>one</P><P>two</P>}"), "<P>one</P><P>two</P>") << "there is no line behind";
  EXPECT_EQ(copied("<TABLE><TBODY><TR><TD>[a</TD><TD>]b</TD></TR></TBODY></TABLE>").find("<P>"),
            std::string::npos)
      << "from cell to cell";
  copied("<P>[two</P><P>]three</P>");
  EXPECT_EQ(door.text, u"two\n");
}

TEST_F(Paste, AWholeLineStandsAsALineWhereItIsPasted) {
  const std::string_view line = "<P>two</P><P></P>";
  expect_paste(line, "<P>one</P><P>[]three</P>", "<P>one</P><P>two</P><P>[]three</P>");
  expect_paste(line, "<P>one[]</P>", "<P>onetwo</P><P>{}<BR></P>");
  expect_paste(line, "<P>o[]ne</P>", "<P>otwo</P><P>[]ne</P>");
  expect_paste(line, "<P>{}<BR></P>", "<P>two</P><P>{}<BR></P>");
  expect_paste("wo<P></P>", "<P>a[]b</P>", "<P>awo</P><P>[]b</P>");
  expect_paste(line, "<UL><LI>[]a</LI></UL>", "<UL><LI>two</LI><LI>[]a</LI></UL>");
  expect_paste("<UL><LI>one</LI></UL><P></P>", "<UL><LI>a</LI><LI>[]b</LI></UL>",
               "<UL><LI>a</LI><LI>one</LI><LI>[]b</LI></UL>");
  expect_paste("<UL><LI>one</LI></UL><P></P>", "<P>[]b</P>", "<UL><LI>one</LI></UL><P>[]b</P>");
  expect_paste("<P>x</P><BR class=\"Apple-interchange-newline\">", "<P>[]b</P>", "<P>x</P><P>[]b</P>");
}

TEST_F(Paste, ACutLineGoesElsewhereAsALine) {
  load("<P>two</P><P>one</P><P>three</P>");
  const auto text = [&](int line) { return dom::child_at(host, line)->first_child(); };
  editor.selection().set({text(0), 0}, {text(1), 0});
  const std::string first = marked();
  run({"cut"});
  EXPECT_EQ(html(), "<P>one</P><P>three</P>");
  editor.selection().collapse({text(1), 0});
  run({"paste"});
  EXPECT_EQ(marked(), "<P>one</P><P>two</P><P>[]three</P>");
  expect_laws(first);
}

TEST_F(Paste, OneLinesEndTakesThePlaceOfAnother) {
  expect_same("<P>one</P><P>[two</P><P>]three</P>");
  expect_same("<UL><LI>[one</LI><LI>]two</LI></UL>");
}

TEST_F(Paste, IntoALineBreakGoesBesideIt) {
  load("<P><BR></P><P>x</P>");
  editor.selection().collapse({host.first_child()->first_child(), 0});
  door.html = u"one";
  run({"paste"});
  EXPECT_EQ(marked(), "<P>one[]</P><P>x</P>");
}

}  // namespace
}  // namespace tvx::editing
