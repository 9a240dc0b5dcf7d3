#include <QAccessible>

#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// What a reading program is given, seen from within: what is made of it, and when it goes.
namespace tvx::x11 {
namespace {

class ReadingWithin : public EditorOnScreen {
 protected:
  void TearDown() override {
    QAccessible::setActive(false);
    EditorOnScreen::TearDown();
  }
  void read(const QByteArray& page) {
    start(page);
    wait_for_caret();
    QAccessible::setActive(true);
    ASSERT_TRUE(wait_for([&] { return document_interface() != nullptr; }));
  }
  QAccessibleInterface* document_interface() {
    return below(QAccessible::queryAccessibleInterface(window_.get()));
  }
  QAccessibleTextInterface* line(int child) { return document_interface()->child(child)->textInterface(); }
  QAccessibleEditableTextInterface* edited(int child) {
    return document_interface()->child(child)->editableTextInterface();
  }
  /// As many as were made since: ids are given one after the other.
  static QAccessible::Id made_until_now() {
    auto* const probe = new Probe;
    const QAccessible::Id id = QAccessible::registerAccessibleInterface(probe);
    QAccessible::deleteAccessibleInterface(id);
    return id;
  }

 private:
  class Probe final : public QAccessibleInterface {
   public:
    bool isValid() const override { return true; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return nullptr; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text) const override { return {}; }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return {}; }
    QAccessible::Role role() const override { return QAccessible::NoRole; }
    QAccessible::State state() const override { return {}; }
  };
  static QAccessibleInterface* below(QAccessibleInterface* top) {
    std::vector<QAccessibleInterface*> waiting{top};
    while (!waiting.empty()) {
      QAccessibleInterface* const one = waiting.back();
      waiting.pop_back();
      if (!one) continue;
      if (one->role() == QAccessible::Document && one->childCount() > 0) return one;
      for (int i = 0; i < one->childCount(); ++i) waiting.push_back(one->child(i));
    }
    return nullptr;
  }
};

TEST_F(ReadingWithin, OfALargePageOnlyWhatIsAskedForIsMade) {
  QByteArray page;
  for (int i = 0; i < 5000; ++i)
    page += "<p>Paragraph " + QByteArray::number(i) + " with <a href=x>a link</a>.</p>\n";
  ASSERT_NO_FATAL_FAILURE(read(page));
  const QAccessible::Id before = made_until_now();
  QAccessibleInterface* const whole = document_interface();
  EXPECT_EQ(whole->childCount(), 5000);
  EXPECT_EQ(whole->child(4321)->textInterface()->text(0, 14), QStringLiteral("Paragraph 4321"));
  EXPECT_EQ(whole->indexOfChild(whole->child(4321)), 4321);
  EXPECT_EQ(whole->child(4321), whole->child(4321));
  EXPECT_LT(made_until_now() - before, 100u);
}

TEST_F(ReadingWithin, WhatIsMadeGoesWithItsElement) {
  ASSERT_NO_FATAL_FAILURE(read("<p>One</p><p>Two</p>"));
  const QAccessible::Id id = QAccessible::uniqueId(document_interface()->child(1));
  ASSERT_NE(QAccessible::accessibleInterface(id), nullptr);
  hands::press(QStringLiteral("ctrl+End"));
  hands::press({QStringLiteral("shift+Home"), QStringLiteral("BackSpace"), QStringLiteral("BackSpace")});
  ASSERT_TRUE(wait_for([&] {
    return html().find("Two") == std::string::npos && document_interface()->childCount() == 1;
  })) << html();
  EXPECT_TRUE(wait_for([&] { return !QAccessible::accessibleInterface(id); }));
}

TEST_F(ReadingWithin, WhatIsWrittenIsOneStepAndMarksTheDocument) {
  ASSERT_NO_FATAL_FAILURE(read("<p>One three</p>"));
  edited(0)->insertText(4, QStringLiteral("two "));
  EXPECT_TRUE(wait_for([&] { return text() == "One two three" && window_->isWindowModified(); })) << text();
  edited(0)->replaceText(0, 3, QStringLiteral("1"));
  EXPECT_TRUE(wait_for([&] { return text() == "1 two three"; })) << text();
  EXPECT_EQ(line(0)->cursorPosition(), 1);
}

/// As a host does that wants to hear of each key first.
struct TakesKeysAway final : browser::DocumentHandler {
  explicit TakesKeysAway(browser::HTMLDocument& of) : document(of) {}
  ~TakesKeysAway() override { document.connect(nullptr); }
  void onkeydown() override {
    keys.push_back(document.event()->key_code);
    if (takes) document.set_event_key_code(0);
  }
  browser::HTMLDocument& document;
  std::vector<int> keys;
  bool takes = true;
};

TEST_F(ReadingWithin, WhereThePersonMayNotWriteTheProgramMayNot) {
  ASSERT_NO_FATAL_FAILURE(read("<p>One</p><p contenteditable=false>Two</p>"));
  EXPECT_EQ(edited(1), nullptr);
  EXPECT_TRUE(document_interface()->child(1)->state().readOnly);
  TakesKeysAway handler(document());
  document().connect(&handler);
  edited(0)->insertText(0, QStringLiteral("x"));
  edited(0)->deleteText(0, 2);
  // All that was posted by then is done.
  bool done = false;
  loop_.post([&] { done = true; });
  ASSERT_TRUE(wait_for([&] { return done; }));
  EXPECT_EQ(line(0)->text(0, -1), QStringLiteral("One"));
  EXPECT_EQ(handler.keys, (std::vector<int>{229, 46}));
  handler.takes = false;
  edited(0)->insertText(0, QStringLiteral("y"));
  EXPECT_TRUE(wait_for([&] { return line(0)->text(0, -1) == QStringLiteral("yOne"); })) << text();
}

TEST_F(ReadingWithin, AnotherDocumentIsReadInPlaceOfTheFirst) {
  ASSERT_NO_FATAL_FAILURE(read("<p>One</p>"));
  QAccessibleInterface* const before = document_interface();
  control().set_DocumentHTML(u"<html><body><h1>Other</h1><p>words</p></body></html>");
  ASSERT_TRUE(wait_for([&] { return document_interface() && document_interface()->childCount() == 2; }));
  EXPECT_EQ(document_interface(), before);
  EXPECT_EQ(document_interface()->child(0)->role(), QAccessible::Heading);
  EXPECT_EQ(line(1)->text(0, -1), QStringLiteral("words"));
}

}  // namespace
}  // namespace tvx::x11
