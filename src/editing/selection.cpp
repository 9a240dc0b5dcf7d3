#include "tvx/editing/selection.h"

#include <algorithm>

namespace tvx::editing {

using dom::Boundary;

Selection::Selection(dom::Document& document) : document_(document), range_(document, {}) {}
Selection::~Selection() = default;

SelectionType Selection::type() const {
  return type_ == SelectionType::Control && !control() ? SelectionType::Text : type_;
}

// The range's ends can't tell where a control stands: what is inserted before it stands between them too.
Boundary Selection::anchor() const {
  if (const dom::Element* selected = control()) return before(*selected);
  return type_ == SelectionType::None ? Boundary{} : range_.start();
}

Boundary Selection::focus() const {
  if (const dom::Element* selected = control()) return after(*selected);
  return type_ == SelectionType::None ? Boundary{} : range_.end();
}

dom::Range Selection::range() const {
  const Boundary a = anchor(), b = focus();
  if (!a || a == b || compare(a, b) <= 0) return {a, b};
  return {b, a};
}

dom::Element* Selection::control() const {
  if (type_ != SelectionType::Control) return nullptr;
  return control_->parent() == range_.start().node ? control_.get() : nullptr;
}

void Selection::set(Boundary anchor, Boundary focus) {
  type_ = SelectionType::Text;
  control_ = {};
  range_.set_unordered(anchor, focus);
  notify();
}

void Selection::select_control(dom::Element& element) {
  type_ = SelectionType::Control;
  control_ = &element;
  range_.set_unordered(before(element), after(element));
  notify();
}

void Selection::clear() {
  if (type_ == SelectionType::None) return;
  type_ = SelectionType::None;
  control_ = {};
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
  return {a.node, a.offset, f.node, f.offset, control() != nullptr};
}

void Selection::restore(const dom::SelectionRecord& record) {
  if (!record.anchor_node) return clear();
  const Boundary anchor{record.anchor_node.get(), record.anchor_offset};
  if (auto* element =
          record.control ? dom::as<dom::Element>(dom::child_at(*anchor.node, anchor.offset)) : nullptr)
    return select_control(*element);
  set(anchor, {record.focus_node.get(), record.focus_offset});
}

}  // namespace tvx::editing
