#include "editing/editing_fixture.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"

/// A writer's keys where pages are odd: nested deeper than anybody writes.
namespace tvx::editing::test {
namespace {

class WriterExtremes : public EditingFixture {
 protected:
  /// Every gesture once, with the caret in the innermost block; undone it is what it was.
  void expect_bearable() {
    const std::string first = html();
    type_text(editor, u"word ");
    for (std::u16string_view key : {u"Enter", u"Backspace", u"Tab", u"ArrowLeft", u"ArrowRight", u"Delete"})
      press_key(editor, {std::u16string(key), {}});
    press_key(editor, {u"Enter", {}, false, true});
    press_key(editor, {u"Backspace", {}, true});
    for (std::u16string_view command : {u"bold", u"insertUnorderedList", u"indent", u"outdent"})
      execute_as_writer(editor, command);
    EXPECT_NE(html(), first);
    while (document->journal().can_undo()) document->journal().undo();
    EXPECT_EQ(html(), first);
  }

  static std::string nested(std::string_view open, std::string_view inner, std::string_view close) {
    constexpr int depth = 5000;
    std::string text;
    for (int i = 0; i < depth; ++i) text += open;
    text += inner;
    for (int i = 0; i < depth; ++i) text += close;
    return text;
  }
};

TEST_F(WriterExtremes, QuotationsFiveThousandDeep) {
  load(nested("<blockquote>", "<p>a[]</p>", "</blockquote>"));
  expect_bearable();
}

TEST_F(WriterExtremes, ListsFiveThousandDeep) {
  load(nested("<ul><li>", "a[]", "</li></ul>"));
  expect_bearable();
}

TEST_F(WriterExtremes, StylesFiveThousandDeep) {
  load("<p>" + nested("<b>", "a[]", "</b>") + "</p>");
  expect_bearable();
}

}  // namespace
}  // namespace tvx::editing::test
