#include "tvx/core/content/style_sheet.h"

#include "core/fake_context.h"
#include "tvx/base/error.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/style/style_sheet.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

struct StyleSheetAlone : testing::Test {
  void give_sheet(std::u16string_view css) {
    context.load(u"<style>" + std::u16string(css) + u"</style><p>One</p>");
  }

  FakeContext context;
  std::vector<std::u16string> told;
  StyleSheetBinding sheet{context, [this](std::span<const StyleClass> classes) {
                            told.clear();
                            for (const StyleClass& each : classes) told.push_back(each.name);
                          }};
};

TEST_F(StyleSheetAlone, ClassesAreReadAndToldWithTheirNumbers) {
  give_sheet(u"p { color: red } .a { color: blue } .b { color: green }");
  sheet.LoadStyleClasses();
  EXPECT_THAT(told, ElementsAre(u"a", u"b"));
  EXPECT_EQ(sheet.class_at(2), u"a");
  EXPECT_EQ(sheet.class_at(3), u"b");
  EXPECT_THROW(sheet.class_at(1), RuntimeError);
  EXPECT_NE(sheet.active(), nullptr);
}

TEST_F(StyleSheetAlone, ADocumentWithoutASheetHasNoClasses) {
  give_sheet(u".a {}");
  sheet.LoadStyleClasses();
  context.load(u"<p>One</p>");
  sheet.LoadStyleClasses();
  EXPECT_TRUE(told.empty());
  EXPECT_EQ(sheet.active(), nullptr);
}

TEST_F(StyleSheetAlone, DownloadsCountOnlyWhileASheetIsWaitedFor) {
  sheet.download_started();
  sheet.download_ended();
  EXPECT_FALSE(sheet.download_done());
}

TEST_F(StyleSheetAlone, ASheetFromElsewhereIsWaitedForUntilItsDownloadEnds) {
  give_sheet(u".a {}");
  context.values.CSShttp = true;
  context.values.CSSText = u"http://127.0.0.1:1/a.css";
  context.on_wait = [&] {
    EXPECT_TRUE(sheet.watches_download());
    if (context.waits == 3) sheet.download_ended();
  };
  sheet.ApplyStyleSheet();
  EXPECT_EQ(context.waits, 3);
  EXPECT_FALSE(sheet.watches_download());
}

TEST_F(StyleSheetAlone, AtDesignTimeNothingIsApplied) {
  context.at_run_time = false;
  give_sheet(u".a {}");
  sheet.ApplyStyleSheet();
  EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace tvx::core
