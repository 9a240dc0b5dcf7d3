#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"

namespace tvx::editing {

/// The lines of the source. Where the blocks in an element stand on lines of their own, as in a page that
/// somebody has laid out, a block that a gesture makes or moves there has a line of its own, too, indented as
/// its neighbours are; the items of a new list likewise. How the source was laid out is noted as the gesture
/// touches it, before it is another. White space is put between blocks alone, where nobody sees it.
class SourceLines final : private dom::MutationObserver {
 public:
  explicit SourceLines(Editor& editor);
  ~SourceLines();
  SourceLines(const SourceLines&) = delete;
  SourceLines& operator=(const SourceLines&) = delete;

  /// At the gesture's end.
  void lay_out();

 private:
  /// How the blocks in an element stand. The texts are white space from a line's end on.
  struct Layout {
    std::u16string own;    // in front of the element
    std::u16string start;  // in front of the blocks in it; empty: they have no lines of their own
    std::u16string end;    // in front of its end tag; empty: that stands after the last block
    bool opens = false;    // the first block isn't on the line of the element's tag
    bool is_new = false;
    dom::Ref<dom::Node> closing;         // the text in front of the end tag
    const dom::Element* from = nullptr;  // of a new one: where its first block stood
  };
  using Elements = std::vector<dom::Ref<dom::Element>>;

  void mutated(const dom::Mutation& mutation) override;
  void note(dom::Element& holder, const dom::Mutation& mutation);
  static void note_present(Layout& layout, const dom::Element& holder, const dom::Node* except);
  static void note_gone(Layout& layout, const dom::Element& holder, const dom::Mutation& mutation,
                        dom::Node* before);
  Elements placed() const;
  void place(dom::Element& block);
  void start_line(dom::Element& block, const Layout& layout);
  void end_line(dom::Element& block, const Layout& layout);
  void close(dom::Element& holder);
  /// The layout in which the blocks of a holder are to stand.
  const Layout& layout_of(dom::Element& holder);
  void plan(dom::Element& holder, Layout& layout);
  std::u16string line_of(const dom::Element& block) const;

  Editor& editor_;
  std::unordered_map<const dom::Node*, Layout> layouts_;
  std::unordered_map<const dom::Node*, const dom::Element*> origins_;  // of blocks that were moved
  std::unordered_set<const dom::Node*> brought_;                       // texts that the gesture has put there
  Elements placed_;
  std::unordered_set<const dom::Node*> is_placed_;
  Elements touched_;  // the keys of layouts_, held
  std::vector<dom::Ref<dom::Node>> held_;
  bool laying_out_ = false;
};

}  // namespace tvx::editing
