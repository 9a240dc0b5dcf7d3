#include <gtest/gtest.h>

#include "htmled/writing_choices.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

/// Without a dictionary every word would be offered as a wrong one.
TEST(SpellingOffered, WithoutADictionaryItSaysWhyItIsNot) {
  qt::MessageLoop loop;
  qt::HTMLedWidget editor(loop);
  const platform::Button& button = editor.control().Toolbar1().Item(u"Spell Check");
  writing_choices::show_obstacle_to_spelling(editor, writing_choices::obstacle_to_spelling(false));
  EXPECT_EQ(button.Obstacle(), u"No dictionary is installed");
  writing_choices::show_obstacle_to_spelling(editor, writing_choices::obstacle_to_spelling(true));
  EXPECT_EQ(button.Obstacle(), u"");
}

}  // namespace
}  // namespace tvx::htmled
