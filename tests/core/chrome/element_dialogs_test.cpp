#include "core/control_fixture.h"
#include "tvx/dom/journal.h"

namespace tvx::core {
namespace {

using dom::Tag;
using testing::ElementsAre;
using testing::IsEmpty;

/// "Edit Tag" in the element path's menu.
class ElementTag : public Control {
 protected:
  void edit(dom::Element* target, std::function<void(platform::FormControl&)> fill,
            std::u16string press = u"OKButton") {
    control->DOM()->mouse_press(at(target));
    host.heard.clear();
    container.clear_changed();
    forms.expect({.form = u"frmEleCode",
                  .while_open =
                      [this, fill](platform::Form& form) {
                        shown = form.Controls(u"txtEleCode").Text();
                        fill(form.Controls(u"txtEleCode"));
                      },
                  .press = std::move(press)});
    menus.expect({.menu = u"mnuToolProp", .choose = u"mnuToolEditTag"});
    const auto place = control->DOM()->tree().source_index(*target);
    ASSERT_TRUE(control->press(control->tlbDOM(), u"KEY" + from_utf8(std::to_string(place))));
  }
  void edit(Tag tag, std::u16string_view text, std::u16string press = u"OKButton") {
    edit(
        element(tag), [text](platform::FormControl& box) { box.set_Text(text); }, std::move(press));
  }
  std::u16string content() { return control->DocumentHTML(); }

  std::u16string shown;
};

TEST_F(ElementTag, ChangesTheAddressAndKeepsTheText) {
  start_with(u"<P>see <A href=\"x\">text</A></P>");
  edit(Tag::A, u"<A href=\"y\">");
  EXPECT_EQ(shown, u"<A href=\"x\">") << "without the border of the press";
  EXPECT_EQ(content(), u"<P>see <A href=\"y\">text</A></P>");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
  EXPECT_FALSE(dom::is_connected(*control->highlightElement())) << "another element stands in its place";
  EXPECT_EQ(control->DOM()->tree().journal().depth(), 1u);
  control->undo_document();
  EXPECT_EQ(content(), u"<P>see <A href=\"x\">text</A></P>");
  control->redo_document();
  EXPECT_EQ(content(), u"<P>see <A href=\"y\">text</A></P>");
}

TEST_F(ElementTag, TheContentStaysWhateverTheNewNameIs) {
  start_with(u"<P>a<B>b</B></P>");
  edit(Tag::B, u"<I>");
  EXPECT_EQ(content(), u"<P>a<I>b</I></P>");
}

TEST_F(ElementTag, ANewNameLeavesNothingOfTheOldOne) {
  start_with(u"<P>text</P><P>more</P>");
  edit(Tag::P, u"<H1>");
  EXPECT_EQ(content(), u"<H1>text</H1><P>more</P>");
  edit(Tag::H1, u"<P id=\"x\">");
  EXPECT_EQ(content(), u"<P id=\"x\">text</P><P>more</P>");
}

TEST_F(ElementTag, WhatIsNoTagGoesInUnchecked) {
  start_with(u"<P>a<B>b</B></P>");
  edit(Tag::B, u"no tag");
  EXPECT_EQ(content(), u"<P>ano tagb</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ElementTag, CancelledNothingChanges) {
  start_with(u"<P>a<B>b</B></P>");
  edit(Tag::B, u"<I>", u"CancelButton");
  EXPECT_EQ(content(), u"<P>a<B>b</B></P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(control->DOM()->tree().journal().depth(), 0u);
}

TEST_F(ElementTag, AHostThatCancelsGetsNoDialog) {
  start_with(u"<P>a</P>");
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  edit(Tag::P, u"<DIV>");
  EXPECT_THAT(forms.shown(), IsEmpty());
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: DOMEditTag"));
  EXPECT_EQ(content(), u"<P>a</P>");
}

// The menu's item is grey for them; a script may have made it black.
TEST_F(ElementTag, ARefusedTagIsNotWrittenAndTheDocumentMarked) {
  start_with(u"<TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  control->DOM()->mouse_press(at(element(Tag::Td)));
  control->press(control->tlbDOM(),
                 u"KEY" + from_utf8(std::to_string(control->DOM()->tree().source_index(*element(Tag::Td)))));
  platform::Menu& item = *control->menu(u"mnuToolEditTag");
  ASSERT_FALSE(item.Enabled());
  item.set_Enabled(true);
  forms.expect({.form = u"frmEleCode",
                .while_open = [](platform::Form& form) { form.Controls(u"txtEleCode").set_Text(u"<TH>"); },
                .press = u"OKButton"});
  EXPECT_TRUE(item.choose());
  EXPECT_EQ(content(), u"<TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ElementTag, TheBaseIsTakenOffTheAddressAndStaysOffWhenCancelled) {
  start_with(u"<P>see <A href=\"http://b.org/x.html\">text</A></P>");
  control->set_BaseURL(u"http://b.org/");
  control->set_relativeURLs(true);
  edit(Tag::A, u"<A>", u"CancelButton");
  EXPECT_EQ(shown, u"<A href=\"x.html\">");
  EXPECT_EQ(element(Tag::A)->attribute_or_empty(dom::names::href), u"x.html");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ElementTag, WithoutRelativeAddressesTheBaseStays) {
  start_with(u"<P>see <A href=\"http://b.org/x.html\">text</A></P>");
  control->set_BaseURL(u"http://b.org/");
  edit(Tag::A, u"<A>", u"CancelButton");
  EXPECT_EQ(shown, u"<A href=\"http://b.org/x.html\">");
}

TEST_F(ElementTag, WithoutACurrentElementTheFirstOneIsShown) {
  start_with(u"<P>a</P>");
  control->UserControl_ExitFocus();
  ASSERT_EQ(control->highlightElement(), nullptr);
  forms.expect({.form = u"frmEleCode",
                .while_open = [this](platform::Form& form) { shown = form.Controls(u"txtEleCode").Text(); }});
  EXPECT_TRUE(control->menu(u"mnuToolEditTag")->choose());
  EXPECT_EQ(shown, u"<HTML>");
}

TEST_F(ElementTag, ADocumentThatComesMeanwhileKeepsItsElements) {
  start_with(u"<P>a<B>b</B></P>");
  edit(element(Tag::B), [&](platform::FormControl& box) {
    box.set_Text(u"<I>");
    control->set_DocumentHTML(u"x");
  });
  EXPECT_EQ(content(), u"x");
}

TEST_F(ElementTag, TheControlMayEndMeanwhile) {
  start_with(u"<P>a<B>b</B></P>");
  edit(element(Tag::B), [&](platform::FormControl&) { control->UserControl_Terminate(); });
  EXPECT_EQ(control->DOM(), nullptr);
}

}  // namespace
}  // namespace tvx::core
