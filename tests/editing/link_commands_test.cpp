#include "editing_fixture.h"

namespace tvx::editing::test {

using LinkCommands = EditingFixture;

TEST_F(LinkCommands, CreateLinkWrapsWhatIsSelected) {
  expect_edit("<P>o[n]e</P>", {"createLink", "x"}, "<P>o<A href=\"x\">[n]</A>e</P>");
}

TEST_F(LinkCommands, ALinkThatIsTouchedChangesAsAWhole) {
  expect_edit("<A href=\"old\">o[n]e</A>", {"createLink", "new"}, "<A href=\"new\">o[n]e</A>");
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

}  // namespace tvx::editing::test
