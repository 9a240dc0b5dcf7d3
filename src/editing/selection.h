#pragma once

#include <memory>
#include <vector>

#include "tvx/dom/journal.h"
#include "tvx/dom/range.h"

namespace tvx::editing {

enum class SelectionType : std::uint8_t {
  None,
  Text,    // a caret or a stretch of content
  Control  // one element as a whole: an image, a table, a form field
};

class SelectionObserver {
 public:
  virtual ~SelectionObserver() = default;
  /// The selection was set. Edits that merely carry it along are heard of as mutations, not here.
  virtual void selection_changed() = 0;
};

/// The user's selection in a document. It follows edits by the DOM standard's rules for live ranges.
/// The anchor is where it began, the focus is the end that moves; the focus may come first.
class Selection final : public dom::SelectionKeeper {
 public:
  explicit Selection(dom::Document& document);
  ~Selection() override;

  /// Where a selected control has left the tree, a caret stays.
  SelectionType type() const;
  bool collapsed() const { return type() == SelectionType::Text && anchor() == focus(); }
  dom::Boundary anchor() const;
  dom::Boundary focus() const;
  /// In document order; both null without a selection. Of a control: the position before and after it.
  dom::Range range() const;
  /// The element selected as a whole, null if none is.
  dom::Element* control() const;

  void set(dom::Boundary anchor, dom::Boundary focus);
  void set(dom::Range range) { set(range.start, range.end); }
  void collapse(dom::Boundary place) { set(place, place); }
  void select_control(dom::Element& element);
  void clear();

  void add_observer(SelectionObserver& observer);
  void remove_observer(SelectionObserver& observer);
  /// While held back, observers are told once, at release, if anything was set meanwhile.
  void hold_notifications();
  void release_notifications();

  dom::SelectionRecord capture() const override;
  void restore(const dom::SelectionRecord& record) override;

 private:
  void notify();
  dom::Document& document_;
  dom::LiveRange range_;  // start is the anchor, end the focus, in whatever order
  SelectionType type_ = SelectionType::None;
  dom::Ref<dom::Element> control_;
  std::vector<SelectionObserver*> observers_;
  std::size_t holds_ = 0;
  bool missed_ = false;
};

/// While it lives, the selection's observers are held back: they hear of a change once, when it is done.
class HeldSelection {
 public:
  explicit HeldSelection(Selection& selection) : selection_(selection) { selection_.hold_notifications(); }
  ~HeldSelection() { selection_.release_notifications(); }
  HeldSelection(const HeldSelection&) = delete;
  HeldSelection& operator=(const HeldSelection&) = delete;

 private:
  Selection& selection_;
};

}  // namespace tvx::editing
