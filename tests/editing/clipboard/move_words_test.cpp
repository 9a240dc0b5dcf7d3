#include "editing/editing_fixture.h"
#include "tvx/editing/clipboard/move_content.h"

/// Words that are dragged: parted from those where they arrive, with no second blank left where they were.
namespace tvx::editing {
namespace {

class MovedWords : public test::EditingFixture {
 protected:
  /// The document is written with a bar where the words go.
  void expect_move(std::string marked_document, const std::string& after, KeepSource keep = KeepSource::No) {
    load(marked_document);
    dom::Text* holder = nullptr;
    Offset at = 0;
    for (dom::Node* node = &host; node; node = dom::next_in_order(*node, &host))
      if (auto* text = dom::as<dom::Text>(node); text && text->data().find(u'|') != std::u16string::npos) {
        holder = text;
        at = Offset(text->data().find(u'|'));
      }
    ASSERT_TRUE(holder);
    dom::replace_data(*holder, at, 1, u"");
    document->journal().clear();
    const std::string first = marked();
    ASSERT_TRUE(move_selection(editor, {holder, at}, keep)) << marked_document;
    EXPECT_EQ(marked(), after) << marked_document;
    expect_laws(first);
  }
};

TEST_F(MovedWords, ArePartedFromTheWordAfter) {
  expect_move("<p>one [two] three |four</p>", "<P>one three [two] four</P>");
}

TEST_F(MovedWords, ArePartedFromTheWordBefore) {
  expect_move("<p>one| [two] three four</p>", "<P>one [two] three four</P>");
  expect_move("<p>one [two] three| four</p>", "<P>one three [two] four</P>");
  expect_move("<p>one [two] three four|</p>", "<P>one three four [two]</P>");
  expect_move("<p>one [two] three four|.</p>", "<P>one three four [two].</P>");
}

TEST_F(MovedWords, FromTheStartOfALineTakeTheBlankAfterThem) {
  expect_move("<p>[one] two three| four</p>", "<P>two three [one] four</P>");
  expect_move("<p>x</p><p>[one two] |three</p>", "<P>x</P><P>{one two] three</P>");
  expect_move("<p>|one [two]</p>", "<P>{two] one</P>");
}

TEST_F(MovedWords, InOtherElementsAreWordsToo) {
  expect_move("<p>one <b>[two]</b> three <i>|four</i></p>", "<P>one three <I>{<B>two</B>] four</I></P>");
}

TEST_F(MovedWords, CopiedLeaveTheirPlaceAsItWas) {
  expect_move("<p>one [two] three |four</p>", "<P>one two three [two] four</P>", KeepSource::Yes);
}

TEST_F(MovedWords, OfWhichOnlyAPieceIsTakenGoAsTheyAre) {
  expect_move("<p>one t[wo] three |four</p>", "<P>one t three [wo]four</P>");
  expect_move("<p>one [two ]three |four</p>", "<P>one three [two ]four</P>");
}

TEST_F(MovedWords, GoIntoAnotherWordAsTheyAre) {
  expect_move("<p>one [two] th|ree</p>", "<P>one th[two]ree</P>");
}

TEST_F(MovedWords, MovedOnLeaveNoBlanksBehind) {
  load("<p>one [two] three four five</p>");

  const auto go = [&](std::u16string_view before) {
    // The last text that has the word: moving may leave several.
    for (dom::Node* node = &host; node; node = dom::next_in_order(*node, &host))
      if (auto* each = dom::as<dom::Text>(node); each && each->data().find(before) != std::u16string::npos) {
        ASSERT_TRUE(move_selection(editor, {each, Offset(each->data().find(before))}, KeepSource::No));
        return;
      }
    FAIL();
  };
  go(u"four");
  EXPECT_EQ(marked(), "<P>one three [two] four five</P>");
  go(u"five");
  EXPECT_EQ(marked(), "<P>one three four [two] five</P>");
  go(u"one");
  EXPECT_EQ(marked(), "<P>{two] one three four five</P>");
}

// The text from one cell into another is in neither of them whole.
TEST_F(MovedWords, AreNotThoseOfSelectedCells) {
  load("<p>here</p><table><tr><td>o[ne</td><td>tw]o</td></tr></table>");
  const std::string before = marked();
  EXPECT_FALSE(move_selection(editor, {host.first_child()->first_child(), 2}, KeepSource::No));
  EXPECT_FALSE(move_selection(editor, {host.first_child()->first_child(), 2}, KeepSource::Yes));
  EXPECT_EQ(marked(), before);
}

}  // namespace
}  // namespace tvx::editing
