#include "tvx/editing/ranges/control_range.h"

#include "tvx/base/error.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/control.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/clone_contents.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

[[noreturn]] void out_of_range() { throw RuntimeError(errors::invalid_call, u"The index is out of range"); }

}  // namespace

Element& ControlRange::item(std::size_t index) const {
  if (index >= elements_.size()) out_of_range();
  return *elements_[index];
}

void ControlRange::add(Element& element) {
  if (element.document() != &editor_.document() || !is_control(element))
    throw RuntimeError(errors::invalid_call, u"The element can't be selected as a whole");
  elements_.emplace_back(element);
}

void ControlRange::remove(std::size_t index) {
  if (index >= elements_.size()) out_of_range();
  elements_.erase(elements_.begin() + static_cast<std::ptrdiff_t>(index));
}

void ControlRange::select() {
  if (elements_.empty()) return editor_.selection().clear();
  if (elements_.size() > 1)
    throw RuntimeError(errors::not_supported, u"One element can be selected as a whole, not several");
  if (!elements_.front()->parent())
    throw RuntimeError(errors::object_not_set, u"The element has left the document");
  editor_.selection().select_control(*elements_.front());
}

bool ControlRange::remove_elements() {
  Selection& selection = editor_.selection();
  const bool was_selected = selection.type() == SelectionType::Control;
  bool removed = false;
  selection.hold_notifications();
  {
    const dom::UndoStep step(editor_.document().journal(), u"Delete");
    Boundary place;
    for (const Ref<Element>& element : elements_) {
      if (!element->parent()) continue;
      place = remove_control(*element);
      removed = true;
    }
    if (removed && was_selected) selection.collapse(place);
  }
  selection.release_notifications();
  elements_.clear();
  return removed;
}

bool ControlRange::execute(std::u16string_view command, std::u16string_view value) {
  if (equals_ignoring_ascii_case(command, u"Delete")) return remove_elements();
  select();
  return editor_.execute(command, value);
}

AnyRange create_range(Editor& editor) {
  const Selection& selection = editor.selection();
  if (Element* control = selection.control()) return ControlRange(editor, *control);
  dom::Range place = selection.range();
  if (Node* body = editor.document().body(); !place.start && body) place = {{body, 0}, {body, 0}};
  TextRange range(editor, place);
  range.follow_with_selection();
  return range;
}

TextRange& text_range_of(AnyRange& range) {
  if (auto* text = std::get_if<TextRange>(&range)) return *text;
  throw RuntimeError(errors::unknown_member, u"Object doesn't support this property or method");
}

TextRange create_text_range(Editor& editor) {
  AnyRange range = create_range(editor);
  return std::move(text_range_of(range));
}

TextRange create_body_range(Editor& editor) {
  Node* body = editor.document().body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");
  return TextRange(editor, {{body, 0}, {body, dom::length_of(*body)}});
}

std::u16string_view selection_type_name(const Editor& editor) {
  const Selection& selection = editor.selection();
  if (selection.type() == SelectionType::Control) return u"Control";
  return selection.type() == SelectionType::None || selection.collapsed() ? u"None" : u"Text";
}

void empty_selection(Editor& editor) {
  Selection& selection = editor.selection();
  if (selection.type() == SelectionType::None || selection.collapsed()) return;
  selection.collapse(normalized_caret_place(selection.focus()));
}

void clear_selection(Editor& editor) {
  Selection& selection = editor.selection();
  if (selection.type() == SelectionType::Control) {
    std::get<ControlRange>(create_range(editor)).execute(u"Delete");
    return;
  }
  if (selection.type() == SelectionType::None || selection.collapsed()) return;
  const dom::Range range = selection.range();
  const dom::UndoStep step(editor.document().journal(), u"Delete");
  if (is_editable(*range.start.node) && is_editable(*range.end.node)) return delete_selection(editor);
  delete_contents(range);
}

}  // namespace tvx::editing
