#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/inline_command.h"
#include "tvx/editing/tree/surgery.h"

/// What inline commands ask of nodes and do to them: editing commands standard, section "Inline formatting
/// commands". Values are the standard's: a text, or none ("null").
namespace tvx::editing {

class SaidAbove;
using InlineValue = std::optional<std::u16string>;

/// What a node looks like, whatever the reason: rules, ancestors, elements, its own style.
InlineValue effective_command_value(const dom::Node& node, InlineCommand command);
/// Whether it is loosely equivalent to a value: the same answer, for the commonest commands without a text.
bool has_effective_value(const dom::Node& node, InlineCommand command, const InlineValue& value);
/// What the element itself says: by its name, its attributes or its inline style.
InlineValue specified_command_value(const dom::Element& element, InlineCommand command);
bool equivalent_values(InlineCommand command, const InlineValue& a, const InlineValue& b);
/// For comparing an effective value with others: a font size in pixels equals the keyword it comes from.
bool loosely_equivalent_values(InlineCommand command, const InlineValue& a, const InlineValue& b);
/// Whether the command switches something on and off ("has inline command activated values").
bool has_activated_values(InlineCommand command);
bool is_activated_value(InlineCommand command, const InlineValue& value);
/// Whether all text in a range has the activated value; without text, the range's start.
bool is_on(const dom::Range& range, InlineCommand command);
/// The value of all text in a range, "" where there are several; without text, that of the range's start.
std::u16string common_value(const dom::Range& range, InlineCommand command);
/// The CSS property that the command sets, empty if none.
std::u16string_view css_property_of(InlineCommand command);

/// "Clear the value": takes away what the element says itself. Returns the nodes that stand in its position,
/// if it had to go or to change its name.
NodeList clear_value(const dom::Ref<dom::Element>& element, InlineCommand command);
void push_down_values(const dom::Ref<dom::Node>& node, InlineCommand command, const InlineValue& value,
                      Editor& editor);
/// The same for many nodes.
void push_down_values(const dom::Ref<dom::Node>& node, InlineCommand command, const InlineValue& value,
                      Editor& editor, SaidAbove& said);
void force_value(const dom::Ref<dom::Node>& node, InlineCommand command, const InlineValue& value,
                 Editor& editor);
/// "Reorder modifiable descendants": brings an element that says the value outside of its wrappers.
void reorder_modifiable_descendants(const dom::Ref<dom::Node>& node, InlineCommand command,
                                    const InlineValue& value);
/// "Set the selection's value": splits text at the range's ends and forces the value on what lies between.
/// On a caret, sets what the next typed character shall look like.
void set_selection_value(Editor& editor, InlineCommand command, const InlineValue& value);

// The same, asked with a row of the table.
inline InlineValue effective_command_value(const dom::Node& node, const CommandDefinition& command) {
  return effective_command_value(node, command.inline_command);
}
inline InlineValue specified_command_value(const dom::Element& element, const CommandDefinition& command) {
  return specified_command_value(element, command.inline_command);
}
inline bool equivalent_values(const CommandDefinition& command, const InlineValue& a, const InlineValue& b) {
  return equivalent_values(command.inline_command, a, b);
}
inline bool loosely_equivalent_values(const CommandDefinition& command, const InlineValue& a,
                                      const InlineValue& b) {
  return loosely_equivalent_values(command.inline_command, a, b);
}
inline bool is_activated_value(const CommandDefinition& command, const InlineValue& value) {
  return is_activated_value(command.inline_command, value);
}
inline void push_down_values(const dom::Ref<dom::Node>& node, const CommandDefinition& command,
                             const InlineValue& value, Editor& editor) {
  push_down_values(node, command.inline_command, value, editor);
}
inline void force_value(const dom::Ref<dom::Node>& node, const CommandDefinition& command,
                        const InlineValue& value, Editor& editor) {
  force_value(node, command.inline_command, value, editor);
}
inline void set_selection_value(Editor& editor, const CommandDefinition& command, const InlineValue& value) {
  set_selection_value(editor, command.inline_command, value);
}

/// The row of one of this room's commands, links included; there is one of that name.
const CommandDefinition& inline_row(std::u16string_view name);

/// The "legacy font size" ("1" to "7") for a CSS size in pixels ("24px").
std::u16string legacy_font_size_of(std::u16string_view size);
bool is_effectively_contained(const dom::Node& node, const dom::Range& range);

}  // namespace tvx::editing
