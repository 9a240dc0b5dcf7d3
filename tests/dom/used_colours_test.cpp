#include "tvx/dom/style/used_colours.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dom/build_tree.h"
#include "tvx/dom/parse.h"

namespace tvx::dom::style {
namespace {

using testing::ElementsAre;

std::vector<std::u16string> colours_in(std::u16string_view html) {
  return used_colours(*parse_document(html));
}

TEST(UsedColours, ThoseNamedMostOftenComeFirst) {
  EXPECT_THAT(colours_in(u"<body bgcolor=#ffffcc><p style='color: red'>a</p><font color=#F00>b</font>"
                         u"<div style='background-color: rgb(0, 0, 255)'>c</div>"),
              ElementsAre(u"#ff0000", u"#ffffcc", u"#0000ff"));
}

TEST(UsedColours, WhatIsNoColourIsNone) {
  EXPECT_THAT(colours_in(u"<p style='color: inherit; background-color: transparent'>a</p><p>b</p>"),
              ElementsAre());
}

TEST(UsedColours, NeverMoreThanAPaletteHolds) {
  std::u16string html;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit)
    for (const char16_t other : {u'0', u'a', u'f'})
      html += std::u16string(u"<p style='color: #") + digit + other + u"0'>x</p>";
  EXPECT_EQ(colours_in(html).size(), 16u);
}

}  // namespace
}  // namespace tvx::dom::style
