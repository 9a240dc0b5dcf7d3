#include "tvx/dom/attribute_places.h"

#include <optional>
#include <unordered_map>

#include "tvx/base/work_count.h"

namespace tvx::dom {
namespace {

/// A search of a shorter list costs no more than asking a table.
constexpr std::size_t worth_a_table = 64;

/// Each attribute taken out moves all that follow up by one, which the table doesn't follow: an attribute
/// stands where it was noted or at most `erased` before.
struct Table {
  const Element* element = nullptr;
  std::unordered_map<Name, std::size_t> places;
  std::size_t erased = 0;

  void fill(const Element& of) {
    element = &of;
    places.clear();
    erased = 0;
    const auto& attributes = of.attributes();
    count_work(attributes.size());
    places.reserve(attributes.size());
    for (std::size_t i = 0; i < attributes.size(); ++i) places.try_emplace(attributes[i].name, i);
  }

  /// From where it stands if all that went stood before it. None: too far off to be worth a search.
  std::optional<std::size_t> place_of(Name name) const {
    const auto found = places.find(name);
    if (found == places.end()) return AttributePlaces::nowhere;
    const auto& attributes = element->attributes();
    const std::size_t first = found->second > erased ? found->second - erased : 0;
    for (std::size_t i = first; i < attributes.size() && i < first + worth_a_table; ++i) {
      count_work();
      if (attributes[i].name == name) return i;
    }
    return std::nullopt;
  }
};

Table& table() {
  static auto& table = *new Table;  // elements may outlive any static object
  return table;
}

}  // namespace

std::size_t AttributePlaces::find(const Element& element, Name name) {
  const auto& attributes = element.attributes();
  if (attributes.size() >= worth_a_table) {
    Table& known = table();
    if (known.element != &element) known.fill(element);
    if (const auto place = known.place_of(name)) return *place;
    known.fill(element);
    return *known.place_of(name);
  }
  count_work(attributes.size());
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    if (attributes[i].name == name) return i;
  }
  return nowhere;
}

void AttributePlaces::appended(const Element& element) {
  Table& known = table();
  if (known.element != &element) return;
  const std::size_t last = element.attributes().size() - 1;
  known.places.try_emplace(element.attributes()[last].name, last + known.erased);
}

void AttributePlaces::erased(const Element& element, Name name, std::size_t place) {
  Table& known = table();
  if (known.element != &element) return;
  known.places.erase(name);
  if (place < element.attributes().size()) ++known.erased;
}

void AttributePlaces::forget(const Element& element) {
  if (table().element == &element) table() = {};
}

}  // namespace tvx::dom
