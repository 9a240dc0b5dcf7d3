#include <gtest/gtest.h>

#include <set>

#include "support/growth_shapes.h"
#include "tvx/base/strings.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/typing.h"

/// Ten times as much takes at most fifteen times the steps: nodes visited, attributes looked at, changes
/// made.
namespace tvx::editing {
namespace {

using growth::Command;
using growth::Shape;

std::uint64_t steps_of(const Shape& shape, const Command& command, std::size_t count) {
  const dom::Ref<dom::Document> document = dom::parse_document(shape.of(count));
  Editor editor(*document);
  editor.set_design_mode(true);
  editor.execute(u"selectAll");
  const std::uint64_t steps = work_done, version = document->version();
  editor.execute(command.name, command.value);
  return work_done - steps + document->version() - version;
}

constexpr std::size_t count = 60;

/// What still grows with the square, and is measured by the bench of the same shapes: formats over nodes that
/// nobody sees in a row, and blocks among them.
bool still_grows(const Shape& shape, const Command& command) {
  static const std::set<std::u16string_view> unseen{u"comments", u"comments on lines", u"scripts in a line",
                                                    u"hidden inputs", u"empty spans"};
  static const std::set<std::u16string_view> formats{u"bold", u"foreColor", u"fontName", u"createLink"};
  if (unseen.contains(shape.name) && formats.contains(command.name)) return true;
  if (shape.name == u"comments on lines")
    return command.name == u"insertOrderedList" || command.name == u"formatBlock";
  // Each style element that goes makes all the other sheets count anew.
  static const std::set<std::u16string_view> removing{u"delete", u"insertText", u"insertParagraph",
                                                      u"insertHTML"};
  if (shape.name == u"style elements") return removing.contains(command.name);
  return shape.name == u"hidden paragraphs" && command.name == u"formatBlock";
}

class Growth : public ::testing::TestWithParam<Shape> {};

TEST_P(Growth, EveryCommandOnEverything) {
  for (const Command& command : growth::commands) {
    if (still_grows(GetParam(), command)) continue;
    const std::uint64_t small = steps_of(GetParam(), command, count);
    const std::uint64_t large = steps_of(GetParam(), command, count * 10);
    EXPECT_LT(large, 15 * std::max<std::uint64_t>(small, count))
        << to_utf8(command.name) << " of " << to_utf8(GetParam().name) << ": " << small << ", " << large;
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, Growth, ::testing::ValuesIn(growth::shapes), [](const auto& info) {
  std::string name;
  for (const char c : to_utf8(info.param.name)) name += c == ' ' || c == '-' ? '_' : c;
  return name;
});

/// Typing at the end of a line whose other nodes nobody sees.
TEST(GrowthOfTyping, AfterScriptsInTheLine) {
  const auto steps = [](std::size_t scripts) {
    std::u16string html = u"<p>a";
    for (std::size_t i = 0; i < scripts; ++i) html += u"<script></script>";
    const dom::Ref<dom::Document> document = dom::parse_document(html);
    Editor editor(*document);
    editor.set_design_mode(true);
    dom::Node* paragraph = document->body()->first_child();
    editor.selection().collapse({paragraph, paragraph->child_count()});
    const std::uint64_t before = work_done;
    type_text(editor, u"b");
    return work_done - before;
  };
  EXPECT_LT(steps(1'000), 15 * steps(100));
}

}  // namespace
}  // namespace tvx::editing
