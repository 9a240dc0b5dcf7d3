#include "editing_fixture.h"
#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/ranges/markup_pointer.h"

namespace tvx::editing::test {

/// What is a word and what is a character, in many scripts: as the walk of the spelling check counts them and
/// as `expand("word")` finds them.
class Words : public EditingFixture {
 protected:
  /// The words of a paragraph with "|" after each. On the way every word is found again by expanding a caret
  /// in it, and the way back has as many.
  std::string words(std::u16string_view text) {
    dom::Element& body = *document->body();
    dom::set_inner_html(body, u"<P>" + std::u16string(text) + u"</P>");
    MarkupPointer start(*document), end(*document);
    start.MoveAdjacentToElement(body, ElementAdjacency::AfterBegin);
    end.MoveAdjacentToElement(body, ElementAdjacency::AfterBegin);
    std::string result;
    int count = 0;
    while (attempt([&] {
      start.MoveUnit(MoveUnitAction::NextWordBegin);
      end.MoveUnit(MoveUnitAction::NextWordEnd);
    })) {
      TextRange range = create_body_range(editor);
      MoveRangeToPointers(start, end, range);
      const std::u16string word = range.text();
      result += to_utf8(word) + "|";
      ++count;
      range.collapse();
      EXPECT_TRUE(range.expand(u"word")) << to_utf8(word);
      EXPECT_EQ(to_utf8(range.text()), to_utf8(word));
    }
    EXPECT_EQ(backward(MoveUnitAction::PreviousWordBegin), count) << to_utf8(text);
    EXPECT_EQ(backward(MoveUnitAction::PreviousWordEnd), count) << to_utf8(text);
    return result;
  }
  int backward(MoveUnitAction action) {
    MarkupPointer pointer(*document);
    pointer.MoveAdjacentToElement(*document->body(), ElementAdjacency::BeforeEnd);
    int steps = 0;
    while (attempt([&] { pointer.MoveUnit(action); })) ++steps;
    return steps;
  }
  int characters(std::u16string_view text) {
    words(text);
    const int back = backward(MoveUnitAction::PreviousCharacter);
    MarkupPointer pointer(*document);
    pointer.MoveAdjacentToElement(*document->body(), ElementAdjacency::AfterBegin);
    int steps = 0;
    while (attempt([&] { pointer.MoveUnit(MoveUnitAction::NextCharacter); })) ++steps;
    EXPECT_EQ(steps, back) << to_utf8(text);
    return steps;
  }
};

std::string utf8(std::u16string_view text) { return to_utf8(text); }

TEST_F(Words, Punctuation) {
  EXPECT_EQ(words(u"one, two; (three)... \"four\"? five! [six] {seven}"),
            "one|two|three|four|five|six|seven|");
  EXPECT_EQ(words(u"--- ... !!! *"), "");
  EXPECT_EQ(words(u"and/or a_b"), "and|or|a_b|");
  EXPECT_EQ(words(u"\u00ABguillemets\u00BB \u201Cquoted\u201D \u2026 end"), "guillemets|quoted|end|");
}

TEST_F(Words, Apostrophes) {
  EXPECT_EQ(words(u"don't"), "don't|");
  EXPECT_EQ(words(u"don\u2019t l\u2019\u00E9t\u00E9"), utf8(u"don\u2019t|l\u2019\u00E9t\u00E9|"));
  EXPECT_EQ(words(u"'quoted' dogs' 'tis"), "quoted|dogs|tis|");
}

TEST_F(Words, Hyphens) {
  EXPECT_EQ(words(u"well-known"), "well|known|");
  EXPECT_EQ(words(u"soft\u00ADhyphen"), utf8(u"soft\u00ADhyphen|")) << "seen only at a line's end";
  EXPECT_EQ(words(u"pages 3\u20135 \u2014 dash"), "pages|3|5|dash|");
}

TEST_F(Words, Digits) {
  EXPECT_EQ(words(u"3.14 1,000,000 42nd 10% $5 2nd"), "3.14|1,000,000|42nd|10|5|2nd|");
  EXPECT_EQ(words(u"A4 B2B mp3"), "A4|B2B|mp3|");
  EXPECT_EQ(words(u"\u0661\u0662\u0663 \u0967\u0968"), utf8(u"\u0661\u0662\u0663|\u0967\u0968|"));
}

TEST_F(Words, CombiningMarksBelongToTheirLetters) {
  EXPECT_EQ(words(u"e\u0301te\u0301 a\u030Angstrom"), utf8(u"e\u0301te\u0301|a\u030Angstrom|"));
  EXPECT_EQ(characters(u"e\u0301te\u0301"), 3);
  EXPECT_EQ(characters(u"\u0928\u093F\u0924\u093E"), 2) << "vowel signs of Devanagari";
}

TEST_F(Words, CyrillicGreekHebrewArabic) {
  EXPECT_EQ(words(u"\u043F\u0440\u0438\u0432\u0435\u0442, \u043C\u0438\u0440"),
            utf8(u"\u043F\u0440\u0438\u0432\u0435\u0442|\u043C\u0438\u0440|"));
  EXPECT_EQ(words(u"\u03B1\u03B2\u03B3\u00B7 \u03B4\u03B5"), utf8(u"\u03B1\u03B2\u03B3|\u03B4\u03B5|"));
  EXPECT_EQ(words(u"\u05E9\u05DC\u05D5\u05DD \u05E6\u05D4\"\u05DC"),
            utf8(u"\u05E9\u05DC\u05D5\u05DD|\u05E6\u05D4\"\u05DC|"))
      << "a quotation mark within an acronym";
  EXPECT_EQ(
      words(u"\u0627\u0644\u0633\u0644\u0627\u0645 \u0639\u064E\u0644\u064E\u064A\u0652\u0643\u064F\u0645"),
      utf8(u"\u0627\u0644\u0633\u0644\u0627\u0645|"
           u"\u0639\u064E\u0644\u064E\u064A\u0652\u0643\u064F\u0645|"))
      << "vowel signs";
  EXPECT_EQ(words(u"\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645"),
            utf8(u"\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645|"))
      << "a joiner that is not seen";
}

TEST_F(Words, ScriptsWithoutBlanks) {
  EXPECT_EQ(words(u"\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E42\u0E25\u0E01"),
            utf8(u"\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35|\u0E42\u0E25\u0E01|"))
      << "Thai";
  EXPECT_EQ(words(u"\u6211\u559C\u6B22\u5B66\u4E60\u3002\u4E2D\u56FD\u4EBA"),
            utf8(u"\u6211|\u559C\u6B22|\u5B66\u4E60|\u4E2D\u56FD\u4EBA|"))
      << "Chinese";
  EXPECT_EQ(words(u"\u30B3\u30F3\u30D4\u30E5\u30FC\u30BF\u3092\u4F7F\u3046"),
            utf8(u"\u30B3\u30F3\u30D4\u30E5\u30FC\u30BF|\u3092|\u4F7F\u3046|"))
      << "Japanese";
  EXPECT_EQ(words(u"\uD55C\uAD6D\uC5B4 \uB2E8\uC5B4"), utf8(u"\uD55C\uAD6D\uC5B4|\uB2E8\uC5B4|")) << "Korean";
  EXPECT_EQ(words(u"\u0939\u093F\u0928\u094D\u0926\u0940 \u092D\u093E\u0937\u093E\u0964"),
            utf8(u"\u0939\u093F\u0928\u094D\u0926\u0940|\u092D\u093E\u0937\u093E|"))
      << "Devanagari";
}

TEST_F(Words, PicturesAreCharactersAndNoWords) {
  EXPECT_EQ(words(u"a \U0001F600 b"), "a|b|");
  EXPECT_EQ(characters(u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"), 1)
      << "a family, joined";
  EXPECT_EQ(characters(u"\U0001F44D\U0001F3FD"), 1) << "with a tone of skin";
  EXPECT_EQ(characters(u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), 2) << "two flags";
  EXPECT_EQ(characters(u"1\uFE0F\u20E3"), 1) << "a key cap";
}

TEST_F(Words, GoOnThroughInlineElementsAndEndAtBlocks) {
  EXPECT_EQ(words(u"w<B>or</B>d x<BR>y<IMG>z"), "word|x|y|z|");
  EXPECT_EQ(words(u"\u0E2A\u0E27<I>\u0E31\u0E2A</I>\u0E14\u0E35\u0E42\u0E25\u0E01"),
            utf8(u"\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35|\u0E42\u0E25\u0E01|"));
  EXPECT_EQ(words(u"a<TABLE><TR><TD>b<TD>c</TABLE>d"), "a|b|c|d|");
}

}  // namespace tvx::editing::test
