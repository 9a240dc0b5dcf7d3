#include "tvx/dom/parser/open_elements.h"

#include <cassert>

#include "tvx/dom/builder.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::parser {

OpenElements::OpenElements() { last_by_tag_.fill(none); }

OpenElements::~OpenElements() { pop_to_size(0); }

int& OpenElements::last_of_name(const Element& element, Name source_name) {
  if (!element.is_html()) return last_foreign_.try_emplace(source_name.key(), none).first->second;
  if (element.tag() != Tag::Unknown) return last_by_tag_[static_cast<std::size_t>(element.tag())];
  return last_unknown_.try_emplace(source_name.key(), none).first->second;
}

// Nearly always one more than the current node's; else found from where the element's parent stands.
int OpenElements::depth_of_next(const Element& element) const {
  if (entries_.empty()) return 0;
  const Entry& last = entries_.back();
  const Node* parent = element.parent();
  if (parent == last.element.get() || (parent && parent == last.element->template_content()))
    return last.depth + 1;
  if (parent == last.element->parent()) return last.depth;
  const auto* open = as<Element>(parent);
  if (open && contains(*open)) return depth(index_of(*open)) + 1;
  return static_cast<int>(dom::depth_of(element));
}

void OpenElements::push(Element& element, Name source_name) {
  const int index = size();
  int& last_of_same = last_of_name(element, source_name);
  Entry entry{element, source_name, depth_of_next(element), last_of_same, {}};
  last_of_same = index;
  const BoundarySet set = boundaries_of(element);
  for (std::size_t i = 0; i < entry.last.size(); ++i) {
    const bool is_boundary = set & bit(static_cast<Boundary>(i));
    entry.last[i] = is_boundary ? index : (index > 0 ? entries_.back().last[i] : none);
  }
  entries_.push_back(std::move(entry));
  Builder::parsing_mark(element) = static_cast<std::uint32_t>(index) + 1;
}

void OpenElements::pop() {
  const Entry& entry = entries_.back();
  last_of_name(*entry.element, entry.source_name) = entry.previous_of_name;
  Builder::parsing_mark(*entry.element) = 0;
  entries_.pop_back();
}

void OpenElements::pop_to_size(int wanted) {
  while (size() > wanted) pop();
}

void OpenElements::remove(int index) {
  std::vector<Entry> above(entries_.begin() + index + 1, entries_.end());
  pop_to_size(index);
  for (const Entry& entry : above) push(*entry.element, entry.source_name);
}

void OpenElements::replace_from(int index, const std::vector<Element*>& elements) {
  const std::vector<Entry> held(entries_.begin() + index, entries_.end());
  std::unordered_map<const Element*, Name> foreign;
  for (const Entry& entry : held) {
    if (!entry.element->is_html()) foreign.emplace(entry.element.get(), entry.source_name);
  }
  pop_to_size(index);
  for (Element* element : elements) {
    push(*element, element->is_html() ? element->name() : foreign.at(element));
  }
}

int OpenElements::index_of(const Element& element) const {
  return static_cast<int>(Builder::parsing_mark(element)) - 1;
}

int OpenElements::last_html(Name name) const {
  if (name.tag() != Tag::Unknown) return last(name.tag());
  const auto found = last_unknown_.find(name.key());
  return found == last_unknown_.end() ? none : found->second;
}

int OpenElements::last_foreign(Name source_name) const {
  const auto found = last_foreign_.find(source_name.key());
  return found == last_foreign_.end() ? none : found->second;
}

int OpenElements::last(Boundary boundary) const {
  return entries_.empty() ? none : entries_.back().last[static_cast<std::size_t>(boundary)];
}

bool OpenElements::has_in_scope(Tag tag, Boundary scope) const {
  const int index = last(tag);
  return index != none && index >= last(scope);
}

bool OpenElements::has_in_scope(const Element& element) const {
  const int index = index_of(element);
  return index != none && index >= last(Boundary::Scope);
}

}  // namespace tvx::dom::parser
