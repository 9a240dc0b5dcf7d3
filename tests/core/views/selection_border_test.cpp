#include "core/control_fixture.h"

/// The border of the current element is the view's: no text that is read or written has it.
namespace tvx::core {
namespace {

class SelectionBorder : public Control {
 protected:
  /// The first element of that name is the current one and has its border.
  void start_bordered(std::u16string_view html, dom::Tag tag = dom::Tag::P) {
    start_with(html);
    control->set_HighlightDOMSelectionOnClick(true);
    control->DOM()->mouse_press(at(element(tag)));
    ASSERT_TRUE(contains(body(), u"border")) << to_utf8(body());
  }
  /// Selects all of an element's content. The press is one inside it, which leaves the selection as it is.
  void select_with_border(dom::Tag selected, dom::Tag pressed) {
    dom::Element* whole = element(selected);
    control->DOM()->select([&](editing::Selection& selection) {
      selection.set({{whole, 0}, {whole, dom::length_of(*whole)}});
    });
    press_inside(pressed);
  }
  void press_inside(dom::Tag pressed) {
    browser::MouseInput mouse = at(element(pressed), browser::MouseButton::Right);
    mouse.place = dom::Boundary{element(pressed)->first_child(), 1};
    control->DOM()->mouse_press(mouse);
    ASSERT_TRUE(contains(body(), u"border")) << to_utf8(body());
  }
};

TEST_F(SelectionBorder, IsNotInTheSelectionThatAHostReads) {
  start_bordered(u"<P>one</P>");
  select_with_border(dom::Tag::P, dom::Tag::P);
  EXPECT_EQ(control->GetCurrentSelection(true), u"<P>one</P>");
  EXPECT_TRUE(contains(body(), u"border")) << "it is there for the eye all the same";
}

TEST_F(SelectionBorder, IsNotInWhatSelectTextGives) {
  start_bordered(u"<P>one</P>");
  EXPECT_EQ(control->selectText(0, 3), u"<P>one</P>");
}

TEST_F(SelectionBorder, DoesNotBecomePermanentByFormatSelection) {
  start_bordered(u"<P>one</P>");
  select_with_border(dom::Tag::P, dom::Tag::P);
  control->FormatSelection(u"<DIV>", u"</DIV>");
  EXPECT_FALSE(contains(control->DocumentHTML(), u"border")) << to_utf8(control->DocumentHTML());
  EXPECT_TRUE(contains(control->DocumentHTML(), u"<DIV>"));
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), u"<P>one</P>") << "one step of undo";
}

TEST_F(SelectionBorder, DoesNotBecomePermanentByTheClassOfASelection) {
  start_bordered(u"<P>one <B>two</B> three</P>", dom::Tag::B);
  control->set_CSShttp(false);
  control->set_CSSText(u".a { color: green }");
  // From within the paragraph's first word to within its last one, so that a SPAN is put around it.
  const dom::Element& paragraph = *element(dom::Tag::P);
  dom::Node *first = paragraph.first_child(), *last = paragraph.last_child();
  control->DOM()->select([&](editing::Selection& selection) { selection.set({{first, 1}, {last, 3}}); });
  press_inside(dom::Tag::B);
  control->mnuMiscClass_Click(1);
  EXPECT_FALSE(contains(control->DocumentHTML(), u"border")) << to_utf8(control->DocumentHTML());
  EXPECT_TRUE(contains(control->DocumentHTML(), u"class")) << to_utf8(control->DocumentHTML());
}

}  // namespace
}  // namespace tvx::core
