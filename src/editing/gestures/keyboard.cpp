#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/facts/line_memo.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <optional>

#include "tvx/dom/style/style_engine.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/gap_caret.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

namespace {

KeyResult done_if(bool done) { return done ? KeyResult::Done : KeyResult::NotMine; }

bool stands_right_to_left(const dom::Boundary& place) {
  const auto* element = dom::as<dom::Element>(place.node);
  if (!element) element = place.node->parent_element();
  return element && dom::style::computed_values(*element).direction == dom::style::Direction::RightToLeft;
}

// Where text runs from right to left, what lies to the left is a question of the layout.
bool runs_right_to_left(const dom::Boundary& place) {
  if (stands_right_to_left(place)) return true;
  const auto* text = dom::as<dom::Text>(place.node);
  if (!text) return false;
  constexpr Offset reach = 200;
  const Offset from = place.offset > reach ? place.offset - reach : 0;
  const std::u16string_view near = std::u16string_view(text->data()).substr(from, 2 * reach);
  return std::any_of(near.begin(), near.end(), [](char16_t c) {
    const auto direction = u_charDirection(c);
    return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
  });
}

/// Shift and an arrow among selected cells.
bool extend_by_cells(Editor& editor, const KeyPress& key) {
  if (!key.shift || key.control || editor.selection().type() != SelectionType::Text) return false;
  const bool left = key.key == u"ArrowLeft";
  if (left || key.key == u"ArrowRight") {
    const bool backward = left != stands_right_to_left(editor.selection().focus());
    return extend_cells(editor, backward ? CellStep::Backward : CellStep::Forward);
  }
  if (key.key == u"ArrowUp") return extend_cells(editor, CellStep::Up);
  return key.key == u"ArrowDown" && extend_cells(editor, CellStep::Down);
}

bool is_view_move(std::u16string_view key) {
  return key == u"ArrowUp" || key == u"ArrowDown" || key == u"Home" || key == u"End" || key == u"PageUp" ||
         key == u"PageDown";
}

std::optional<KeyResult> press_move_key(Editor& editor, const KeyPress& key) {
  if (key.alt) return std::nullopt;
  if (extend_by_cells(editor, key)) return KeyResult::Done;
  const Extend extend = key.shift ? Extend::Yes : Extend::No;
  const bool left = key.key == u"ArrowLeft";
  if (left || key.key == u"ArrowRight") {
    if (editor.selection().type() == SelectionType::None) return KeyResult::NotMine;
    editor.typing_run() = {};
    const dom::Boundary focus = editor.selection().focus();
    if (!key.control && editor.selection().type() == SelectionType::Text && runs_right_to_left(focus))
      return KeyResult::AskView;
    if (!key.control && !key.shift && editor.selection().collapsed() &&
        leave_link(editor, left ? Direction::Backward : Direction::Forward))
      return KeyResult::Done;
    // Words follow the paragraph: to the left is on, where it is read from the right.
    const bool backward = left != stands_right_to_left(focus);
    if (!key.control && move_to_gap(editor, backward ? Direction::Backward : Direction::Forward,
                                    key.shift ? Extend::Yes : Extend::No))
      return KeyResult::Done;
    const bool stretched = !editor.selection().collapsed();
    const Direction direction = backward ? Direction::Backward : Direction::Forward;
    move_caret(editor, direction, key.control ? Granularity::Word : Granularity::Character, extend);
    if (stretched && !key.shift) leave_selected_block(editor, direction);
    // Beside a picture the end of its link isn't seen.
    if (stretched && !key.shift && !editor.selection().focus().node->is_text()) leave_link(editor, direction);
    if (key.shift) take_whole_cells(editor);
    return KeyResult::Done;
  }
  if (key.control && (key.key == u"Home" || key.key == u"End")) {
    const Direction direction = key.key == u"Home" ? Direction::Backward : Direction::Forward;
    move_caret(editor, direction, Granularity::Document, extend);
    // Beyond a table at the document's edge, where a paragraph may come.
    while (!key.shift && move_to_gap(editor, direction, Extend::No)) {
    }
    return KeyResult::Done;
  }
  const bool to_line_edge = (key.key == u"Home" || key.key == u"End") && !key.shift;
  if (to_line_edge && editor.selection().collapsed() &&
      leave_link(editor, key.key == u"End" ? Direction::Forward : Direction::Backward))
    return KeyResult::Done;
  if (is_view_move(key.key)) return KeyResult::AskView;
  return std::nullopt;
}

std::optional<KeyResult> press_editing_key(Editor& editor, const KeyPress& key) {
  if (key.alt) return std::nullopt;
  if (key.key == u"Enter" && !key.control) {
    return done_if(key.shift ? press_shift_enter(editor) : press_enter(editor));
  }
  if (key.key == u"Backspace") {
    return done_if(key.control ? delete_word_backward(editor) : delete_backward(editor));
  }
  // The clipboard's keys of old.
  if (key.key == u"Insert" && key.shift != key.control) {
    editor.execute(key.shift ? u"paste" : u"copy");
    return KeyResult::Done;
  }
  if (key.key == u"Delete" && key.shift) {
    execute_as_writer(editor, u"cut");
    return KeyResult::Done;
  }
  if (key.key == u"Delete") {
    return done_if(key.control ? delete_word_forward(editor) : delete_forward(editor));
  }
  // From what is selected as a whole back to a caret beside it.
  if (key.key == u"Escape" && editor.selection().type() == SelectionType::Control) {
    return done_if(move_caret(editor, Direction::Forward, Granularity::Character, Extend::No));
  }
  if (key.key == u"Tab" && !key.control) return done_if(press_tab(editor, key.shift));
  return std::nullopt;
}

std::optional<KeyResult> press_shortcut(Editor& editor, const KeyPress& key) {
  struct Shortcut {
    std::u16string_view key;
    bool shift;
    std::u16string_view command;
  };
  static constexpr Shortcut shortcuts[] = {
      {u"b", false, u"bold"},      {u"i", false, u"italic"}, {u"u", false, u"underline"},
      {u"a", false, u"selectAll"}, {u"z", false, u"undo"},   {u"z", true, u"redo"},
      {u"y", false, u"redo"},      {u"c", false, u"copy"},   {u"x", false, u"cut"},
      {u"v", false, u"paste"},
  };
  if (!key.control || key.alt) return std::nullopt;
  if (!key.shift && equals_ignoring_ascii_case(key.key, u"k")) return KeyResult::AskLink;
  if (key.shift && equals_ignoring_ascii_case(key.key, u"v")) {
    if (editor.clipboard()) editor.clipboard()->paste_text(editor);
    return KeyResult::Done;
  }
  if (key.shift && key.key == u" ") return done_if(type_text(editor, u"\u00A0"));
  for (const Shortcut& shortcut : shortcuts) {
    if (shortcut.shift != key.shift || !equals_ignoring_ascii_case(shortcut.key, key.key)) continue;
    execute_as_writer(editor, shortcut.command);
    return KeyResult::Done;
  }
  return std::nullopt;
}

}  // namespace

KeyResult press_key(Editor& editor, const KeyPress& key) {
  const LineMemo memo;
  if (const auto result = press_move_key(editor, key)) return *result;
  if (const auto result = press_editing_key(editor, key)) return *result;
  if (const auto result = press_shortcut(editor, key)) return *result;
  // Control and Alt together are the third level of many keyboards, which types.
  if (key.text.empty() || key.control != key.alt) return KeyResult::NotMine;
  return done_if(type_text(editor, key.text));
}

}  // namespace tvx::editing
