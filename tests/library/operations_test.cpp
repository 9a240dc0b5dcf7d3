#include <gtest/gtest.h>

#include "tvx/browser/html_document.h"
#include "tvx/dom/parse.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::library {
namespace {

class Operations : public testing::Test {
 protected:
  static Value get(const Value& object, std::u16string_view name, Values arguments = {}) {
    return object.to_object()->invoke(name, arguments);
  }
  static bool acts(const Value& object, std::u16string_view name) {
    return object.to_object()->is_operation(name);
  }

  std::shared_ptr<browser::HTMLDocument> document_ =
      browser::HTMLDocument::create(dom::parse_document(u"<table id=t><tr><td>one</table>"), u"about:blank");
  Value page_ = document_object(document_);
};

TEST_F(Operations, OfADocumentAreNoneOfItsProperties) {
  EXPECT_TRUE(acts(page_, u"execCommand"));
  EXPECT_TRUE(acts(page_, u"GETELEMENTBYID"));
  for (const std::u16string_view name : {u"body", u"all", u"title", u"selection", u"nonsense"})
    EXPECT_FALSE(acts(page_, name));
}

TEST_F(Operations, OfAnElementAreThoseOfItsKindToo) {
  const Value table = get(page_, u"getElementById", {Value(u"t")});
  EXPECT_TRUE(acts(table, u"scrollIntoView"));
  EXPECT_TRUE(acts(table, u"deleteCaption"));
  EXPECT_FALSE(acts(table, u"rows"));
  EXPECT_FALSE(acts(get(page_, u"body"), u"deleteCaption"));
}

TEST_F(Operations, OfTheSelectionMakeARangeOrChangeIt) {
  const Value selection = get(page_, u"selection");
  EXPECT_TRUE(acts(selection, u"createRange"));
  EXPECT_TRUE(acts(selection, u"clear"));
  EXPECT_FALSE(acts(selection, u"type"));
  const Value range = get(selection, u"createRange");
  EXPECT_TRUE(acts(range, u"select"));
  EXPECT_TRUE(acts(range, u"duplicate"));
  EXPECT_FALSE(acts(range, u"text"));
}

}  // namespace
}  // namespace tvx::library
