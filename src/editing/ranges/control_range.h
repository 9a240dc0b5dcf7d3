#pragma once

#include <string_view>
#include <variant>
#include <vector>

#include "tvx/editing/ranges/text_range.h"

namespace tvx::editing {

/// Elements that are taken as wholes: images, tables, form fields. What a control selection gives instead of
/// a text range. The editor outlives its ranges.
class ControlRange {
 public:
  explicit ControlRange(Editor& editor) : editor_(editor) {}
  /// Of what is selected as a whole, whatever it is.
  ControlRange(Editor& editor, dom::Element& selected) : editor_(editor), elements_{selected} {}

  std::size_t length() const { return elements_.size(); }
  /// Throws RuntimeError(5) out of range.
  dom::Element& item(std::size_t index) const;
  /// Throws RuntimeError(5) for an element of another document and for one that can't be taken as a whole.
  void add(dom::Element& element);
  /// Throws RuntimeError(5) out of range.
  void remove(std::size_t index);
  /// Makes it the user's selection. Throws RuntimeError(445) for several elements: one can be selected.
  void select();
  /// "Delete" takes the elements out of the document, as one undo step; any other command works on them as
  /// the selection. False where the command did nothing.
  bool execute(std::u16string_view command, std::u16string_view value = {});

 private:
  bool remove_elements();
  Editor& editor_;
  std::vector<dom::Ref<dom::Element>> elements_;
};

// --- the selection as a host's program sees it ---

using AnyRange = std::variant<TextRange, ControlRange>;
/// The range of the selection, a control range while an element is selected as a whole. Without a selection a
/// caret at the body's start.
AnyRange create_range(Editor& editor);
/// The text range, as every caller of one wants it. Throws RuntimeError(438) for a control range, which has
/// none of its members.
TextRange& text_range_of(AnyRange& range);
/// create_range() for those who can use a text range only.
TextRange create_text_range(Editor& editor);
/// A text range over all of the body.
TextRange create_body_range(Editor& editor);

/// "None" (a caret or nothing), "Text" or "Control".
std::u16string_view selection_type_name(const Editor& editor);
/// Nothing is selected any more; a caret stays where the selection ended.
void empty_selection(Editor& editor);
/// Takes what is selected out of the document, as one undo step.
void clear_selection(Editor& editor);

}  // namespace tvx::editing
