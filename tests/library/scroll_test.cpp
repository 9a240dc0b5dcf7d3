#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/failures.h"
#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/parse.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::library {
namespace {

using testing::ElementsAre;

struct Window final : browser::Viewport {
  std::vector<std::string> told;
  void scroll_to(int x, int y) override {
    told.push_back("to " + std::to_string(x) + " " + std::to_string(y));
  }
  void scroll_into_view(dom::Element& element, bool at_top) override {
    told.push_back((at_top ? "top of " : "end of ") + to_utf8(element.display_name()));
  }
};

class ScrollByName : public testing::Test {
 protected:
  Value call(const Value& object, std::u16string_view name, Values arguments = {}) {
    return object.to_object()->invoke(name, arguments);
  }
  int failure(const Value& object, std::u16string_view name, Values arguments) {
    return number_of_failure([&] { call(object, name, std::move(arguments)); });
  }

  std::shared_ptr<browser::HTMLDocument> document_ =
      browser::HTMLDocument::create(dom::parse_document(u"<p>one"), u"about:blank");
  Value page_ = document_object(document_);
  Value window_ = call(page_, u"parentWindow");
  Value body_ = call(page_, u"body");
  Window view_;
};

TEST_F(ScrollByName, TheWindowScrollsToAPoint) {
  document_->set_viewport(&view_);
  EXPECT_TRUE(call(window_, u"scrollTo", {Value(0), Value(250)}).is_null());
  call(window_, u"SCROLLTO", {Value(u"7"), Value(12.0)});
  EXPECT_EQ(failure(window_, u"scrollTo", {Value(0)}), 450);
  EXPECT_EQ(failure(window_, u"scrollTo", {Value(u"far"), Value(1)}), 13);
  EXPECT_THAT(view_.told, ElementsAre("to 0 250", "to 7 12"));
}

TEST_F(ScrollByName, AnElementScrollsIntoView) {
  document_->set_viewport(&view_);
  call(body_, u"scrollIntoView");
  call(body_, u"scrollIntoView", {Value(true)});
  call(body_, u"scrollIntoView", {Value(false)});
  EXPECT_EQ(failure(body_, u"scrollIntoView", {Value(true), Value(true)}), 450);
  EXPECT_THAT(view_.told, ElementsAre("top of BODY", "top of BODY", "end of BODY"));
}

TEST_F(ScrollByName, WithoutAViewThereIsNothingToScroll) {
  EXPECT_EQ(failure(window_, u"scrollTo", {Value(0), Value(250)}), 0);
  EXPECT_EQ(failure(body_, u"scrollIntoView", {}), 0);
}

}  // namespace
}  // namespace tvx::library
