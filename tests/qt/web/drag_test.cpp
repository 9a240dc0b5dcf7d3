#include <QCoreApplication>
#include <QDropEvent>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

#include "qt/real_view.h"
#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"
#include "tvx/editing/ranges/text_range.h"
#include "tvx/qt/support/clipboard.h"

namespace tvx::qt {
namespace {

/// Dragging what is selected, and dropping what comes from elsewhere, in a real view.
class Drags : public RealView {
 protected:
  dom::Node* text_of(int paragraph) {
    dom::Node* node = document_->body()->first_child();
    while (paragraph-- > 0) node = node->next_sibling();
    return node->first_child();
  }
  void select(Offset from, Offset to, int paragraph = 0) {
    document_->editor().selection().set({text_of(paragraph), from}, {text_of(paragraph), to});
    ASSERT_TRUE(settle());
    ASSERT_TRUE(wait_for([&] { return in_page("String(getSelection())").size() == to - from; }));
  }
  void finish() {
    ASSERT_TRUE(settle());
    ASSERT_TRUE(wait_for_drawn("drop", false));
    ASSERT_TRUE(settle());
  }
  std::string selected() {
    return to_utf8(editing::TextRange(document_->editor(), document_->editor().selection().range()).text());
  }
  /// What a toolkit does when something is dragged over the view and let go.
  void drop(QMimeData* data, QPoint at) {
    auto* target = view_->widget()->findChild<QWidget*>(QStringLiteral("page"));
    ASSERT_NE(target, nullptr);
    QDragEnterEvent enter(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent move(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &move);
    ASSERT_TRUE(wait_for_drawn("drop"));
    QDropEvent let_go(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &let_go);
    EXPECT_TRUE(let_go.isAccepted());
    finish();
  }
};

TEST_F(Drags, AMiddlePressPastesTheMousesSelectionAtItsPlace) {
  QMimeData selected;
  const MimeSource selected_elsewhere(&selected);
  view_->set_mouse_selection(selected_elsewhere);
  open(u"<!DOCTYPE html><body><p>one two</p><p>other</p>");
  document_->editor().selection().collapse({text_of(1), 5});
  ASSERT_TRUE(settle());
  const std::size_t steps = document_->tree().journal().depth();
  post_press(place_of("p", 4), Qt::MiddleButton);
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>one two</P><P>other</P>") << "nothing is selected anywhere";

  selected.setHtml(QStringLiteral("<b>new</b>"));
  selected.setText(QStringLiteral("new"));
  post_press(place_of("p", 4), Qt::MiddleButton);
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>one <B>new</B>two</P><P>other</P>");
  EXPECT_TRUE(document_->editor().selection().collapsed());
  EXPECT_EQ(document_->tree().journal().depth(), steps + 1);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>one two</P><P>other</P>");
}

TEST_F(Drags, MovesSelectedText) {
  open(u"<!DOCTYPE html><body><p>one two three</p><p>other</p>");
  select(4, 8);
  post_drag(place_of("p", 6), place_of("p + p", 5));
  finish();
  EXPECT_EQ(html(), "<P>one three</P><P>othertwo&nbsp;</P>");
  EXPECT_EQ(document_->tree().journal().depth(), 1u);
  EXPECT_EQ(shown(), expected());
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>one two three</P><P>other</P>");
}

TEST_F(Drags, ControlCopies) {
  open(u"<!DOCTYPE html><body><p>one two three</p><p>other</p>");
  select(4, 7);
  post_drag(place_of("p", 6), place_of("p + p", 0), Qt::ControlModifier);
  finish();
  EXPECT_EQ(html(), "<P>one two three</P><P>two other</P>");
  EXPECT_EQ(selected(), "two");
}

TEST_F(Drags, WithinItselfNothingHappens) {
  open(u"<!DOCTYPE html><body><p>one two three</p>");
  select(0, 11);
  post_drag(place_of("p", 2), place_of("p", 9));
  finish();
  EXPECT_EQ(html(), "<P>one two three</P>");
  EXPECT_EQ(document_->tree().journal().depth(), 0u);
  EXPECT_FALSE(document_->editor().selection().collapsed());
}

TEST_F(Drags, APressWithoutADragSetsTheCaretAtTheRelease) {
  open(u"<!DOCTYPE html><body><p>one two three</p>");
  select(0, 11);
  post_press(place_of("p", 5));
  ASSERT_TRUE(wait_for([&] { return document_->editor().selection().collapsed(); }, 3000));
  EXPECT_EQ(document_->editor().selection().focus().offset, 5u);
}

TEST_F(Drags, EscapeEndsADrag) {
  open(u"<!DOCTYPE html><body><p>one two three</p><p>other</p>");
  select(4, 7);
  const QPoint from = place_of("p", 6), to = place_of("p + p", 3);
  post_press(from, Qt::LeftButton, false);
  for (int i = 1; i <= 4; ++i) post_move(from + (to - from) * i / 4);
  ASSERT_TRUE(wait_for_drawn("drop"));
  take_picture(QStringLiteral("drop.png"));
  post_key(Qt::Key_Escape);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for_drawn("drop", false));
  post_move(to + QPoint(4, 0));
  post_release(to + QPoint(4, 0));
  finish();
  EXPECT_EQ(html(), "<P>one two three</P><P>other</P>");
}

TEST_F(Drags, AnImageIsDraggedInOneGo) {
  open(
      u"<!DOCTYPE html><body><p>ab<img alt=x style=\"width: 60px; height: 40px; display: "
      u"inline-block\">cd</p>"
      u"<p>other</p>");
  post_drag(box_of("img").center(), place_of("p + p", 2));
  finish();
  EXPECT_EQ(
      html(),
      "<P>abcd</P><P>ot<IMG alt=\"x\" style=\"width: 60px; height: 40px; display: inline-block\">her</P>");
  EXPECT_EQ(document_->editor().selection().control(), element(dom::Tag::Img));
}

TEST_F(Drags, NearTheEdgeThePageScrolls) {
  open(u"<!DOCTYPE html><body><p>one two three</p><div style=\"height: 3000px\"></div><p>end</p>");
  select(4, 7);
  const QPoint from = place_of("p", 6);
  post_press(from, Qt::LeftButton, false);
  post_move(from + QPoint(0, 200));
  post_move(QPoint(100, 596));
  EXPECT_TRUE(wait_for([&] { return document_view_->facts().scroll_y > 100; }, 5000));
  post_key(Qt::Key_Escape);
  ASSERT_TRUE(settle());
  post_release(QPoint(100, 596));
  finish();
  EXPECT_EQ(document_->tree().journal().depth(), 0u);
}

TEST_F(Drags, TextFromAnotherProgram) {
  open(u"<!DOCTYPE html><body><p>one two</p>");
  QMimeData data;
  data.setText(QStringLiteral("new "));
  drop(&data, place_of("p", 4));
  EXPECT_EQ(html(), "<P>one new two</P>");
  EXPECT_EQ(document_->tree().journal().depth(), 1u);
}

TEST_F(Drags, MarkupFromAnotherProgram) {
  open(u"<!DOCTYPE html><body><p>one two</p>");
  QMimeData data;
  data.setText(QStringLiteral("new "));
  data.setHtml(QStringLiteral("<b>new</b>"));
  drop(&data, place_of("p", 4));
  EXPECT_EQ(html(), "<P>one <B>new</B>two</P>");
}

TEST_F(Drags, FilesFromAnotherProgram) {
  QTemporaryDir folder;
  const auto write = [&](const QString& name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return QUrl::fromLocalFile(file.fileName());
  };
  QImage picture(3, 2, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(folder.filePath(QStringLiteral("red.png"))));
  open(u"<!DOCTYPE html><body><p>one two</p><p>other</p>");
  QMimeData text;
  text.setUrls({write(QStringLiteral("notes.txt"), "first < line\nsecond line\n")});
  drop(&text, place_of("p", 3));
  EXPECT_NE(html().find("first &lt; line"), std::string::npos) << html();
  EXPECT_NE(html().find("second line"), std::string::npos) << html();
  QMimeData image;
  image.setUrls({QUrl::fromLocalFile(folder.filePath(QStringLiteral("red.png")))});
  drop(&image, box_of("body").center());
  ASSERT_NE(element(dom::Tag::Img), nullptr) << html();
  const std::u16string source(element(dom::Tag::Img)->attribute_or_empty(dom::names::src));
  EXPECT_TRUE(source.starts_with(u"file:///") && source.ends_with(u"red.png")) << to_utf8(source);
  EXPECT_EQ(shown(), expected());
}

TEST_F(Drags, ALinkIsAskedForAtAClickAndNotAfterADrag) {
  open(u"<!DOCTYPE html><body><p><a href=\"page.html\">some link text</a> behind</p>");
  std::vector<std::u16string> asked;
  document_->set_link_follower(
      [&](const std::u16string& url, const std::u16string&) { asked.push_back(url); });
  post_drag(place_of("a", 2), place_of("a", 8));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(in_page("String(getSelection())"), "me lin");
  post_press(QPoint(box_of("a").right() + 30, box_of("a").center().y()));  // after the link
  ASSERT_TRUE(settle());
  EXPECT_TRUE(asked.empty());
  post_press(place_of("a", 5));
  ASSERT_TRUE(wait_for([&] { return asked.size() == 1; }, 3000));
  EXPECT_EQ(asked.front(), u"file:///tmp/page.html");
  EXPECT_EQ(in_page("String(document.querySelector('a') !== null)"), "true");
  EXPECT_EQ(shown(), expected());
}

}  // namespace
}  // namespace tvx::qt
