#include "tvx/dom/attribute_places.h"

#include <unordered_map>

#include "tvx/base/work_count.h"

namespace tvx::dom {
namespace {

/// A search of a shorter list costs no more than asking a table.
constexpr std::size_t worth_a_table = 64;

struct Table {
  const Element* element = nullptr;
  std::unordered_map<Name, std::size_t> places;

  void fill(const Element& of) {
    element = &of;
    places.clear();
    const auto& attributes = of.attributes();
    count_work(attributes.size());
    places.reserve(attributes.size());
    for (std::size_t i = 0; i < attributes.size(); ++i) places.try_emplace(attributes[i].name, i);
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
    count_work();
    const auto found = known.places.find(name);
    return found == known.places.end() ? nowhere : found->second;
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
  known.places.try_emplace(element.attributes()[last].name, last);
}

void AttributePlaces::erased(const Element& element, Name name, std::size_t place) {
  Table& known = table();
  if (known.element != &element) return;
  if (place == element.attributes().size()) {
    known.places.erase(name);  // it was the last
  } else {
    forget(element);
  }
}

void AttributePlaces::forget(const Element& element) {
  if (table().element == &element) table() = {};
}

}  // namespace tvx::dom
