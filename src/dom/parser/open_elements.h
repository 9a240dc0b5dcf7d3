#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "tvx/dom/parser/tag_sets.h"

namespace tvx::dom::parser {

/// The stack of open elements (HTML standard, section 13.2.4.2), which grows downwards: index 0 is the html
/// element, the last one the current node.
/// Every question about scopes costs the same on a stack of ten and of two hundred thousand: each entry
/// knows the nearest entry of its name and the nearest boundaries above it.
class OpenElements {
 public:
  static constexpr int none = -1;

  OpenElements();
  ~OpenElements();
  OpenElements(const OpenElements&) = delete;
  OpenElements& operator=(const OpenElements&) = delete;

  int size() const { return static_cast<int>(entries_.size()); }
  bool empty() const { return entries_.empty(); }
  Element& current() const { return *entries_.back().element; }
  Element& at(int index) const { return *entries_[static_cast<std::size_t>(index)].element; }

  /// The element stands in its tree already. `source_name`: the name in small letters, as end tags have it;
  /// foreign names may differ from it.
  void push(Element& element, Name source_name);
  void push(Element& element) { push(element, element.name()); }
  void pop();
  void pop_to_size(int size);
  void remove(int index);
  /// Puts these in place of everything from `index` on.
  void replace_from(int index, const std::vector<Element*>& elements);

  /// How many nodes stand above the element in its tree, contents of templates counted in; may be more or
  /// less than `index`, where elements were fostered or left the stack before what they hold.
  int depth(int index) const { return entries_[static_cast<std::size_t>(index)].depth; }

  /// Where the element stands, none if it isn't open.
  int index_of(const Element& element) const;
  bool contains(const Element& element) const { return index_of(element) != none; }
  /// The last open HTML element of that name, none if there isn't any.
  int last(Tag tag) const { return last_by_tag_[static_cast<std::size_t>(tag)]; }
  int last_html(Name name) const;
  int last_foreign(Name source_name) const;
  int last(Boundary boundary) const;

  bool has_in_scope(Tag tag, Boundary scope = Boundary::Scope) const;
  bool has_in_scope(const Element& element) const;

 private:
  using NameMap = std::unordered_map<const void*, int>;
  struct Entry {
    Ref<Element> element;  // held: a copied option may take the place of what is still open
    Name source_name;
    int depth;
    int previous_of_name;                                             // the entry of the same name above
    std::array<int, static_cast<std::size_t>(Boundary::Count)> last;  // with this entry itself
  };
  int depth_of_next(const Element& element) const;
  int& last_of_name(const Element& element, Name source_name);

  std::vector<Entry> entries_;
  std::array<int, static_cast<std::size_t>(Tag::Count)> last_by_tag_;
  NameMap last_unknown_, last_foreign_;
};

}  // namespace tvx::dom::parser
