#include "core/control_fixture.h"
#include "tvx/core/content/output_filters.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/style/style_engine.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

TEST_F(Control, AnEmptyTextGivesAnEmptyBody) {
  start_with(u"<P>before</P>");
  control->set_DocumentHTML(u"");
  EXPECT_EQ(body(), u"");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(control->originalHTML(), u"");
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(Control, WhatGoesInComesOut) {
  start_with(u"<p>One <b>two</b></p>");
  EXPECT_EQ(control->DocumentHTML(), u"<P>One <B>two</B></P>");
  EXPECT_EQ(control->DocumentText(), u"One two");
  EXPECT_EQ(control->txtCode().Text(), u"<p>One <b>two</b></p>");
  EXPECT_EQ(control->originalHTML(), u"<p>One <b>two</b></p>");
  EXPECT_THAT(host.heard, ElementsAre("BeforeGetDocumentHTML: <P>One <B>two</B></P>"));
}

TEST_F(Control, NewContentClearsTheUndoJournal) {
  start_with(u"<P>a</P>");
  load(u"<P>a[]</P>");
  key(u"b", 66);
  ASSERT_TRUE(control->DOM()->tree().journal().can_undo());
  control->set_DocumentHTML(u"<P>new</P>");
  EXPECT_FALSE(control->DOM()->tree().journal().can_undo());
  control->undo_document();
  EXPECT_EQ(body(), u"<P>new</P>");
}

TEST_F(Control, RelativeURLsLeaveTheFragmentOfALinkAndTheNameOfAnImage) {
  start();
  control->set_BaseURL(u"http://example.org/site/");
  control->set_relativeURLs(true);
  control->set_DocumentHTML(
      u"<A href=\"http://example.org/site/page.html#part\">a</A>"
      u"<A href=\"http://example.org/site/page.html\">b</A>"
      u"<IMG src=\"HTTP://EXAMPLE.ORG/SITE/x.gif\">"
      u"<INPUT type=\"Image\" src=\"http://example.org/site/y.gif\">"
      u"<A href=\"http://other.example/z.html\">c</A>");
  EXPECT_EQ(control->DocumentHTML(),
            u"<A href=\"#part\">a</A><A href=\"page.html\">b</A><IMG src=\"x.gif\">"
            u"<INPUT type=\"Image\" src=\"y.gif\"><A href=\"http://other.example/z.html\">c</A>");
  EXPECT_EQ(control->DocumentHTML(), body()) << "the document itself was changed";
}

TEST_F(Control, ReadingRelativeURLsKeepsRedo) {
  start();
  control->set_BaseURL(u"http://example.org/");
  control->set_relativeURLs(true);
  control->set_DocumentHTML(u"<P>x</P>");
  load(u"<P>x[]<IMG src=\"http://example.org/i.gif\"></P>");
  key(u"y", 89);
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), u"<P>x<IMG src=\"i.gif\"></P>");
  EXPECT_TRUE(control->DOM()->tree().journal().can_redo());
}

TEST_F(Control, CharactersBecomeNumericReferences) {
  start_with(u"<P>\u00E9\u20AC\uFF21</P>");
  control->set_AlwaysConvertUnicodeCharacters(true);
  EXPECT_EQ(control->DocumentHTML(), u"<P>&#233;&#8364;&#65313;</P>");
  control->set_relativeURLs(true);
  EXPECT_EQ(control->DocumentHTML(), u"<P>&#233;&#8364;&#65313;</P>");
}

TEST_F(Control, WithoutConversionTextPassesUnchanged) {
  start_with(u"<P>\u00E9\u20AC\uFF21</P>");
  EXPECT_EQ(control->DocumentHTML(), u"<P>\u00E9\u20AC\uFF21</P>");
  control->set_relativeURLs(true);
  EXPECT_EQ(control->DocumentHTML(), u"<P>\u00E9\u20AC\uFF21</P>");
}

TEST(OutputFilters, NumericReferencesTakeEachUnitForItself) {
  EXPECT_EQ(numeric_references(u"a\x7F"), u"a\x7F");
  EXPECT_EQ(numeric_references(u"\U0001F600"), u"&#55357;&#56832;");
  EXPECT_EQ(numeric_references(std::u16string(1, u'\0')), u"&#65536;");
  EXPECT_EQ(numeric_references(u"\u0080\u7FFF\u8000\uFFFF"), u"&#128;&#32767;&#32768;&#65535;");
  EXPECT_EQ(numeric_references(std::u16string(40'000, u'\u00E9')).size(), 240'000u);
}

TEST_F(Control, AHostThatChangesTheTextGetsItChanged) {
  start_with(u"<P>x</P>");
  host.on_get_html = [](std::u16string& html) { html = u"theirs"; };
  EXPECT_EQ(control->DocumentHTML(), u"theirs");
  EXPECT_EQ(body(), u"<P>x</P>");
}

TEST_F(Control, AllHTMLIncludesTheHeadAndRaisesNothing) {
  start_with(u"<P>\u00E9</P>");
  control->set_AlwaysConvertUnicodeCharacters(true);
  const std::u16string all = control->allHTML();
  EXPECT_TRUE(all.starts_with(u"<HEAD>")) << to_utf8(all);
  EXPECT_TRUE(contains(all, u"<BASE href=\"http://\">")) << to_utf8(all);
  EXPECT_TRUE(contains(all, u"<P>\u00E9</P>"));
  EXPECT_EQ(host.count("BeforeGetDocumentHTML"), 0u);
}

TEST_F(Control, ABaseURLWithBackslashesIsStoredWithSlashesEscaped) {
  start();
  control->set_BaseURL(u"c:\\my site\\pages\\");
  EXPECT_EQ(control->BaseURL(), u"c:/my%20site/pages/");
  EXPECT_EQ(element(dom::Tag::Base)->attribute_or_empty(dom::names::href), u"c:/my%20site/pages/");
  EXPECT_THAT(container.changed(), ElementsAre(u"BaseURL"));
  control->set_BaseURL(u"http://e/" + std::u16string(300, u'a'));
  EXPECT_EQ(control->BaseURL(), u"") << "an address that doesn't fit is empty";
}

TEST_F(Control, ChangingTheBaseTakesTheOldOneOutOfTheDocument) {
  start();
  control->set_BaseURL(u"http://old.example/");
  control->set_DocumentHTML(u"<IMG src=\"http://old.example/a.gif\">");
  control->set_relativeURLs(true);
  control->set_BaseURL(u"http://new.example/");
  EXPECT_EQ(body(), u"<IMG src=\"a.gif\">");
}

TEST_F(Control, AddressesAreAsWrittenWhileTheBaseIsNone) {
  start();
  control->set_relativeURLs(true);
  control->set_DocumentHTML(u"<A href=\"page.html\">a</A><IMG src=\"x.gif\">");
  EXPECT_EQ(control->DocumentHTML(), u"<A href=\"page.html\">a</A><IMG src=\"x.gif\">");
}

TEST_F(Control, WithoutABaseNoAddressIsWritten) {
  const auto page = write_file("page.html",
                               "<a href='other.html'>a</a><img src='x.gif'>"
                               "<input type=image src='y.gif'>");
  start();
  control->set_relativeURLs(true);
  auto file = page;
  control->Open_document(file, true);
  EXPECT_EQ(control->DocumentHTML(),
            u"<A href=\"other.html\">a</A><IMG src=\"x.gif\"><INPUT type=\"image\" src=\"y.gif\">");
}

TEST_F(Control, AddressesFromElsewhereStayAsWritten) {
  start();
  control->set_BaseURL(u"http://example.org/");
  control->set_relativeURLs(true);
  const std::u16string html = u"<A href=\"HTTP://Other.Example/a/../b\">a</A><A href=\"#\u00FC\">b</A>";
  control->set_DocumentHTML(html);
  EXPECT_EQ(control->DocumentHTML(), html);
}

TEST_F(Control, ABaseMatchesInAnySpelling) {
  start();
  control->set_relativeURLs(true);
  for (const std::u16string base : {u"http://example.org:80/", u"http://m\u00FCller.example/"}) {
    control->set_BaseURL(base);
    control->set_DocumentHTML(u"<IMG src=\"" + base + u"x.gif\">");
    EXPECT_EQ(control->DocumentHTML(), u"<IMG src=\"x.gif\">") << to_utf8(base);
  }
}

TEST_F(Control, DisablingTheEditorInCodeViewGoesBackToTheDesignViewAndKeepsTheBody) {
  start_with(u"<P>kept</P>");
  control->show_Code();
  ASSERT_TRUE(control->InCodeView());
  control->set_EditorEnabled(false);
  EXPECT_FALSE(control->InCodeView());
  EXPECT_EQ(body(), u"<P>kept</P>");
  EXPECT_EQ(control->DOM()->designMode(), u"Off");
  control->set_EditorEnabled(true);
  EXPECT_EQ(control->DOM()->designMode(), u"On");
  EXPECT_EQ(body(), u"<P>kept</P>");
}

TEST_F(Control, SourceTypedBeforeTheEditorWasDisabledIsInTheUndoJournal) {
  start_with(u"<P>kept</P>");
  control->show_Code();
  control->txtCode().edit(u"<P>typed</P>");
  control->set_EditorEnabled(false);
  EXPECT_EQ(body(), u"<P>kept</P>");
  control->undo_document();
  EXPECT_EQ(body(), u"<P>typed</P>");
  control->undo_document();
  EXPECT_EQ(body(), u"<P>kept</P>");
}

TEST_F(Control, InCodeViewTheTextComesFromThere) {
  start_with(u"<P>design</P>");
  control->show_Code();
  control->txtCode().edit(u"<P>source \u00E9</P>");
  control->set_AlwaysConvertUnicodeCharacters(true);
  EXPECT_EQ(control->DocumentHTML(), u"<P>source &#233;</P>");
}

TEST_F(Control, RevertGoesBackToTheLastGivenText) {
  start_with(u"<P>given</P>");
  load(u"<P>changed[]</P>");
  key(u"x", 88);
  ASSERT_TRUE(control->IsDirty());
  control->RevertToOriginal();
  EXPECT_EQ(body(), u"<P>given</P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, TextGivenBeforeTheStartIsLoadedByIt) {
  create();
  control->set_DocumentHTML(u"<P>early</P>");
  EXPECT_EQ(control->DOM(), nullptr);
  control->UserControl_Show();
  EXPECT_EQ(body(), u"<P>early</P>");
}

TEST_F(Control, ADocumentWithoutABodyReadsAsTheEmptyText) {
  start();
  dom::remove(*control->DOM()->body());
  EXPECT_EQ(control->DocumentHTML(), u"");
  EXPECT_THAT(host.heard, ElementsAre("BeforeGetDocumentHTML: "));
}

TEST_F(Control, TheTitleIsStoredAndSet) {
  start();
  control->set_DocumentTitle(u"A page");
  EXPECT_EQ(control->DOM()->title(), u"A page");
  EXPECT_EQ(control->DocumentTitle(), u"A page");
}

// --- going back ---

TEST_F(Control, AnOpenedDocumentIsNotEmptiedByARevert) {
  const auto page = write_file("page.html", "<title>t</title><p>opened</p>");
  for (const bool whole : {true, false}) {
    start();
    auto file = page;
    control->Open_document(file, whole);
    load(u"<P>edited[]</P>");
    control->RevertToOriginal();
    EXPECT_EQ(body(), u"<P>opened</P>") << whole;
    EXPECT_EQ(control->originalHTML(), u"") << "no host has given a text";
  }
}

TEST_F(Control, ARevertPrefersWhatTheHostHasGivenToWhatWasOpened) {
  start_with(u"<P>given</P>");
  auto file = write_file("page.html", "<p>opened</p>");
  control->Open_document(file, false);
  control->RevertToOriginal();
  EXPECT_EQ(body(), u"<P>given</P>");
}

TEST_F(Control, AProgramMayMakeWhatIsThereTheOriginal) {
  start_with(u"<P>given</P>");
  auto file = write_file("page.html", "<p>opened</p>");
  control->Open_document(file, true);
  control->set_HighlightDOMSelectionOnClick(true);
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  control->make_original();
  load(u"<P>edited[]</P>");
  control->RevertToOriginal();
  EXPECT_EQ(body(), u"<P>opened</P>");
}

// --- CSSText ---

TEST_F(Control, AFolderWithCharactersOfAddressesHoldsTheSheet) {
  for (const std::string name : {"a#b", "a?b", "a%20b", "a b", "\u00E9"}) {
    std::filesystem::create_directories(folder / name);
    platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, path(name));
    for (const bool later : {false, true}) {
      create();
      control->set_CSShttp(false);
      if (!later) control->set_CSSText(u".a { color: red }");
      control->UserControl_Show();
      if (later) control->set_CSSText(u".a { color: red }");
      loop.settle();
      EXPECT_EQ(control->style_classes().size(), 1u) << name << later;
      const auto& sheets = dom::style::style_of(control->DOM()->tree()).sheets();
      EXPECT_TRUE(contains(sheets.at(0)->css_text(), u".a {")) << name << later << ": lost with the file";
      control.reset();
      loop.settle();
    }
  }
}

TEST_F(Control, StyleTextWithoutAnAddressIsStillTakenForOne) {
  start();
  control->set_CSSText(u".a { color: red }");
  EXPECT_EQ(element(dom::Tag::Link)->attribute_or_empty(dom::names::href), u".a { color: red }");
  EXPECT_FALSE(std::filesystem::exists(folder / "7654321tvxStyle.css"));
}

TEST_F(Control, ADeadAddressOfASheetEndsItsWait) {
  start();
  control->set_CSSText(u"http://example.invalid/sheet.css");
  EXPECT_EQ(element(dom::Tag::Link)->attribute_or_empty(dom::names::href),
            u"http://example.invalid/sheet.css");
  EXPECT_THAT(container.changed(), ElementsAre(u"CSSText"));
}

TEST_F(Control, ALocalSheetIsCopiedWithoutItsLineBreaks) {
  start();
  write_file("my sheet.css", ".a { color: red }\r\n.b { color: blue }\n");
  control->set_CSSText(u"file:///" + from_utf8((folder / "my%20sheet.css").string()));
  EXPECT_EQ(bytes_of(folder / "7654321tvxStyle.css"), ".a { color: red }.b { color: blue }\r\n");
  EXPECT_TRUE(
      element(dom::Tag::Link)->attribute_or_empty(dom::names::href).ends_with(u"7654321tvxStyle.css"));
}

TEST_F(Control, StyleTextIsWrittenAndLinked) {
  start();
  control->set_CSShttp(false);
  control->set_CSSText(u".a { color: red }");
  loop.settle();
  EXPECT_EQ(bytes_of(folder / "7654321tvxStyle.css"), ".a { color: red }\r\n");
  EXPECT_EQ(element(dom::Tag::Link)->attribute_or_empty(dom::names::href),
            u"file:///" + path("7654321tvxStyle.css"));
  EXPECT_FALSE(control->DOM()->tree().journal().can_undo()) << "a look is no edit";
}

// --- code pages ---

TEST_F(Control, TheStartWorksInBothCodePages) {
  for (const CodePage& page : {CodePage::utf8(), CodePage::windows_1252()}) {
    const SystemCodePageScope scope(page);
    control.reset();
    loop.settle();
    start_with(u"<P>\u00E9\u20AC\u4E2D</P>");
    EXPECT_EQ(control->DocumentHTML(), u"<P>\u00E9\u20AC\u4E2D</P>") << page.name();
    control->set_CSShttp(false);
    control->set_CSSText(u"/* \u00E9 */");
    EXPECT_EQ(bytes_of(folder / "7654321tvxStyle.css"), page.encode(u"/* \u00E9 */\r\n"));
  }
}

}  // namespace
}  // namespace tvx::core
