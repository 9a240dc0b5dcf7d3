#include "tvx/browser/view/scroll_request.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/browser/view/mirror.h"
#include "tvx/dom/parse.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

using Scroll = headless::View::Scroll;
using testing::ElementsAre;
using testing::IsEmpty;

class ScrollRequestTest : public testing::Test {
 protected:
  void send() { request_.send(view_, mirror_); }
  void load() { mirror_.flush(1000); }
  dom::Element& paragraph() { return *dom::as<dom::Element>(tree_->body()->first_child()); }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  dom::Ref<dom::Document> tree_ = dom::parse_document(u"<!DOCTYPE html><body><p>one<script>x</script></p>");
  Mirror mirror_{*tree_};
  ScrollRequest request_;
};

TEST_F(ScrollRequestTest, WaitsUntilThePageIsThere) {
  request_.to(3, 40);
  send();
  EXPECT_THAT(view_.scrolls(), IsEmpty());
  EXPECT_TRUE(request_.waits());
  load();
  send();
  EXPECT_THAT(view_.scrolls(), ElementsAre(Scroll{.x = 3, .y = 40}));
  EXPECT_FALSE(request_.waits());
}

TEST_F(ScrollRequestTest, WaitsForItsElement) {
  request_.into_view(paragraph(), false);
  send();
  EXPECT_THAT(view_.scrolls(), IsEmpty());
  load();
  send();
  EXPECT_THAT(view_.scrolls(), ElementsAre(Scroll{.element = paragraph().id(), .at_top = false}));
}

TEST_F(ScrollRequestTest, TheLastOneCounts) {
  load();
  request_.to(1, 1);
  request_.into_view(paragraph(), true);
  send();
  send();
  EXPECT_THAT(view_.scrolls(), ElementsAre(Scroll{.element = paragraph().id(), .at_top = true}));
}

TEST_F(ScrollRequestTest, AnElementThatIsNowhereIsGivenUp) {
  load();
  const dom::Ref<dom::Element> loose = tree_->create_element(dom::Tag::P);
  request_.into_view(*loose, true);
  send();
  EXPECT_FALSE(request_.waits());
  EXPECT_THAT(view_.scrolls(), IsEmpty());
}

}  // namespace
}  // namespace tvx::browser
