#include "tvx/core/commands/selection_operations.h"

#include "tvx/base/error.h"
#include "tvx/dom/document.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/ranges/markup_pointer.h"

namespace tvx::core {

using editing::Editor;
using editing::ElementAdjacency;
using editing::MarkupPointer;
using editing::MoveUnitAction;
using editing::TextRange;

namespace {

TextRange selected_text(Editor& editor) {
  TextRange range = editing::create_text_range(editor);
  if (range.html_text().empty()) range.expand(u"word");
  return range;
}

void move_characters(MarkupPointer& pointer, std::int32_t count) {
  for (std::int32_t i = 0; i < count; ++i) pointer.MoveUnit(MoveUnitAction::NextCharacter);
}

}  // namespace

bool insert_at_selection(Editor& editor, std::u16string_view html, InsertPlace place) {
  if (editor.selection().type() == editing::SelectionType::Control) return false;
  TextRange range = editing::create_text_range(editor);
  if (!range.html_text().empty() && place != InsertPlace::InsteadOfSelection)
    range.collapse(place == InsertPlace::BeforeSelection);
  range.paste_html(html);
  return true;
}

std::u16string selected_content(Editor& editor, SelectionForm form) {
  const dom::WithoutOverlay bare(editor.document());
  const TextRange range = selected_text(editor);
  return form == SelectionForm::Html ? range.html_text() : range.text();
}

void wrap_selection(Editor& editor, std::u16string_view opening, std::u16string_view closing) {
  const dom::WithoutOverlay bare(editor.document(), u"Format");
  TextRange range = selected_text(editor);
  range.paste_html(std::u16string(opening) + range.html_text() + std::u16string(closing));
}

std::u16string select_characters(Editor& editor, std::int32_t start, std::int32_t length) {
  editing::empty_selection(editor);
  dom::Document& document = editor.document();
  dom::Element* body = document.body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");

  MarkupPointer from(document), to(document);
  from.MoveAdjacentToElement(*body, ElementAdjacency::AfterBegin);
  move_characters(from, start);
  to.MoveToPointer(from);
  // Characters are what a caret can step over, which the length of the text doesn't tell: an emoji is two
  // units of it and an image none. The last character is selected with everything after it.
  if (!attempt([&] {
        move_characters(to, length);
        MarkupPointer beyond(document);
        beyond.MoveToPointer(to);
        move_characters(beyond, 1);
      }))
    to.MoveAdjacentToElement(*body, ElementAdjacency::BeforeEnd);
  editing::MoveToCaretPlace(from);
  // A caret that had to look for a line to stand in may have gone past what was counted.
  if (to.IsLeftOf(from)) to.MoveToPointer(from);

  TextRange range = editing::create_text_range(editor);
  MoveRangeToPointers(from, to, range);
  range.select();
  const dom::WithoutOverlay bare(document);
  return range.html_text();
}

}  // namespace tvx::core
