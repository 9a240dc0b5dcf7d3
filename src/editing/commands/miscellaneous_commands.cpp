#include "tvx/dom/journal.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/facts/predicates.h"

/// Modes, selectAll, undo and redo: editing commands standard, section "Miscellaneous commands", and the
/// platform's own modes.
namespace tvx::editing {

namespace {

bool is_false(std::u16string_view value) { return equals_ignoring_ascii_case(value, u"false"); }

bool choose_css(Editor& editor, std::u16string_view value) {
  editor.set_style_with_css(!is_false(value));
  return true;
}

// The same switch with the opposite values.
bool choose_tags(Editor& editor, std::u16string_view value) {
  editor.set_style_with_css(is_false(value));
  return true;
}

bool choose_separator(Editor& editor, std::u16string_view value) {
  const std::u16string name = ascii_lower(value);
  if (name != u"p" && name != u"div") return false;
  editor.set_paragraph_separator(name);
  return true;
}

// OURS: within an editing host it selects what that host holds; the standard has the whole page selected,
// and calls that broken itself.
dom::Node* place_to_select(Editor& editor) {
  if (const auto range = editor.active_range()) {
    dom::Node* host = editing_host_of(*range->start.node);
    if (host && host == editing_host_of(*range->end.node)) return host;
  }
  dom::Document& document = editor.document();
  return document.body() ? document.body() : document.document_element();
}

bool select_all(Editor& editor, std::u16string_view) {
  if (dom::Node* target = place_to_select(editor)) {
    editor.selection().set({target, 0}, {target, dom::length_of(*target)});
  } else {
    editor.selection().clear();
  }
  return true;
}

bool undo(Editor& editor, std::u16string_view) { return editor.document().journal().undo(); }
bool redo(Editor& editor, std::u16string_view) { return editor.document().journal().redo(); }

// The platform's modes take "true" and "false"; with no value they are switched over.
template <bool (Editor::*get)() const, void (Editor::*set)(bool)>
bool switch_mode(Editor& editor, std::u16string_view value) {
  (editor.*set)(value.empty() ? !(editor.*get)() : !is_false(value));
  return true;
}
template <bool (Editor::*get)() const>
bool mode(Editor& editor) {
  return (editor.*get)();
}

const CommandDefinition rows[] = {
    {.name = u"2D-Position",
     .label = u"",
     .action = switch_mode<&Editor::two_d_position, &Editor::set_two_d_position>,
     .state = mode<&Editor::two_d_position>,
     .always_enabled = true,
     .is_mode = true},
    {.name = u"AbsolutePosition",
     .label = u"",
     .action = switch_mode<&Editor::absolute_position, &Editor::set_absolute_position>,
     .state = mode<&Editor::absolute_position>,
     .always_enabled = true,
     .is_mode = true},
    {.name = u"Overwrite",
     .label = u"",
     .action = switch_mode<&Editor::overwrite, &Editor::set_overwrite>,
     .state = mode<&Editor::overwrite>,
     .always_enabled = true,
     .is_mode = true},
    {.name = u"defaultParagraphSeparator",
     .label = u"",
     .action = choose_separator,
     .value = [](Editor& editor) { return editor.paragraph_separator(); },
     .always_enabled = true,
     .is_mode = true},
    {.name = u"redo", .label = u"", .action = redo, .always_enabled = true, .is_mode = true},
    {.name = u"selectAll", .label = u"", .action = select_all, .always_enabled = true, .is_mode = true},
    {.name = u"styleWithCSS",
     .label = u"",
     .action = choose_css,
     .state = mode<&Editor::style_with_css>,
     .always_enabled = true,
     .is_mode = true},
    {.name = u"undo", .label = u"", .action = undo, .always_enabled = true, .is_mode = true},
    {.name = u"useCSS", .label = u"", .action = choose_tags, .always_enabled = true, .is_mode = true},
};

}  // namespace

std::span<const CommandDefinition> miscellaneous_commands() { return rows; }

}  // namespace tvx::editing
