#include "tvx/dom/collections.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"

namespace tvx::dom {
namespace {

std::string ids(const Collection& collection) {
  std::string text;
  for (std::size_t i = 0; i < collection.length(); ++i) {
    text += to_utf8(collection.item(i)->attribute_or_empty(names::id));
  }
  return text;
}

constexpr std::u16string_view page =
    u"<!DOCTYPE html><body id=B><form id=1><img id=2><a id=3 href=x><b id=4></b></a><a id=5 name=n></a>"
    u"<map><area id=6 href=y><area id=7></map><script id=8></script><div id=9><a id=0 href></a></div>"
    u"<svg id=s><foreignObject id=f></svg>";

TEST(Collections, OfADocument) {
  const Ref<Document> document = parse_document(page);
  const auto get = [&](CollectionKind kind, std::u16string_view tag = {}) {
    return ids(*collection_of(*document, kind, tag));
  };
  EXPECT_EQ(get(CollectionKind::All), "B1234567890sf");
  EXPECT_EQ(get(CollectionKind::Links), "360");
  EXPECT_EQ(get(CollectionKind::Images), "2");
  EXPECT_EQ(get(CollectionKind::Scripts), "8");
  EXPECT_EQ(get(CollectionKind::Forms), "1");
  EXPECT_EQ(get(CollectionKind::Tag, u"A"), "350");
  EXPECT_EQ(get(CollectionKind::Tag, u"*"), get(CollectionKind::All));
  EXPECT_EQ(get(CollectionKind::Tag, u"foreignobject"), "f");
  const auto all = collection_of(*document, CollectionKind::All);
  EXPECT_EQ(ids(all->tags(u"area")), "67");
  EXPECT_EQ(all->tags(u"base").item(0), nullptr);
  EXPECT_EQ(all->item(1000), nullptr);
  EXPECT_EQ(all->item(std::size_t(-1)), nullptr);
  EXPECT_EQ(to_utf8(all->named_item(u"n")->attribute_or_empty(names::id)), "5");
  EXPECT_EQ(all->named_item(u"3"), all->item(5));
  EXPECT_EQ(all->named_item(u"nobody"), nullptr);
}

TEST(Collections, FollowTheTreeAndItsAddresses) {
  const Ref<Document> document = parse_document(page);
  const auto links = collection_of(*document, CollectionKind::Links);
  const Collection in_form(*collection_of(*document, CollectionKind::Forms)->item(0), CollectionKind::Links);
  EXPECT_EQ(ids(*links), "360");
  EXPECT_EQ(ids(in_form), "360");
  Element& first = *links->item(0);
  Element& plain = *collection_of(*document, CollectionKind::Tag, u"a")->item(1);
  set_attribute(plain, names::href, u"z");
  EXPECT_EQ(ids(*links), "3560");
  EXPECT_EQ(ids(in_form), "3560");
  remove_attribute(first, names::href);
  EXPECT_EQ(ids(*links), "560");
  remove(plain);
  EXPECT_EQ(ids(*links), "60");
  EXPECT_EQ(ids(in_form), "60");
  insert(*document->body(), plain);
  EXPECT_EQ(ids(*links), "605");
}

TEST(Collections, BelowAnElement) {
  const Ref<Document> document = parse_document(page);
  Element& form = *collection_of(*document, CollectionKind::Forms)->item(0);
  EXPECT_EQ(ids(Collection(form, CollectionKind::Children)), "23589s");
  EXPECT_EQ(ids(Collection(form, CollectionKind::All).tags(u"b")), "4");
  const Ref<Element> apart = document->create_element(Tag::Div);
  insert(*apart, document->create_element(Tag::B));
  EXPECT_EQ(Collection(*apart, CollectionKind::All).length(), 1u);
}

// The list is the same one until something happens to the structure.
TEST(Collections, AreNotMadeAnewForEachQuestion) {
  const Ref<Document> document = parse_document(page);
  const auto* data = collection_of(*document, CollectionKind::Tag, u"a")->elements().data();
  Element& first = *collection_of(*document, CollectionKind::Tag, u"a")->item(0);
  set_attribute(first, names::href, u"other");
  EXPECT_EQ(collection_of(*document, CollectionKind::Tag, u"a")->elements().data(), data);
  const auto links = collection_of(*document, CollectionKind::Links);
  const auto* link_data = links->elements().data();
  set_attribute(first, names::href, u"another");
  EXPECT_EQ(links->elements().data(), link_data);
}

}  // namespace
}  // namespace tvx::dom
