#include <sys/stat.h>

#include "core/control_fixture.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

TEST_F(Control, ACancelledOpenDialogClearsTheDirtyFlagAndNothingElse) {
  start_with(u"<P>x</P>");
  key(u"Shift", 16);
  ASSERT_TRUE(control->IsDirty());
  container.clear_changed();
  std::u16string name;
  control->Open_document(name, true);
  EXPECT_EQ(name, u"");
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_FALSE(control->openingDocument());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(Control, TheOpenDialogIsAskedInItsWordsAndItsAnswerWrittenBack) {
  start();
  const auto file = write_file("page.html", "<p>chosen</p>");
  headless::ShownDialog shown;
  dialogs.expect({.kind = headless::DialogKind::open,
                  .answer = file,
                  .while_open = [&](const headless::ShownDialog& dialog) { shown = dialog; }});
  std::u16string name;
  control->Open_document(name, false);
  EXPECT_EQ(name, file);
  EXPECT_EQ(body(), u"<P>chosen</P>");
  const auto& dialog = std::get<headless::OpenDialog>(shown);
  EXPECT_EQ(dialog.title, u"Open HTML File");
  EXPECT_EQ(dialog.preset, u"*.html");
  EXPECT_EQ(dialog.filters.front().name, u"HTML Documents (*.htm,*.html)");
  EXPECT_EQ(dialog.filters.front().pattern, u"*.htm;*.HTM;*.HTML;*.html");
}

TEST_F(Control, OpeningTheBodyLosesTheHeadAndKeepsTheStyleSettings) {
  start();
  control->set_CSShttp(false);
  control->set_CSSText(u".kept {}");
  control->set_DocumentHTML(u"<P>given</P>");
  const auto document = control->DOM();
  auto file = write_file("page.html",
                         "<head><title>lost</title><style>p {}</style></head><body><p>b\xC3\xA9</p></body>");
  control->Open_document(file, false);
  EXPECT_EQ(control->DOM(), document);
  EXPECT_EQ(body(), u"<P>b\u00E9</P>");
  EXPECT_EQ(control->CSSText(), u".kept {}");
  EXPECT_FALSE(control->CSShttp());
  EXPECT_NE(control->DOM()->title(), u"lost");
  EXPECT_EQ(control->originalHTML(), u"<P>given</P>");
  control->RevertToOriginal();
  EXPECT_EQ(body(), u"<P>given</P>");
}

TEST_F(Control, OpeningAWholeDocumentWithoutASheetEmptiesTheStyleSettings) {
  start();
  control->set_CSSText(u"http://example.invalid/a.css");
  host.heard.clear();
  auto file = write_file("page.html", "<!DOCTYPE html><title>t</title><body><p>whole</p></body>");
  control->Open_document(file, true);
  EXPECT_EQ(body(), u"<P>whole</P>");
  EXPECT_EQ(control->CSSText(), u"");
  EXPECT_FALSE(control->CSShttp());
  EXPECT_EQ(control->DOM()->designMode(), u"On");
  EXPECT_EQ(host.count("BeforeNavigate"), 0u) << "the control's own navigation";
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, OpeningAWholeDocumentTakesOverItsSheet) {
  start();
  write_file("own.css", ".own { color: red }");
  auto linked = write_file("linked.html", "<link rel=stylesheet href=own.css><p>a</p>");
  control->Open_document(linked, true);
  EXPECT_TRUE(control->CSShttp());
  EXPECT_EQ(control->CSSText(), u"own.css");
  auto inside = write_file("inside.html", "<style>.in { color: blue }</style><p>b</p>");
  control->Open_document(inside, true);
  EXPECT_FALSE(control->CSShttp());
  EXPECT_EQ(control->CSSText(), u".in { color: blue }");
}

TEST_F(Control, AWholeDocumentThatIsMissingIsReported) {
  start_with(u"<P>x</P>");
  auto file = path("missing.html");
  control->Open_document(file, true);
  EXPECT_EQ(host.heard.front(), "Error: 20000 Cant find document : " + to_utf8(file));
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_FALSE(control->openingDocument());
}

TEST_F(Control, AMissingBodyFileChangesNothingAndClearsTheFlag) {
  start_with(u"<P>x</P>");
  key(u"Shift", 16);
  auto file = path("missing.html");
  host.heard.clear();
  control->Open_document(file, false);
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(host.heard.size(), 0u);
}

TEST_F(Control, FilesAreSavedInTheSystemCodePage) {
  start_with(u"<P>\u00E9\u4E2D</P>");
  const auto file = path("out.html");
  {
    const SystemCodePageScope scope(CodePage::windows_1252());
    control->Save_document(file, false);
    EXPECT_EQ(bytes_of(folder / "out.html"), "<P>\xE9?</P>");
    control->set_AlwaysConvertUnicodeCharacters(true);
    control->Save_document(file, false);
    EXPECT_EQ(bytes_of(folder / "out.html"), "<P>&#233;&#20013;</P>");
    control->Save_document(file, true);
    EXPECT_THAT(bytes_of(folder / "out.html"), testing::HasSubstr("<P>\xE9?</P>"));
  }
  const SystemCodePageScope scope(CodePage::utf8());
  control->Save_document(file, true);
  EXPECT_TRUE(bytes_of(folder / "out.html").starts_with("<HTML><HEAD>"));
  EXPECT_TRUE(bytes_of(folder / "out.html").ends_with("</HTML>"));
}

TEST_F(Control, SavingChangesNeitherTheOriginalNorTellsTheContainer) {
  start_with(u"<P>given</P>");
  load(u"<P>given[]</P>");
  key(u"x", 88);
  container.clear_changed();
  control->Save_document(path("out.html"), false);
  EXPECT_EQ(bytes_of(folder / "out.html"), "<P>givenx</P>");
  EXPECT_EQ(control->originalHTML(), u"<P>given</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre());
  EXPECT_EQ(host.count("BeforeGetDocumentHTML"), 0u);
}

TEST_F(Control, AFailingWriteLeavesTheOldFileAndTheFlag) {
  start_with(u"<P>new</P>");
  const auto file = write_file("out.html", "old");
  key(u"Shift", 16);
  set_fault(u"WriteTextFile", {RuntimeError(61, u"Disk full")});
  control->Save_document(file, false);
  EXPECT_EQ(bytes_of(folder / "out.html"), "old");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(host.count("Error"), 0u);
  control->Save_document(file, false);
  EXPECT_EQ(bytes_of(folder / "out.html"), "<P>new</P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, WhatIsNoFileIsNeitherOpenedNorWritten) {
  start_with(u"<P>x</P>");
  ASSERT_EQ(mkfifo((folder / "pipe.html").c_str(), 0600), 0);
  for (std::u16string name : {path("pipe.html"), std::u16string(u"/dev/zero")})
    for (const bool entire : {true, false}) {
      host.heard.clear();
      control->Open_document(name, entire);
      EXPECT_EQ(body(), u"<P>x</P>");
      EXPECT_EQ(host.count("Error: 20000"), entire ? 1u : 0u) << to_utf8(name);
    }
  key(u"Shift", 16);
  control->Save_document(path("pipe.html"), false);
  EXPECT_TRUE(control->IsDirty());
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe.html"));
}

TEST_F(Control, ASheetWithoutEndIsToldAndNotRead) {
  start_with(u"<P>x</P>");
  auto page = write_file("page.html",
                         "<link rel=stylesheet href='file:///dev/zero'>"
                         "<style>@import 'file:///dev/zero'; p { color: red }</style><p>y</p>");
  control->Open_document(page, true);
  EXPECT_EQ(body(), u"<P>y</P>");
  start_with(u"<P>x</P>");
  control->set_CSShttp(true);
  control->set_CSSText(u"file:////dev/zero");
  EXPECT_THAT(host.heard, testing::Contains("Error: 75 Can't read /dev/zero: it is not a regular file"));
  host.heard.clear();
  control->set_CSSText(u"file:////no/such/sheet.css");
  EXPECT_EQ(host.count("Error"), 0u);
}

TEST_F(Control, ACancelledSaveDialogClearsTheFlagAndWritesNothing) {
  start_with(u"<P>x</P>");
  key(u"Shift", 16);
  headless::ShownDialog shown;
  dialogs.expect({.kind = headless::DialogKind::save,
                  .while_open = [&](const headless::ShownDialog& dialog) { shown = dialog; }});
  control->Save_document(u"", false);
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(std::get<headless::SaveDialog>(shown).title, u"Save HTML File");
  EXPECT_EQ(std::get<headless::SaveDialog>(shown).filters.front().pattern,
            u"*.htm;*.HTM;*.HTML;*.html|All Files|*.*");
}

constexpr std::u16string_view odd_document =
    u"<H1 align=\"center\"><!-- a comment -->T\u00EFtle &amp; more</H1>\n<P>One <b>two</b>&nbsp;&lt;three&gt;"
    u"<IMG src=\"a b.gif\" alt='\"quoted\"'><custom-tag data-x=1>\u4E2D</custom-tag></P>"
    u"<PRE>\n\n  kept\n</PRE><TABLE><TR><TD>cell</TABLE><SCRIPT>if (a < b && c) go();</SCRIPT>";

TEST_F(Control, ADocumentSavedOpenedAndSavedAgainIsTheSameFile) {
  const SystemCodePageScope scope(CodePage::utf8());
  for (const bool entire : {true, false}) {
    start_with(odd_document);
    auto first = path("first.html"), second = path("second.html");
    control->Save_document(first, entire);
    ASSERT_GT(bytes_of(folder / "first.html").size(), 200u);
    control->Open_document(first, entire);
    control->Save_document(second, entire);
    EXPECT_EQ(bytes_of(folder / "second.html"), bytes_of(folder / "first.html")) << entire;
    EXPECT_FALSE(control->IsDirty());
    control->Open_document(second, entire);
    EXPECT_TRUE(contains(body(), u"T\u00EFtle &amp; more")) << to_utf8(body());
  }
}

TEST_F(Control, InAnotherCodePageReferencesComeThrough) {
  const SystemCodePageScope scope(CodePage::windows_1252());
  start_with(odd_document);
  control->set_AlwaysConvertUnicodeCharacters(true);
  auto first = path("first.html");
  control->Save_document(first, false);
  control->Open_document(first, false);
  control->Save_document(path("second.html"), false);
  EXPECT_EQ(bytes_of(folder / "second.html"), bytes_of(folder / "first.html"));
  EXPECT_TRUE(contains(body(), u"\u4E2D"));
}

TEST_F(Control, ATargetThatCantBeWrittenTellsNothingAndLeavesTheFlag) {
  start_with(u"<P>x</P>");
  key(u"Shift", 16);
  host.heard.clear();
  control->Save_document(path("no/such/folder/out.html"), true);
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(host.heard.size(), 0u);
  EXPECT_FALSE(std::filesystem::exists(folder / "no"));
  EXPECT_EQ(body(), u"<P>x</P>");
}

TEST_F(Control, AnErrorInTheSaveDialogLeavesTheFlag) {
  struct Broken : headless::Dialogs {
    std::u16string ShowSave(const platform::FileDialog&) override { throw RuntimeError(5, u"no dialog"); }
  } broken;
  auto other = HTMLed::create({.loop = loop, .container = container, .dialogs = broken});
  other->UserControl_Show();
  other->insert_HR();
  ASSERT_TRUE(other->IsDirty());
  other->Save_document(u"", false);
  EXPECT_TRUE(other->IsDirty());
}

TEST_F(Control, SavingLeavesTheBorderInTheTextAndRaisesNothing) {
  start_with(u"<P>one</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  host.heard.clear();
  control->Save_document(path("out.html"), false);
  EXPECT_THAT(bytes_of(folder / "out.html"), testing::HasSubstr("<P style=\"border"));
  EXPECT_EQ(host.heard.size(), 0u);
}

TEST_F(Control, OpeningInTheCodeViewShowsTheNewSource) {
  start_with(u"<P>x</P>");
  control->show_Code();
  auto file = write_file("page.html", "<p>opened</p>");
  control->Open_document(file, false);
  EXPECT_TRUE(contains(control->txtCode().Text(), u"opened"));
  EXPECT_TRUE(control->InCodeView());
}

TEST_F(Control, PrintingTakesTheBorderOff) {
  start_with(u"<P>one</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  ASSERT_TRUE(contains(body(), u"border"));
  window.told.clear();
  control->print_Document(true);
  EXPECT_THAT(window.told, ElementsAre("print"));
  EXPECT_EQ(body(), u"<P>one</P>");
  control->show_Code();
  window.told.clear();
  control->print_Document(true);
  EXPECT_EQ(window.told.back(), "print") << "the document, also from the code view";
}

TEST_F(Control, PrintingAsksWhetherItCan) {
  start();
  control->print_Document(false);
  control->print_Document(true);
  EXPECT_THAT(window.told, ElementsAre("print asking", "print"));
  window.printable = false;
  control->print_Document(false);
  set_fault(u"QueryStatusWB", {RuntimeError(5, u"no printer")});
  control->print_Document(false);
  EXPECT_THAT(host.heard, ElementsAre("Error: 16384 Printing is disabled by the control",
                                      "Error: 16385 An error occured whilst attempting to print"));
}

}  // namespace
}  // namespace tvx::core
