#pragma once

#include "tvx/dom/range.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

class Editor;
struct HeldGap;

/// Puts content instead of a range, in the order that keeps the white space around it as it is: first insert,
/// then delete what was there.
///
/// What is inserted stays as it was given: where an element may not hold it, that element is broken up around
/// it. A block whose content is replaced by text stays a block of its kind; blocks that are replaced by
/// blocks go.
class Replacement {
 public:
  Replacement(Editor& editor, const dom::Range& range);

  /// The element that the content is to be parsed in.
  dom::Node& context() const;
  /// Both give the position where the caret then stands.
  dom::Boundary run(const dom::Ref<dom::DocumentFragment>& content);
  /// For a range that covers all of an element.
  dom::Boundary run_for(dom::Element& element, const dom::Ref<dom::DocumentFragment>& content);

 private:
  bool covers_blocks(dom::Ref<dom::Element>& first, dom::Ref<dom::Element>& last) const;
  void replace_blocks(dom::Element& first, dom::Element& last,
                      const dom::Ref<dom::DocumentFragment>& content);
  void replace_children(dom::Element& element, const dom::Ref<dom::DocumentFragment>& content);
  void insert(const dom::Ref<dom::DocumentFragment>& content, const HeldGap& gap);
  void delete_rest();
  bool content_is_one_text(const dom::Range& rest) const;
  dom::Boundary finish();

  Editor& editor_;
  dom::LiveRange rest_, caret_;
  NodeList inserted_;  // the content's outermost nodes
};

}  // namespace tvx::editing
