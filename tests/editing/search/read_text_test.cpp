#include "tvx/editing/search/read_text.h"

#include <gmock/gmock.h>

#include "editing/editing_fixture.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"

namespace tvx::editing::test {

class ReadTextTest : public EditingFixture {
 protected:
  std::string read(std::string_view html) {
    load(html);
    return to_utf8(ReadText(host).text());
  }
  /// What a stretch of the text stands for: "text from to" of each node.
  std::vector<std::string> pieces(std::u16string_view part) {
    const ReadText text(host);
    const std::size_t at = text.text().find(part);
    std::vector<std::string> all;
    for (const auto& piece : text.pieces_of(at, at + part.size()))
      all.push_back(to_utf8(piece.node->data()) + " " + std::to_string(piece.from) + " " +
                    std::to_string(piece.to));
    return all;
  }
};

using testing::ElementsAre;

TEST_F(ReadTextTest, ElementsWithinALineAreNothing) {
  EXPECT_EQ(read("<p>a<b>b<i>c</i></b>d</p>"), "abcd\n");
}

TEST_F(ReadTextTest, BlocksLineBreaksAndObjectsEndALine) {
  EXPECT_EQ(read("<p>a</p><p>b<br>c<img>d</p><ul><li>e<li>f</ul>g"), "a\nb\nc\nd\ne\nf\ng\n");
  EXPECT_EQ(read("<table><tr><td>a<td>b</table>"), "a\nb\n");
}

TEST_F(ReadTextTest, WhiteSpaceThatCollapsesIsOneBlank) {
  EXPECT_EQ(read("<p>\n  a \t b <b> c </b> d\n</p>\n <p> </p>"), "a b c d\n");
  EXPECT_EQ(read("<p>a&nbsp; b</p>"), "a\u00A0 b\n");
}

TEST_F(ReadTextTest, PreformattedTextStaysAsItIs) {
  EXPECT_EQ(read("<pre>a  b\n  c </pre>"), "a  b\n  c \n");
}

TEST_F(ReadTextTest, WhatNobodySeesIsNotThere) {
  EXPECT_EQ(read("<p>a<span style='display:none'>x</span><!--y-->b</p><script>z</script>"), "ab\n");
  EXPECT_EQ(read("<p>Donau&shy;dampf&#8203;schiff</p>"), "Donaudampfschiff\n");
  EXPECT_EQ(read("<p>a<textarea>x</textarea><select><option>y</select>b</p>"), "a\nb\n");
}

TEST_F(ReadTextTest, WordsOnButtonsAndThoseThatRunAlongAreLines) {
  EXPECT_EQ(read("<p>a<button>b <b>c</b></button>d</p>"), "a\nb c\nd\n");
  EXPECT_EQ(read("<marquee>a<br>b</marquee>c"), "a\nb\nc\n");
}

TEST_F(ReadTextTest, WhatIsFoldedAwayIsNotThere) {
  EXPECT_EQ(read("<details><summary>a</summary>b<p>c</p></details>d"), "a\nd\n");
  EXPECT_EQ(read("<details open><summary>a</summary>b<p>c</p></details>d"), "a\nb\nc\nd\n");
}

TEST_F(ReadTextTest, AStretchNamesItsNodes) {
  load("<p>one <b>two\n  three</b> four</p>");
  EXPECT_THAT(pieces(u"e two three f"), ElementsAre("one  2 4", "two\n  three 0 11", " four 0 2"));
  EXPECT_THAT(pieces(u"three"), ElementsAre("two\n  three 6 11"));
}

TEST_F(ReadTextTest, PositionsAreFoundInTheText) {
  load("<p>one</p><p>two <b>three</b></p>");
  const ReadText text(host);
  EXPECT_EQ(text.text(), u"one\ntwo three\n");
  dom::Node& second = *host.last_child();
  EXPECT_EQ(text.unit_at({&host, 0}), 0u);
  EXPECT_EQ(text.unit_at({&second, 0}), 4u);
  EXPECT_EQ(text.unit_at({second.first_child(), 2}), 6u);
  EXPECT_EQ(text.unit_at({second.last_child(), 0}), 8u);
  EXPECT_EQ(text.unit_at({&host, 2}), text.text().size());
  const dom::Range range = text.range_of(4, 7);
  EXPECT_EQ(range.start, (dom::Boundary{second.first_child(), 0}));
  EXPECT_EQ(range.end, (dom::Boundary{second.first_child(), 3}));
}

// --- in turns ---

class ReadInTurnsTest : public ReadTextTest {
 protected:
  static constexpr std::string_view page =
      "<p>\n  a \t b <b> c </b> d\n</p>\n <p> </p><ul><li>e<li>f <img> "
      "g</ul>h<table><tr><td>i<td>j</table><hr>k ";
};

TEST_F(ReadInTurnsTest, ReadTheSameInTurnsOfAnySize) {
  const std::string whole = read(page);
  for (std::size_t things = 1; things < 40; ++things) {
    ReadInTurns turns(host);
    while (!turns.go_on(things)) {
    }
    EXPECT_EQ(to_utf8(turns.text()), whole) << things;
  }
}

TEST_F(ReadInTurnsTest, AChangeInBetweenStartsAgain) {
  load("<p>one</p><p>two</p><p>three</p>");
  ReadInTurns turns(host);
  EXPECT_FALSE(turns.go_on(4));
  dom::remove(*host.first_child());
  dom::remove(*host.last_child());
  while (!turns.go_on(1)) {
  }
  EXPECT_EQ(to_utf8(turns.text()), "two\n");
}

TEST_F(ReadInTurnsTest, EndWhereTheDocumentIsGone) {
  std::unique_ptr<ReadInTurns> turns;
  {
    const dom::Ref<dom::Document> document = dom::parse_document(u"<p>one<p>two<p>three");
    turns = std::make_unique<ReadInTurns>(*document->body());
    EXPECT_FALSE(turns->go_on(2));
  }
  EXPECT_TRUE(turns->go_on(2));
}

}  // namespace tvx::editing::test
