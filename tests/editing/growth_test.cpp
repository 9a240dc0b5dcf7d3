#include <gtest/gtest.h>

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
  growth::prepare(editor, command);
  const std::uint64_t steps = work_done, version = document->version();
  growth::act(editor, command);
  return work_done - steps + document->version() - version;
}

constexpr std::size_t count = 60;

class Growth : public ::testing::TestWithParam<Shape> {};

TEST_P(Growth, EveryCommandOnEverything) {
  for (const Command& command : growth::commands) {
    const std::size_t most = growth::limited(GetParam(), count * 10);
    const std::uint64_t small = steps_of(GetParam(), command, most / 10);
    const std::uint64_t large = steps_of(GetParam(), command, most);
    EXPECT_LT(double(large), growth::most_growth * double(std::max<std::uint64_t>(small, count)))
        << growth::name_of(command) << " of " << to_utf8(GetParam().name) << ": " << small << ", " << large;
  }
}

std::uint64_t steps_of(const Shape& shape, const growth::Stroke& stroke, growth::Where where,
                       std::size_t count) {
  const dom::Ref<dom::Document> document = dom::parse_document(shape.of(count));
  Editor editor(*document);
  editor.set_design_mode(true);
  growth::place_caret(editor, where);
  const std::uint64_t steps = work_done, version = document->version();
  growth::press(editor, stroke);
  return work_done - steps + document->version() - version;
}

TEST_P(Growth, EveryKeyEverywhere) {
  using growth::Where;
  for (const growth::Stroke& stroke : growth::strokes) {
    for (const Where where : {Where::All, Where::Start, Where::Middle, Where::End}) {
      const std::size_t most = growth::limited(GetParam(), count * 10);
      const std::uint64_t small = steps_of(GetParam(), stroke, where, most / 10);
      const std::uint64_t large = steps_of(GetParam(), stroke, where, most);
      EXPECT_LT(double(large), growth::most_growth * double(std::max<std::uint64_t>(small, count)))
          << growth::name_of(stroke, where) << " of " << to_utf8(GetParam().name) << ": " << small << ", "
          << large;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, Growth, ::testing::ValuesIn(growth::shapes), [](const auto& info) {
  std::string name;
  for (const char c : to_utf8(info.param.name)) name += c == ' ' || c == '-' ? '_' : c;
  return name;
});

std::uint64_t steps_of_typing(std::u16string_view before, std::u16string_view each, std::size_t count) {
  std::u16string html(before);
  for (std::size_t i = 0; i < count; ++i) html += each;
  const dom::Ref<dom::Document> document = dom::parse_document(html);
  Editor editor(*document);
  editor.set_design_mode(true);
  dom::Node* paragraph = document->body()->first_child();
  editor.selection().collapse({paragraph, paragraph->child_count()});
  const std::uint64_t start = work_done;
  type_text(editor, u"b");
  return work_done - start;
}

/// Typing at the end of a line whose other nodes nobody sees.
TEST(GrowthOfTyping, AfterScriptsInTheLine) {
  for (const char16_t* before : {u"<p>a", u"<p>a ", u"<p>a  "})
    for (const char16_t* each : {u"<script></script>", u" <script></script>", u"<!-- c --> ", u"<b> </b>"})
      EXPECT_LT(steps_of_typing(before, each, 1'000), 15 * steps_of_typing(before, each, 100))
          << to_utf8(before) << to_utf8(each);
}

}  // namespace
}  // namespace tvx::editing
