#include "tvx/core/chrome/menus.h"

#include "core/control_fixture.h"

namespace tvx::core {
namespace {

using browser::MouseButton;
using testing::ElementsAre;
using testing::IsEmpty;

class ContextMenu : public Control {
 protected:
  void right_press(dom::Element* target) { control->DOM()->mouse_press(at(target, MouseButton::Right)); }
  void right_press(dom::Tag tag) { right_press(element(tag)); }
  void expect(std::u16string menu, std::u16string item) {
    menus.expect({.menu = std::move(menu), .choose = std::move(item)});
  }
  bool visible(std::u16string_view item) { return control->menu(item)->Visible(); }
  bool enabled(std::u16string_view item) { return control->menu(item)->Enabled(); }
  void clean() {
    control->RevertToOriginal();
    host.heard.clear();
    container.clear_changed();
    menus.clear_shown();
  }
};

// --- which menu ---

TEST_F(ContextMenu, TheTagChoosesIt) {
  start_with(u"<P>text<A href=\"x\">link</A><IMG></P><TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE>");
  for (const dom::Tag tag : {dom::Tag::P, dom::Tag::A, dom::Tag::Img, dom::Tag::Table, dom::Tag::Td})
    right_press(tag);
  EXPECT_THAT(menus.shown(), ElementsAre(u"mnuMisc", u"mnuLinks", u"mnuImg", u"mnuT", u"mnuMisc"));
}

TEST_F(ContextMenu, ADisabledEditorOpensNothingAndRefusesTheBrowsersMenu) {
  start_with(u"<P>text</P>");
  control->set_EditorEnabled(false);
  right_press(dom::Tag::P);
  EXPECT_THAT(menus.shown(), IsEmpty());
  EXPECT_FALSE(control->DOM()->context_menu(at(element(dom::Tag::P), MouseButton::Right)));
  control->set_EditorEnabled(true);
  EXPECT_FALSE(control->DOM()->context_menu(at(element(dom::Tag::P), MouseButton::Right)));
}

TEST_F(ContextMenu, OtherButtonsRebuildThePathAndOpenNothing) {
  start_with(u"<P>text</P>");
  for (const MouseButton button : {MouseButton::Left, MouseButton::Middle}) {
    control->tlbDOM().Clear();
    control->DOM()->mouse_press(at(element(dom::Tag::P), button));
    EXPECT_EQ(control->tlbDOM().Count(), 1);
  }
  EXPECT_THAT(menus.shown(), IsEmpty());
}

TEST_F(ContextMenu, WhereNothingIsNothingOpens) {
  start_with(u"<P>text</P>");
  control->DOM()->mouse_press(at(nullptr, MouseButton::Right));
  EXPECT_THAT(menus.shown(), IsEmpty());
}

TEST_F(ContextMenu, ItPopsUpAtTheMouse) {
  start_with(u"<P>text</P>");
  right_press(dom::Tag::P);
  EXPECT_FALSE(menus.last_place().has_value());
}

TEST_F(ContextMenu, ARightPressInTheSelectionKeepsIt) {
  start_with(u"<P>text</P>");
  load(u"<P>[text]</P>");
  browser::MouseInput mouse = at(element(dom::Tag::P), MouseButton::Right);
  mouse.place = dom::Boundary{element(dom::Tag::P)->first_child(), 2};
  control->DOM()->mouse_press(mouse);
  EXPECT_EQ(marked(), u"<P>[text]</P>");
}

TEST_F(ContextMenu, TheMenuKeyOpensItAtTheCaretAndLeavesTheSelection) {
  start_with(u"<P>a<A href=\"x\">link</A></P>");
  load(u"<P>a<A href=\"x\">l[in]k</A></P>");
  key(u"ContextMenu", 93);
  key(u"F10", 121, false, true);
  EXPECT_THAT(menus.shown(), ElementsAre(u"mnuLinks", u"mnuLinks"));
  EXPECT_EQ(marked(), u"<P>a<A href=\"x\">l[in]k</A></P>");
  key(u"F10", 121);
  EXPECT_EQ(menus.shown().size(), 2u);
}

// --- images and their links ---

TEST_F(ContextMenu, AnImageWithoutALinkOffersToInsertOne) {
  start_with(u"<P><IMG></P>");
  control->set_HiddenContextMenus(u"ImgNewLink");
  right_press(dom::Tag::Img);
  EXPECT_TRUE(visible(u"mnuImgNewLink")) << "set at every popup, whatever the host hides";
  EXPECT_FALSE(visible(u"mnuImgLink"));
  EXPECT_FALSE(visible(u"mnuImgLinkRemove"));
}

TEST_F(ContextMenu, ALinkCountsThreeLevelsUp) {
  const auto linked = [&](std::u16string html) {
    control->set_DocumentHTML(html);
    right_press(dom::Tag::Img);
    EXPECT_EQ(visible(u"mnuImgLink"), visible(u"mnuImgLinkRemove"));
    EXPECT_NE(visible(u"mnuImgLink"), visible(u"mnuImgNewLink"));
    return visible(u"mnuImgLink");
  };
  start();
  EXPECT_TRUE(linked(u"<A href=\"x\"><IMG></A>"));
  EXPECT_TRUE(linked(u"<A href=\"x\"><B><IMG></B></A>"));
  EXPECT_TRUE(linked(u"<A href=\"x\"><B><SPAN><IMG></SPAN></B></A>"));
  EXPECT_FALSE(linked(u"<A href=\"x\"><B><SPAN><I><IMG></I></SPAN></B></A>"));
  EXPECT_TRUE(linked(u"<DIV><SPAN><A href=\"x\"><IMG></A></SPAN></DIV>"));
}

TEST_F(ContextMenu, DismissingTheImageMenuMarksAndTheOthersDoNot) {
  start_with(u"<P>text<A href=\"x\">link</A><IMG></P><TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE>");
  right_press(dom::Tag::A);
  right_press(dom::Tag::P);
  right_press(dom::Tag::Table);
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), IsEmpty());
  right_press(dom::Tag::Img);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ContextMenu, RemovingAnImagesLinkKeepsTheImage) {
  start_with(u"<P>a<A href=\"x\"><IMG src=\"i.png\"></A></P>");
  expect(u"mnuImg", u"mnuImgLinkRemove");
  right_press(dom::Tag::Img);
  EXPECT_EQ(body(), u"<P>a<IMG src=\"i.png\"></P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ContextMenu, AHostThatCancelsImagePropertiesGetsNoDialogAndTheMark) {
  start_with(u"<P><IMG></P>");
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  expect(u"mnuImg", u"mnuImgProperties");
  right_press(dom::Tag::Img);
  EXPECT_THAT(host.heard, ElementsAre("DocumentClick: IMG", "MenuClick: ContextIMGProperties"));
  EXPECT_TRUE(control->IsDirty());
}

// --- links ---

TEST_F(ContextMenu, RemoveLinkPutsTheTextInItsPlace) {
  start_with(u"<P>see <A href=\"x\">this &lt;B&gt; <I>link</I></A>.</P>");
  expect(u"mnuLinks", u"mnuLinkRemove");
  right_press(dom::Tag::A);
  EXPECT_EQ(body(), u"<P>see this &lt;B&gt; link.</P>");
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(body(), u"<P>see <A href=\"x\">this &lt;B&gt; <I>link</I></A>.</P>");
}

TEST_F(ContextMenu, RemoveLinkAroundAnImageLosesTheImage) {
  start_with(u"<P>a<A href=\"x\"><IMG></A>b</P>");
  expect(u"mnuLinks", u"mnuLinkRemove");
  right_press(dom::Tag::A);
  EXPECT_EQ(body(), u"<P>ab</P>");
}

TEST_F(ContextMenu, AHostThatCancelsAnItemStopsItAndLeavesNothingPending) {
  start_with(u"<P><A href=\"x\">link</A></P>");
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  expect(u"mnuLinks", u"mnuLinkRemove");
  right_press(dom::Tag::A);
  EXPECT_EQ(body(), u"<P><A href=\"x\">link</A></P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: ContextMISCRemoveLink"));
}

TEST_F(ContextMenu, WhatIsPendingIsForOnePressOnly) {
  start_with(u"<P><A href=\"x\">link</A><A href=\"y\">other</A></P>");
  expect(u"mnuLinks", u"mnuLinkRemove");
  right_press(dom::Tag::A);
  right_press(dom::Tag::A);
  EXPECT_EQ(body(), u"<P>link<A href=\"y\">other</A></P>");
}

// --- items that every host hears of ---

TEST_F(ContextMenu, AWrongWordOffersWhatItCouldBeAndTheHostMayForbidIt) {
  if (!std::filesystem::exists("/usr/share/hunspell/en_US.dic")) GTEST_SKIP() << "no dictionary is installed";
  start_with(u"<P>wrold</P>");
  control->set_SpellingLanguage(u"en-US");
  control->set_CheckSpellingAsYouType(true);
  loop.settle();
  const auto press_on_word = [&] {
    expect(u"mnuMisc", u"mnuSpelling(1)");
    browser::MouseInput mouse = at(element(dom::Tag::P), MouseButton::Right);
    mouse.place = dom::Boundary{element(dom::Tag::P)->first_child(), 2};
    control->DOM()->mouse_press(mouse);
  };
  host.on_menu = [](std::u16string& key, bool& cancel) {
    EXPECT_EQ(key, u"ContextMISCSpelling");
    cancel = true;
  };
  press_on_word();
  EXPECT_EQ(body(), u"<P>wrold</P>");
  host.on_menu = {};
  press_on_word();
  EXPECT_EQ(body(), u"<P>world</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ContextMenu, EachItemTellsItsKeyFirst) {
  start_with(
      u"<P>text<A href=\"x\">link</A></P><TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE><P><IMG></P>");
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  const std::pair<const char16_t*, dom::Tag> tops[] = {{u"mnuMisc", dom::Tag::P},
                                                       {u"mnuLinks", dom::Tag::A},
                                                       {u"mnuT", dom::Tag::Table},
                                                       {u"mnuImg", dom::Tag::Img}};
  for (const auto& [top, tag] : tops)
    for (platform::Menu* item : platform::all_items(*control->menu(top))) {
      if (item->is_separator() || !item->items().empty()) continue;
      if (top == std::u16string_view(u"mnuImg")) {
        control->set_DocumentHTML(item->Name() == u"mnuImgNewLink" ? u"<P><IMG></P>"
                                                                   : u"<P><A href=\"x\"><IMG></A></P>");
      }
      control->menu(u"mnuMiscPaste")->set_Enabled(true);
      host.heard.clear();
      // Paste may be grey: its rule is another test's.
      if (item->Name() == u"mnuImgPaste" || item->Name() == u"mnuLinkPaste") continue;
      // These show on fields and in forms.
      if (item->Name() == u"mnuMiscField" || item->Name() == u"mnuMiscForm") continue;
      // These while there is a text to paste, and in tables.
      if (item->Name().find(u"PasteText") != item->Name().npos) continue;
      if (item->Name().find(u"Cell") != item->Name().npos) continue;
      // Those are there on a wrong word alone.
      if (item->Name().find(u"Spelling") != item->Name().npos) continue;
      expect(top, platform::name_with_index(*item));
      right_press(tag);
      ASSERT_FALSE(host.heard.empty()) << to_utf8(item->Name());
      EXPECT_EQ(host.heard.back(), "MenuClick: " + to_utf8(ContextMenus::key_of(*item)));
    }
  EXPECT_EQ(body(), u"<P><A href=\"x\"><IMG></A></P>");
}

// --- source and revert ---

TEST_F(ContextMenu, EditSourceSwitchesTheView) {
  start_with(u"<P>text</P>");
  expect(u"mnuMisc", u"mnuMiscSource");
  right_press(dom::Tag::P);
  EXPECT_TRUE(control->InCodeView());
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ContextMenu, EditSourceWantsTheToggleToBeSeen) {
  start_with(u"<P>text</P>");
  control->Toolbar1().Item(1).set_Visible(false);
  expect(u"mnuMisc", u"mnuMiscSource");
  right_press(dom::Tag::P);
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: ContextMISCShowSource"));
  EXPECT_FALSE(control->InCodeView());
}

TEST_F(ContextMenu, EditSourceIsGreyWithoutTheFirstGroupOrTheToggle) {
  start_with(u"<P>text</P>");
  right_press(dom::Tag::P);
  EXPECT_TRUE(enabled(u"mnuMiscSource"));
  control->set_showFormattingToolbar1(false);
  right_press(dom::Tag::P);
  EXPECT_FALSE(enabled(u"mnuMiscSource"));
  control->set_showFormattingToolbar1(true);
  right_press(dom::Tag::P);
  EXPECT_TRUE(enabled(u"mnuMiscSource"));
  control->set_HiddenButtons(u"toggle");
  right_press(dom::Tag::P);
  EXPECT_FALSE(enabled(u"mnuMiscSource"));
}

TEST_F(ContextMenu, RevertAsksAndBringsTheOriginalBack) {
  start_with(u"<P>one</P>");
  load(u"<P>one[]</P>");
  key(u"x", 88);
  ASSERT_TRUE(control->IsDirty());
  platform::MessageBox asked;
  dialogs.expect({.kind = headless::DialogKind::msgbox,
                  .answer = platform::MessageAnswer::ok,
                  .while_open = [&](const headless::ShownDialog& dialog) {
                    asked = std::get<platform::MessageBox>(dialog);
                  }});
  expect(u"mnuMisc", u"mnuMiscRevert");
  right_press(dom::Tag::P);
  EXPECT_EQ(asked.text, u"Discard Changes?");
  EXPECT_EQ(asked.title, u"HTML Editor");
  EXPECT_EQ(asked.buttons, platform::MessageButtons::ok_cancel);
  EXPECT_EQ(asked.icon, platform::MessageIcon::critical);
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ContextMenu, CancellingRevertKeepsTheTextAndClearsTheMark) {
  start_with(u"<P>one</P>");
  load(u"<P>one[]</P>");
  key(u"x", 88);
  container.clear_changed();
  expect(u"mnuMisc", u"mnuMiscRevert");
  right_press(dom::Tag::P);
  EXPECT_EQ(body(), u"<P>onex</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(ContextMenu, ARevertCanBeTakenBack) {
  start_with(u"<P>one</P>");
  load(u"<P>one[]</P>");
  key(u"x", 88);
  dialogs.expect({.kind = headless::DialogKind::msgbox, .answer = platform::MessageAnswer::ok});
  expect(u"mnuMisc", u"mnuMiscRevert");
  right_press(dom::Tag::P);
  ASSERT_EQ(body(), u"<P>one</P>");
  control->undo_document();
  EXPECT_EQ(body(), u"<P>onex</P>");
}

TEST_F(ContextMenu, AHostThatCancelsRevertIsNotAsked) {
  start_with(u"<P>one</P>");
  control->set_DocumentHTML(u"<P>one</P>");
  key(u"Shift", 16);
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  dialogs.expect({.kind = headless::DialogKind::msgbox, .answer = platform::MessageAnswer::ok});
  expect(u"mnuMisc", u"mnuMiscRevert");
  right_press(dom::Tag::P);
  EXPECT_EQ(dialogs.expectations(), 1u);
  EXPECT_TRUE(control->IsDirty());
}

// --- classes ---

TEST_F(ContextMenu, TheClassMenusFollowTheSheetAndItsPlaces) {
  start();
  control->set_CSShttp(false);
  control->set_CSSText(u"p { color: red } .a { color: green } .b:hover { color: blue }");
  control->set_DocumentHTML(u"<P>text</P>");
  ASSERT_EQ(control->menu(u"mnuMiscStyle")->items().size(), 3u);
  EXPECT_EQ(control->menu(u"mnuMiscClass", 2)->Caption(), u"a");
  EXPECT_EQ(control->menu(u"mnuMiscClass", 3)->Caption(), u"b:hover");
  load(u"<P>[text]</P>");
  browser::MouseInput mouse = at(element(dom::Tag::P), MouseButton::Right);
  mouse.place = dom::Boundary{element(dom::Tag::P)->first_child(), 2};
  expect(u"mnuMisc", u"mnuMiscClass(2)");
  host.heard.clear();
  control->DOM()->mouse_press(mouse);
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: ContextCSSClass"));
  EXPECT_EQ(body(), u"<P class=\"a\">text</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ContextMenu, TheElementPathsMenuGivesTheElementAClass) {
  start();
  control->set_CSShttp(false);
  control->set_CSSText(u".a { color: green }");
  control->set_DocumentHTML(u"<P>one<B>two</B></P>");
  control->DOM()->mouse_press(at(element(dom::Tag::B)));
  expect(u"mnuToolProp", u"mnuClass(1)");
  ASSERT_TRUE(control->press(control->tlbDOM(), control->tlbDOM().Item(1).Key()));
  EXPECT_EQ(control->DocumentHTML(), u"<P class=\"a\">one<B>two</B></P>");
  expect(u"mnuToolProp", u"mnuClass(0)");
  ASSERT_TRUE(control->press(control->tlbDOM(), control->tlbDOM().Item(1).Key()));
  EXPECT_EQ(control->DocumentHTML(), u"<P>one<B>two</B></P>");
}

// --- hidden menus ---

TEST_F(ContextMenu, HiddenItemsAreAppliedAtTheStart) {
  control = make(container);
  headless::PropertyBag bag;
  bag.put(u"HiddenContextMenus", std::u16string(u"MiscRevert"));
  control->UserControl_ReadProperties(bag);
  EXPECT_FALSE(visible(u"mnuMiscRevert"));
  EXPECT_FALSE(visible(u"mnuS4"));
}

TEST_F(ContextMenu, AtDesignTimeTheListIsOnlyStored) {
  start_at_design_time();
  control->set_HiddenContextMenus(u"MiscRevert");
  EXPECT_TRUE(visible(u"mnuMiscRevert"));
  EXPECT_EQ(control->HiddenContextMenus(), u"MiscRevert");
}

TEST_F(ContextMenu, WithEveryItemHiddenThePopupIsNotShown) {
  start_with(u"<TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE>");
  control->set_HiddenContextMenus(u"TInsRow;TDelRow;TInsCol;TDelCol;TProp");
  right_press(dom::Tag::Table);
  EXPECT_THAT(menus.shown(), IsEmpty());
}

TEST_F(ContextMenu, ATopMenuThatIsHiddenPopsUp) {
  start_with(u"<P>text</P>");
  control->set_HiddenContextMenus(u"Misc");
  right_press(dom::Tag::P);
  EXPECT_THAT(menus.shown(), ElementsAre(u"mnuMisc"));
}

// --- tables ---

TEST_F(ContextMenu, CancelledTableItemsLeaveEverything) {
  start_with(u"<TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE>");
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  expect(u"mnuT", u"mnuTInsRow");
  right_press(dom::Tag::Table);
  EXPECT_EQ(body(), u"<TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE>");
  EXPECT_FALSE(control->IsDirty());
}

// --- what else may happen while a popup is open ---

TEST_F(ContextMenu, AHostMayReplaceTheDocumentWhileItIsOpen) {
  start_with(u"<P><A href=\"x\">link</A></P>");
  menus.expect({.menu = u"mnuLinks", .choose = u"mnuLinkRemove", .while_open = [&](platform::Menu&) {
                  control->set_DocumentHTML(u"<P>new</P>");
                }});
  right_press(dom::Tag::A);
  EXPECT_EQ(body(), u"<P>new</P>");
  EXPECT_FALSE(control->IsDirty()) << "the step failed, and that ends the handling";
}

TEST_F(ContextMenu, AHostMayEndTheControlWhileItIsOpen) {
  start_with(u"<P>text<IMG></P>");
  menus.expect({.menu = u"mnuImg", .choose = u"mnuImgProperties", .while_open = [&](platform::Menu&) {
                  control->UserControl_Terminate();
                }});
  right_press(dom::Tag::Img);
  EXPECT_EQ(control->DOM(), nullptr);
}

TEST_F(ContextMenu, AHostMayDropItsLastReferenceInAnItem) {
  start_with(u"<P><IMG></P>");
  host.on_menu = [&](std::u16string&, bool&) { control.reset(); };
  expect(u"mnuImg", u"mnuImgProperties");
  right_press(dom::Tag::Img);
  EXPECT_EQ(control, nullptr);
  loop.settle();
}

}  // namespace
}  // namespace tvx::core
