#include "tvx/core/context.h"

#include "core/fake_context.h"
#include "tvx/base/error.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

TEST(ContextOfParts, AnEditTellsTheContainerAndSetsTheFlag) {
  FakeContext context;
  context.mark_changed();
  EXPECT_THAT(context.changed, ElementsAre("DocumentHTML"));
  EXPECT_TRUE(context.values.IsDirty);
  context.mark_clean();
  EXPECT_THAT(context.changed, ElementsAre("DocumentHTML", "DocumentHTML"));
  EXPECT_FALSE(context.values.IsDirty);
}

TEST(ContextOfParts, BeforeTheStartThereIsNoDocumentAndNothingToWaitFor) {
  FakeContext context;
  context.set_DOM(nullptr);
  EXPECT_THROW(context.document(), RuntimeError);
  EXPECT_THROW(context.wait_until_complete(), RuntimeError);
  EXPECT_EQ(context.waits, 0);
}

TEST(ContextOfParts, EditingIsOnWhereItIsAllowedAtRunTime) {
  FakeContext context;
  context.set_design_mode_of_browser();
  EXPECT_EQ(context.browser_document().designMode(), u"On");
  context.at_run_time = false;
  context.set_design_mode_of_browser();
  EXPECT_EQ(context.browser_document().designMode(), u"Off");
}

}  // namespace
}  // namespace tvx::core
