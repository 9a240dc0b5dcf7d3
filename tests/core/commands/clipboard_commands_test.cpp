#include "core/control_fixture.h"
#include "tvx/clipboard/html_format.h"
#include "tvx/dom/mutation.h"
#include "tvx/platform/html_block.h"

namespace tvx::core {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class ClipboardCommands : public Control {
 protected:
  void start_marked(std::u16string_view html) {
    start_with(u"<P>x</P>");
    load(html);
    container.clear_changed();
  }
  void fail(std::u16string_view command, int times = 1) {
    set_fault(u"execCommand " + std::u16string(command), {.result = 0}, times);
  }
  std::string block() const { return clipboard.read("HTML Format"); }
  bool marked_changed() const {
    return control->IsDirty() && std::ranges::count(container.changed(), u"DocumentHTML") > 0;
  }
  void select_control(dom::Tag tag) {
    dom::Element* target = element(tag);
    control->DOM()->select([&](editing::Selection& selection) { selection.select_control(*target); });
  }
};

// --- copying ---

TEST_F(ClipboardCommands, CopyGoesTheDocumentsWay) {
  start_marked(u"<p>a[<b>b</b>]c</p>");
  control->copy_document();
  EXPECT_EQ(clipboard.GetText(), u"b");
  EXPECT_EQ(block(), platform::html_block(u"<B>b</B>"));
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ClipboardCommands, CopyWithNothingSelectedLeavesTheClipboard) {
  start_marked(u"<p>a[]b</p>");
  clipboard.SetText(u"kept");
  control->copy_document();
  EXPECT_EQ(clipboard.GetText(), u"kept");
}

TEST_F(ClipboardCommands, WhereTheDocumentsCopyFailsTheTextIsPutByHand) {
  start_marked(u"<p>a[<b>\u00E9\U0001F600</b>]c</p>");
  control->set_AlwaysConvertUnicodeCharacters(true);
  clipboard.SetText(u"old");
  fail(u"Copy");
  control->copy_document();
  EXPECT_EQ(block(),
            "Version:1.0\r\nStartHTML:0000000105\r\nEndHTML:0000000200\r\nStartFragment:0000000138\r\n"
            "EndFragment:0000000167\r\n<HTML><BODY><!--StartFragment --><B>&#233;&#55357;&#56832;</B>"
            "<!--EndFragment --></BODY></HTML>");
  EXPECT_FALSE(clipboard.GetFormat(platform::ClipboardFormat::text));
  EXPECT_EQ(clipboard::GetHTMLFromClipboard(clipboard), u"<B>&#233;&#55357;&#56832;</B>");
}

TEST_F(ClipboardCommands, WhereTheDocumentsCopyFailsAnElementIsPutByHand) {
  start_marked(u"<p>a<img src=\"x.png\" alt=\"y\">c</p>");
  select_control(dom::Tag::Img);
  set_fault(u"execCommand Copy", {.error = RuntimeError(5, u"no")});
  control->copy_document();
  EXPECT_EQ(clipboard::GetHTMLFromClipboard(clipboard), u"<IMG src=\"x.png\" alt=\"y\">");
}

TEST_F(ClipboardCommands, WhatIsCopiedHasNoSelectionBorder) {
  start_with(u"<P>abc</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  ASSERT_NE(body().find(u"border"), std::u16string::npos);
  control->DOM()->execCommand(u"selectAll", false, u"");
  control->copy_document();
  EXPECT_EQ(block(), platform::html_block(u"<P>abc</P>"));
}

/// Another program that hears of the clipboard's new content, and does something with the page.
struct WatchedClipboard : platform::Clipboard {
  std::function<void()> on_publish;
  platform::TransferItems published;
  std::vector<std::string> targets() const override { return {}; }
  std::string read(std::string_view) const override { return {}; }
  void publish(platform::TransferItems items) override {
    published = std::move(items);
    if (on_publish) on_publish();
  }
};

TEST_F(ClipboardCommands, TheSelectedElementMayGoWhileTheClipboardIsEmptied) {
  WatchedClipboard watched;
  headless::Container other;
  auto watching = HTMLed::create(
      {.loop = loop, .container = other, .dialogs = dialogs, .geometry = &geometry, .clipboard = &watched});
  watching->UserControl_Initialize();
  watching->UserControl_InitProperties();
  watching->UserControl_Show();
  watching->set_DocumentHTML(u"<P>a<IMG src=\"x.png\">c</P>");
  const dom::Ref<dom::Element> image(watching->DOM()->first(dom::Tag::Img));
  watching->DOM()->select([&](editing::Selection& selection) { selection.select_control(*image); });
  watched.on_publish = [&] {
    if (image->parent()) dom::remove(*image);
  };
  fail(u"Cut");
  fail(u"Copy", 2);
  watching->cut_document();
  EXPECT_EQ(dom::inner_html(*watching->DOM()->body()), u"<P>ac</P>");
}

// --- cutting ---

TEST_F(ClipboardCommands, CutGoesTheDocumentsWay) {
  start_marked(u"<p>a[b]c</p>");
  control->cut_document();
  EXPECT_EQ(marked(), u"<P>a[]c</P>");
  EXPECT_EQ(clipboard.GetText(), u"b");
  EXPECT_TRUE(marked_changed());
  control->undo_document();
  EXPECT_EQ(marked(), u"<P>a[b]c</P>");
}

TEST_F(ClipboardCommands, CutWithNothingSelectedDoesNotMarkTheDocument) {
  start_marked(u"<p>a[]b</p>");
  clipboard.SetText(u"kept");
  control->cut_document();
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), Not(Contains(u"DocumentHTML")));
  EXPECT_EQ(clipboard.GetText(), u"kept");
}

TEST_F(ClipboardCommands, WhereTheDocumentsCutFailsCopyAndDeleteDoIt) {
  start_marked(u"<p>a[b]c</p>");
  fail(u"Cut");
  control->cut_document();
  EXPECT_EQ(marked(), u"<P>a[]c</P>");
  EXPECT_EQ(clipboard.GetText(), u"b");
  EXPECT_TRUE(marked_changed());
}

TEST_F(ClipboardCommands, WhereBothFailTheBlockIsPutByHandAndTheTextGoes) {
  start_marked(u"<p>a[b]c</p>");
  fail(u"Cut");
  fail(u"Copy");
  control->cut_document();
  EXPECT_EQ(marked(), u"<P>a[]c</P>");
  EXPECT_EQ(clipboard::GetHTMLFromClipboard(clipboard), u"b");
}

TEST_F(ClipboardCommands, CutTakesAnElementAsAWhole) {
  start_marked(u"<p>a<img src=\"x.png\">c</p>");
  select_control(dom::Tag::Img);
  control->cut_document();
  EXPECT_EQ(body(), u"<P>ac</P>");
  EXPECT_EQ(block(), platform::html_block(u"<IMG src=\"x.png\">"));
}

// --- pasting ---

TEST_F(ClipboardCommands, PasteGoesTheDocumentsWay) {
  start_marked(u"<p>a[b]c</p>");
  clipboard.put({{"text/html", "<i>x</i>"}, {"text/plain", "plain"}});
  control->paste_document();
  EXPECT_EQ(marked(), u"<P>a<I>x[]</I>c</P>");
  EXPECT_TRUE(marked_changed());
  control->undo_document();
  EXPECT_EQ(marked(), u"<P>a[b]c</P>");
}

TEST_F(ClipboardCommands, PasteMarksTheDocumentAlsoWhenNothingComes) {
  start_marked(u"<p>a[]c</p>");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>ac</P>");
  EXPECT_TRUE(marked_changed());
}

// The document's own command has nothing to paste and fails, and by hand nothing is put in the selection's
// place.
TEST_F(ClipboardCommands, AnEmptyClipboardTakesTheSelectionsPlace) {
  start_marked(u"<p>a[b]c</p>");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>ac</P>");
  control->undo_document();
  EXPECT_EQ(marked(), u"<P>a[b]c</P>");
}

TEST_F(ClipboardCommands, WhereTheDocumentsPasteFailsTextIsMarkup) {
  start_marked(u"<p>a[b]c</p>");
  clipboard.put({{"text/plain", "<B>x</B>"}, {"HTML Format", platform::html_block(u"<I>y</I>")}});
  fail(u"Paste");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>a<B>x</B>c</P>");
}

TEST_F(ClipboardCommands, WhereThereIsNoTextTheBlockIsPasted) {
  start_marked(u"<p>a[]c</p>");
  std::u16string prefix, suffix;
  clipboard::PutHTMLOnClipboard(clipboard, u"<I onclick=\"z()\">y</I>", prefix, suffix);
  fail(u"Paste");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>a<I>y</I>c</P>") << "and without what acts";
}

TEST_F(ClipboardCommands, NothingThatActsComesInByHandEither) {
  start_marked(u"<p>a[]c</p>");
  clipboard.SetText(u"<img src=x onerror=z()><script>z()</script><a href='javascript:z()'>y</a>");
  fail(u"Paste");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>a<IMG src=\"x\"><A>y</A>c</P>");
  start_marked(u"<p>a<img src=\"x.png\">c</p>");
  select_control(dom::Tag::Img);
  clipboard.SetText(u"<b onclick=z()>y</b><iframe srcdoc='<script>z()</script>'></iframe>");
  fail(u"Paste");
  control->paste_document();
  EXPECT_FALSE(contains(body(), u"z()")) << to_utf8(body());
  EXPECT_TRUE(contains(body(), u"<B>y</B>")) << to_utf8(body());
}

// The document's own command refuses there, and by hand is no way around that.
TEST_F(ClipboardCommands, WhatMayNotBeEditedIsNotPastedInto) {
  clipboard.SetText(u"new");
  start_marked(u"<p>one</p><div contenteditable=\"false\">lo[]cked</div>");
  const std::u16string locked = body();
  control->paste_document();
  EXPECT_EQ(body(), locked);
  start_marked(u"<div contenteditable=\"false\">lo<img src=\"x.png\">ck</div>");
  select_control(dom::Tag::Img);
  const std::u16string with_image = body();
  control->paste_document();
  EXPECT_EQ(body(), with_image);
  start_marked(u"<p>a[b]c</p>");
  control->set_EditorEnabled(false);
  control->paste_document();
  EXPECT_EQ(body(), u"<P>abc</P>");
  control->set_EditorEnabled(true);
  load(u"<p>a[b]c</p>");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>anewc</P>");
}

TEST_F(ClipboardCommands, ASelectedElementIsReplacedByTheText) {
  start_marked(u"<p>a<img src=\"x.png\">c</p>");
  select_control(dom::Tag::Img);
  clipboard.SetText(u"some <B>text</B>");
  fail(u"Paste");
  control->paste_document();
  EXPECT_EQ(body(), u"<P>asome <B>text</B>c</P>");
  EXPECT_TRUE(marked_changed());
}

TEST_F(ClipboardCommands, AFailingPasteIsSilent) {
  start_marked(u"<p>a[b]c</p>");
  clipboard.SetText(u"x");
  set_fault(u"OpenClipboard", {.error = RuntimeError(521, u"Can't open Clipboard")}, 5);
  set_fault(u"execCommand Paste", {.error = RuntimeError(5, u"no")});
  control->paste_document();
  EXPECT_TRUE(marked_changed());
  EXPECT_EQ(host.count("Error"), 0U);
}

TEST_F(ClipboardCommands, APictureGoesIntoTheImageStore) {
  start_marked(u"<p>a[]c</p>");
  control->set_LocalImageStore(path(""));
  clipboard.put({{"image/png", "PNG"}});
  control->paste_document();
  const std::u16string name = u"pasted-8d3aaf19f3adfd1c.png";
  EXPECT_EQ(bytes_of(folder / to_utf8(name)), "PNG");
  EXPECT_EQ(body(), u"<P>a<IMG src=\"file://" + path("") + name + u"\">c</P>");
}

TEST_F(ClipboardCommands, WithoutAClipboardNothingHappens) {
  start_marked(u"<p>a[b]c</p>");
  headless::Container other;
  auto lonely = HTMLed::create({.loop = loop, .container = other, .dialogs = dialogs, .geometry = &geometry});
  lonely->UserControl_Initialize();
  lonely->UserControl_InitProperties();
  lonely->UserControl_Show();
  lonely->set_DocumentHTML(u"<P>x</P>");
  lonely->DOM()->execCommand(u"selectAll", false, u"");
  lonely->copy_document();
  lonely->paste_document();
  EXPECT_EQ(dom::inner_html(*lonely->DOM()->body()), u"<P>x</P>");
  EXPECT_EQ(error_of([&] { lonely->clipboard(); }), errors::object_not_set);
}

TEST_F(ClipboardCommands, BeforeTheStartNothingHappens) {
  create();
  control->copy_document();
  control->cut_document();
  control->paste_document();
  EXPECT_TRUE(clipboard.targets().empty());
}

// --- the ways there ---

TEST_F(ClipboardCommands, TheKeysAreTakenAwayFromTheDocument) {
  start_marked(u"<p>a[b]c</p>");
  EXPECT_TRUE(key(u"c", 67, true).taken);
  EXPECT_EQ(clipboard.GetText(), u"b");
  EXPECT_TRUE(marked_changed());  // every key marks it
  key(u"x", 88, true);
  EXPECT_EQ(marked(), u"<P>a[]c</P>");
  key(u"v", 86, true);
  EXPECT_EQ(marked(), u"<P>ab[]c</P>");
  // Shift makes no difference, and the document's own Paste doesn't run a second time.
  key(u"V", 86, true, true);
  EXPECT_EQ(marked(), u"<P>abb[]c</P>");
  EXPECT_EQ(host.count("ASCIIKeyPress"), 4U);
}

TEST_F(ClipboardCommands, TheKeysNeedControl) {
  start_marked(u"<p>a[b]c</p>");
  key(u"v", 86);
  EXPECT_EQ(marked(), u"<P>av[]c</P>");
}

TEST_F(ClipboardCommands, TheKeysOfOldWork) {
  start_marked(u"<p>a[b]c</p>");
  EXPECT_TRUE(key(u"Insert", 45, true).taken);
  EXPECT_EQ(clipboard.GetText(), u"b");
  EXPECT_TRUE(key(u"Delete", 46, false, true).taken);
  EXPECT_EQ(marked(), u"<P>a[]c</P>");
  EXPECT_TRUE(key(u"Insert", 45, false, true).taken);
  EXPECT_EQ(marked(), u"<P>ab[]c</P>");
}

TEST_F(ClipboardCommands, TheButtonsAskTheHostFirst) {
  start_marked(u"<p>a[b]c</p>");
  host.on_button = [](std::u16string&, bool& cancel) { cancel = true; };
  control->press(control->Toolbar1(), u"Cut");
  EXPECT_EQ(marked(), u"<P>a[b]c</P>");
  host.on_button = nullptr;
  control->press(control->Toolbar1(), u"Copy");
  EXPECT_EQ(clipboard.GetText(), u"b");
  control->press(control->Toolbar1(), u"Cut");
  EXPECT_EQ(marked(), u"<P>a[]c</P>");
  control->press(control->Toolbar1(), u"Paste");
  EXPECT_EQ(marked(), u"<P>ab[]c</P>");
}

// --- in the code view ---

class CodeClipboard : public ClipboardCommands {
 protected:
  /// The code view over a document in which something is selected, or nothing.
  void enter(std::u16string_view html = u"<p>[one]</p>") {
    start_marked(html);
    control->show_Code();
    ASSERT_TRUE(control->InCodeView());
    std::u16string none;
    control->Open_document(none, false);  // cancelled, which clears the flag
    container.clear_changed();
  }
  platform::TextBox& box() { return control->txtCode().TextBox1(); }
  std::u16string code() { return control->txtCode().Text(); }
  void code_key(char16_t key) { control->txtCode().plain_box().key(std::int16_t(key), 2, {}, true); }
  void offer_rich_text() {
    clipboard.put({{"text/rtf", "{\\rtf1 rich}"}, {"text/html", "<b>rich</b>"}, {"text/plain", "plain"}});
  }
};

TEST_F(CodeClipboard, CopyPutsTheBoxsSelectionAsPlainTextAlone) {
  enter();
  clipboard.put({{"text/rtf", "{rich}"}, {"text/html", "<i>old</i>"}});
  box().select(0, 3);
  control->copy_document();
  EXPECT_EQ(clipboard.GetText(), u"<P>");
  EXPECT_EQ(clipboard.targets(), std::vector<std::string>{"text/plain"});
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
  EXPECT_FALSE(control->IsDirty());
}

// It is the document's selection that is asked, not the box's.
TEST_F(CodeClipboard, CopyWithNothingSelectedInTheDocumentLeavesTheClipboard) {
  enter(u"<p>one[]</p>");
  clipboard.SetText(u"kept");
  box().select(0, 3);
  control->copy_document();
  EXPECT_EQ(clipboard.GetText(), u"kept");
}

TEST_F(CodeClipboard, CopyNeverAsksTheDocumentsCommand) {
  enter();
  box().select(3, 3);
  fail(u"Copy", 5);
  control->copy_document();
  EXPECT_EQ(clipboard.GetText(), u"one");
  EXPECT_EQ(block(), "");
}

TEST_F(CodeClipboard, CutTakesTheBoxsSelectionAndMarksTheDocument) {
  enter(u"<p>one[]</p>");
  box().select(3, 3);
  control->cut_document();
  EXPECT_EQ(clipboard.GetText(), u"one");
  EXPECT_EQ(code(), u"<P></P>\r\n");
  EXPECT_EQ(body(), u"<P>one</P>") << "the document waits for the switch back";
  EXPECT_TRUE(marked_changed());
  code_key(u'Z');
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
}

TEST_F(CodeClipboard, CutWithNothingSelectedInTheBoxStillMarks) {
  enter();
  clipboard.SetText(u"old");
  control->cut_document();
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
  EXPECT_EQ(clipboard.GetText(), u"") << "what is selected is nothing, and so the clipboard holds nothing";
  EXPECT_TRUE(marked_changed());
}

TEST_F(CodeClipboard, PasteTakesThePlainTextAsOneStep) {
  enter();
  clipboard.put({{"text/html", "<b>bold</b>"}, {"text/plain", "<I>\xE4\xB8\x96\xF0\x9F\x98\x80</I>\nx"}});
  box().select(3, 3);
  control->paste_document();
  EXPECT_EQ(code(), u"<P><I>\u4E16\U0001F600</I>\r\nx</P>\r\n");
  EXPECT_TRUE(marked_changed());
  code_key(u'Z');
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
}

TEST_F(CodeClipboard, PasteMarksTheDocumentAlsoWhenNothingComes) {
  enter();
  control->paste_document();
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
  EXPECT_TRUE(marked_changed());
}

TEST_F(CodeClipboard, PasteOfHtmlAloneBringsNothing) {
  enter();
  clipboard.put({{"text/html", "<b>bold</b>"}});
  control->paste_document();
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
}

TEST_F(CodeClipboard, RichTextIsNotPastedByTheCommandButByTheKeyAsPlainText) {
  enter();
  offer_rich_text();
  control->paste_document();
  EXPECT_EQ(code(), u"<P>one</P>\r\n");
  EXPECT_TRUE(marked_changed());
  code_key(u'V');
  EXPECT_EQ(code(), u"plain<P>one</P>\r\n");
}

TEST_F(CodeClipboard, TheKeysGoTheSameWay) {
  enter();
  code_key(u'A');
  EXPECT_EQ(box().SelText(), u"<P>one</P>\r\n");
  box().select(3, 3);
  code_key(u'C');
  EXPECT_EQ(clipboard.GetText(), u"one");
  code_key(u'X');
  code_key(u'V');
  code_key(u'V');
  EXPECT_EQ(code(), u"<P>oneone</P>\r\n");
}

TEST_F(CodeClipboard, TheToolbarsButtonsRestThere) {
  enter();
  clipboard.SetText(u"kept");
  box().select(3, 3);
  EXPECT_FALSE(control->press(control->Toolbar1(), u"Copy"));
  EXPECT_EQ(clipboard.GetText(), u"kept");
}

TEST_F(CodeClipboard, WhatWasPastedReachesTheDocumentAtTheSwitchBack) {
  enter();
  box().select(3, 3);
  clipboard.SetText(u"<B>new</B>");
  control->paste_document();
  control->show_Code();
  EXPECT_NE(body().find(u"<B>new</B>"), std::u16string::npos) << to_utf8(body());
  control->undo_document();
  EXPECT_EQ(body(), u"<P>one</P>");
}

TEST_F(CodeClipboard, AClipboardThatCannotBeOpenedIsSilent) {
  enter();
  clipboard.SetText(u"kept");
  box().select(3, 3);
  set_fault(u"OpenClipboard", {.error = RuntimeError(521, u"Can't open Clipboard")}, 9);
  control->copy_document();
  control->paste_document();
  clear_faults();
  EXPECT_EQ(clipboard.GetText(), u"kept");
  EXPECT_EQ(host.count("Error"), 0U);
  EXPECT_TRUE(marked_changed());
}

TEST_F(CodeClipboard, BackInTheDesignViewTheDocumentIsMeantAgain) {
  enter();
  box().select(0, 3);
  control->show_Code();
  control->DOM()->execCommand(u"selectAll", false, u"");
  control->copy_document();
  EXPECT_EQ(clipboard.GetText(), u"one");
  EXPECT_NE(block(), "");
}

}  // namespace
}  // namespace tvx::core
