#include "tvx/core/properties.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <variant>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/platform/property_bag.h"

namespace tvx::core {
namespace {

using platform::as_bool;
using platform::as_int32;
using platform::as_text;
using platform::PropertyBag;
using platform::PropertyValue;

/// Where a key's value is kept. FTPDirectoryItem is kept nowhere, as no directory list is held.
using Member =
    std::variant<std::monostate, SharedText Properties::*, std::u16string Properties::*, bool Properties::*,
                 std::int32_t Properties::*, EdBorderStyle Properties::*, ed_FTPTransferType Properties::*>;

struct Key {
  std::u16string_view name;
  Member member;
  PropertyValue standard;
  bool is_written_unless_standard;
};

/// In the order of reading.
const std::vector<Key>& keys() {
  static const std::vector<Key> table{
#include "tvx/interface/store_keys.inc"
  };
  return table;
}

/// The order in which containers have always been handed the keys.
constexpr std::u16string_view writing_order[] = {
#include "tvx/interface/writing_order.inc"
};

void assign(SharedText& target, const PropertyValue& value) { target = share(as_text(value)); }
void assign(std::u16string& target, const PropertyValue& value) { target = as_text(value); }
void assign(bool& target, const PropertyValue& value) { target = as_bool(value); }
void assign(std::int32_t& target, const PropertyValue& value) { target = as_int32(value); }
template <class Enumeration>
requires std::is_enum_v<Enumeration>
void assign(Enumeration& target, const PropertyValue& value) { target = Enumeration(as_int32(value)); }

PropertyValue value_of(const SharedText& text) { return *text; }
PropertyValue value_of(const std::u16string& text) { return text; }
PropertyValue value_of(bool value) { return value; }
PropertyValue value_of(std::int32_t value) { return value; }
template <class Enumeration>
requires std::is_enum_v<Enumeration> PropertyValue value_of(Enumeration value) { return std::int32_t(value); }

void read_key(Properties& properties, const Key& key, const PropertyBag& bag) {
  const PropertyValue value = bag.ReadProperty(key.name, key.standard);
  std::visit(
      [&](auto member) {
        if constexpr (!std::is_same_v<decltype(member), std::monostate>) assign(properties.*member, value);
      },
      key.member);
}

void write_key(const Properties& properties, const Key& key, PropertyBag& bag) {
  const PropertyValue value = std::visit(
      [&](auto member) -> PropertyValue {
        if constexpr (std::is_same_v<decltype(member), std::monostate>)
          return key.standard;
        else
          return value_of(properties.*member);
      },
      key.member);
  // A container that knows nothing of the youngest keys gets what it always got.
  if (key.is_written_unless_standard && platform::equal_in_store(value, key.standard)) return;
  bag.WriteProperty(key.name, value, key.standard);
}

constexpr std::u16string_view highlight_styles[] = {u"none",   u"solid", u"dashed", u"dotted", u"double",
                                                    u"groove", u"Ridge", u"inset",  u"outset"};

}  // namespace

SharedText share(std::u16string_view text) { return std::make_shared<const std::u16string>(text); }

void read_properties(Properties& properties, TableLabels& labels, const PropertyBag& bag) {
  for (const Key& key : keys()) {
    attempt([&] { read_key(properties, key, bag); });
    if (key.name == u"HiddenContextMenus") labels = {u"Cell", u"Row", u"Delete Row", u"Delete Cell"};
  }
}

void write_properties(const Properties& properties, PropertyBag& bag) {
  for (std::u16string_view name : writing_order)
    attempt([&] { write_key(properties, *std::ranges::find(keys(), name, &Key::name), bag); });
}

std::u16string_view text_of(EdHighLightStyle style) {
  const auto number = std::int32_t(style);
  return number >= 1 && number <= 8 ? highlight_styles[number] : highlight_styles[0];
}

EdHighLightStyle highlight_style_of(std::u16string_view text) {
  const auto found = std::ranges::find(highlight_styles, text);
  return found == std::end(highlight_styles)
             ? EdHighLightStyle::edNone
             : EdHighLightStyle(std::int32_t(std::distance(std::begin(highlight_styles), found)));
}

}  // namespace tvx::core
