#include "tvx/source/formatter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

std::u16string format(std::u16string_view text) { return FormatHTMLSource(text, 2, false, false); }

struct Example {
  const char* name;
  std::u16string_view text, formatted;
};

class Formatter : public testing::TestWithParam<Example> {};

TEST_P(Formatter, Gives) { EXPECT_EQ(to_utf8(format(GetParam().text)), to_utf8(GetParam().formatted)); }

constexpr Example examples[] = {
    {"NothingForNothing", u"", u""},
    {"NothingForBlanks", u"   ", u""},
    {"ATableInSevenLines", u"<TABLE><TR><TD>x</TD></TR></TABLE>",
     u"<TABLE>\r\n  <TR>\r\n    <TD>\r\n      x\r\n    </TD>\r\n  </TR>\r\n</TABLE>\r\n"},
    {"ALineBreakBeginsALine", u"<P>one<BR>two</P>", u"<P>one\r\n<BR>two</P>\r\n"},
    {"SmallLettersStayInline", u"<table><tr>x</tr></table>", u"<table><tr>x</tr></table>\r\n"},
    {"InlineElementsStayInTheLine", u"a <B>bold</B> word", u"a <B>bold</B> word\r\n"},
    {"ACommentBeginsALineAndItsTagsCount", u"a<!-- <TD> -->b", u"a\r\n<!-- \r\n<TD>\r\n   -->b\r\n"},
    {"BlankLinesAreDropped", u"a\r\n\r\n  \r\n\r\nb", u"a\r\nb\r\n"},
    {"TextWithoutALineEndGetsOne", u"a", u"a\r\n"},
    {"TextWithALineEndGetsNoSecond", u"a\r\n", u"a\r\n"},
    {"LineBreaksOfTheInputStay", u"a\r\nb", u"a\r\nb\r\n"},
    {"ALoneLineFeedIsNoLineEnd", u"a\nb", u"a\n\r\nb\r\n"},
    {"ALoneLineFeedAloneIsKept", u"a\r\n\nb", u"a\r\n\n\r\nb\r\n"},
    {"ALoneCarriageReturnIsALetter", u"a\rb", u"a\rb\r\n"},
    {"BlanksWithinALineEndCountForNothing", u"\r \n", u""},
    {"ALineBreakInATagBeginsNoLine", u"<P\r\nid=a>b</P>", u"<P\r\nid=a>b</P>\r\n"},
    {"TheLineFeedInATagIsNotALineFeedBehindIt", u"<DIV title=\"a\nb\">c</DIV>",
     u"<DIV title=\"a\nb\">\r\n  c\r\n</DIV>\r\n"},
    {"HeaderCellsStayInline", u"<TR><TH>a</TH><TH>b</TH></TR>",
     u"<TR>\r\n  <TH>a</TH><TH>b</TH>\r\n</TR>\r\n"},
    {"AnAreaIndentsTheRest", u"<MAP><AREA><AREA></MAP>x",
     u"<MAP>\r\n  <AREA>\r\n    <AREA>\r\n    </MAP>\r\n    x\r\n"},
    {"FontIndents", u"<FONT>x</FONT>", u"<FONT>\r\n  x\r\n</FONT>\r\n"},
    {"ClosingLineStartTagsStayInTheLine", u"<UL><LI>a</LI><LI>b</LI></UL>",
     u"<UL>\r\n  <LI>a</LI>\r\n  <LI>b</LI>\r\n</UL>\r\n"},
    {"AttributesStayAsTheyAre", u"<TD  ID='x' >y</TD>", u"<TD  ID='x' >\r\n  y\r\n</TD>\r\n"},
    {"ASlashInTheNameMatchesNothing", u"a<BR/>b", u"a<BR/>b\r\n"},
    {"ASlashBehindABlankIsAnAttribute", u"a<BR />b", u"a\r\n<BR />b\r\n"},
    {"ABlankInFrontOfTheNameMatchesNothing", u"< TD>x< TD>", u"< TD>x< TD>\r\n"},
    {"ATabDoesNotEndAName", u"<TD\tid=a>x", u"<TD\tid=a>x\r\n"},
    {"NothingInBracketsIsNoTag", u"<></>", u"<></>\r\n"},
    {"AGreaterSignInAValueEndsTheTag", u"<DIV title=\"<TD>\">x", u"<DIV title=\"<TD>\r\n  \">x\r\n"},
    {"PartsOfNamesMatchNothing", u"<T><TDX><TABLE-X><!->", u"<T><TDX><TABLE-X><!->\r\n"},
    {"ACommentWithoutAnEndIsNoHarm", u"a<!-- b", u"a\r\n<!-- b\r\n"},
    {"TabsAreNoBlanks", u"<DIV>\t</DIV>", u"<DIV>\r\n  \t\r\n</DIV>\r\n"},
    {"BlanksOfTheInputStandBehindTheIndent", u"<DIV>\r\n  a\r\n</DIV>", u"<DIV>\r\n    a\r\n</DIV>\r\n"},
    // More is closed than was opened: the line stays and comes again.
    {"BelowZeroTheLineComesAgain", u"a</TD>b", u"a\r\na</TD>\r\na</TD>b\r\n"},
    {"BelowZeroAndBackTheLineGoesOn", u"a</TD>b<TD>c", u"a\r\na</TD>\r\na</TD>b\r\na</TD>b<TD>\r\nc\r\n"},
    {"BelowZeroALineEndIsKept", u"</TD>\r\nb", u"</TD>\r\n</TD>\r\n</TD>\r\nb\r\n"},
    // Without a ">" after it a "<" is a letter, wherever it stands.
    {"ALessSignWithoutAnEndIsALetter", u"a < b", u"a < b\r\n"},
    {"ALessSignAtTheEndIsALetter", u"<TD>a<", u"<TD>\r\n  a<\r\n"},
    {"ManyLessSignsAreLetters", u"<P>x</P><P <P <TD", u"<P>x</P><P <P <TD\r\n"},
    {"LinesGoOnBehindALessSign", u"a < b\r\nc <!-- d", u"a < b\r\nc \r\n<!-- d\r\n"},
};

INSTANTIATE_TEST_SUITE_P(Example, Formatter, testing::ValuesIn(examples),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(FormatHTMLSource, TheStepIsASetting) {
  EXPECT_EQ(FormatHTMLSource(u"<TR><TD>x", 0, false, false), u"<TR>\r\n<TD>\r\nx\r\n");
  EXPECT_EQ(FormatHTMLSource(u"<TR><TD>x", 3, false, false), u"<TR>\r\n   <TD>\r\n      x\r\n");
}

TEST(FormatHTMLSource, TabsIndentInPlaceOfBlanks) {
  EXPECT_EQ(FormatHTMLSource(u"<TR><TD>x\r\n\t\t\r\n \r\n", 1, false, true),
            u"<TR>\r\n\t<TD>\r\n\t\tx\r\n\t\t \r\n")
      << "a line of tabs vanishes, a line of blanks stays";
}

TEST(FormatHTMLSource, ABlankLineStandsInFrontOfTheTagWhoseContentItAnnounces) {
  EXPECT_EQ(FormatHTMLSource(u"a<TR><TD>x</TD></TR>", 2, true, false),
            u"a\r\n\r\n<TR>\r\n\r\n  <TD>\r\n    x\r\n  </TD>\r\n</TR>\r\n");
}

TEST(FormatHTMLSource, TheLevelHasSixteenBits) {
  // A third step would pass the end of the counter: it doesn't happen.
  const std::u16string out = FormatHTMLSource(u"<TR><TR><TR>x</TR>y", 16000, false, false);
  EXPECT_EQ(out, u"<TR>\r\n" + std::u16string(16000, u' ') + u"<TR>\r\n" + std::u16string(32000, u' ') +
                     u"<TR>\r\n" + std::u16string(32000, u' ') + u"x\r\n" + std::u16string(16000, u' ') +
                     u"</TR>\r\n" + std::u16string(16000, u' ') + u"y\r\n");
}

TEST(FormatHTMLSource, ANegativeStepOutdents) {
  EXPECT_EQ(FormatHTMLSource(u"<TR>a</TR>b", -2, false, false), u"<TR>\r\n<TR>a\r\n</TR>\r\nb\r\n");
}

TEST(FormatHTMLSource, AResultTooLongForAnybodyIsRefused) {
  std::u16string closings;
  for (int i = 0; i < 20'000; ++i) closings += u"</TD>";
  try {
    format(closings);
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 14);
  }
}

/// A generator of our own: the same texts on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint32_t operator()(std::uint32_t below) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::uint32_t>(state_ >> 33) % below;
  }

 private:
  std::uint64_t state_;
};

std::u16string without_white_space(std::u16string_view text) {
  std::u16string out;
  for (const char16_t c : text)
    if (!is_ascii_space(c)) out += c;
  return out;
}

/// The same by hand, a letter at a time, with every string made as it is told.
class Plain {
 public:
  bool was_below_zero = false;

  std::u16string format(const std::u16string& text, int step, bool blank_line, bool tabs) {
    indent_ = tabs ? u'\t' : u' ';
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (text[at] != u'<' || !read_tag(text, at)) {
        line_ += text[at];
        if (text[at] == u'\n') flush(false);
      } else if (contains(block_list, name_)) {
        if (!opening_) level_ -= step;
        flush(false);
        if (opening_) level_ += step;
        line_ += tag_;
        flush(opening_ && blank_line);
      } else {
        if (contains(line_start_list, name_) && opening_) flush(false);
        line_ += tag_;
      }
    }
    flush(false);
    return out_;
  }

 private:
  static constexpr std::u16string_view block_list =
      u"<TABLE><TR><TD><TBODY><THEAD><TFOOT><FONT><DIV><SPAN><CENTER><SCRIPT><IFRAME><UL><OL><DL><OBJECT><"
      u"MAP>"
      u"<AREA>";
  static constexpr std::u16string_view line_start_list = u"<BR><P><LI><DT><DD><PARAM><EMBED><FONT><!--";

  // Moves onto the tag's last letter.
  bool read_tag(const std::u16string& text, std::size_t& at) {
    opening_ = true;
    if (text.compare(at, 4, u"<!--") == 0) {
      name_ = tag_ = u"<!--";
      at += 3;
      return true;
    }
    const std::size_t end = text.find(u'>', at);
    if (end == text.npos) return false;
    tag_ = text.substr(at, end - at + 1);
    name_ = text.substr(at + 1, end - at - 1);
    name_ = name_.substr(0, name_.find(u' '));
    if (name_.starts_with(u'/')) {
      name_.erase(0, 1);
      opening_ = false;
    }
    name_ = u"<" + name_ + u">";
    at = end;
    return true;
  }

  void flush(bool blank_line) {
    std::u16string rest = line_;
    std::erase(rest, indent_);
    if (!rest.empty() && rest != u"\r\n") {
      if (blank_line) out_ += u"\r\n";
      out_ += line_;
      if (!line_.ends_with(u"\r\n")) out_ += u"\r\n";
    }
    if (level_ < 0)
      was_below_zero = true;
    else
      line_.assign(std::size_t(level_), indent_);
  }

  char16_t indent_ = u' ';
  int level_ = 0;
  std::u16string line_, out_, name_, tag_;
  bool opening_ = true;
};

constexpr std::u16string_view pieces[] = {u"<TABLE>", u"<TD id=\"a b\">",
                                          u"<AREA>",  u"<P>",
                                          u"<BR>",    u"</P>",
                                          u"<B>",     u"</B>",
                                          u"<!--",    u"-->",
                                          u"word",    u" ",
                                          u"\r\n",    u"\n",
                                          u"\r",      u"\t",
                                          u"  ",      u"<",
                                          u">",       u"<FONT>",
                                          u"<td>",    u"\u00E9",
                                          u"</",      u"<LI>",
                                          u"</LI>",   u"\r\n\r\n",
                                          u"<DIV>",   u"<TABLE>",
                                          u"</>",     u"<TD\n>",
                                          u"<P\tx>",  u"</TD>",
                                          u"</DIV>"};

std::u16string random_text(std::uint64_t seed) {
  Random random(seed);
  std::u16string text;
  for (std::uint32_t left = random(50); left > 0; --left) text += pieces[random(std::size(pieces))];
  return text;
}

TEST(FormatHTMLSource, ThePassGivesWhatThePlainWordsGive) {
  for (std::uint64_t seed = 1; seed <= 20'000; ++seed) {
    const std::u16string text = random_text(seed);
    for (const bool blank_line : {false, true})
      for (const bool tabs : {false, true})
        ASSERT_EQ(FormatHTMLSource(text, 2, blank_line, tabs), Plain().format(text, 2, blank_line, tabs))
            << "seed " << seed << ": " << to_utf8(text);
  }
}

TEST(FormatHTMLSource, OnlyWhiteSpaceIsAddedAndDroppedWhereTheLevelStaysAboveZero) {
  int compared = 0;
  for (std::uint64_t seed = 1; seed <= 20'000; ++seed) {
    const std::u16string text = random_text(seed);
    Plain plain;
    plain.format(text, 2, false, false);
    if (plain.was_below_zero) continue;
    ++compared;
    ASSERT_EQ(without_white_space(format(text)), without_white_space(text)) << "seed " << seed;
  }
  EXPECT_GT(compared, 5'000);
}

TEST(FormatHTMLSource, EveryLineEnds) {
  for (std::uint64_t seed = 1; seed <= 5'000; ++seed) {
    const std::u16string out = format(random_text(seed));
    ASSERT_TRUE(out.empty() || out.ends_with(u"\r\n")) << "seed " << seed;
  }
}

}  // namespace
}  // namespace tvx::source
