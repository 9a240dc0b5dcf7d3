#include "tvx/headless/property_bag.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/headless/container.h"

namespace tvx::headless {
namespace {

using platform::PropertyValue;

PropertyValue text(std::u16string value) { return value; }
PropertyValue small(int value) { return static_cast<std::int16_t>(value); }
PropertyValue large(int value) { return static_cast<std::int32_t>(value); }

TEST(PropertyBag, GivesTheOtherValueWhereNothingIsStored) {
  const PropertyBag bag;
  EXPECT_EQ(bag.ReadProperty(u"BaseURL", text(u"x")), text(u"x"));
}

TEST(PropertyBag, DoesNotStoreAStandardValue) {
  PropertyBag bag;
  bag.WriteProperty(u"BaseURL", text(u""), text(u""));
  bag.WriteProperty(u"FTPPort", large(21), large(21));
  EXPECT_TRUE(bag.entries().empty());
  EXPECT_EQ(bag.written(), (std::vector<std::u16string>{u"BaseURL", u"FTPPort"}));
}

TEST(PropertyBag, StoresTrueWhereTheStandardIsOne) {
  PropertyBag bag;
  bag.WriteProperty(u"EditorEnabled", true, small(1));
  bag.WriteProperty(u"relativeURLs", false, small(0));
  ASSERT_EQ(bag.entries().size(), 1u);
  EXPECT_EQ(bag.ReadProperty(u"EditorEnabled", small(1)), PropertyValue(true));
}

TEST(PropertyBag, AStandardValueTakesAnOlderOneOut) {
  PropertyBag bag;
  bag.WriteProperty(u"BaseURL", text(u"http://x/"), text(u""));
  bag.WriteProperty(u"BaseURL", text(u""), text(u""));
  EXPECT_TRUE(bag.entries().empty());
}

TEST(PropertyBag, KeepsTheOrderOfWriting) {
  PropertyBag bag;
  for (const auto key : {u"b", u"a", u"c", u"b"}) bag.WriteProperty(key, text(u"1"), text(u""));
  ASSERT_EQ(bag.entries().size(), 3u);
  EXPECT_EQ(bag.entries()[0].first, u"b");
  EXPECT_EQ(bag.entries()[2].first, u"c");
}

PropertyBag full_bag() {
  PropertyBag bag;
  bag.put(u"DocumentHTML", text(u"<P>caf\u00e9 \"\U0001F600\"\r\n</P>"));
  bag.put(u"yes", true);
  bag.put(u"no", false);
  bag.put(u"small", small(-32768));
  bag.put(u"large", large(2147483647));
  bag.put(u"empty", text(u""));
  return bag;
}

TEST(PropertyBag, ComesBackFromJson) {
  const PropertyBag bag = full_bag();
  EXPECT_EQ(property_bag_from_json(to_json(bag)).entries(), bag.entries());
}

TEST(PropertyBag, RefusesWhatIsNoStore) {
  for (const auto json : {"", "{", "[]", "{\"a\":1.5}", "{\"a\":null}", "{\"a\":[]}", "{\"a\":2147483648}",
                          "{\"a\":18446744073709551615}"}) {
    EXPECT_THROW(property_bag_from_json(json), RuntimeError) << json;
  }
}

TEST(PropertyBag, LivesInAFile) {
  std::string folder = (std::filesystem::temp_directory_path() / "tvx-bag-XXXXXX").string();
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  const std::u16string path = from_utf8(folder + "/store.json");
  EXPECT_FALSE(load_property_bag(path));
  save_property_bag(full_bag(), path);
  const auto bag = load_property_bag(path);
  ASSERT_TRUE(bag);
  EXPECT_EQ(bag->entries(), full_bag().entries());
  std::filesystem::remove_all(folder);
  EXPECT_THROW(save_property_bag(full_bag(), path), RuntimeError);
}

TEST(Container, CountsWhatItIsTold) {
  Container container(false);
  std::u16string heard;
  container.on_property_changed([&](std::u16string_view key) { heard += key; });
  container.property_changed(u"BaseURL");
  EXPECT_FALSE(container.user_mode());
  EXPECT_EQ(container.changed(), std::vector<std::u16string>{u"BaseURL"});
  EXPECT_EQ(heard, u"BaseURL");
}

}  // namespace
}  // namespace tvx::headless
