#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "dom/node.h"
#include "dom/range.h"

/// What inline commands ask of nodes: editing commands standard, section "Inline formatting commands".
/// Commands are given by their row; values are the standard's: a text, or none ("null").
namespace tvx::editing {

class Editor;
struct CommandDefinition;
using InlineValue = std::optional<std::u16string>;

bool is_effectively_contained(const dom::Node& node, const dom::Range& range);
InlineValue effective_command_value(const dom::Node& node, const CommandDefinition& command);
InlineValue specified_command_value(const dom::Element& element, const CommandDefinition& command);
bool equivalent_values(const CommandDefinition& command, const InlineValue& a, const InlineValue& b);
bool loosely_equivalent_values(const CommandDefinition& command, const InlineValue& a, const InlineValue& b);

/// Whether the value is one of the command's "inline command activated values".
bool is_activated_value(const CommandDefinition& command, const InlineValue& value);
/// The "legacy font size" ("1" to "7") for a CSS size in pixels ("24px").
std::u16string legacy_font_size_of(std::u16string_view size);

void push_down_values(const dom::Ref<dom::Node>& node, const CommandDefinition& command,
                      const InlineValue& value, Editor& editor);
void force_value(const dom::Ref<dom::Node>& node, const CommandDefinition& command, const InlineValue& value,
                 Editor& editor);
/// "Set the selection's value": splits text at the range's ends and forces the value on what lies between.
void set_selection_value(Editor& editor, const CommandDefinition& command, const InlineValue& value);
/// "Reorder modifiable descendants", used after wrapping.
void reorder_modifiable_descendants(const dom::Ref<dom::Node>& node, const CommandDefinition& command,
                                    const InlineValue& value);

}  // namespace tvx::editing
