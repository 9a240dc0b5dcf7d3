#include <algorithm>
#include <cassert>

#include "tvx/dom/style/color.h"
#include "tvx/editing/active_range.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/facts/font_sizes.h"
#include "tvx/editing/facts/path_facts.h"
#include "tvx/editing/inline/effectively_contained.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/inline/remove_format.h"

/// The rows of the inline formatting commands: editing commands standard, sections "The backColor command" to
/// "The underline command".
namespace tvx::editing {

using dom::Node;

namespace {

// --- how the questions are answered ---

/// Calls `visitor` with the style of each formattable node in a range until it answers false. Returns whether
/// there was any.
template <class Visitor>
bool each_value(const dom::Range& range, InlineCommand command, Visitor visitor) {
  bool any = false;
  PathFacts facts;
  const Node* parent = nullptr;
  InlineValue value;  // texts have that of their parent
  walk_effectively_contained(range, [&](Node& node) {
    if (!facts.is_formattable(node)) return true;
    any = true;
    if (!node.is_text()) return bool(visitor(effective_command_value(node, command)));
    if (node.parent() != parent) value = effective_command_value(node, command);
    parent = node.parent();
    return bool(visitor(value));
  });
  return any;
}
/// The same in what is selected.
template <class Visitor>
bool each_value(Editor& editor, InlineCommand command, Visitor visitor) {
  const auto range = editor.active_range();
  return range && each_value(*range, command, visitor);
}

InlineValue value_of_start(Editor& editor, InlineCommand command) {
  const auto range = editor.active_range();
  return range ? effective_command_value(*range->start.node, command) : std::nullopt;
}

template <InlineCommand command>
bool is_partly_on(Editor& editor) {
  bool on = false, off = false;
  each_value(editor, command, [&](const InlineValue& value) {
    (is_activated_value(command, value) ? on : off) = true;
    return !(on && off);
  });
  return on && off;
}

// Subscript and superscript at once are neither of them.
template <InlineCommand command>
bool is_partly_lowered_or_raised(Editor& editor) {
  bool mixed = false;
  each_value(editor, command, [&](const InlineValue& value) { return !(mixed = value == u"mixed"); });
  return mixed || is_partly_on<command>(editor);
}

template <InlineCommand command>
bool is_on(Editor& editor) {
  const auto range = editor.active_range();
  return range ? editing::is_on(*range, command) : is_activated_value(command, std::nullopt);
}

template <InlineCommand command>
bool has_several_values(Editor& editor) {
  std::optional<InlineValue> first;
  bool several = false;
  each_value(editor, command, [&](const InlineValue& value) {
    if (!first) first = value;
    return !(several = *first != value);
  });
  return several;
}

template <InlineCommand command>
std::u16string first_value(Editor& editor) {
  InlineValue first;
  const bool any = each_value(editor, command, [&](const InlineValue& value) {
    first = value;
    return false;
  });
  return (any ? first : value_of_start(editor, command)).value_or(u"");
}

std::u16string first_font_size(Editor& editor) {
  return legacy_font_size_of(first_value<InlineCommand::FontSize>(editor));
}

// --- what the commands do ---

template <InlineCommand command>
bool set_value(Editor& editor, std::u16string_view value) {
  set_selection_value(editor, command, std::u16string(value));
  return true;
}

bool toggle_bold(Editor& editor, std::u16string_view) {
  return set_value<InlineCommand::Bold>(editor, editor.state(u"bold") ? u"normal" : u"bold");
}

bool toggle_italic(Editor& editor, std::u16string_view) {
  return set_value<InlineCommand::Italic>(editor, editor.state(u"italic") ? u"normal" : u"italic");
}

bool toggle_strikethrough(Editor& editor, std::u16string_view) {
  set_selection_value(editor, InlineCommand::Strikethrough,
                      editor.state(u"strikethrough") ? InlineValue() : InlineValue(u"line-through"));
  return true;
}

bool toggle_underline(Editor& editor, std::u16string_view) {
  set_selection_value(editor, InlineCommand::Underline,
                      editor.state(u"underline") ? InlineValue() : InlineValue(u"underline"));
  return true;
}

bool toggle_script(Editor& editor, InlineCommand command, std::u16string_view name) {
  const bool on = editor.state(name);
  set_selection_value(editor, command, std::nullopt);
  if (!on) set_selection_value(editor, command, std::u16string(name));
  return true;
}
bool toggle_subscript(Editor& editor, std::u16string_view) {
  return toggle_script(editor, InlineCommand::Subscript, u"subscript");
}
bool toggle_superscript(Editor& editor, std::u16string_view) {
  return toggle_script(editor, InlineCommand::Superscript, u"superscript");
}

// A font without a name is none.
bool set_font(Editor& editor, std::u16string_view value) {
  return !trimmed(value).empty() && set_value<InlineCommand::FontName>(editor, value);
}

// A colour with its "#" forgotten is one too; `currentcolor` would chase itself.
template <InlineCommand command>
bool set_colour(Editor& editor, std::u16string_view value) {
  std::u16string colour(value);
  if (equals_ignoring_ascii_case(trimmed(colour), u"currentcolor")) return false;
  if (!dom::style::parse_color(colour)) colour.insert(0, u"#");
  if (!dom::style::parse_color(colour)) return false;
  set_selection_value(editor, command, colour);
  return true;
}

bool set_font_size(Editor& editor, std::u16string_view value) {
  const auto size = parse_font_size_argument(value);
  if (!size) return false;
  set_selection_value(editor, InlineCommand::FontSize, std::u16string(font_size_keyword(*size)));
  return true;
}

const CommandDefinition rows[] = {
    {.name = u"backColor",
     .label = u"Background colour",
     .action = set_colour<InlineCommand::BackColor>,
     .indeterminate = has_several_values<InlineCommand::BackColor>,
     .value = first_value<InlineCommand::BackColor>,
     .css_property = u"background-color",
     .inline_command = InlineCommand::BackColor},
    {.name = u"bold",
     .label = u"Bold",
     .action = toggle_bold,
     .indeterminate = is_partly_on<InlineCommand::Bold>,
     .state = is_on<InlineCommand::Bold>,
     .css_property = u"font-weight",
     .inline_command = InlineCommand::Bold},
    {.name = u"fontName",
     .label = u"Font",
     .action = set_font,
     .indeterminate = has_several_values<InlineCommand::FontName>,
     .value = first_value<InlineCommand::FontName>,
     .css_property = u"font-family",
     .inline_command = InlineCommand::FontName},
    {.name = u"fontSize",
     .label = u"Font size",
     .action = set_font_size,
     .indeterminate = has_several_values<InlineCommand::FontSize>,
     .value = first_font_size,
     .css_property = u"font-size",
     .inline_command = InlineCommand::FontSize},
    {.name = u"foreColor",
     .label = u"Text colour",
     .action = set_colour<InlineCommand::ForeColor>,
     .indeterminate = has_several_values<InlineCommand::ForeColor>,
     .value = first_value<InlineCommand::ForeColor>,
     .css_property = u"color",
     .inline_command = InlineCommand::ForeColor},
    {.name = u"hiliteColor",
     .label = u"Background colour",
     .action = set_colour<InlineCommand::BackColor>,
     .indeterminate = has_several_values<InlineCommand::BackColor>,
     .value = first_value<InlineCommand::BackColor>,
     .css_property = u"background-color",
     .inline_command = InlineCommand::BackColor},
    {.name = u"italic",
     .label = u"Italic",
     .action = toggle_italic,
     .indeterminate = is_partly_on<InlineCommand::Italic>,
     .state = is_on<InlineCommand::Italic>,
     .css_property = u"font-style",
     .inline_command = InlineCommand::Italic},
    {.name = u"removeFormat", .label = u"Remove formatting", .action = remove_format},
    {.name = u"strikethrough",
     .label = u"Strikethrough",
     .action = toggle_strikethrough,
     .indeterminate = is_partly_on<InlineCommand::Strikethrough>,
     .state = is_on<InlineCommand::Strikethrough>,
     .inline_command = InlineCommand::Strikethrough},
    {.name = u"subscript",
     .label = u"Subscript",
     .action = toggle_subscript,
     .indeterminate = is_partly_lowered_or_raised<InlineCommand::Subscript>,
     .state = is_on<InlineCommand::Subscript>,
     .inline_command = InlineCommand::Subscript},
    {.name = u"superscript",
     .label = u"Superscript",
     .action = toggle_superscript,
     .indeterminate = is_partly_lowered_or_raised<InlineCommand::Superscript>,
     .state = is_on<InlineCommand::Superscript>,
     .inline_command = InlineCommand::Superscript},
    {.name = u"underline",
     .label = u"Underline",
     .action = toggle_underline,
     .indeterminate = is_partly_on<InlineCommand::Underline>,
     .state = is_on<InlineCommand::Underline>,
     .inline_command = InlineCommand::Underline},
};

}  // namespace

std::u16string common_value(const dom::Range& range, InlineCommand command) {
  std::optional<InlineValue> first;
  bool several = false;
  each_value(range, command, [&](const InlineValue& value) {
    if (!first) first = value;
    return !(several = *first != value);
  });
  if (several) return {};
  if (!first) first = effective_command_value(*range.start.node, command);
  const std::u16string value = first->value_or(u"");
  return command == InlineCommand::FontSize ? legacy_font_size_of(value) : value;
}

bool is_on(const dom::Range& range, InlineCommand command) {
  bool on = true;
  const bool any = each_value(
      range, command, [&](const InlineValue& value) { return on = is_activated_value(command, value); });
  return any ? on : is_activated_value(command, effective_command_value(*range.start.node, command));
}

std::span<const CommandDefinition> inline_commands() { return rows; }

const CommandDefinition& inline_row(std::u16string_view name) {
  for (const auto part : {inline_commands(), link_commands()}) {
    for (const CommandDefinition& row : part) {
      if (equals_ignoring_ascii_case(row.name, name)) return row;
    }
  }
  assert(!"no inline command has that name");
  return rows[0];
}

}  // namespace tvx::editing
