#include "tvx/core/views/code_pane.h"

#include "core/fake_context.h"

namespace tvx::core {
namespace {

struct CodePaneAlone : testing::Test {
  FakeContext context;
  CodePane code{context};
};

TEST_F(CodePaneAlone, CodeThatNobodyEditedIsNoNewBody) {
  code.show_as_entered(source::SourceText::formatted(share(u"<p>One</p>")));
  EXPECT_EQ(code.edited_body(), std::nullopt);
}

TEST_F(CodePaneAlone, EditedCodeIsTheNewBody) {
  code.show_as_entered(source::SourceText::as_it_is(share(u"<p>One</p>")));
  code.box().set_Text(std::u16string_view(u"<p>Two</p>"));
  EXPECT_EQ(code.edited_body(), u"<p>Two</p>");
}

TEST_F(CodePaneAlone, WhatIsTypedMarksTheDocumentAtRunTimeAlone) {
  context.at_run_time = false;
  code.box().set_Text(std::u16string_view(u"a"));
  EXPECT_TRUE(context.changed.empty());
}

struct Switches : HTMLedObserver {
  std::vector<bool> told;
  void view_switched(bool in_code_view) override { told.push_back(in_code_view); }
};

TEST_F(CodePaneAlone, WhoShowsTheControlHearsOfTheSwitch) {
  Switches observer;
  context.observer = &observer;
  code.set_in_front(true);
  code.set_in_front(false);
  EXPECT_THAT(observer.told, testing::ElementsAre(true, false));
  EXPECT_FALSE(code.in_front());
}

}  // namespace
}  // namespace tvx::core
