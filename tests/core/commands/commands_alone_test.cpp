#include "core/fake_context.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/commands/clipboard_commands.h"
#include "tvx/core/commands/formatting.h"
#include "tvx/core/commands/selection_commands.h"
#include "tvx/core/content/content.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/edit_window.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/editing/walk/marks.h"

/// The commands with a document and no control around it.
namespace tvx::core {
namespace {

struct CommandsAlone : testing::Test {
  void load(std::u16string_view marked) {
    context.set_design_mode_of_browser();
    editing::load_marked(context.document().editor(), context.body(), marked);
  }

  FakeContext context;
  Toolbars toolbars;
  SelectionHighlight highlight;
  CodePane code{context};
  EditWindow edit_window{context};
  Content content{context, code, highlight};
  Formatting formatting{context, toolbars, code, edit_window};
  SelectionCommands selection{context};
  ClipboardCommands clipboard{context, code, content};
};

TEST_F(CommandsAlone, BoldActsOnTheSelectionAndPressesItsButton) {
  load(u"<p>[One]</p>");
  formatting.bold();
  EXPECT_THAT(context.html(), testing::HasSubstr("One"));
  EXPECT_NE(context.html(), "<P>One</P>");
  EXPECT_EQ(toolbars.Toolbar1.Item(button_bold).Value(), 1);
  EXPECT_TRUE(context.values.IsDirty);
}

TEST_F(CommandsAlone, TextIsInsertedAtTheSelectionAndRead) {
  load(u"<p>a[One]b</p>");
  EXPECT_EQ(selection.GetCurrentSelection(false), u"One");
  selection.InsertAtCursor(u"<i>Two</i>", ed_InsertType::ed_InsertReplaceSelection);
  EXPECT_EQ(context.html(), "<P>a<I>Two</I>b</P>");
  EXPECT_TRUE(context.host.heard.empty());
}

TEST_F(CommandsAlone, WithoutADocumentTheHostHearsOfTheFailure) {
  context.set_DOM(nullptr);
  EXPECT_EQ(selection.GetCurrentSelection(false), std::nullopt);
  EXPECT_EQ(context.host.count("Error: 6 "), 1u);
}

TEST_F(CommandsAlone, WithoutAClipboardNothingIsCopied) {
  load(u"<p>[One]</p>");
  context.around.clipboard = nullptr;
  EXPECT_THROW(clipboard.clipboard(), RuntimeError);
  clipboard.copy();
  EXPECT_EQ(context.html(), "<P>One</P>");
}

}  // namespace
}  // namespace tvx::core
