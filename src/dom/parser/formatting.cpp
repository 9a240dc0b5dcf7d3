#include <algorithm>

#include "tvx/dom/builder.h"
#include "tvx/dom/parser/tree_builder.h"

// Formatting elements that don't nest as their tags do: HTML standard, section 13.2.4.3 "reconstruct the
// active formatting elements" and section 13.2.6.4.7 "adoption agency algorithm".
namespace tvx::dom::parser {

Ref<Element> TreeBuilder::twin_of(const Element& element) {
  std::vector<Attribute> attributes(element.attributes().begin(), element.attributes().end());
  return create_element(element.name(), Namespace::Html, attributes);
}

bool TreeBuilder::is_open_or_marker(std::size_t entry) const {
  const Element* element = formatting_.at(entry);
  return !element || stack_.contains(*element);
}

void TreeBuilder::reconstruct_formatting() {
  if (formatting_.empty() || is_open_or_marker(formatting_.size() - 1)) return;
  std::size_t first = formatting_.size() - 1;
  while (first > 0 && !is_open_or_marker(first - 1)) --first;
  reconstructed_ += formatting_.size() - first;
  if (reconstructed_ > reconstruction_allowance + tokenizer_.position()) {
    // OURS: a text that makes more elements out of this than it has letters gets no more of them.
    formatting_.drop_behind_marker();
    return;
  }
  for (std::size_t i = first; i < formatting_.size(); ++i) {
    const Element& closed = *formatting_.at(i);
    insert_element(twin_of(closed), closed.name());
    formatting_.replace(i, current());
  }
}

void TreeBuilder::push_formatting(Token& token) {
  reconstruct_formatting();
  formatting_.push(insert_html(token));
}

/// One turn of the adoption agency algorithm's outer loop. `chain` is the part of the stack from the
/// formatting element on; the stack itself is put right in one go at the end of the turn.
struct TreeBuilder::Adoption {
  int index;                    // of the formatting element in the stack
  std::size_t bookmark;         // in the list of active formatting elements
  std::vector<Element*> chain;  // [0] is the formatting element
  std::size_t furthest;         // where in the chain the furthest block stands
  std::vector<Ref<Element>> made;
  Node* last_node = nullptr;
};

void TreeBuilder::adopt(Token& token) {
  // Step 2: the usual case, an element that ends where it should and won't be opened again.
  if (current().is_html() && current().name() == token.name &&
      formatting_.find(current()) == formatting_.none)
    return pop();
  for (int turn = 0; turn < 8; ++turn) {
    switch (adopt_once(token)) {
      case Adopted::More: break;
      case Adopted::Done: return;
      case Adopted::AnyOtherEndTag: return any_other_end_tag(token);
    }
  }
}

TreeBuilder::Adopted TreeBuilder::adopt_once(Token& token) {
  const std::size_t entry = formatting_.find_last(token.name);
  if (entry == ActiveFormatting::none) return Adopted::AnyOtherEndTag;
  const Ref<Element> formatting(formatting_.at(entry));
  const int index = stack_.index_of(*formatting);
  if (index == OpenElements::none) {
    formatting_.remove(entry);
    return Adopted::Done;
  }
  if (!stack_.has_in_scope(*formatting)) return Adopted::Done;
  if (stack_.size() - index > adoption_reach) {  // OURS: see the class
    formatting_.remove(entry);
    return Adopted::Done;
  }
  int furthest = index + 1;
  while (furthest < stack_.size() && !is_special(stack_.at(furthest))) ++furthest;
  if (furthest == stack_.size()) {
    pop_through(index);
    formatting_.remove(entry);
    return Adopted::Done;
  }
  Adoption adoption{index, entry, {}, static_cast<std::size_t>(furthest - index), {}};
  for (int i = index; i < stack_.size(); ++i) adoption.chain.push_back(&stack_.at(i));
  adopt_into_furthest_block(adoption);
  return Adopted::More;
}

// Steps 4.9 to 4.20.
void TreeBuilder::adopt_into_furthest_block(Adoption& adoption) {
  Element& formatting = *adoption.chain[0];
  Element& furthest_block = *adoption.chain[adoption.furthest];
  clone_chain(adoption);

  const Place place = element_place(adoption.index - 1);
  Ref<Node> moved(adoption.last_node);
  if (moved->parent()) Builder::remove(*moved);
  Builder::insert(*place.parent, std::move(moved), place.before);

  Ref<Element> twin = twin_of(formatting);
  Builder::move_children(furthest_block, *twin);
  Builder::insert(furthest_block, twin);

  const std::size_t old = formatting_.find(formatting);
  formatting_.insert(adoption.bookmark, *twin);
  formatting_.remove(old < adoption.bookmark ? old : old + 1);

  auto& chain = adoption.chain;
  chain.insert(chain.begin() + static_cast<std::ptrdiff_t>(adoption.furthest) + 1, twin.get());
  chain.erase(chain.begin());
  stack_.replace_from(adoption.index, chain);
}

// Step 4.13, the inner loop: from the furthest block up to the formatting element, each element between is
// replaced by a twin that holds the last one, or leaves the stack.
void TreeBuilder::clone_chain(Adoption& adoption) {
  auto& chain = adoption.chain;
  adoption.last_node = chain[adoption.furthest];
  std::vector<Element*> kept;  // from the furthest block upwards
  for (std::size_t steps = 1; steps < adoption.furthest; ++steps) {
    Element& node = *chain[adoption.furthest - steps];
    std::size_t entry = formatting_.find(node);
    if (entry == ActiveFormatting::none) continue;
    if (steps > 3) {
      formatting_.remove(entry);
      if (entry < adoption.bookmark) --adoption.bookmark;
      continue;
    }
    Ref<Element> twin = twin_of(node);
    formatting_.replace(entry, *twin);
    if (adoption.last_node == chain[adoption.furthest]) adoption.bookmark = entry + 1;
    Ref<Node> moved(adoption.last_node);
    if (moved->parent()) Builder::remove(*moved);
    Builder::insert(*twin, std::move(moved));
    adoption.last_node = twin.get();
    kept.push_back(twin.get());
    adoption.made.push_back(std::move(twin));
  }
  // Out of the stack: what was not kept. The furthest block moves up after the twins.
  const std::vector<Element*> below(chain.begin() + static_cast<std::ptrdiff_t>(adoption.furthest),
                                    chain.end());
  chain.resize(1);
  chain.insert(chain.end(), kept.rbegin(), kept.rend());
  adoption.furthest = chain.size();
  chain.insert(chain.end(), below.begin(), below.end());
}

}  // namespace tvx::dom::parser
