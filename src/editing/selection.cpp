#include "editing/selection.h"

#include <algorithm>

namespace tvx::editing {

using dom::Boundary;

Selection::Selection(dom::Document& document) : document_(document), range_(document, {}) {}
Selection::~Selection() = default;

Boundary Selection::anchor() const { return type_ == SelectionType::None ? Boundary{} : range_.start(); }
Boundary Selection::focus() const { return type_ == SelectionType::None ? Boundary{} : range_.end(); }

dom::Range Selection::range() const {
  const Boundary a = anchor(), b = focus();
  if (!a || a == b || compare(a, b) <= 0) return {a, b};
  return {b, a};
}

dom::Element* Selection::control() const {
  if (type_ != SelectionType::Control) return nullptr;
  const Boundary start = range_.start();
  return dom::as<dom::Element>(dom::child_at(*start.node, start.offset));
}

void Selection::set(Boundary anchor, Boundary focus) {
  type_ = SelectionType::Text;
  range_.set_unordered(anchor, focus);
  notify();
}

void Selection::select_control(dom::Element& element) {
  type_ = SelectionType::Control;
  range_.set_unordered(before(element), after(element));
  notify();
}

void Selection::clear() {
  if (type_ == SelectionType::None) return;
  type_ = SelectionType::None;
  range_.set_unordered({}, {});
  notify();
}

void Selection::add_observer(SelectionObserver& observer) { observers_.push_back(&observer); }
void Selection::remove_observer(SelectionObserver& observer) { std::erase(observers_, &observer); }

void Selection::hold_notifications() { ++holds_; }

void Selection::release_notifications() {
  if (--holds_ == 0 && missed_) notify();
}

void Selection::notify() {
  missed_ = holds_ > 0;
  if (missed_) return;
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->selection_changed();
}

dom::SelectionRecord Selection::capture() const {
  const Boundary a = anchor(), f = focus();
  return {a.node, a.offset, f.node, f.offset, type_ == SelectionType::Control};
}

void Selection::restore(const dom::SelectionRecord& record) {
  if (!record.anchor_node) return clear();
  type_ = record.control ? SelectionType::Control : SelectionType::Text;
  range_.set_unordered({record.anchor_node.get(), record.anchor_offset},
                       {record.focus_node.get(), record.focus_offset});
  notify();
}

}  // namespace tvx::editing
