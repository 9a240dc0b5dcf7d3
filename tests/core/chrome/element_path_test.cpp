#include "core/control_fixture.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/dom/style/inline_style.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BranchToolbar : public Control {
 protected:
  void press_in_document(dom::Element* target) { control->DOM()->mouse_press(at(target)); }
  std::vector<std::u16string> captions() {
    std::vector<std::u16string> result;
    for (int i = 1; i <= control->tlbDOM().Count(); ++i)
      result.push_back(control->tlbDOM().Item(i).Caption());
    return result;
  }
  std::u16string key_of(dom::Element* target) {
    return u"KEY" + from_utf8(std::to_string(control->DOM()->tree().source_index(*target)));
  }
  /// Presses the button of an element; it must be there.
  bool press_button(dom::Tag tag) { return control->press(control->tlbDOM(), key_of(element(tag))); }
  bool enabled(std::u16string_view item) { return control->menu(item)->Enabled(); }
};

TEST_F(BranchToolbar, TheWayToTheElementHasAButtonEach) {
  start_with(u"<P>a<B>b</B></P>");
  press_in_document(element(dom::Tag::B));
  EXPECT_THAT(captions(), ElementsAre(u"P", u"B"));
  EXPECT_EQ(control->tlbDOM().Item(1).Key(), key_of(element(dom::Tag::P)));
  EXPECT_EQ(control->tlbDOM().Item(2).Key(), key_of(element(dom::Tag::B)));
}

TEST_F(BranchToolbar, TheWayIsTheNewOneWhenAButtonHasMadeAList) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  ASSERT_TRUE(control->press(control->Toolbar1(), u"unorderedlist"));
  EXPECT_THAT(captions(), ElementsAre(u"UL", u"LI"));
}

TEST_F(BranchToolbar, TheBodyHasNone) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::Body));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::Body));
  EXPECT_THAT(captions(), IsEmpty());
}

TEST_F(BranchToolbar, OutsideTheBodyTheWayBeginsAtTheRoot) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::Html));
  EXPECT_THAT(captions(), ElementsAre(u"HTML"));
}

TEST_F(BranchToolbar, HiddenItIsNotBuiltAndNothingIsLaidOut) {
  start_with(u"<P>a<B>b</B></P>");
  control->set_showDOMToolbar(false);
  const Layout before = control->layout();
  const int count = control->tlbDOM().Count();
  press_in_document(element(dom::Tag::B));
  EXPECT_EQ(control->tlbDOM().Count(), count);
  EXPECT_EQ(control->layout(), before);
}

TEST_F(BranchToolbar, BuildingItLaysOutTheFoot) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  const Layout& layout = control->layout();
  EXPECT_EQ(layout.Picture3.Height, control->tlbDOM().Height());
  EXPECT_EQ(layout.Picture3.Top, 6000 - layout.Picture3.Height);
  EXPECT_EQ(layout.WBrowser.Width, 9000);
  EXPECT_EQ(layout.WBrowser.Height, 6000 - layout.WBrowser.Top - layout.Picture3.Height);
}

TEST_F(BranchToolbar, MovingTheCaretAgainTellsNoLayout) {
  struct Observer : HTMLedObserver {
    int told = 0;
    void layout_changed(const Layout&) override { ++told; }
  } observer;
  start_with(u"<P>a<B>b</B></P>");
  press_in_document(element(dom::Tag::P));
  control->add_observer(observer);
  press_in_document(element(dom::Tag::B));
  press_in_document(element(dom::Tag::P));
  EXPECT_EQ(observer.told, 0);
  control->remove_observer(observer);
}

TEST_F(BranchToolbar, ALongWayWrapsAndTheBrowserGivesWay) {
  std::u16string html;
  for (int i = 0; i < 30; ++i) html += u"<DIV>";
  start_with(html + u"<B>x</B>");
  press_in_document(element(dom::Tag::B));
  EXPECT_EQ(control->layout().Picture3.Height, 2 * 360);
}

TEST_F(BranchToolbar, APressMakesItsElementCurrentAndDrawsTheBorder) {
  start_with(u"<P>a<B>b</B></P>");
  press_in_document(element(dom::Tag::B));
  EXPECT_TRUE(press_button(dom::Tag::P));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::P));
  EXPECT_EQ(body().find(u"<P style="), 0u);
  EXPECT_THAT(captions(), ElementsAre(u"P", u"B")) << "the way stays until the selection moves";
  EXPECT_THAT(menus.shown(), ElementsAre(u"mnuToolProp"));
  EXPECT_FALSE(control->IsDirty()) << "pressing a button is no change";
  EXPECT_EQ(control->DocumentHTML(), u"<P>a<B>b</B></P>");
}

TEST_F(BranchToolbar, ItRaisesNoEventOfItsOwn) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  host.heard.clear();
  press_button(dom::Tag::P);
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(BranchToolbar, WithoutHighlightingNoBorderIsDrawn) {
  control = make(container);
  headless::PropertyBag bag;
  bag.put(u"HighlightDOMSelection", false);
  control->set_size(9000, 6000);
  control->UserControl_ReadProperties(bag);
  control->UserControl_Show();
  control->set_DocumentHTML(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  press_button(dom::Tag::P);
  EXPECT_EQ(body(), u"<P>a</P>");
  EXPECT_THAT(menus.shown(), ElementsAre(u"mnuToolProp"));
}

TEST_F(BranchToolbar, TheNextPressGivesTheFirstElementItsBorderBack) {
  start_with(u"<P style=\"border: 2px solid green\">a<B>b</B></P>");
  press_in_document(element(dom::Tag::B));
  press_button(dom::Tag::P);
  press_button(dom::Tag::B);
  EXPECT_EQ(body().find(u"<P style=\"border: 2px solid green\">a<B style="), 0u);
  press_in_document(element(dom::Tag::Body));
  EXPECT_EQ(body(), u"<P style=\"border: 2px solid green\">a<B>b</B></P>");
}

TEST_F(BranchToolbar, ItemsGoByTheTag) {
  start_with(u"<TABLE><TBODY><TR><TD><SPAN>x</SPAN></TD></TR></TBODY></TABLE>");
  press_in_document(element(dom::Tag::Span));
  EXPECT_THAT(captions(), ElementsAre(u"TABLE", u"TBODY", u"TR", u"TD", u"SPAN"));
  press_button(dom::Tag::Td);
  EXPECT_TRUE(enabled(u"mnuToolProperties"));
  EXPECT_FALSE(enabled(u"mnuToolEditTag"));
  press_button(dom::Tag::Span);
  EXPECT_FALSE(enabled(u"mnuToolProperties"));
  EXPECT_TRUE(enabled(u"mnuToolEditTag"));
  press_button(dom::Tag::Table);
  EXPECT_TRUE(enabled(u"mnuToolProperties"));
  EXPECT_TRUE(enabled(u"mnuToolEditTag"));
}

TEST_F(BranchToolbar, TheMenuStandsAboveTheToolbarByWhatItNeeds) {
  start_with(u"<TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>");
  press_in_document(element(dom::Tag::Td));
  const float line = control->layout().Picture3.Top;
  press_button(dom::Tag::Td);
  EXPECT_EQ(menus.last_place()->x, 3 * 500);
  EXPECT_EQ(menus.last_place()->y, line - 1300);
  EXPECT_EQ(menus.last_place()->stay_above, line);
  press_button(dom::Tag::Table);
  EXPECT_EQ(menus.last_place()->x, 0);
  EXPECT_EQ(menus.last_place()->y, line - 900);
}

TEST_F(BranchToolbar, TheCellAndRowSubmenuCarriesTheControlsWords) {
  control = make(container);
  control->set_size(9000, 6000);
  control->UserControl_ReadProperties(headless::PropertyBag());
  control->UserControl_Show();
  control->set_DocumentHTML(u"<TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>");
  press_in_document(element(dom::Tag::Td));
  press_button(dom::Tag::Td);
  EXPECT_EQ(control->menu(u"MnuCellRowActions")->Caption(), u"Cell");
  EXPECT_EQ(control->menu(u"MnuCellRowActionsDelete")->Caption(), u"Delete Cell");
  press_button(dom::Tag::Tr);
  EXPECT_EQ(control->menu(u"MnuCellRowActions")->Caption(), u"Row");
  EXPECT_EQ(control->menu(u"MnuCellRowActionsDelete")->Caption(), u"Delete Row");
  press_button(dom::Tag::Table);
  EXPECT_FALSE(control->menu(u"MnuCellRowActions")->Visible());
}

TEST_F(BranchToolbar, TheSelectionStaysWhereItIs) {
  start_with(u"<P>a<B>b</B></P>");
  load(u"<P>a<B>b[]</B></P>");
  press_in_document(element(dom::Tag::B));
  const std::u16string before = marked();
  press_button(dom::Tag::P);
  control->DocumentHTML();
  EXPECT_EQ(marked(), before);
}

TEST_F(BranchToolbar, ThePlaceholderBeforeADocumentDoesNothing) {
  create();
  EXPECT_EQ(control->tlbDOM().Item(1).Key(), u"KEY0");
  EXPECT_TRUE(control->press(control->tlbDOM(), u"KEY0"));
  EXPECT_THAT(menus.shown(), IsEmpty());
}

TEST_F(BranchToolbar, AButtonWhoseElementIsGoneDoesNothing) {
  start_with(u"<P>a<B>b</B></P>");
  press_in_document(element(dom::Tag::B));
  const std::u16string key = key_of(element(dom::Tag::B));
  control->set_DocumentHTML(u"x");
  EXPECT_TRUE(control->press(control->tlbDOM(), key));
  EXPECT_THAT(menus.shown(), IsEmpty());
  EXPECT_EQ(control->highlightElement(), nullptr);
}

// --- ways that take the border off ---

TEST_F(BranchToolbar, LosingTheFocusTakesTheBorderOff) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  press_button(dom::Tag::P);
  control->UserControl_ExitFocus();
  EXPECT_EQ(body(), u"<P>a</P>");
  EXPECT_EQ(control->highlightElement(), nullptr);
}

TEST_F(BranchToolbar, TheCodeViewDoesNotShowTheBorder) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  press_button(dom::Tag::P);
  control->show_Code();
  EXPECT_EQ(control->txtCode().Text().find(u"style"), std::u16string::npos);
}

TEST_F(BranchToolbar, ItsItemsTakeTheBorderOffAndMarkNothing) {
  start_with(u"<TABLE><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>");
  press_in_document(element(dom::Tag::Td));
  for (const char16_t* item : {u"mnuToolProperties", u"mnuToolEditTag"}) {
    menus.expect({.menu = u"mnuToolProp", .choose = item});
    press_button(dom::Tag::Table);
    EXPECT_EQ(body().find(u"style"), std::u16string::npos) << to_utf8(item);
    EXPECT_EQ(control->highlightElement(), element(dom::Tag::Table));
    EXPECT_FALSE(control->IsDirty());
  }
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: DOMProperties", "MenuClick: DOMEditTag"));
}

TEST_F(BranchToolbar, AHostThatCancelsAnItemLeavesTheBorder) {
  start_with(u"<P>a</P>");
  press_in_document(element(dom::Tag::P));
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  menus.expect({.menu = u"mnuToolProp", .choose = u"mnuToolEditTag"});
  press_button(dom::Tag::P);
  EXPECT_NE(body().find(u"style"), std::u16string::npos);
}

TEST_F(BranchToolbar, ANewControlDrawsDashesThoughItsStyleReadsNone) {
  start_with(u"<P>a</P>");
  EXPECT_EQ(int(control->SelectionBorderStyle()), 0);
  press_in_document(element(dom::Tag::P));
  press_button(dom::Tag::P);
  EXPECT_EQ(dom::style::inline_value(*element(dom::Tag::P), u"border-style"), u"dashed");
}

}  // namespace
}  // namespace tvx::core
