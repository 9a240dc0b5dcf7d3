#include "editing/editing_fixture.h"
#include "tvx/editing/inline/links.h"
#include "tvx/editing/insertion/link_selection.h"

namespace tvx::editing::test {

using LinkCommands = EditingFixture;

TEST_F(LinkCommands, CreateLinkWrapsWhatIsSelected) {
  expect_edit("<P>o[n]e</P>", {"createLink", "x"}, "<P>o<A href=\"x\">[n]</A>e</P>");
}

TEST_F(LinkCommands, ALinkThatIsTouchedChangesAsAWhole) {
  expect_edit("<A href=\"old\">o[n]e</A>", {"createLink", "new"}, "<A href=\"new\">o[n]e</A>");
}

TEST_F(LinkCommands, OfSeveralLinksEachChangesAsAWhole) {
  load("<P><A href=\"a\">o[ne</A> and <A href=\"b\">t]wo</A></P>");
  EXPECT_TRUE(run({"createLink", "new"}));
  EXPECT_EQ(html(), "<P><A href=\"new\">one and two</A></P>");
}

TEST_F(LinkCommands, LinksAreNotNested) {
  expect_edit("<A name=\"n\">o[n]e</A>", {"createLink", "x"},
              "<SPAN name=\"n\">o<A href=\"x\">[n]</A>e</SPAN>");
}

TEST_F(LinkCommands, AnEmptyAddressIsRefused) {
  load("o[n]e");
  EXPECT_FALSE(run({"createLink", ""}));
  EXPECT_EQ(html(), "one");
}

TEST_F(LinkCommands, UnlinkTakesTheWholeLinkAroundACaret) {
  expect_edit("a<A href=\"x\">b[]c</A>d", {"unlink"}, "ab[]cd");
  expect_edit("a<A href=\"x\" title=\"t\">b[]c</A>d", {"unlink"}, "a<A title=\"t\">b[]c</A>d");
}

TEST_F(LinkCommands, UnlinkTakesAllLinksOfASelection) {
  expect_edit("<P>[a<A href=\"x\">b</A>c</P><P><A href=\"y\">d</A>e]</P>", {"unlink"},
              "<P>[abc</P><P>de]</P>");
}

TEST_F(LinkCommands, ThePresentAddressIsThatOfTheFirstLinkTouched) {
  const std::vector<std::pair<std::string, std::u16string>> cases{
      {"a<A href=\"x\">b[]c</A>d", u"x"},
      {"[a<A href=\"x\">b</A><A href=\"y\">c</A>]", u"x"},
      {"<A href=\"x\">b</A>[c]<A href=\"y\">d</A>", u""},
      {"a[]b", u""},
  };
  for (const auto& [html, address] : cases) {
    load(html);
    EXPECT_EQ(link_address(editor), address) << html;
  }
  editor.selection().clear();
  EXPECT_EQ(link_address(editor), u"");
}

TEST_F(LinkCommands, AnAddressGivenByHandMakesALinkOfWhatThereIs) {
  const std::vector<std::array<std::string_view, 2>> cases{
      {"<P>o[n]e</P>", "<P>o<A href=\"n\">[n]</A>e</P>"},
      {"<P>a<A href=\"x\">b[]c</A>d</P>", "<P>a<A href=\"n\">b[]c</A>d</P>"},
      {"<P>a[]b</P>", "<P>a<A href=\"n\">n</A>{}b</P>"},
      {"<P>{}<BR></P>", "<P><A href=\"n\">n</A>{}<BR></P>"},
      {"<P>a[]</P>", "<P>a<A href=\"n\">n</A>{}</P>"},
  };
  for (const auto& [before, after] : cases) {
    load(before);
    const std::string first = marked();
    EXPECT_TRUE(link_selection(editor, u"n")) << before;
    EXPECT_EQ(marked(), after);
    EXPECT_EQ(document->journal().depth(), 1u);
    expect_laws(first);
  }
}

TEST_F(LinkCommands, AnImageSelectedAsAWholeCanBeLinked) {
  load("<P>a<IMG src=\"i\">b</P>");
  editor.selection().select_control(*dom::first_child_element(*dom::first_child_element(host)));
  EXPECT_TRUE(link_selection(editor, u"n"));
  EXPECT_EQ(html(), "<P>a<A href=\"n\"><IMG src=\"i\"></A>b</P>");
}

TEST_F(LinkCommands, NothingIsLinkedWithoutAnAddressOrOutsideTheHost) {
  load("<P>a[]b</P>");
  EXPECT_FALSE(link_selection(editor, u""));
  editor.selection().collapse({host.next_sibling()->first_child(), 1});
  EXPECT_FALSE(link_selection(editor, u"n"));
  editor.selection().clear();
  EXPECT_FALSE(link_selection(editor, u"n"));
  EXPECT_EQ(html(), "<P>ab</P>");
}

}  // namespace tvx::editing::test
