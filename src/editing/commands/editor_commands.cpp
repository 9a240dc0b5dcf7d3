#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/commands/command_table.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/font_sizes.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/recorded_values.h"

/// The commands of an Editor: editing commands standard, section "Methods to query and execute commands".
/// They stand apart from the rest of the class because they know every command, and every command knows the
/// class.
namespace tvx::editing {

using dom::Node;

namespace {

// The nearest host that holds both ends; null if there is none.
const Node* common_host(const dom::Range& range) {
  for (const Node* node = range.start.node; node; node = node->parent()) {
    if (is_editing_host(*node) && dom::is_inclusive_ancestor(*node, *range.end.node)) return node;
  }
  return nullptr;
}

}  // namespace

bool Editor::supported(std::u16string_view command) const { return find_command(command) != nullptr; }

bool Editor::is_enabled(const CommandDefinition& command) const {
  if (command.applies && !command.applies(*this)) return false;
  if (command.always_enabled) return true;
  const std::optional<dom::Range> range = active_range();
  if (!range || !editing_host_of(*range->start.node) || !editing_host_of(*range->end.node)) return false;
  // What is selected as a whole has no text to format; a link can be put around it.
  if (selection_.control() && command.inline_command != InlineCommand::None &&
      command.inline_command != InlineCommand::CreateLink) {
    return false;
  }
  const Node* host = common_host(*range);
  return host && (command.in_plain_text || !is_plain_text_host(*host));
}

bool Editor::enabled(std::u16string_view command) {
  const CommandDefinition* row = find_command(command);
  return row && is_enabled(*row);
}

bool Editor::indeterminate(std::u16string_view command) {
  const CommandDefinition* row = find_command(command);
  const LineMemo memo;
  return row && row->indeterminate && row->indeterminate(*this);
}

bool Editor::state(std::u16string_view command) {
  const CommandDefinition* row = find_command(command);
  if (!row || !row->state) return false;
  const auto& states = overrides().states;
  if (const auto found = states.find(override_key(command)); found != states.end()) return found->second;
  const LineMemo memo;
  return row->state(*this);
}

std::u16string Editor::value(std::u16string_view command) {
  const CommandDefinition* row = find_command(command);
  if (!row || !row->value) return {};
  const auto& values = overrides().values;
  if (const auto found = values.find(override_key(command)); found != values.end()) {
    return row->css_property == u"font-size" ? legacy_font_size_of(found->second) : found->second;
  }
  const LineMemo memo;
  return row->value(*this);
}

bool Editor::execute(std::u16string_view command, std::u16string_view value) {
  const CommandDefinition* row = find_command(command);
  if (!row || !row->action || !is_enabled(*row)) return false;
  const HeldSelection held(selection_);
  const LineMemo memo;
  if (row->is_mode) return row->action(*this, value);
  const dom::UndoStep step(document_->journal(), row->label);
  leave_comments(*this);
  return act(*row, value);
}

// Editing commands standard, "preserves overrides".
bool Editor::act(const CommandDefinition& command, std::u16string_view value) {
  if (!command.keeps_overrides) return command.action(*this, value);
  const RecordedLook look = record_current_overrides(*this);
  const bool done = command.action(*this, value);
  if (const auto range = active_range(); range && range->collapsed()) restore_look(look, *this);
  return done;
}

}  // namespace tvx::editing
