#include "tvx/browser/loading/resources.h"

#include "browser/web_fixture.h"

namespace tvx::browser {
namespace {

/// What one page may bring in, of a budget that is small enough to be used up.
class PageBudget : public Web {
 protected:
  static constexpr std::size_t size = 100'000, most = 5;
  PageBudget() {
    resources_->set_owner(resources_);
    resources_->set_budget({.bytes = most * size});
    server.serve("/sheet", std::string(size, ' '), "text/css");
  }
  void load(std::string_view path = "/sheet") {
    resources_->load_sheet(at(path), [this](const HttpAnswer& answer) {
      ++answers_;
      if (answer.has_content()) ++with_content_;
    });
  }

  std::shared_ptr<Resources> resources_ = std::make_shared<Resources>(loop, HttpOptions());
  std::size_t answers_ = 0, with_content_ = 0;
};

TEST_F(PageBudget, HoldsForPartsThatAreOrderedTogether) {
  server.hold("/held", "", "text/css");
  for (std::size_t i = 0; i < most; ++i) load();
  for (int i = 0; i < 55; ++i) load("/held");
  ASSERT_TRUE(wait_for([&] { return answers_ == most + 55; }));
  settle();
  EXPECT_EQ(with_content_, most);
  EXPECT_EQ(answers_, most + 55) << "each is told once";
  EXPECT_LE(server.count("/held"), 6u) << "no more than were on their way are asked for";
  load();
  EXPECT_EQ(answers_, most + 56) << "at once: nothing is left";
}

TEST_F(PageBudget, WhatIsCancelledIsNotTold) {
  server.hold("/slow", "", "text/css");
  bool told = false;
  const auto slow = resources_->load_sheet(at("/slow"), [&](const HttpAnswer&) { told = true; });
  resources_->cancel(slow);
  for (int i = 0; i < 10; ++i) load();
  ASSERT_TRUE(wait_for([&] { return answers_ == 10; }));
  settle();
  EXPECT_FALSE(told);
  server.release();
}

TEST_F(PageBudget, OfTheNextPageIsWhole) {
  for (int i = 0; i < 10; ++i) load();
  ASSERT_TRUE(wait_for([&] { return answers_ == 10; }));
  resources_->begin_page();
  load();
  ASSERT_TRUE(wait_for([&] { return answers_ == 11; }));
  EXPECT_EQ(with_content_, most + 1);
}

}  // namespace
}  // namespace tvx::browser
