#include "tvx/platform/loaded_dialogs.h"

#include <gtest/gtest.h>

#include <optional>

namespace tvx::platform {
namespace {

TEST(LoadedDialogs, ADialogIsThereFromLoadingToUnloading) {
  EXPECT_FALSE(IsDialogLoaded(u"frmSpelling"));
  std::optional<LoadedDialog> dialog(u"frmSpelling");
  EXPECT_TRUE(IsDialogLoaded(u"frmSpelling"));
  EXPECT_TRUE(IsDialogLoaded(u"FRMSPELLING"));
  EXPECT_FALSE(IsDialogLoaded(u"frmSpell"));
  EXPECT_FALSE(IsDialogLoaded(u""));
  dialog.reset();
  EXPECT_FALSE(IsDialogLoaded(u"frmSpelling"));
}

TEST(LoadedDialogs, TheSameDialogLoadedTwiceCountsUntilBothAreGone) {
  const LoadedDialog first(u"frmFont");
  { const LoadedDialog second(u"frmFont"); }
  EXPECT_TRUE(IsDialogLoaded(u"frmFont"));
}

}  // namespace
}  // namespace tvx::platform
