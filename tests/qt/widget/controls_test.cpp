#include <QPainter>

#include "qt/real_view.h"
#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"

namespace tvx::qt {
namespace {

/// Elements taken as wholes, with mouse and keyboard, in a real view.
class Controls : public RealView {
 protected:
  static constexpr char16_t picture[] =
      u"data:image/svg+xml,<svg xmlns='http://www.w3.org/2000/svg' width='100' height='50'>"
      u"<rect width='100' height='50' fill='teal'/></svg>";

  void open_body(std::u16string_view body) {
    std::u16string text = u"<!DOCTYPE html><body style=\"margin: 20px\">";
    for (const std::u16string_view part : {body}) text += part;
    for (std::size_t at; (at = text.find(u"PICTURE")) != text.npos;) text.replace(at, 7, picture);
    open(text);
    ASSERT_TRUE(wait_for(
        [&] { return in_page("String(Array.from(document.images).every(i => i.complete))") == "true"; }));
  }

  void click(QPoint point) {
    post_press(point);
    ASSERT_TRUE(settle());
    ASSERT_TRUE(wait_for_drawn("frame", selected() != nullptr));
  }
  dom::Element* selected() { return document_->editor().selection().control(); }
  std::string attribute(dom::Tag tag, std::u16string_view name) {
    return to_utf8(element(tag)->attribute_or_empty(dom::Name(name)));
  }
  /// Presses, drags and releases; waits until the document has heard of it.
  void drag(QPoint from, QPoint to, Qt::KeyboardModifiers held = Qt::NoModifier) {
    post_drag(from, to, held);
    ASSERT_TRUE(settle());
    ASSERT_TRUE(wait_for_drawn("outline", false));
    ASSERT_TRUE(settle());
  }
  std::size_t steps() { return document_->tree().journal().depth(); }
};

TEST_F(Controls, AClickOnAnImageSelectsIt) {
  open_body(u"<p>before <img src=\"PICTURE\"> after</p>");
  click(box_of("img").center());
  EXPECT_EQ(selected(), element(dom::Tag::Img));
  EXPECT_EQ(shown(), expected());
  take_picture(QStringLiteral("image.png"));
}

TEST_F(Controls, AClickOnATablesEdgeSelectsItAndOneInACellSetsTheCaret) {
  open_body(
      u"<table border=1 style=\"border-collapse: collapse\"><tr><td>one cell<td>two "
      u"cells</table><p>text</p>");
  const QRect box = box_of("table");
  click(QPoint(box.left() + 60, box.top()));
  EXPECT_EQ(selected(), element(dom::Tag::Table));
  take_picture(QStringLiteral("table.png"));
  click(place_of("td", 3));
  EXPECT_EQ(selected(), nullptr);
  EXPECT_EQ(document_->editor().selection().focus().offset, 3u);
  click(QPoint(box.right() + 3, box.center().y()));
  EXPECT_EQ(selected(), element(dom::Tag::Table)) << "right outside of the edge";
}

TEST_F(Controls, AClickOnAFormFieldSelectsItAndGivesItNothing) {
  open_body(
      u"<p><input id=t value=abc> <input type=checkbox> <select><option>one<option>two</select> "
      u"<textarea>x</textarea> <button>press</button>");
  const std::string before = html();
  for (const std::string field : {"#t", "input[type=checkbox]", "select", "textarea", "button"}) {
    click(box_of(field).center());
    ASSERT_NE(selected(), nullptr) << field;
    EXPECT_EQ(
        in_page("document.activeElement === document.querySelector('" + field + "') ? 'focus' : 'none'"),
        "none")
        << field;
    if (field == "select") take_picture(QStringLiteral("field.png"));
  }
  EXPECT_EQ(in_page("String(document.querySelector('input[type=checkbox]').checked)"), "false");
  EXPECT_EQ(html(), before);
}

TEST_F(Controls, AClickOnALabelledBoxOrARuleSelectsIt) {
  open_body(u"<iframe src=\"x.html\" width=200 height=80></iframe><hr><p>text");
  click(box_of("tvx-box").center());
  EXPECT_EQ(selected(), element(dom::Tag::Iframe));
  click(box_of("hr").center());
  EXPECT_EQ(selected(), element(dom::Tag::Hr));
}

TEST_F(Controls, AClickOnThePlaceOfAPositionedElement) {
  open_body(
      u"<p>text</p><div style=\"position: absolute; left: 100px; top: 100px; width: 150px\">inside</div>");
  click(place_of("div", 3));
  EXPECT_EQ(selected(), nullptr);
  const QRect box = box_of("div");
  click(QPoint(box.left() + 1, box.center().y()));
  EXPECT_EQ(selected(), element(dom::Tag::Div));
}

TEST_F(Controls, EscapeAndTheArrowsLeaveAControl) {
  open_body(u"<p>ab<img src=\"PICTURE\">cd</p>");
  const dom::Node* paragraph = element(dom::Tag::P);
  const auto place_typed = [&](const char* text) {
    post_text(text);
    EXPECT_TRUE(settle());
    return html().substr(0, 6) + "..." + html().substr(html().size() - 8);
  };
  click(box_of("img").center());
  post_key(Qt::Key_Escape);
  ASSERT_TRUE(settle());
  EXPECT_EQ(selected(), nullptr);
  EXPECT_EQ(place_typed("x"), "<P>ab<...>xcd</P>");
  click(box_of("img").center());
  post_key(Qt::Key_Left);
  EXPECT_EQ(place_typed("y"), "<P>aby...>xcd</P>");
  click(box_of("img").center());
  post_key(Qt::Key_Right);
  EXPECT_EQ(place_typed("z"), "<P>aby...zxcd</P>");
  EXPECT_EQ(paragraph, element(dom::Tag::P));
}

TEST_F(Controls, DeleteBackspaceAndTypingTakeTheControlAway) {
  open_body(u"<p>a<img src=\"PICTURE\">b<img src=\"PICTURE\">c<img src=\"PICTURE\">d</p>");
  const std::string whole = html();
  click(box_of("img").center());
  post_key(Qt::Key_Delete);
  ASSERT_TRUE(settle());
  click(box_of("img").center());
  post_key(Qt::Key_Backspace);
  ASSERT_TRUE(settle());
  click(box_of("img").center());
  post_text("x");
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>abcxd</P>");
  for (int i = 0; i < 3; ++i) document_->tree().journal().undo();
  EXPECT_EQ(html(), whole);
}

TEST_F(Controls, AHandleSizesAnImageInOneStep) {
  open_body(u"<p>before <img src=\"PICTURE\"> after</p>");
  const QRect box = box_of("img");
  click(box.center());
  const QPoint east(box.right() + 1, box.center().y());
  drag(east, east + QPoint(60, 5));
  EXPECT_EQ(attribute(dom::Tag::Img, u"width"), "160");
  EXPECT_EQ(attribute(dom::Tag::Img, u"height"), "50");
  EXPECT_EQ(steps(), 1u);
  EXPECT_EQ(selected(), element(dom::Tag::Img));
  EXPECT_EQ(box_of("img").size(), QSize(160, 50));
  EXPECT_EQ(shown(), expected());
  document_->tree().journal().undo();
  EXPECT_FALSE(element(dom::Tag::Img)->has_attribute(dom::names::width));
  EXPECT_EQ(selected(), element(dom::Tag::Img));
}

TEST_F(Controls, ACornerKeepsAnImagesProportion) {
  open_body(u"<p><img src=\"PICTURE\" style=\"width: 100px; height: 50px\"></p>");
  const QRect box = box_of("img");
  click(box.center());
  const QPoint corner(box.right() + 1, box.bottom() + 1);
  post_press(corner, Qt::LeftButton, false);
  post_move(corner + QPoint(30, 10));
  post_move(corner + QPoint(100, 10));
  ASSERT_TRUE(settle());
  take_picture(QStringLiteral("sizing.png"));
  post_release(corner + QPoint(100, 10));
  ASSERT_TRUE(wait_for([&] { return steps() == 1; }, 3000));
  EXPECT_EQ(attribute(dom::Tag::Img, u"style"), "width: 200px; height: 100px");
}

TEST_F(Controls, ShiftKeepsTheProportionOfAField) {
  open_body(
      u"<p><textarea style=\"width: 100px; height: 50px; padding: 2px; border: 1px solid\"></textarea></p>");
  const QRect box = box_of("textarea");
  click(box.center());
  const QPoint corner(box.right() + 1, box.bottom() + 1);
  drag(corner, corner + QPoint(106, 3), Qt::ShiftModifier);
  EXPECT_EQ(box_of("textarea").size(), QSize(212, 112));
  EXPECT_EQ(attribute(dom::Tag::Textarea, u"style"),
            "width: 206px; height: 106px; padding: 2px; border: 1px solid");
}

TEST_F(Controls, EscapeDuringADragLeavesTheSize) {
  open_body(u"<p><img src=\"PICTURE\"></p>");
  const QRect box = box_of("img");
  click(box.center());
  const QPoint corner(box.right() + 1, box.bottom() + 1);
  post_press(corner, Qt::LeftButton, false);
  for (int i = 1; i < 4; ++i) post_move(corner + QPoint(20 * i, 0));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for_drawn("outline"));
  post_key(Qt::Key_Escape);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for_drawn("outline", false));
  post_move(corner + QPoint(80, 0));
  post_release(corner + QPoint(80, 0));
  ASSERT_TRUE(settle());
  EXPECT_EQ(steps(), 0u);
  EXPECT_EQ(selected(), element(dom::Tag::Img));
  EXPECT_EQ(box_of("img").width(), 100);
}

TEST_F(Controls, SizesAreRightUnderAScrollAndFromRightToLeft) {
  open_body(
      u"<div style=\"height: 900px\"></div><p dir=rtl><img src=\"PICTURE\" width=100 height=50> text</p><div "
      u"style=\"height: 900px\"></div>");
  in_page("window.scrollTo(0, 700)");
  ASSERT_TRUE(wait_for([&] { return document_view_->facts().scroll_y == 700; }, 3000));
  const QRect box = box_of("img");
  ASSERT_TRUE(QRect(0, 0, 800, 600).contains(box));
  click(box.center());
  const QPoint west(box.left() - 1, box.center().y());
  drag(west, west + QPoint(-40, 0));
  EXPECT_EQ(attribute(dom::Tag::Img, u"width"), "140");
  const QRect after = box_of("img");
  EXPECT_EQ(after.right(), box.right());
  EXPECT_EQ(after.width(), 140);
}

TEST_F(Controls, HandlesFollowEdits) {
  open_body(u"<p id=a>text</p><p><img src=\"PICTURE\"></p>");
  click(box_of("img").center());
  const int caret_top = document_view_->facts().caret_top;
  dom::set_attribute(*element(dom::Tag::P), dom::names::style, u"height: 200px");
  ASSERT_TRUE(wait_for([&] { return document_view_->facts().caret_top > caret_top + 100; }, 3000));
  const QRect box = box_of("img");
  const QPoint south(box.center().x(), box.bottom() + 1);
  drag(south, south + QPoint(0, 50));
  EXPECT_EQ(attribute(dom::Tag::Img, u"height"), "100");
}

TEST_F(Controls, APositionedElementIsDraggedWhereTheModeAllowsIt) {
  open_body(
      u"<p>text</p><div style=\"position: absolute; left: 100px; top: 100px; width: 150px; height: "
      u"60px\">inside</div>");
  const QRect box = box_of("div");
  const QPoint edge(box.left(), box.center().y() + 20);
  document_->execCommand(u"2D-Position", false, u"true");
  click(edge);
  ASSERT_TRUE(wait_for_drawn("movable"));
  drag(edge, edge + QPoint(50, 30));
  EXPECT_EQ(attribute(dom::Tag::Div, u"style"),
            "position: absolute; left: 150px; top: 130px; width: 150px; height: 60px");
  EXPECT_EQ(steps(), 1u);
  EXPECT_EQ(selected(), element(dom::Tag::Div));
  take_picture(QStringLiteral("positioned.png"));
  document_->execCommand(u"2D-Position", false, u"false");
  const QRect now = box_of("div");
  const std::string before = html();
  drag(QPoint(now.left(), now.center().y() + 20), QPoint(now.left() + 9, now.center().y() + 29));
  EXPECT_EQ(html(), before);
}

TEST_F(Controls, AHandlerMayRefuse) {
  class Refuses final : public browser::DocumentHandler {
   public:
    bool oncontrolselect() override { return false; }
  } handler;
  open_body(u"<p>some text<img src=\"PICTURE\"></p>");
  document_->connect(&handler);
  document_->editor().selection().collapse({element(dom::Tag::P)->first_child(), 2});
  click(box_of("img").center());
  EXPECT_EQ(selected(), nullptr);
  EXPECT_EQ(document_->editor().selection().focus().offset, 2u);
  document_->connect(nullptr);
}

}  // namespace
}  // namespace tvx::qt
