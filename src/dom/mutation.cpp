#include "tvx/dom/mutation.h"

#include <algorithm>

#include <cassert>

#include "tvx/base/error.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/attribute_places.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/range.h"
#include "tvx/dom/set_attribute_again.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

/// The primitives themselves, with the order that all listeners rely on: the journal notes the selection,
/// the ranges move, the tree changes, the observers hear of it, the journal keeps the record.
class MutationDoor {
 public:
  static void insert(Document& document, Node& parent, Ref<Node> child, Node* before) {
    begin(document);
    if (!document.live_ranges_.empty()) ranges_before_insert(document, parent, before);
    Builder::insert(parent, child, before);
    ++document.structure_version_;
    Mutation mutation = record_of(Mutation::Type::Insert, document, *child);
    mutation.parent = parent;
    mutation.before = before;
    finish(document, std::move(mutation));
  }

  static void remove(Document& document, Node& child) {
    begin(document);
    ranges_before_remove(document, child);
    Mutation mutation = record_of(Mutation::Type::Remove, document, child);
    mutation.parent = child.parent();
    mutation.before = child.next_sibling();
    Builder::remove(child);
    ++document.structure_version_;
    finish(document, std::move(mutation));
  }

  static void replace_data(Document& document, CharacterData& node, Offset at, Offset count,
                           std::u16string_view text) {
    begin(document);
    Mutation mutation = record_of(Mutation::Type::ReplaceData, document, node);
    mutation.offset = at;
    mutation.removed = node.data().substr(at, count);
    mutation.inserted = text;
    Builder::data(node).replace(at, count, mutation.inserted);
    for (LiveRange* range : document.live_ranges_) {
      follow_data(range->start_node_, range->start_offset_, node, at, count, text.size());
      follow_data(range->end_node_, range->end_offset_, node, at, count, text.size());
    }
    finish(document, std::move(mutation));
  }

  static void set_attribute(Document& document, Element& element, Name name, AttributeNamespace name_space,
                            std::optional<std::u16string> value) {
    begin(document);
    Mutation mutation = record_of(Mutation::Type::SetAttribute, document, element);
    mutation.attribute = name;
    mutation.attribute_namespace = name_space;
    mutation.new_value = value;
    auto& attributes = Builder::attributes(element);
    const std::size_t place = AttributePlaces::find(element, name);
    if (place == AttributePlaces::nowhere) {
      attributes.push_back({name, std::move(*value), name_space});
      AttributePlaces::appended(element);
    } else {
      Attribute& found = attributes[place];
      mutation.old_value = std::move(found.value);
      mutation.attribute_namespace = found.name_space;
      mutation.attribute_index = place;
      if (value) {
        found.value = std::move(*value);
      } else {
        attributes.erase(place);
        AttributePlaces::erased(element, name, place);
      }
    }
    finish(document, std::move(mutation));
  }

  /// Puts a removed attribute back at its old place, so that undo restores the text byte for byte.
  static void move_last_attribute(Element& element, std::size_t index) {
    auto& attributes = Builder::attributes(element);
    if (index + 1 >= attributes.size()) return;
    attributes.move_last_to(index);
    AttributePlaces::moved_forward(element, index);
  }

  static void move_ranges_to_split(Document& document, Text& text, Offset at, Text& tail) {
    for (LiveRange* range : document.live_ranges_) {
      follow_split(range->start_node_, range->start_offset_, text, at, tail);
      follow_split(range->end_node_, range->end_offset_, text, at, tail);
    }
  }

  /// Nothing has changed: neither a version nor the journal knows of it.
  static void tell_again(Document& document, Element& element, Name name, const std::u16string& value) {
    Mutation mutation = record_of(Mutation::Type::SetAttribute, document, element);
    mutation.attribute = name;
    mutation.old_value = mutation.new_value = value;
    tell(document, mutation);
  }

 private:
  static void begin(Document& document) { document.journal().before_mutation(); }

  static Mutation record_of(Mutation::Type type, Document& document, Node& node) {
    Mutation mutation;
    mutation.type = type;
    mutation.kind = document.mutation_kind();
    mutation.node = node;
    return mutation;
  }

  static void tell(Document& document, const Mutation& mutation) {
    for (std::size_t i = 0; i < document.observers_.size(); ++i) document.observers_[i]->mutated(mutation);
  }

  static void finish(Document& document, Mutation mutation) {
    ++document.version_;
    tell(document, mutation);
    document.journal().record(std::move(mutation));
  }

  // DOM standard, section 4.2.3 "insert", step 5.
  static void ranges_before_insert(Document& document, Node& parent, Node* before) {
    if (!before) return;
    const auto follow = [&](const Ref<Node>& node, Offset& offset) {
      if (node.get() == &parent && stands_before(*before, offset)) ++offset;
    };
    for (LiveRange* range : document.live_ranges_) {
      follow(range->start_node_, range->start_offset_);
      follow(range->end_node_, range->end_offset_);
    }
  }

  // DOM standard, section 5.5 "live range pre-remove steps".
  static void ranges_before_remove(Document& document, Node& child) {
    const auto follow = [&](Ref<Node>& node, Offset& offset) {
      if (node.get() == child.parent()) {
        if (stands_before(child, offset)) --offset;
      } else if (node && (child.has_children() ? is_inclusive_ancestor(child, *node) : node == &child)) {
        node = child.parent();
        offset = index_of(child);
      }
    };
    for (LiveRange* range : document.live_ranges_) {
      follow(range->start_node_, range->start_offset_);
      follow(range->end_node_, range->end_offset_);
    }
  }

  // DOM standard, section 4.10 "replace data", steps 8 to 11.
  static void follow_data(const Ref<Node>& node, Offset& offset, CharacterData& data, Offset at, Offset count,
                          Offset added) {
    if (node.get() != &data || offset <= at) return;
    offset = offset <= at + count ? at : offset + added - count;
  }

  // DOM standard, section 4.11 "split", step 7.
  static void follow_split(Ref<Node>& node, Offset& offset, Text& text, Offset at, Text& tail) {
    if (node.get() == &text && offset > at) {
      node = tail;
      offset -= at;
    }
  }
};

namespace {

[[noreturn]] void refuse(std::u16string text) { throw RuntimeError(errors::invalid_call, std::move(text)); }

bool may_hold(const Node& parent, const Node& child) {
  switch (parent.type()) {
    case NodeType::Document: return !child.is_text() && child.type() != NodeType::Document;
    case NodeType::Element:
    case NodeType::DocumentFragment:
      return child.type() != NodeType::Document && child.type() != NodeType::DocumentType;
    default: return false;
  }
}

// Whether a child would be put into itself. A climb that meets what the child stands in has missed the child:
// a move to nearby, one level up or into a sibling, is not a climb to the root.
bool holds(const Node& child, const Node& parent) {
  if (!child.has_children()) return &child == &parent;
  const Node* around = child.parent();
  const Node* further = around ? around->parent() : nullptr;
  for (const Node* current = &parent; current; current = current->parent()) {
    count_work();
    if (current == &child) return true;
    if (current == around || current == further) return false;
  }
  return false;
}

}  // namespace

void insert(Node& parent, Ref<Node> child, Node* before) {
  Document& document = document_of(parent);
  if (child->document() != &document) refuse(u"The node belongs to another document");
  if (before && before->parent() != &parent) refuse(u"The place is not in this element");
  if (holds(*child, parent)) refuse(u"A node can't be put into itself");
  if (child->type() == NodeType::DocumentFragment) {
    while (Node* first = child->first_child()) insert(parent, first, before);
    return;
  }
  if (!may_hold(parent, *child)) refuse(u"The node can't stand here");
  if (before == child.get()) before = child->next_sibling();
  if (child->parent()) remove(*child);
  MutationDoor::insert(document, parent, std::move(child), before);
}

Ref<Node> remove(Node& child) {
  Ref<Node> held(child);
  if (child.parent()) MutationDoor::remove(document_of(child), child);
  return held;
}

void replace_data(CharacterData& node, Offset at, Offset count, std::u16string_view text) {
  Document& document = document_of(node);
  if (at > node.length()) refuse(u"The place is behind the end of the text");
  count = std::min(count, node.length() - at);
  if (std::u16string_view(node.data()).substr(at, count) == text) return;
  MutationDoor::replace_data(document, node, at, count, text);
}

void set_attribute(Element& element, Name name, std::u16string_view value, AttributeNamespace name_space) {
  Document& document = document_of(element);
  if (const std::u16string* present = element.attribute(name); present && *present == value) return;
  MutationDoor::set_attribute(document, element, name, name_space, std::u16string(value));
}

void set_attribute_again(Element& element, Name name) {
  const std::u16string* present = element.attribute(name);
  if (!present) return;
  Document& document = document_of(element);
  const MutationScope scope(document, MutationKind::Load);
  MutationDoor::tell_again(document, element, name, *present);
}

void remove_attribute(Element& element, Name name) {
  Document& document = document_of(element);
  if (!element.has_attribute(name)) return;
  MutationDoor::set_attribute(document, element, name, AttributeNamespace::None, std::nullopt);
}

Ref<Text> split_text(Text& text, Offset at) {
  Document& document = document_of(text);
  if (at > text.length()) refuse(u"The place is behind the end of the text");
  Ref<Text> tail = document.create_text(text.data().substr(at));
  if (text.parent()) {
    MutationDoor::insert(document, *text.parent(), tail, text.next_sibling());
    MutationDoor::move_ranges_to_split(document, text, at, *tail);
    // Ranges right after the text in the parent stand after the tail now (DOM standard, "split", step 7).
    for (LiveRange* range : document.live_ranges()) {
      const auto behind = [&](Boundary b) { return b.node == text.parent() && b.offset == index_of(*tail); };
      if (behind(range->start()) || behind(range->end())) {
        Boundary start = range->start(), end = range->end();
        if (behind(start)) ++start.offset;
        if (behind(end)) ++end.offset;
        range->set_unordered(start, end);
      }
    }
  }
  replace_data(text, at, text.length() - at, u"");
  return tail;
}

void clear(Node& parent) {
  // From the end: no range has to count the siblings before.
  while (Node* child = parent.last_child()) remove(*child);
}

void replace_children(Node& parent, Ref<Node> child) {
  clear(parent);
  if (child) insert(parent, std::move(child));
}

namespace detail {

void restore_attribute_place(Element& element, std::size_t index) {
  MutationDoor::move_last_attribute(element, index);
}

}  // namespace detail

}  // namespace tvx::dom
