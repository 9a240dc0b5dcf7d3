#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tvx/dom/document.h"
#include "tvx/dom/range.h"

namespace tvx::editing {

class Editor;

/// A stretch of the document as a host's program sees it. It follows edits. What it asks and changes goes
/// from its first to its last character: white space that nobody sees and the edges of elements around them
/// don't count. A range that covers all content of an element stands for the element, but not for the body,
/// an editing host, or a part of a table.
///
/// Every change is one undo step. The editor outlives its ranges.
class TextRange {
 public:
  TextRange(Editor& editor, const dom::Range& range);
  ~TextRange();
  TextRange(TextRange&&) noexcept;

  /// The places as they are, in document order.
  dom::Range range() const;
  void set(const dom::Range& range);

  // --- what is in it ---
  /// Its markup, of a covered element the element's own; "" if collapsed.
  std::u16string html_text() const;
  /// As `innerText`, with LF (dom/inner_text.h).
  std::u16string text() const;
  /// The innermost element holding its first and its last character. Null in an empty document.
  dom::Element* parent_element() const;
  bool collapsed() const;

  // --- changes; afterwards the range is a caret after what was inserted, and so is the selection if the
  //     range was made from it ---
  /// Plain text in the style of what it replaces; each line end (CR LF, CR, LF) becomes a BR.
  void set_text(std::u16string_view text);
  /// The markup, parsed where it is to stand. Replaces a covered element itself. Elements that can't hold
  /// what is inserted are split around it.
  void paste_html(std::u16string_view html);
  /// The same for nodes that stand in no tree and belong to the range's document. They are used up.
  void paste_nodes(const dom::Ref<dom::DocumentFragment>& content);

  // --- moves ---
  void collapse(bool to_start = true);
  /// Stretches the range to whole units: "character", "word" (without the white space after it) or
  /// "textedit" (all). False and nothing changed where there is none, as beside no word. Throws
  /// RuntimeError(5) for any other unit.
  bool expand(std::u16string_view unit);
  /// Collapses to the start (of a negative count: as well) and moves by `count` units. All three answer by
  /// how many units it went.
  int move(std::u16string_view unit, int count = 1);
  /// An end that would pass the other takes it along.
  int move_start(std::u16string_view unit, int count = 1);
  int move_end(std::u16string_view unit, int count = 1);
  void move_to_element_text(dom::Element& element);
  /// Looks for a text from the start of the range to the end of the document, without regard to case, and
  /// becomes its first occurrence.
  bool find_text(std::u16string_view text);
  /// Makes it the user's selection.
  void select();

  // --- two ranges; `how` is "StartToStart", "StartToEnd", "EndToStart" or "EndToEnd": an end of this one and
  //     an end of the other. Throws RuntimeError(5) for anything else, and for ranges of two documents. ---
  TextRange duplicate() const;
  void set_end_point(std::u16string_view how, const TextRange& other);
  /// -1, 0 or 1: this one's end before, at, or after the other's.
  int compare_end_points(std::u16string_view how, const TextRange& other) const;
  /// Whether the other lies within this one.
  bool in_range(const TextRange& other) const;
  bool is_equal(const TextRange& other) const;

  Editor& editor() const { return editor_; }
  /// It was made from the selection, and changes carry the selection along.
  void follow_with_selection() { from_selection_ = true; }

 private:
  dom::Element* covered_element() const;
  void replace_with(const std::function<dom::Ref<dom::DocumentFragment>(dom::Node& parent)>& content);
  dom::Range extent() const;
  void finish_at(const dom::Boundary& place);

  Editor& editor_;
  std::unique_ptr<dom::LiveRange> range_;
  bool from_selection_ = false;
};

}  // namespace tvx::editing
