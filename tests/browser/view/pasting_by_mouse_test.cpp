#include <gmock/gmock.h>

#include "browser/view/document_view_fixture.h"
#include "tvx/browser/input/input_queue.h"

namespace tvx::browser {
namespace {

class MiddlePress : public DocumentViewTest {
 protected:
  ViewDrop brings(std::u16string_view html, std::u16string_view plain, const dom::Tag at = dom::Tag::P) {
    ViewDrop drop;
    drop.way = ViewDrop::Way::MiddlePress;
    drop.y = 20 * static_cast<int>(document_->tree().source_index(first(at)));
    drop.data.html = html;
    drop.data.text = plain;
    return drop;
  }
  void press_middle(const ViewDrop& drop, const dom::Node& node, std::uint32_t offset) {
    ViewMouse mouse = press_at(node, offset);
    mouse.button = MouseButton::Middle;
    view_.tell({.seen = {}, .what = ViewTicket{.button = MouseButton::Middle}});
    view_.tell({.seen = {}, .what = drop});
    tell(mouse);
    pump();
  }
};

TEST_F(MiddlePress, PastesAtItsPlaceAsOneStep) {
  open(u"<p>one</p><p>two</p>");
  selection().collapse({text(1), 1});
  press_middle(brings(u"<i>new</i>", u"plain"), *text(), 0);
  EXPECT_EQ(html(), "<P><I>new</I>one</P><P>two</P>");
  EXPECT_TRUE(selection().collapsed()) << "the caret stands after it";
  type(u"x");
  pump();
  EXPECT_EQ(html(), "<P><I>newx</I>one</P><P>two</P>");
  document_->tree().journal().undo();
  EXPECT_EQ(steps(), 1u);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>one</P><P>two</P>");
}

TEST_F(MiddlePress, ReplacesNothingThatWasSelected) {
  open(u"<p>one</p><p>two</p>");
  selection().set({text(1), 0}, {text(1), 3});
  press_middle(brings({}, u"<b>"), *text(), 0);
  EXPECT_EQ(html(), "<P>&lt;b&gt;one</P><P>two</P>");
}

TEST_F(MiddlePress, WithoutTheViewsWordItGoesWhereThePressWent) {
  open(u"<p>one</p><p>two</p>");
  selection().collapse({text(1), 1});
  view_.withhold_answers(true);
  press_middle(brings({}, u"new"), *text(), 2);
  pump(InputQueue::patience + 10);
  EXPECT_EQ(html(), "<P>onnewe</P><P>two</P>");
}

TEST_F(MiddlePress, BringsNoScripts) {
  open(u"<p>one</p>");
  press_middle(brings(u"<b onclick=\"go()\">x</b><script>go()</script>", {}), *text(), 0);
  EXPECT_EQ(html(), "<P><B>x</B>one</P>");
}

TEST_F(MiddlePress, PastesNothingWhereNothingCanBeEdited) {
  open(u"<p>one</p>");
  shown_.set_editable(false);
  press_middle(brings({}, u"new"), *text(), 0);
  EXPECT_EQ(html(), "<P>one</P>");
  shown_.set_editable(true);
  document_->set_designMode(u"Off");
  press_middle(brings({}, u"new"), *text(), 0);
  EXPECT_EQ(html(), "<P>one</P>");
}

}  // namespace
}  // namespace tvx::browser
