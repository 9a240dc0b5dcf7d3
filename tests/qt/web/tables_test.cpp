#include <QWebEnginePage>
#include <QWindow>

#include "qt/real_view.h"
#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"

namespace tvx::qt {
namespace {

/// Tables under the mouse and the keyboard, in a real view.
class Tables : public RealView {
 protected:
  void open_body(std::u16string_view body, std::u16string_view style = u"margin: 20px") {
    open(u"<!DOCTYPE html><body style=\"" + std::u16string(style) + u"\">" + std::u16string(body));
  }
  void click(QPoint point) {
    post_press(point);
    ASSERT_TRUE(settle());
  }
  QRect drawn(const std::string& what) {
    const std::string at = in_page("(tvxView.drawn()." + what + " || [0, 0, 0, 0]).join(' ')");
    int x = 0, y = 0, width = 0, height = 0;
    EXPECT_EQ(std::sscanf(at.c_str(), "%d %d %d %d", &x, &y, &width, &height), 4) << at;
    return {x, y, width, height};
  }
  /// The current cell's frame comes to stand around that element.
  bool frames(const std::string& selector) {
    const auto near = [](int a, int b) { return std::abs(a - b) <= 1; };
    return wait_for(
        [&] {
          const QRect drawn_at = drawn("cell"), box = box_of(selector);
          return near(drawn_at.x(), box.x()) && near(drawn_at.y(), box.y()) &&
                 near(drawn_at.width(), box.width()) && near(drawn_at.height(), box.height());
        },
        3000);
  }
  /// Presses, drags and releases; waits until the document has heard of it.
  void drag(QPoint from, QPoint to) {
    post_drag(from, to);
    ASSERT_TRUE(settle());
    ASSERT_TRUE(wait_for_drawn("outline", false));
    ASSERT_TRUE(wait_for_drawn("guide", false));
    ASSERT_TRUE(settle());
  }
  bool frames_nothing() { return wait_for_drawn("cell", false); }
  std::size_t steps() { return document_->tree().journal().depth(); }
};

constexpr char16_t two_by_two[] =
    u"<table border=1><tr><td id=a>one<td id=b>two</tr><tr><td id=c>three<td id=d>four</table><p "
    u"id=p>text</p>";

// --- the current cell ---

TEST_F(Tables, TheCellUnderTheCaretIsFramed) {
  open_body(two_by_two);
  click(place_of("#p", 2));
  EXPECT_TRUE(frames_nothing());
  click(place_of("#b", 2));
  EXPECT_TRUE(frames("#b"));
  take_picture(QStringLiteral("current-cell.png"));
  EXPECT_EQ(shown(), expected()) << "the frame is no node of the document";
}

TEST_F(Tables, TheFrameFollowsEditsScrollingAndTheWindow) {
  open_body(
      u"<table width=\"90%\" border=1><tr><td id=a>one<td id=b>two</table><p style=\"height: 2000px\">text");
  click(place_of("#b", 2));
  ASSERT_TRUE(frames("#b"));
  const QRect first = drawn("cell");
  post_text("a good deal of text makes the cell wide");
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames("#b"));
  EXPECT_NE(drawn("cell"), first);
  in_page("window.scrollTo(0, 30)");
  EXPECT_TRUE(frames("#b"));
  EXPECT_EQ(drawn("cell").top(), first.top() - 30);
  const int width = drawn("cell").width();
  view_->widget()->resize(500, 600);
  EXPECT_TRUE(wait_for([&] { return drawn("cell").width() < width; }, 3000));
  EXPECT_TRUE(frames("#b"));
}

TEST_F(Tables, TheInnermostCellIsTheCurrentOne) {
  open_body(
      u"<table border=1><tr><td id=outer><p id=p>before</p><table border=1><tr><td "
      u"id=inner>inside</table><td>beside</table>");
  click(place_of("#inner", 2));
  EXPECT_TRUE(frames("#inner"));
  click(place_of("#p", 2));
  EXPECT_TRUE(frames("#outer"));
}

TEST_F(Tables, TextSelectedAcrossCellsHasTheCellThatHoldsItOrNone) {
  open_body(two_by_two);
  dom::Element* const cell = element(dom::Tag::Td);
  document_->editor().selection().set({cell->first_child(), 0}, {cell->first_child(), 2});
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames("#a"));
  document_->editor().selection().set({cell->first_child(), 0}, {cell->next_sibling()->first_child(), 2});
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames_nothing());
}

TEST_F(Tables, WhereNothingCanBeEditedNoCellIsCurrent) {
  open_body(two_by_two);
  click(place_of("#b", 2));
  ASSERT_TRUE(frames("#b"));
  document_view_->set_editable(false);
  EXPECT_TRUE(frames_nothing());
  document_view_->set_editable(true);
  EXPECT_TRUE(frames("#b"));
}

TEST_F(Tables, ASelectedTableHasHandlesAndNoCurrentCell) {
  open_body(two_by_two);
  click(place_of("#b", 2));
  ASSERT_TRUE(frames("#b"));
  const QRect box = box_of("table");
  click(QPoint(box.left() + 10, box.top()));
  EXPECT_TRUE(wait_for_drawn("frame"));
  EXPECT_TRUE(frames_nothing());
}

TEST_F(Tables, WhatABoxScrollsAwayIsNotFramed) {
  open_body(
      u"<div id=box style=\"overflow: auto; height: 80px; width: 200px\"><table border=1><tr><td id=a "
      u"style=\"height: 60px\">one</tr><tr><td id=b style=\"height: 300px\">two</table></div>");
  click(place_of("#a", 1));
  ASSERT_TRUE(frames("#a"));
  in_page("document.querySelector('#box').scrollTop = 40");
  EXPECT_TRUE(frames("#a"));
  in_page("document.querySelector('#box').scrollTop = 200");
  EXPECT_TRUE(frames_nothing());
}

TEST_F(Tables, TabWalksTheCellsAndTheFrameWithIt) {
  open_body(two_by_two);
  click(place_of("#a", 1));
  ASSERT_TRUE(frames("#a"));
  for (const char* next : {"#b", "#c", "#d"}) {
    post_key(Qt::Key_Tab);
    ASSERT_TRUE(settle());
    EXPECT_TRUE(frames(next)) << next;
  }
  post_key(Qt::Key_Backtab, {}, Qt::ShiftModifier);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames("#c"));
  EXPECT_EQ(steps(), 0u);
  post_key(Qt::Key_Tab);
  post_key(Qt::Key_Tab);
  post_text("new");
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames("tr:nth-child(3) > td")) << html();
  EXPECT_EQ(in_page("document.querySelector('tr:nth-child(3) > td').textContent"), "new");
}

TEST_F(Tables, UpAndDownStayInTheColumn) {
  open_body(
      u"<p id=p style=\"margin-left: 60px\">some text<table border=1 width=300><tr><td id=a>one<td "
      u"id=b>two<br>2</tr><tr><td id=c>three<td id=d>four</tr><tr><td id=e colspan=2>five and six and "
      u"seven and eight</tr><tr><td id=f>nine<td id=g></table><p id=q>text and much more text in one line");
  const auto goes = [&](Qt::Key key, const char* to) {
    post_key(key);
    EXPECT_TRUE(settle());
    EXPECT_TRUE(frames(to)) << to << ", but " << in_page("getSelection().focusNode.textContent");
  };
  click(place_of("#b", 2));
  ASSERT_TRUE(frames("#b"));
  goes(Qt::Key_Down, "#b");
  for (const char* to : {"#d", "#e", "#g"}) goes(Qt::Key_Down, to);
  post_key(Qt::Key_Down);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames_nothing());
  EXPECT_EQ(in_page("getSelection().focusNode.parentNode.id"), "q");
  for (const char* to : {"#g", "#e", "#d", "#b", "#b"}) goes(Qt::Key_Up, to);
  post_key(Qt::Key_Up);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames_nothing());
  EXPECT_EQ(in_page("getSelection().focusNode.parentNode.id"), "p");
  click(place_of("#p", 1));
  for (const char* to : {"#a", "#c", "#e", "#f"}) goes(Qt::Key_Down, to);
}

TEST_F(Tables, UpAndDownPassCellsOfSeveralRowsAndLeaveTablesWithin) {
  open_body(
      u"<table border=1 width=300><tr><td id=a rowspan=2>one<td id=b>two</tr><tr><td id=d>four</tr><tr><td "
      u"id=e><table border=1><tr><td id=x>in<td id=y>inner</table><td id=f>last</table>");
  const auto goes = [&](Qt::Key key, const char* to) {
    post_key(key);
    EXPECT_TRUE(settle());
    EXPECT_TRUE(frames(to)) << to << ", but " << in_page("getSelection().focusNode.textContent");
  };
  click(place_of("#a", 1));
  ASSERT_TRUE(frames("#a"));
  goes(Qt::Key_Down, "#x");
  // Before a table that starts a cell one can write, too.
  for (const char* to : {"#e", "#a"}) goes(Qt::Key_Up, to);
  click(place_of("#b", 1));
  for (const char* to : {"#d", "#f"}) goes(Qt::Key_Down, to);
  post_key(Qt::Key_Down);
  ASSERT_TRUE(settle());
  EXPECT_TRUE(frames_nothing()) << "after the table that ends the page one can write";
  for (const char* to : {"#f", "#d", "#b"}) goes(Qt::Key_Up, to);
}

TEST_F(Tables, TheFrameIsSeenOnADarkPage) {
  open_body(two_by_two, u"margin: 20px; background: #202124; color: #e8eaed");
  click(place_of("#b", 2));
  ASSERT_TRUE(frames("#b"));
  take_picture(QStringLiteral("current-cell-dark.png"));
  wait_for([] { return false; }, 300);  // for the engine to paint
  const QImage picture = window_->grab().toImage();
  const QRect cell = drawn("cell");
  const auto distance = [](QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
  };
  EXPECT_GT(distance(picture.pixel(cell.left(), cell.center().y()), qRgb(0x20, 0x21, 0x24)), 90);
}

// --- edges of columns ---

constexpr char16_t grid[] =
    u"<table id=t border=1 width=500 cellpadding=6 style=\"border-collapse: collapse\"><tbody><tr><td "
    u"id=a>one</td><td id=b>two</td><td id=c>three</td></tr><tr><td>four</td><td>five</td><td>six</td></tr>"
    u"</tbody></table><p id=p>text</p>";

TEST_F(Tables, TheMouseShowsWhatCanBeDragged) {
  open_body(grid);
  const QRect a = box_of("#a"), table = box_of("#t");
  // A hand is never quite still.
  const auto looks = [&](QPoint at, Qt::CursorShape shape) {
    int tremble = 0;
    return wait_for(
        [&] {
          QCursor::setPos(view_->input_widget()->mapToGlobal(at + QPoint(0, ++tremble & 1)));
          return window_->windowHandle()->cursor().shape() == shape;
        },
        3000);
  };
  EXPECT_TRUE(looks(a.center(), Qt::IBeamCursor));
  EXPECT_TRUE(looks(QPoint(a.x() + a.width(), a.center().y()), Qt::SplitHCursor));
  EXPECT_TRUE(looks(a.center(), Qt::IBeamCursor));
  EXPECT_TRUE(looks(QPoint(table.x() + table.width(), table.center().y()), Qt::SizeHorCursor));
  EXPECT_TRUE(looks(QPoint(table.x() + table.width(), table.y() + table.height()), Qt::SizeFDiagCursor));
  document_view_->set_editable(false);
  EXPECT_TRUE(looks(QPoint(a.x() + a.width() + 1, a.center().y()), Qt::IBeamCursor));
}

TEST_F(Tables, AnEdgeBetweenColumnsIsDraggedInOneStep) {
  open_body(grid);
  click(place_of("#b", 1));
  ASSERT_TRUE(frames("#b"));
  const std::string before = html();
  const QRect a = box_of("#a"), b = box_of("#b"), c = box_of("#c");
  const QPoint edge(a.x() + a.width(), a.center().y());
  post_press(edge, Qt::LeftButton, false);
  post_move(edge + QPoint(20, 0));
  post_move(edge + QPoint(40, 3));
  ASSERT_TRUE(wait_for_drawn("guide"));
  EXPECT_NEAR(drawn("guide").x(), edge.x() + 40, 1);
  EXPECT_EQ(drawn("guide").height(), box_of("#t").height());
  take_picture(QStringLiteral("column.png"));
  post_release(edge + QPoint(40, 3));
  ASSERT_TRUE(wait_for([&] { return steps() == 1; }, 3000));
  ASSERT_TRUE(wait_for_drawn("guide", false));
  ASSERT_TRUE(settle());
  EXPECT_EQ(box_of("#a").width(), a.width() + 40);
  EXPECT_EQ(box_of("#b").width(), b.width() - 40);
  EXPECT_NEAR(box_of("#c").x(), c.x(), 1);
  EXPECT_NEAR(box_of("#c").width(), c.width(), 1);
  EXPECT_EQ(shown(), expected());
  EXPECT_EQ(document_->editor().selection().focus().node,
            element(dom::Tag::Td)->next_sibling()->first_child())
      << "the caret stays where it was";
  EXPECT_TRUE(frames("#b")) << "and its frame goes with the cell";
  post_key(Qt::Key_Z, {}, Qt::ControlModifier);
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), before);
  EXPECT_EQ(box_of("#a"), a);
}

TEST_F(Tables, FromRightToLeftTheEdgesAreMirrored) {
  open_body(
      u"<div dir=rtl><table id=t border=1 width=500 cellpadding=6><tr><td id=a>one<td id=b>two<td "
      u"id=c>three</table></div>");
  const QRect a = box_of("#a"), b = box_of("#b"), t = box_of("#t");
  ASSERT_GT(a.x(), b.x());
  const QPoint edge(a.x() - 1, a.center().y());
  drag(edge, edge + QPoint(-30, 0));
  EXPECT_EQ(box_of("#a").width(), a.width() + 30);
  EXPECT_EQ(box_of("#b").width(), b.width() - 30);
  const QPoint end(t.x() + 1, t.center().y());
  drag(end, end + QPoint(-50, 0));
  EXPECT_EQ(box_of("#t").width(), t.width() + 50);
  EXPECT_EQ(element(dom::Tag::Table)->attribute_or_empty(dom::names::width), u"550");
  EXPECT_EQ(steps(), 2u);
}

TEST_F(Tables, EscapeAndAPressWithoutADragLeaveTheColumns) {
  open_body(grid);
  const QRect a = box_of("#a");
  const QPoint edge(a.x() + a.width(), a.center().y());
  const std::string before = html();
  post_press(edge, Qt::LeftButton, false);
  for (int i = 1; i < 4; ++i) post_move(edge + QPoint(20 * i, 0));
  ASSERT_TRUE(wait_for_drawn("guide"));
  post_key(Qt::Key_Escape);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for_drawn("guide", false));
  post_move(edge + QPoint(80, 0));
  post_release(edge + QPoint(80, 0));
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), before);
  EXPECT_EQ(steps(), 0u);
  click(place_of("#p", 1));
  ASSERT_TRUE(frames_nothing());
  click(edge);
  EXPECT_TRUE(wait_for([&] { return drawn("cell").isValid() && drawn("cell").width() > 0; }, 3000))
      << "a click sets the caret in a cell beside the edge";
  EXPECT_EQ(html(), before);
}

TEST_F(Tables, TextRightAtAnEdgeIsStillSelectedWithTheMouse) {
  open_body(u"<table border=1 cellspacing=2 cellpadding=4><tr><td id=a>one two<td id=b>three four</table>");
  const std::string before = html();
  drag(place_of("#b", 0), place_of("#b", 5));
  EXPECT_TRUE(wait_for([&] { return in_page("String(getSelection())") == "three"; }, 3000));
  EXPECT_EQ(html(), before);
}

TEST_F(Tables, ColumnsUnderCellsThatSpanThem) {
  open_body(
      u"<table id=t border=1 width=600 cellspacing=0><tr><td id=head colspan=2 width=400>head<td id=c "
      u"width=200>three</tr>"
      u"<tr><td id=a>one<td id=b>two<td>four</table>");
  const QRect head = box_of("#head"), a = box_of("#a"), b = box_of("#b");
  const QPoint edge(head.x() + head.width(), head.center().y());
  drag(edge, edge + QPoint(40, 0));
  EXPECT_EQ(steps(), 1u);
  EXPECT_NEAR(box_of("#head").width(), head.width() + 40, 1) << html();
  EXPECT_NEAR(box_of("#a").width(), a.width(), 1);
  EXPECT_NEAR(box_of("#b").width(), b.width() + 40, 1);
  EXPECT_EQ(element(dom::Tag::Td)->attribute_or_empty(dom::names::width), u"440");
}

TEST_F(Tables, PercentStaysPercentAndTheInnerTableIsMeant) {
  open_body(
      u"<table id=outer border=1 width=\"100%\" cellpadding=10><tr><td id=x width=\"50%\"><table id=inner "
      u"border=1 width=\"100%\" cellspacing=0><tr><td id=a width=\"50%\">one<td id=b "
      u"width=\"50%\">two</table><td>beside</table>");
  const QRect a = box_of("#a"), inner = box_of("#inner"), outer = box_of("#outer");
  const QPoint edge(a.x() + a.width(), a.center().y());
  const int by = inner.width() / 10;
  drag(edge, edge + QPoint(by, 0));
  const std::string percent = in_page("document.querySelector('#a').getAttribute('width')");
  EXPECT_NEAR(std::stod(percent), 60, 0.5);
  EXPECT_TRUE(percent.ends_with('%')) << percent;
  EXPECT_NEAR(box_of("#a").width(), a.width() + by, 2);
  EXPECT_EQ(box_of("#outer"), outer);
  const QPoint end(outer.x() + outer.width(), outer.center().y());
  drag(end, end + QPoint(-outer.width() / 4, 0));
  EXPECT_NEAR(box_of("#outer").width(), outer.width() * 3 / 4, 2);
  EXPECT_EQ(element(dom::Tag::Table)->attribute_or_empty(dom::names::width), u"75%");
}

TEST_F(Tables, TheCornerSizesTheTableThoughItIsNotSelected) {
  open_body(grid);
  click(place_of("#p", 1));
  const QRect table = box_of("#t");
  const QPoint corner(table.x() + table.width(), table.y() + table.height());
  const std::string before = html();
  drag(corner, corner + QPoint(60, 80));
  EXPECT_EQ(steps(), 1u);
  EXPECT_EQ(box_of("#t").size(), table.size() + QSize(60, 80));
  EXPECT_EQ(element(dom::Tag::Table)->attribute_or_empty(dom::names::width), u"560");
  EXPECT_EQ(element(dom::Tag::Table)->attribute_or_empty(dom::names::height),
            from_utf8(std::to_string(table.height() + 80)));
  document_->tree().journal().undo();
  EXPECT_EQ(html(), before);
}

TEST_F(Tables, NoColumnIsDraggedOverAnother) {
  open_body(u"<table id=t border=1 width=300 style=\"table-layout: fixed\"><tr><td id=a>o<td id=b>t</table>");
  const QRect a = box_of("#a");
  const QPoint edge(a.x() + a.width(), a.center().y());
  drag(edge, edge + QPoint(290, 0));
  EXPECT_LT(box_of("#a").width(), 300);
  EXPECT_GE(box_of("#b").width(), 4);
  EXPECT_EQ(box_of("#t").width(), 300);
  EXPECT_EQ(steps(), 1u);
}

// What is written is what is seen: a column whose text takes its room keeps it, and the table grows instead.
TEST_F(Tables, NoColumnIsDraggedNarrowerThanItsText) {
  open_body(u"<table id=t border=1><tr><td id=a>one<td id=b>twotwotwo</table>");
  const QRect a = box_of("#a"), b = box_of("#b"), t = box_of("#t");
  QPoint edge(a.x() + a.width(), a.center().y());
  drag(edge, edge + QPoint(60, 0));
  EXPECT_EQ(box_of("#a").width(), a.width() + 60);
  EXPECT_EQ(box_of("#b").width(), b.width());
  EXPECT_NEAR(box_of("#t").width(), t.width() + 60, 1);
  const auto written = [&](const std::string& id) {
    return std::stoi(in_page("document.querySelector('" + id + "').getAttribute('width')"));
  };
  const auto extra = a.width() + 60 - written("#a");
  EXPECT_NEAR(written("#b") + extra, b.width(), 1);
  edge.rx() += 60;
  drag(edge, edge + QPoint(-200, 0));
  EXPECT_NEAR(box_of("#a").width(), a.width(), 1);
  EXPECT_NEAR(written("#a") + extra, a.width(), 1);
}

TEST_F(Tables, APressOnAnEdgeLeavesThePageAsItIs) {
  open_body(
      u"<table id=t border=1 style='width: 200px'><col width=50><tr><td id=a>one<td style='color: "
      u"red'>two</table>");
  const QRect a = box_of("#a");
  const std::string before = in_page("document.body.innerHTML");
  post_press({a.x() + a.width(), a.center().y()}, Qt::LeftButton, false);
  ASSERT_TRUE(settle());
  EXPECT_EQ(in_page("document.body.innerHTML"), before);
  EXPECT_EQ(box_of("#a"), a);
}

TEST_F(Tables, AColumnOfATableWithAWidthTakesItFromItsNeighbour) {
  open_body(u"<table id=t border=1 width=300><tr><td id=a>one<td id=b>twotwotwo</table>");
  const QRect a = box_of("#a");
  const QPoint edge(a.x() + a.width(), a.center().y());
  drag(edge, edge + QPoint(290, 0));
  EXPECT_EQ(box_of("#t").width(), 300);
  const int width = std::stoi(in_page("document.querySelector('#b').getAttribute('width')"));
  EXPECT_NEAR(box_of("#b").width() - width, 4, 2) << "as wide as it says";
}

}  // namespace
}  // namespace tvx::qt
