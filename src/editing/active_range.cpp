#include "tvx/editing/active_range.h"

#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Range;

void set_active_range(Editor& editor, const Range& range) {
  Selection& selection = editor.selection();
  const bool backward = selection.anchor() != selection.range().start;
  if (backward) {
    selection.set(range.end, range.start);
  } else {
    selection.set(range.start, range.end);
  }
}

namespace {

// The text that a boundary stands within, to be split there; null elsewhere.
dom::Text* text_within(const Boundary& place) {
  auto* text = dom::as<dom::Text>(place.node);
  if (!text || place.offset == 0 || place.offset == text->length() || !is_editable(*text)) return nullptr;
  return text;
}

}  // namespace

void split_text_at_active_range(Editor& editor) {
  const Boundary start = editor.active_range()->start;
  if (dom::Text* text = text_within(start)) {
    const dom::Ref<dom::Text> tail = dom::split_text(*text, start.offset);
    set_active_range(editor, {{tail.get(), 0}, editor.active_range()->end});
  }
  const Boundary end = editor.active_range()->end;
  if (dom::Text* text = text_within(end)) dom::split_text(*text, end.offset);
}

}  // namespace tvx::editing
