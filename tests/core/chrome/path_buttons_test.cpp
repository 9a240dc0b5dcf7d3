#include "tvx/core/chrome/path_buttons.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/base/error.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Branch : public testing::Test {
 protected:
  // HTML 0, HEAD 1, TITLE 2, BODY 3, P 4, B 5, IMG 6
  dom::Ref<dom::Document> document = dom::parse_document(u"<title>t</title><p>a<b>b</b><img>");
  std::vector<std::size_t> path(std::size_t index) {
    return branch::path_to(*document, document->all()[index]);
  }
};

TEST_F(Branch, TheWayBeginsBelowTheBody) {
  EXPECT_THAT(path(5), ElementsAre(4, 5));
  EXPECT_THAT(path(6), ElementsAre(4, 6));
  EXPECT_THAT(path(3), IsEmpty());
}

TEST_F(Branch, OutsideTheBodyItBeginsAtTheRoot) {
  EXPECT_THAT(path(0), ElementsAre(0));
  EXPECT_THAT(path(2), ElementsAre(0, 1, 2));
}

TEST_F(Branch, NoElementAndOneThatHasLeftHaveNone) {
  EXPECT_THAT(branch::path_to(*document, nullptr), IsEmpty());
  const dom::Ref<dom::Element> gone = document->all()[5];
  dom::remove(*gone);
  EXPECT_THAT(branch::path_to(*document, gone.get()), IsEmpty());
  const auto other = dom::parse_document(u"<p>x");
  EXPECT_THAT(branch::path_to(*document, other->all()[3]), IsEmpty());
}

TEST_F(Branch, AButtonCarriesTagAndPlace) {
  platform::Toolbar bar(u"tlbDOM");
  branch::show_path(bar, *document, path(5));
  ASSERT_EQ(bar.Count(), 2);
  EXPECT_EQ(bar.Item(1).Caption(), u"P");
  EXPECT_EQ(bar.Item(1).Key(), u"KEY4");
  EXPECT_EQ(bar.Item(2).Caption(), u"B");
  EXPECT_EQ(bar.Item(2).Key(), u"KEY5");
  EXPECT_EQ(bar.Item(2).Image(), u"Blank");
}

TEST_F(Branch, AKeyFindsItsElementAnew) {
  EXPECT_EQ(branch::element_of(*document, u"KEY6"), document->all()[6]);
  EXPECT_EQ(branch::element_of(*document, u"KEY0"), document->all()[0]);
  EXPECT_EQ(branch::element_of(*document, u"KEY7"), nullptr);
  for (const char16_t* key : {u"", u"KEY", u"KEYx", u"KEY1x", u"KEY-1", u"KEY99999999999999999999999"})
    EXPECT_THROW(branch::element_of(*document, key), RuntimeError) << to_utf8(key);
}

TEST_F(Branch, WhatTheMenuOffersGoesByTheTag) {
  struct Case {
    const char16_t* tag;
    bool edit_tag, properties;
  };
  for (const Case& each : {Case{u"table", true, true},
                           {u"img", true, true},
                           {u"span", true, false},
                           {u"p", true, false},
                           {u"col", false, true},
                           {u"caption", false, true},
                           {u"tbody", false, true},
                           {u"colgroup", false, true},
                           {u"html", false, true},
                           {u"head", false, true},
                           {u"body", false, true},
                           {u"frameset", false, true},
                           {u"td", false, true},
                           {u"tfoot", false, true},
                           {u"th", false, true},
                           {u"thead", false, true},
                           {u"tr", false, true}}) {
    EXPECT_EQ(branch::actions_for(each.tag).edit_tag, each.edit_tag) << to_utf8(each.tag);
    EXPECT_EQ(branch::actions_for(each.tag).properties, each.properties) << to_utf8(each.tag);
  }
}

// A tree as deep as any page: the way is found by going up, not by looking for each level from the top.
TEST_F(Branch, ADeepPathHasAButtonForEachElement) {
  std::u16string html;
  for (int i = 0; i < 400; ++i) html += u"<div>";
  document = dom::parse_document(html);
  EXPECT_EQ(path(document->all().size() - 1).size(), 400u);
}

}  // namespace
}  // namespace tvx::core
