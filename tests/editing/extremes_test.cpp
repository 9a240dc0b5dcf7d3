#include "editing_fixture.h"
#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/ranges/markup_pointer.h"

namespace tvx::editing::test {

/// Ranges and pointers in trees deeper and wider than anybody writes.
class EditingExtremes : public EditingFixture {
 protected:
  dom::Element& body() { return *document->body(); }
  /// Elements one in the other, past the parser's limit.
  void nest(std::size_t depth) {
    dom::Node* parent = &body();
    dom::clear(*parent);
    for (std::size_t i = 0; i < depth; ++i) {
      const dom::Ref<dom::Element> made = document->create_element(dom::Tag::Div);
      // From the inside: what is inserted holds nothing yet.
      dom::insert(*parent, made);
      parent = made.get();
    }
    dom::insert(*parent, document->create_text(u"two words"));
  }
};

TEST_F(EditingExtremes, RangesInDeepTrees) {
  nest(200'000);
  TextRange range = create_body_range(editor);
  EXPECT_EQ(range.text(), u"two words");
  EXPECT_EQ(range.parent_element()->child_count(), 1u);
  range.collapse();
  EXPECT_TRUE(range.expand(u"word"));
  EXPECT_EQ(range.text(), u"two");
  EXPECT_EQ(range.html_text(), u"two");
  MarkupPointer pointer(*document);
  pointer.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  pointer.MoveUnit(MoveUnitAction::NextWordEnd);
  EXPECT_EQ(pointer.place().offset, 3u);
}

TEST_F(EditingExtremes, RangesOverManySiblings) {
  std::u16string html;
  for (int i = 0; i < 100'000; ++i) html += u"<P>x</P>";
  dom::set_inner_html(body(), html);
  TextRange range = create_body_range(editor);
  EXPECT_EQ(range.html_text().size(), html.size());
  EXPECT_EQ(range.text().size(), 100'000u * 3 - 2);
  range.collapse();
  EXPECT_EQ(range.move(u"character", 1000), 1000);
  MarkupPointer pointer(*document);
  pointer.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  for (int i = 0; i < 1000; ++i) pointer.MoveUnit(MoveUnitAction::NextWordEnd);
  EXPECT_EQ(pointer.CurrentScope(), dom::child_at(body(), 999));
}

TEST_F(EditingExtremes, WritingOverALongText) {
  dom::set_inner_html(body(), u"<P>" + std::u16string(5'000'000, u'x') + u"</P>");
  TextRange range = create_body_range(editor);
  EXPECT_EQ(range.text().size(), 5'000'000u);
  range.set_text(u"short");
  EXPECT_TRUE(contains(dom::inner_html(body()), u"short"));
  EXPECT_TRUE(document->journal().undo());
  EXPECT_EQ(dom::inner_html(body()).size(), 5'000'000u + 7);
}

}  // namespace tvx::editing::test
