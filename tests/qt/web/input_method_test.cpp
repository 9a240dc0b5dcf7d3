#include <QCoreApplication>
#include <QInputMethodEvent>

#include "qt/real_view.h"
#include "tvx/dom/journal.h"

namespace tvx::qt {
namespace {

/// An input method at work in a real view.
class InputMethod : public RealView {
 protected:
  void open_with_caret(std::u16string_view body, Offset offset) {
    open(u"<!DOCTYPE html><body>" + std::u16string(body));
    document_->editor().selection().collapse({document_->body()->first_child()->first_child(), offset});
    ASSERT_TRUE(settle());
  }
  void compose(const QString& text, int cursor = -1, const QString& commit = {}) {
    QList<QInputMethodEvent::Attribute> attributes;
    if (cursor >= 0) attributes.append({QInputMethodEvent::Cursor, cursor, 1, {}});
    auto* event = new QInputMethodEvent(text, attributes);
    event->setCommitString(commit);
    QCoreApplication::postEvent(view_->input_widget(), event);
    ASSERT_TRUE(settle());
  }
  QVariant ask(Qt::InputMethodQuery query) {
    QInputMethodQueryEvent event(query);
    QCoreApplication::sendEvent(view_->input_widget(), &event);
    return event.value(query);
  }
};

TEST_F(InputMethod, WhatIsComposedIsSeenAndUnderlined) {
  open_with_caret(u"<p>abc def</p>", 3);
  compose(QStringLiteral("nihao"), 2);
  EXPECT_EQ(html(), "<P>abcnihao def</P>");
  EXPECT_EQ(shown(), expected());
  ASSERT_TRUE(wait_for_drawn("underlined"));
  EXPECT_EQ(document_->editor().selection().focus().offset, 5u);
  take_picture(QStringLiteral("preedit.png"));
  compose({}, -1, QString::fromUtf8("你好"));
  EXPECT_EQ(html(), "<P>abc你好 def</P>");
  ASSERT_TRUE(wait_for_drawn("underlined", false));
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>abc def</P>");
  EXPECT_FALSE(document_->tree().journal().can_undo());
}

TEST_F(InputMethod, QueriesAreAnsweredFromTheDocumentWithoutWhatIsComposed) {
  open_with_caret(u"<p>abc def</p>", 3);
  EXPECT_TRUE(ask(Qt::ImEnabled).toBool());
  EXPECT_EQ(ask(Qt::ImSurroundingText).toString(), QStringLiteral("abc def"));
  EXPECT_EQ(ask(Qt::ImCursorPosition).toInt(), 3);
  compose(QStringLiteral("xyz"));
  EXPECT_EQ(ask(Qt::ImSurroundingText).toString(), QStringLiteral("abc def"));
  EXPECT_EQ(ask(Qt::ImCursorPosition).toInt(), 3);
  ASSERT_TRUE(wait_for([&] {
    const QRect caret = ask(Qt::ImCursorRectangle).toRect();
    return caret.height() > 8 && caret.left() == document_view_->facts().caret_left;
  }));
}

TEST_F(InputMethod, AKeyAfterTheCommitIsTypedBehindIt) {
  open_with_caret(u"<p>ab</p>", 2);
  compose(QStringLiteral("k"));
  compose(QStringLiteral("ka"));
  compose({}, -1, QString::fromUtf8("か"));
  post_text("x");
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>abかx</P>");
}

TEST_F(InputMethod, APressEndsTheComposition) {
  open_with_caret(u"<p>first</p><p>second</p>", 5);
  compose(QStringLiteral("ka"));
  post_press(place_of("p + p", 3));
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>firstka</P><P>second</P>");
  EXPECT_FALSE(document_->is_composing());
  post_text("x");
  ASSERT_TRUE(settle());
  EXPECT_EQ(html(), "<P>firstka</P><P>secxond</P>");
}

}  // namespace
}  // namespace tvx::qt
