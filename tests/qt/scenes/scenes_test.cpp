#include "qt/scene.h"

// What people do with an editor, from the first key to the last: each scene ends with the document that it
// ought to give, goes back to its beginning by Ctrl+Z, and forward again by Ctrl+Y.
namespace tvx::htmled {
namespace {

class Writing : public Scene {};
class Formatting : public Scene {};
class Correcting : public Scene {};

// --- writing ---

TEST_F(Writing, ALetterWithHeadingsAListALinkAndATable) {
  begin("");
  type("Summer fair");
  command(u"FormatBlock", u"<H1>");
  press("Return");
  type("Dear Ann,");
  press("Return");
  type("thank you for your ");
  press("Ctrl+B");
  type("kind");
  press("Ctrl+B");
  type(" letter. We need:");
  press("Return");
  click_button(u"unorderedlist");
  type("lamps");
  press("Return");
  type("chairs");
  press("Return", 2);
  type("The programme");
  command(u"FormatBlock", u"<H2>");
  press("Return");
  type("More on the fair's page.");
  press("Home");
  press("Return");
  press("Up");
  make_table("2", "2");
  click_on("td");
  for (const char* text : {"Hour", "Act", "Six"}) {
    type(text);
    press("Tab");
  }
  type("Music");
  double_click("page");
  make_link("http://fair.example/");
  ends_with(
      "<H1>Summer fair</H1><P>Dear Ann,</P><P>thank you for your <B>kind</B> letter. We need:</P>"
      "<UL><LI>lamps</LI><LI>chairs</LI></UL><H2>The programme</H2>"
      "<TABLE cellspacing=\"0%\" "
      "border=\"1%\"><TBODY><TR><TD>Hour</TD><TD>Act</TD></TR><TR><TD>Six</TD><TD>Music</TD></TR></TBODY></"
      "TABLE>"
      "<P>More on the fair's <A href=\"http://fair.example/\">page</A>.</P>");
}

TEST_F(Writing, BoldAndItalicWordsWhileTyping) {
  begin("<P>News:</P>");
  press("End");
  type(" a ");
  press("Ctrl+B");
  type("big ");
  press("Ctrl+I");
  type("red");
  press("Ctrl+I");
  press("Ctrl+B");
  type(" house");
  ends_with("<P>News: a <B>big </B><I><B>red</B></I> house</P>");
}

TEST_F(Writing, ABulletListThatAnEmptyItemLeaves) {
  begin("<P>Buy</P>");
  press("Return");
  click_button(u"unorderedlist");
  type("milk");
  press("Return");
  type("bread");
  press("Return");
  press("Return");
  type("Thanks");
  ends_with("<P>Buy</P><UL><LI>milk</LI><LI>bread</LI></UL><P>Thanks</P>");
}

TEST_F(Writing, ANumberedListWithAListInIt) {
  begin("<P>Plan</P>");
  press("Return");
  click_button(u"orderedlist");
  type("tea");
  press("Return");
  type("green");
  click_button(u"indent");
  press("Return");
  type("black");
  press("Return");
  type("cake");
  click_button(u"unindent");
  ends_with("<P>Plan</P><OL><LI>tea<OL><LI>green</LI><LI>black</LI></OL></LI><LI>cake</LI></OL>");
}

TEST_F(Writing, ATableByItsButtonFilledWithTab) {
  begin("<P>Prices</P>");
  press("Return");
  make_table("2", "2");
  click_on("td");
  type("Tea");
  press("Tab");
  type("2");
  press("Tab");
  type("Cake");
  press("Tab");
  type("3");
  ends_with(
      "<P>Prices</P><TABLE cellspacing=\"0%\" "
      "border=\"1%\"><TBODY><TR><TD>Tea</TD><TD>2</TD></TR><TR><TD>Cake</"
      "TD><TD>3</TD></TR></TBODY></TABLE>");
}

TEST_F(Writing, TabNestsAListAndShiftTabLeavesIt) {
  begin("<P>Plan</P>");
  press("Return");
  click_button(u"unorderedlist");
  type("tea");
  press("Return");
  press("Tab");
  type("green");
  press("Return");
  type("black");
  press("Return");
  press("Shift+Tab");
  type("cake");
  ends_with("<P>Plan</P><UL><LI>tea<UL><LI>green</LI><LI>black</LI></UL></LI><LI>cake</LI></UL>");
}

TEST_F(Writing, TabWalksThroughATableAndAddsARow) {
  begin("<P>Prices</P>");
  press("Return");
  insert_html(QStringLiteral("<TABLE border=1><TBODY><TR><TD>Tea</TD><TD>2</TD></TR></TBODY></TABLE>"));
  click_after("Tea");
  type("s");
  press("Tab");
  press("End");
  type("0");
  press("Tab");
  type("Cake");
  press("Tab");
  type("3");
  press("Shift+Tab");
  press("End");
  type("s");
  ends_with(
      "<P>Prices</P><TABLE "
      "border=\"1\"><TBODY><TR><TD>Teas</TD><TD>20</TD></TR><TR><TD>Cakes</TD><TD>3</TD></TR></TBODY></"
      "TABLE>");
}

TEST_F(Writing, EnterWithinAQuote) {
  begin("<P>She wrote:</P><BLOCKQUOTE><P>All is well here.</P></BLOCKQUOTE><P>Good.</P>");
  click_after("is well");
  press("Return");
  type("Really");
  ends_with("<P>She wrote:</P><BLOCKQUOTE><P>All is well</P><P>Really here.</P></BLOCKQUOTE><P>Good.</P>");
}

TEST_F(Writing, ShiftEnterBreaksTheLine) {
  begin("<P>Ann Smith</P>");
  press("End");
  press("Shift+Return");
  type("1 High Street");
  press("Shift+Return");
  type("London");
  ends_with("<P>Ann Smith<BR>1 High Street<BR>London</P>");
}

TEST_F(Writing, AnInputMethodComposesWords) {
  begin("<P>Hello </P>");
  click_after("Hello");
  type(" ");
  compose("n");
  compose("ni");
  compose("nihao");
  commit("你好");
  type("!");
  ends_with("<P>Hello 你好!</P>");
}

TEST_F(Writing, AParagraphFromRightToLeft) {
  begin("<P>Peace:</P><P dir=rtl>שלום</P>");
  click_after("שלום");
  type(" עולם");
  press("Return");
  type("טוב");
  ends_with("<P>Peace:</P><P dir=\"rtl\">שלום עולם</P><P dir=\"rtl\">טוב</P>");
}

TEST_F(Writing, LinesAndTheirEndsByTheArrows) {
  begin("<P>first line</P><P>second line</P><P>third line</P>");
  click_after("second");
  press("Home");
  type("A ");
  press("End");
  type(" ends");
  press("Up");
  press("End");
  type(" too");
  press("Down", 2);
  press("Home");
  type("The ");
  press("Ctrl+Home");
  type("The ");
  ends_with("<P>The first line too</P><P>A second line ends</P><P>The third line</P>");
}

// --- formatting ---

TEST_F(Formatting, ADoubleClickedWordBecomesBold) {
  begin("<P>a very old house</P>");
  double_click("very");
  click_button(u"Bold");
  ends_with("<P>a <B>very</B> old house</P>");
}

TEST_F(Formatting, ATripleClickTakesTheParagraph) {
  begin("<P>one line</P><P>a second line here</P><P>the third</P>");
  triple_click("second");
  click_button(u"Italic");
  triple_click("third");
  type("the end");
  ends_with("<P>one line</P><P><I>a second line here</I></P><P>the end</P>");
}

TEST_F(Formatting, ADoubleClickedWordIsTypedOver) {
  begin("<P>salt and pepper</P>");
  double_click("pepper");
  type("sugar");
  drag_over("salt", "and");
  type("only");
  ends_with("<P>only sugar</P>");
}

TEST_F(Formatting, EverythingCentredThenMoreTyped) {
  begin("<H1>Menu</H1><P>Soup</P>");
  press("Ctrl+A");
  click_button(u"Center");
  click_after("Soup");
  type(" of the day");
  press("Return");
  type("Bread");
  const std::string centred = " style=\"text-align: center\">";
  ends_with("<H1" + centred + "Menu</H1><P" + centred + "Soup of the day</P><P" + centred + "Bread</P>");
}

TEST_F(Formatting, ALinkOverAWordAndTakenAway) {
  begin("<P>See our page and our shop.</P>");
  double_click("page");
  make_link("http://a.example/");
  double_click("shop");
  make_link("http://b.example/");
  double_click("page");
  command(u"Unlink");
  ends_with("<P>See our page and our <A href=\"http://b.example/\">shop</A>.</P>");
}

// --- correcting ---

TEST_F(Correcting, BackspaceJoinsParagraphs) {
  begin("<P>one</P><P>two</P><UL><LI>three</LI></UL>");
  click_before("two");
  press("Backspace");
  type(" ");
  click_after("two");
  press("Del");
  ends_with("<P>one twothree</P>");
}

TEST_F(Correcting, DeletingAcrossBlocksSelectedByTheArrows) {
  begin("<H1>Title</H1><P>Some text</P><P>The end</P>");
  click_after("Tit");
  press("Shift+Right", 8);
  press("Del");
  ends_with("<H1>Tittext</H1><P>The end</P>");
}

TEST_F(Correcting, WordsDeletedToTheLeftAndToTheRight) {
  begin("<P>one two three four five</P>");
  click_after("three");
  press("Ctrl+Backspace");
  press("Ctrl+Del");
  type("3");
  ends_with("<P>one two 3 five</P>");
}

TEST_F(Correcting, AParagraphCutAndPastedElsewhere) {
  begin("<P>two</P><P>one</P><P>three</P>");
  click_before("two");
  press("Shift+End");
  press("Ctrl+X");
  press("Del");
  click_before("three");
  press("Ctrl+V");
  press("Return");
  ends_with("<P>one</P><P>two</P><P>three</P>");
}

TEST_F(Correcting, AWordCopiedAndPastedByTheToolbar) {
  begin("<P>salt and pepper, pepper and sugar</P>");
  double_click("salt");
  click_button(u"Copy");
  double_click("sugar");
  click_button(u"Paste");
  ends_with("<P>salt and pepper, pepper and salt</P>");
}

TEST_F(Correcting, AnImageClickedAndDeleted) {
  begin(
      "<P>before <IMG src=\"data:image/gif;base64,R0lGODlhAQABAIAAAAAAAP///yH5BAAAAAAALAAAAAABAAEAAAIBRAA7\" "
      "width=80 height=60> after</P>");
  click_on("img");
  press("Del");
  type("nothing");
  ends_with("<P>before nothing after</P>");
}

TEST_F(Correcting, UndoAndRedoBetweenWords) {
  begin("<P>I like</P>");
  type(" tea");
  press("Return");
  type("and cake");
  press("Ctrl+Z");
  shows("<P>I like tea</P><P><BR></P>");
  press("Ctrl+Z");
  shows("<P>I like tea</P>");
  press("Ctrl+Shift+Z");
  type("but");
  shows("<P>I like tea</P><P>but</P>");
  click_button(u"Undo");
  click_button(u"Redo");
  press("Ctrl+Y");
  ends_with("<P>I like tea</P><P>but</P>");
}

TEST_F(Correcting, CharactersOfSeveralUnitsAreOne) {
  begin("<P>ab</P>");
  click_after("ab");
  type("😀");
  type("e\u0301");
  type("👩‍👧");
  press("Left");
  press("Backspace");
  press("Right");
  type("x");
  press("Backspace", 2);
  type("!");
  ends_with("<P>ab😀!</P>");
}

}  // namespace
}  // namespace tvx::htmled
