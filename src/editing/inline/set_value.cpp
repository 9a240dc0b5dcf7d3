#include "tvx/editing/active_range.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/path_facts.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/effectively_contained.h"
#include "tvx/editing/inline/said_above.h"
#include "tvx/editing/inline/value_forcer.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Range;
using dom::Ref;
using dom::Tag;

namespace {

std::u16string_view key_of(InlineCommand command) {
  switch (command) {
    case InlineCommand::BackColor: return u"hilitecolor";
    case InlineCommand::Bold: return u"bold";
    case InlineCommand::CreateLink: return u"createlink";
    case InlineCommand::FontName: return u"fontname";
    case InlineCommand::FontSize: return u"fontsize";
    case InlineCommand::ForeColor: return u"forecolor";
    case InlineCommand::Italic: return u"italic";
    case InlineCommand::Strikethrough: return u"strikethrough";
    case InlineCommand::Subscript: return u"subscript";
    case InlineCommand::Superscript: return u"superscript";
    case InlineCommand::Underline: return u"underline";
    case InlineCommand::None: break;
  }
  return {};
}

// Step 2: nothing to format, so it waits for what will be typed.
void set_override(Editor& editor, InlineCommand command, const InlineValue& value) {
  Overrides& overrides = editor.overrides();
  const std::u16string key(key_of(command));
  if (has_activated_values(command)) {
    overrides.states[key] = is_activated_value(command, value);
    if (command == InlineCommand::Subscript) overrides.states.erase(u"superscript");
    if (command == InlineCommand::Superscript) overrides.states.erase(u"subscript");
    return;
  }
  if (value) {
    overrides.values[key] = *value;
  } else {
    overrides.values.erase(key);
  }
}

}  // namespace

void set_selection_value(Editor& editor, InlineCommand command, const InlineValue& value) {
  if (!first_formattable_in(*editor.active_range())) return set_override(editor, command, value);
  split_text_at_active_range(editor);
  PathFacts facts;
  const NodeList elements = effectively_contained_nodes(*editor.active_range(), [&](const Node& node) {
    const auto* element = dom::as<Element>(&node);
    return element && specified_command_value(*element, command) && facts.is_editable(node);
  });
  for (const Ref<Node>& element : elements) clear_value(static_cast<Element&>(*element), command);
  facts = {};
  const NodeList nodes = effectively_contained_nodes(
      *editor.active_range(), [&](const Node& node) { return facts.is_editable(node); });
  ValueForcer forcer(command, value, editor);
  SaidAbove said(editor.document(), command);
  for (const Ref<Node>& node : nodes) {
    push_down_values(node, command, value, editor, said);
    if (value && is_allowed_child(*node, Name(Tag::Span))) forcer.force(node);
  }
}

}  // namespace tvx::editing
