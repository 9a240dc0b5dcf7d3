#include "tvx/dom/parser/active_formatting.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace tvx::dom::parser {
namespace {

std::size_t hash_of(const Attribute& attribute) {
  const std::size_t name = std::hash<Name>{}(attribute.name);
  return (name ^ std::hash<std::u16string>{}(attribute.value) * 31) * 0x9E3779B97F4A7C15u;
}

std::size_t hash_of(const AttributeList& attributes) {
  std::size_t sum = attributes.size();
  for (const Attribute& attribute : attributes) sum += hash_of(attribute);
  return sum;
}

// The same names and values, whatever their order.
bool equal(const AttributeList& a, const AttributeList& b) {
  if (a.size() != b.size()) return false;
  const auto same = [](const Attribute& x, const Attribute& y) {
    return x.name == y.name && x.value == y.value;
  };
  if (std::equal(a.begin(), a.end(), b.begin(), same)) return true;
  std::unordered_map<Name, const std::u16string*> values;
  for (const Attribute& attribute : a) values.emplace(attribute.name, &attribute.value);
  return std::all_of(b.begin(), b.end(), [&values](const Attribute& attribute) {
    const auto found = values.find(attribute.name);
    return found != values.end() && *found->second == attribute.value;
  });
}

}  // namespace

void ActiveFormatting::clear_to_marker() {
  drop_behind_marker();
  if (!entries_.empty()) entries_.pop_back();
}

void ActiveFormatting::drop_behind_marker() {
  while (!entries_.empty() && entries_.back().element) entries_.pop_back();
}

void ActiveFormatting::push(Element& element) {
  const std::size_t hash = hash_of(element.attributes());
  std::size_t equals = 0, earliest = none, begin = entries_.size();
  for (; begin > 0 && entries_[begin - 1].element; --begin) {
    const Entry& entry = entries_[begin - 1];
    if (entry.attributes_hash != hash || entry.element->name() != element.name()) continue;
    if (!equal(entry.element->attributes(), element.attributes())) continue;
    ++equals;
    earliest = begin - 1;
  }
  if (equals >= 3) {
    remove(earliest);
  } else if (entries_.size() - begin >= maximum_behind_marker) {
    remove(begin);
  }
  entries_.push_back({element, hash});
}

void ActiveFormatting::insert(std::size_t index, Element& element) {
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(index),
                  {element, hash_of(element.attributes())});
}

void ActiveFormatting::replace(std::size_t index, Element& element) { entries_[index].element = element; }

void ActiveFormatting::remove(std::size_t index) {
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
}

void ActiveFormatting::remove(const Element& element) {
  const std::size_t index = find(element);
  if (index != none) remove(index);
}

std::size_t ActiveFormatting::find(const Element& element) const {
  for (std::size_t i = entries_.size(); i > 0 && entries_[i - 1].element; --i) {
    if (entries_[i - 1].element == &element) return i - 1;
  }
  return none;
}

std::size_t ActiveFormatting::find_last(Name name) const {
  for (std::size_t i = entries_.size(); i > 0 && entries_[i - 1].element; --i) {
    if (entries_[i - 1].element->name() == name) return i - 1;
  }
  return none;
}

}  // namespace tvx::dom::parser
