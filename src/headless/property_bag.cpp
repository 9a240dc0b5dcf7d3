#include "tvx/headless/property_bag.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"

namespace tvx::headless {

using platform::PropertyValue;
using Json = nlohmann::ordered_json;

namespace {

template <class Entries>
auto find_key(Entries& entries, std::u16string_view key) {
  return std::find_if(entries.begin(), entries.end(),
                      [key](const auto& entry) { return entry.first == key; });
}

Json json_of(const PropertyValue& value) {
  struct Convert {
    Json operator()(const std::u16string& text) const { return to_utf8(text); }
    Json operator()(bool truth) const { return truth; }
    Json operator()(std::int16_t number) const { return number; }
    Json operator()(std::int32_t number) const { return number; }
  };
  return std::visit(Convert{}, value);
}

[[noreturn]] void refuse() { throw RuntimeError(errors::type_mismatch, u"Type mismatch"); }

template <class Number>
bool fits(std::int64_t number) {
  return number >= std::numeric_limits<Number>::min() && number <= std::numeric_limits<Number>::max();
}

PropertyValue value_of(const Json& json) {
  if (json.is_string()) return from_utf8(json.get_ref<const std::string&>());
  if (json.is_boolean()) return json.get<bool>();
  if (!json.is_number_integer()) refuse();
  if (json.is_number_unsigned() && json.get<std::uint64_t>() > std::numeric_limits<std::int32_t>::max())
    refuse();
  const auto number = json.get<std::int64_t>();
  if (fits<std::int16_t>(number)) return static_cast<std::int16_t>(number);
  if (fits<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  refuse();
}

}  // namespace

PropertyValue PropertyBag::ReadProperty(std::u16string_view key, const PropertyValue& otherwise) const {
  const auto entry = find_key(entries_, key);
  return entry == entries_.end() ? otherwise : entry->second;
}

void PropertyBag::WriteProperty(std::u16string_view key, const PropertyValue& value,
                                const PropertyValue& standard) {
  written_.emplace_back(key);
  if (!platform::equal_in_store(value, standard)) {
    put(key, value);
  } else if (const auto entry = find_key(entries_, key); entry != entries_.end()) {
    entries_.erase(entry);
  }
}

void PropertyBag::put(std::u16string_view key, PropertyValue value) {
  const auto entry = find_key(entries_, key);
  if (entry == entries_.end()) {
    entries_.emplace_back(key, std::move(value));
  } else {
    entry->second = std::move(value);
  }
}

void PropertyBag::clear() {
  entries_.clear();
  written_.clear();
}

std::string to_json(const PropertyBag& bag) {
  Json object = Json::object();
  for (const auto& [key, value] : bag.entries()) object[to_utf8(key)] = json_of(value);
  return object.dump(2) + "\n";
}

PropertyBag property_bag_from_json(std::string_view json) {
  const Json object = Json::parse(json, nullptr, false);
  if (!object.is_object()) refuse();
  PropertyBag bag;
  for (const auto& [key, value] : object.items()) bag.put(from_utf8(key), value_of(value));
  return bag;
}

void save_property_bag(const PropertyBag& bag, std::u16string_view path) {
  save_atomically(path, to_json(bag));
}

std::optional<PropertyBag> load_property_bag(std::u16string_view path) {
  const std::optional<std::string> bytes = read_bytes(path);
  std::optional<PropertyBag> bag;
  if (bytes) attempt([&] { bag = property_bag_from_json(*bytes); });
  return bag;
}

}  // namespace tvx::headless
