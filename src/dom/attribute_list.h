#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "tvx/dom/name.h"

namespace tvx::dom {

struct Attribute {
  Name name;  // the qualified name: "href", "xlink:href"
  std::u16string value;
  AttributeNamespace name_space = AttributeNamespace::None;
};

/// An element's attributes in their order. What is taken off at the front leaves its room there, so that
/// thousands that go one by one, and come back one by one, cost what each of them costs.
class AttributeList {
 public:
  using const_iterator = std::vector<Attribute>::const_iterator;

  const_iterator begin() const { return attributes_.begin() + first_; }
  const_iterator end() const { return attributes_.end(); }
  std::size_t size() const { return attributes_.size() - first_; }
  /// In attributes, those that have gone included.
  std::size_t room() const { return attributes_.capacity(); }
  bool empty() const { return attributes_.size() == first_; }
  const Attribute& front() const { return attributes_[first_]; }
  const Attribute& operator[](std::size_t place) const { return attributes_[first_ + place]; }
  Attribute& operator[](std::size_t place) { return attributes_[first_ + place]; }

  void reserve(std::size_t count) { attributes_.reserve(first_ + count); }
  void push_back(Attribute attribute) { attributes_.push_back(std::move(attribute)); }

  /// Moves the shorter side.
  void erase(std::size_t place) {
    const auto first = attributes_.begin() + first_, at = first + std::ptrdiff_t(place);
    if (place >= size() / 2) {
      attributes_.erase(at);
    } else {
      std::move_backward(first, at, at + 1);
      *first = Attribute();
      ++first_;
    }
    if (first_ > few && first_ > 2 * size()) leave_room(0);
  }

  /// The last one stands there, and those from there on after it.
  void move_last_to(std::size_t place) {
    if (first_ == 0 && size() > few && place < size() / 2) leave_room(size());
    if (first_ == 0 || place >= size() / 2) {
      std::rotate(attributes_.begin() + first_ + std::ptrdiff_t(place), attributes_.end() - 1,
                  attributes_.end());
      return;
    }
    const auto first = attributes_.begin() + first_;
    std::move(first, first + std::ptrdiff_t(place), first - 1);
    --first_;
    (*this)[place] = std::move(attributes_.back());
    attributes_.pop_back();
  }

 private:
  static constexpr std::size_t few = 32;  // fewer are moved at once

  void leave_room(std::size_t room) {
    std::vector<Attribute> roomy(room);
    roomy.reserve(room + size());
    std::move(attributes_.begin() + first_, attributes_.end(), std::back_inserter(roomy));
    attributes_ = std::move(roomy);
    first_ = std::uint32_t(room);
  }

  std::vector<Attribute> attributes_;
  std::uint32_t first_ = 0;  // before it there is room
};

}  // namespace tvx::dom
