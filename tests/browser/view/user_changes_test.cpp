#include <gmock/gmock.h>

#include <random>

#include "browser/view/document_view_fixture.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {
namespace {

class UserChanges : public DocumentViewTest, private DocumentHandler {
 protected:
  static constexpr std::u16string_view mixed =
      u"<p>one two three</p><p>four <img id=i> five</p><table "
      u"border=1><tr><td>a</td><td>b</td></tr></table>"
      u"<p>six seven</p>";
  void start(unsigned seed, std::u16string_view content = mixed) {
    random_.seed(seed);
    open(content);
    document_->connect(this);
  }
  void TearDown() override { document_->connect(nullptr); }
  std::size_t pick(std::size_t count) { return random_() % count; }
  dom::Text* any_text() {
    std::vector<dom::Text*> texts;
    dom::Node* const body = document_->body();
    for (dom::Node* node = body; node; node = dom::next_in_order(*node, body)) {
      if (auto* found = dom::as<dom::Text>(node)) texts.push_back(found);
    }
    return texts.empty() ? nullptr : texts[pick(texts.size())];
  }
  void choose_caret() {
    if (dom::Text* at = any_text()) press(press_at(*at, std::uint32_t(pick(at->length() + 1))));
  }
  void choose_stretch() {
    dom::Text* at = any_text();
    if (!at) return;
    selection().set({at, pick(at->length() + 1)}, {at, at->length()});
    pump();
  }
  void drag_whole(ViewDrag::Type type, dom::Tag tag, std::int32_t step) {
    Element* const whole = document_->first(tag);
    if (!whole) return;
    if (type == ViewDrag::Type::Size) selection().select_control(*whole);
    pump();
    tell(drag(ViewDrag::Phase::Begin, type, whole));
    ViewDrag drop = drag(ViewDrag::Phase::Drop, type, whole);
    drop.width = 100 + step;
    drop.height = 50 + step;
    if (const dom::Node* next = whole->next_sibling(); next && type == ViewDrag::Type::Column)
      drop.edge = ViewDrag::Edge{
          .after = next->id(), .width = 100 + step, .after_width = 80, .shift = 1, .table_width = 300};
    tell(drop);
  }
  void drag_text() {
    choose_stretch();
    tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Content));
    ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Content);
    if (dom::Text* at = any_text()) drop.place = place(*at, std::uint32_t(pick(at->length() + 1)));
    tell(drop);
  }
  void drop_text(ViewDrop::Way way) {
    ViewDrop drop;
    drop.way = way;
    drop.y = 20 * static_cast<int>(document_->tree().source_index(first(dom::Tag::Body)) + pick(4));
    drop.data.text = u"new";
    view_.tell({.seen = {}, .what = drop});
    pump();
  }
  void gesture(std::int32_t step) {
    switch (pick(12)) {
      case 0: choose_caret(); break;
      case 1: choose_stretch(); break;
      case 2: type(u"x"); break;
      case 3: key(u"Backspace"); break;
      case 4: key(u"Enter"); break;
      case 5: key(u"ArrowLeft"); break;
      case 6: key(u"F5"); break;
      case 7: drag_whole(ViewDrag::Type::Size, dom::Tag::Img, step); break;
      case 8: drag_whole(ViewDrag::Type::Column, dom::Tag::Td, step); break;
      case 9: drag_text(); break;
      case 10: drop_text(ViewDrop::Way::Drag); break;
      case 11: drop_text(ViewDrop::Way::MiddlePress); break;
    }
    pump();
  }
  void onuserchange() override { ++told_; }

  std::mt19937 random_;
  int told_ = 0;
};

TEST_F(UserChanges, AreToldWhateverMadeThemAndNothingElseIs) {
  int changes = 0;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    start(seed);
    for (std::int32_t step = 0; step < 40; ++step) {
      const std::string before = html();
      told_ = 0;
      gesture(step);
      EXPECT_EQ(told_ > 0, html() != before) << "seed " << seed << " step " << step << "\n"
                                             << before << "\n"
                                             << html();
      changes += html() != before;
      if (HasFailure()) return;
    }
    document_->connect(nullptr);
  }
  EXPECT_GT(changes, 200);
}

TEST_F(UserChanges, AreNotWhatAKeyDoesAndTakesBack) {
  start(1, u"<table border=1><tr><td>a</td></tr></table><p><!--note-->two</p>");
  dom::Text* const two = dom::as<dom::Text>(first(dom::Tag::P).last_child());
  ASSERT_NE(two, nullptr);
  selection().collapse({two, 0});
  pump();
  const std::string before = html();
  key(u"Backspace");
  pump();
  EXPECT_EQ(html(), before);
  EXPECT_EQ(told_, 0);
  EXPECT_FALSE(document_->tree().journal().can_undo());
}

TEST_F(UserChanges, AreNotWhatAHostWritesMeanwhile) {
  start(1);
  dom::set_attribute(first(dom::Tag::Img), dom::names::id, u"other");
  choose_caret();
  EXPECT_EQ(told_, 0);
}

}  // namespace
}  // namespace tvx::browser
