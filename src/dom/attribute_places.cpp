#include "tvx/dom/attribute_places.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "tvx/base/work_count.h"

namespace tvx::dom {
namespace {

/// A search of a shorter list costs no more than asking a table.
constexpr std::size_t worth_a_table = 64;

/// Each attribute taken out moves all that follow up by one, which the table doesn't follow: an attribute
/// stands where it was noted or at most `erased` before, and a little after it where others came back. At the
/// front, where many may come and go, all of them move, and `start` tells how far.
struct Table {
  const Element* element = nullptr;
  std::unordered_map<Name, std::ptrdiff_t> noted;
  std::ptrdiff_t start = 0, erased = 0;

  void fill(const Element& of) {
    element = &of;
    noted.clear();
    start = erased = 0;
    const auto& attributes = of.attributes();
    count_work(attributes.size());
    noted.reserve(attributes.size());
    for (std::size_t i = 0; i < attributes.size(); ++i) note(attributes[i].name, i);
  }
  void note(Name name, std::size_t place) { noted.try_emplace(name, std::ptrdiff_t(place) + start + erased); }

  /// From where it stands if all that went stood before it. None: too far off to be worth a search.
  std::optional<std::size_t> place_of(Name name) const {
    const auto found = noted.find(name);
    if (found == noted.end()) return AttributePlaces::nowhere;
    const auto& attributes = element->attributes();
    const auto first = std::size_t(std::max<std::ptrdiff_t>(found->second - start - erased, 0));
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
  known.note(element.attributes()[last].name, last);
}

void AttributePlaces::erased(const Element& element, Name name, std::size_t place) {
  Table& known = table();
  if (known.element != &element) return;
  known.noted.erase(name);
  if (place == 0)
    ++known.start;
  else if (place < element.attributes().size())
    ++known.erased;
}

void AttributePlaces::moved_forward(const Element& element, std::size_t place) {
  Table& known = table();
  if (known.element != &element) return;
  const Name name = element.attributes()[place].name;
  known.noted.erase(name);
  if (place == 0) --known.start;
  known.note(name, place);
}

void AttributePlaces::forget(const Element& element) {
  if (table().element == &element) table() = {};
}

}  // namespace tvx::dom
