#pragma once

#include <cstddef>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::dom::parser {

/// The list of active formatting elements (HTML standard, section 13.2.4.3): what is opened again when
/// text follows after the element was closed by its surroundings. An empty entry is a marker.
class ActiveFormatting {
 public:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);
  /// OURS: after the last marker stand at most so many, the oldest ones fall out; the standard has no bound.
  static constexpr std::size_t maximum_behind_marker = 512;

  struct Entry {
    Ref<Element> element;
    std::size_t attributes_hash = 0;  // whatever their order
  };

  bool empty() const { return entries_.empty(); }
  std::size_t size() const { return entries_.size(); }
  Element* at(std::size_t index) const { return entries_[index].element.get(); }

  void push_marker() { entries_.push_back({}); }
  void clear_to_marker();
  /// Adds an element; of equal ones after the last marker at most three stay ("Noah's Ark clause").
  void push(Element& element);
  void insert(std::size_t index, Element& element);
  void replace(std::size_t index, Element& element);
  void remove(std::size_t index);
  void remove(const Element& element);
  /// Drops all after the last marker.
  void drop_behind_marker();

  /// After the last marker; none if not there.
  std::size_t find(const Element& element) const;
  /// The last one of that name after the last marker.
  std::size_t find_last(Name name) const;

 private:
  std::vector<Entry> entries_;
};

}  // namespace tvx::dom::parser
