#include "tvx/editing/ranges/markup_pointer.h"

#include "tvx/base/error.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/ranges/text_range.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/word_bounds.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;

namespace {

std::optional<Boundary> one_unit_on(const Boundary& from, MoveUnitAction action) {
  switch (action) {
    case MoveUnitAction::PreviousCharacter: return next_character(from, Direction::Backward);
    case MoveUnitAction::NextCharacter: return next_character(from, Direction::Forward);
    case MoveUnitAction::PreviousWordBegin: return previous_word_begin(from);
    case MoveUnitAction::NextWordBegin: return next_word_begin(from);
    case MoveUnitAction::PreviousWordEnd: return previous_word_end(from);
    case MoveUnitAction::NextWordEnd: return next_word_end(from);
  }
  return std::nullopt;
}

std::strong_ordering order(const MarkupPointer& a, const MarkupPointer& b) {
  const Boundary first = a.place(), second = b.place();
  if (&dom::root_of(*first.node) != &dom::root_of(*second.node))
    throw RuntimeError(errors::invalid_call, u"The pointers are not in the same tree");
  return dom::compare(first, second);
}

bool holds_nothing(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return !element || dom::is_void(*element);
}

// One thing to the side of a spot, and the spot beyond it.
PointerContext pass(WalkPosition& spot, bool forward) {
  using Kind = PointerContext::Kind;
  for (;;) {
    if (spot.data) {
      const Offset length = forward ? spot.data->length() - spot.offset : spot.offset;
      Node& node = spot.node();
      if (!node.parent()) return {};
      const bool is_text = spot.is_text();
      forward ? spot.leave_forward() : spot.leave_backward();
      if (is_text && length > 0) return {Kind::Text, &node, length};
      continue;
    }
    Node* child = forward ? spot.next() : spot.previous();
    if (!child) {
      Node& node = spot.node();
      if (!node.parent()) return {};
      forward ? spot.leave_forward() : spot.leave_backward();
      return {Kind::ExitScope, &node};
    }
    forward ? spot.enter_start(*child) : spot.enter_end(*child);
    if (child->is_text()) continue;
    if (!holds_nothing(*child)) return {Kind::EnterScope, child};
    forward ? spot.leave_forward() : spot.leave_backward();
    return {Kind::NoScope, child};
  }
}

}  // namespace

MarkupPointer::MarkupPointer(dom::Document& document) : document_(document), place_(document, {}) {
  document.add_observer(*this);
}

MarkupPointer::~MarkupPointer() { document_->remove_observer(*this); }

Boundary MarkupPointer::place() const {
  if (!IsPositioned()) throw RuntimeError(errors::object_not_set, u"The pointer stands nowhere");
  return place_.start();
}

void MarkupPointer::MoveTo(const Boundary& place) { place_.set({place, place}); }

void MarkupPointer::MoveUnit(MoveUnitAction action) {
  const std::optional<Boundary> next = one_unit_on(place(), action);
  if (!next) throw RuntimeError(errors::invalid_call, u"There is nothing more in this direction");
  MoveTo(*next);
}

void MarkupPointer::MoveAdjacentToElement(Element& element, ElementAdjacency where) {
  const bool outside = where == ElementAdjacency::BeforeBegin || where == ElementAdjacency::AfterEnd;
  if (outside && !element.parent())
    throw RuntimeError(errors::invalid_call, u"The element stands in nothing");
  switch (where) {
    case ElementAdjacency::BeforeBegin: return MoveTo(dom::before(element));
    case ElementAdjacency::AfterBegin: return MoveTo({&element, 0});
    case ElementAdjacency::BeforeEnd: return MoveTo({&element, dom::length_of(element)});
    case ElementAdjacency::AfterEnd: return MoveTo(dom::after(element));
  }
}

void MarkupPointer::MoveToContainer(Node& container, bool at_start) {
  MoveTo({&container, at_start ? 0 : dom::length_of(container)});
}

void MarkupPointer::MoveToPointer(const MarkupPointer& other) { MoveTo(other.place()); }

Element* MarkupPointer::CurrentScope() const {
  Node* node = place().node;
  return node->is_element() ? static_cast<Element*>(node) : node->parent_element();
}

PointerContext MarkupPointer::RightContext() const {
  WalkPosition spot(place());
  return pass(spot, true);
}

PointerContext MarkupPointer::LeftContext() const {
  WalkPosition spot(place());
  return pass(spot, false);
}

PointerContext MarkupPointer::Right() {
  WalkPosition spot(place());
  const PointerContext met = pass(spot, true);
  if (met.node) MoveTo(spot.boundary());
  return met;
}

PointerContext MarkupPointer::Left() {
  WalkPosition spot(place());
  const PointerContext met = pass(spot, false);
  if (met.node) MoveTo(spot.boundary());
  return met;
}

bool MarkupPointer::IsEqualTo(const MarkupPointer& other) const { return order(*this, other) == 0; }
bool MarkupPointer::IsLeftOf(const MarkupPointer& other) const { return order(*this, other) < 0; }
bool MarkupPointer::IsLeftOfOrEqualTo(const MarkupPointer& other) const { return order(*this, other) <= 0; }

// A live range stays before what is inserted at its position; gravity to the right goes along after it.
void MarkupPointer::mutated(const dom::Mutation& mutation) {
  if (gravity_ == PointerGravity::Left) return;
  const Boundary place = place_.start();
  if (mutation.type == dom::Mutation::Type::Insert && place.node == mutation.parent.get() &&
      dom::child_at(*place.node, place.offset) == mutation.node.get()) {
    MoveTo({place.node, place.offset + 1});
  } else if (mutation.type == dom::Mutation::Type::ReplaceData && place.node == mutation.node.get() &&
             place.offset == mutation.offset && mutation.removed.empty()) {
    MoveTo({place.node, place.offset + mutation.inserted.size()});
  }
}

void MoveRangeToPointers(const MarkupPointer& start, const MarkupPointer& end, TextRange& range) {
  const bool reversed = end.IsLeftOf(start);
  range.set({(reversed ? end : start).place(), (reversed ? start : end).place()});
}

void MoveToCaretPlace(MarkupPointer& pointer) { pointer.MoveTo(normalized_caret_place(pointer.place())); }

}  // namespace tvx::editing
