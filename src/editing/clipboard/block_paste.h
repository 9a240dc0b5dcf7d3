#pragma once

#include "tvx/dom/range.h"
#include "tvx/editing/tree/lines.h"

namespace tvx::editing {

class Editor;

/// Puts blocks where a range was emptied. On both sides content and document are joined like the halves of a
/// zip: the first line with the line that ends at the left position, the last with the line that begins at
/// the right one, and around them the lists, quotations and (with `tables`) table parts that are of one kind
/// on both sides.
class BlockPaste {
 public:
  struct Options {
    bool tables = false;     // the content has the rows and cells that were taken out here
    bool ends_line = false;  // what stands after the right position doesn't join the content's last line
  };
  BlockPaste(Editor& editor, dom::Range gap, Options options);
  /// Where the caret then stands.
  dom::Boundary run(const dom::Ref<dom::DocumentFragment>& content);
  /// Whether both positions were in one line, which is two lines now.
  bool breaks_line() const { return split_; }

 private:
  void find_sides();
  dom::Tag tag_of_items() const;
  void fit_to_container(NodeList& pieces);
  bool lay_leading_line(NodeList& pieces);
  bool lay_trailing_line(NodeList& pieces);
  bool merge_left(dom::Element& side, dom::Element& piece);
  bool merge_right(dom::Element& side, dom::Element& piece);
  bool same_kind(const dom::Element& a, const dom::Element& b) const;
  void join_line_before(dom::Element& piece);
  void join_line_behind(dom::Element& piece);
  void keep_right_line();
  void drop_empty_sides();

  Editor& editor_;
  dom::LiveRange gap_;
  Options options_;
  dom::Ref<dom::Node> container_;
  dom::Ref<dom::Element> left_, right_;            // children of the container that hold the positions
  dom::Ref<dom::Element> left_line_, right_line_;  // the text blocks that end and start there
  dom::Ref<dom::Node> before_;                     // new blocks go before it
  bool left_empty_ = false, right_empty_ = false;
  bool split_ = false;  // both sides were one block
  HeldPosition caret_;
};

}  // namespace tvx::editing
