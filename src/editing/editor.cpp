#include "tvx/editing/editor.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/command_table.h"
#include "tvx/editing/facts/font_sizes.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/inline/recorded_values.h"

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

// Observers hear of the selection once, when a command is done with it.
class HeldSelection {
 public:
  explicit HeldSelection(Selection& selection) : selection_(selection) { selection_.hold_notifications(); }
  ~HeldSelection() { selection_.release_notifications(); }
  HeldSelection(const HeldSelection&) = delete;
  HeldSelection& operator=(const HeldSelection&) = delete;

 private:
  Selection& selection_;
};

}  // namespace

std::u16string override_key(std::u16string_view command) {
  std::u16string key = ascii_lower(command);
  return key == u"backcolor" ? u"hilitecolor" : key;
}

Editor::Editor(dom::Document& document) : document_(document), selection_(document) {
  document.journal().set_selection_keeper(&selection_);
  selection_.add_observer(*this);
}

Editor::~Editor() {
  selection_.remove_observer(*this);
  document_->journal().set_selection_keeper(nullptr);
  set_design_mode(false);
}

void Editor::set_design_mode(bool on) {
  design_mode_ = on;
  set_whole_document_editable(*document_, on);
}

Editor::Place Editor::place_of(const dom::Boundary& boundary) {
  return {boundary ? boundary.node->id() : dom::NodeId{}, boundary.offset};
}

// The standard drops them at each change of a boundary. Edits move boundaries too, and nobody tells of that:
// so the places are compared whenever the selection is set and whenever somebody asks.
Overrides& Editor::overrides() {
  const Place anchor = place_of(selection_.anchor()), focus = place_of(selection_.focus());
  if (anchor != overrides_anchor_ || focus != overrides_focus_) overrides_.clear();
  overrides_anchor_ = anchor;
  overrides_focus_ = focus;
  return overrides_;
}

void Editor::selection_changed() { overrides(); }

std::optional<dom::Range> Editor::active_range() const {
  const dom::Range range = selection_.range();
  if (!range.start) return std::nullopt;
  return range;
}

// --- the standard's section "Methods to query and execute commands" ---

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
  return row && row->indeterminate && row->indeterminate(*this);
}

bool Editor::state(std::u16string_view command) {
  const CommandDefinition* row = find_command(command);
  if (!row || !row->state) return false;
  const auto& states = overrides().states;
  if (const auto found = states.find(override_key(command)); found != states.end()) return found->second;
  return row->state(*this);
}

std::u16string Editor::value(std::u16string_view command) {
  const CommandDefinition* row = find_command(command);
  if (!row || !row->value) return {};
  const auto& values = overrides().values;
  if (const auto found = values.find(override_key(command)); found != values.end()) {
    return row->css_property == u"font-size" ? legacy_font_size_of(found->second) : found->second;
  }
  return row->value(*this);
}

bool Editor::execute(std::u16string_view command, std::u16string_view value) {
  const CommandDefinition* row = find_command(command);
  if (!row || !row->action || !is_enabled(*row)) return false;
  const HeldSelection held(selection_);
  if (row->is_mode) return row->action(*this, value);
  const dom::UndoStep step(document_->journal(), row->label);
  leave_comments(*this);
  return act(*row, value);
}

namespace {

// A comment, or an element that is written without content: what is put there is lost.
bool takes_nothing(const Node& node) {
  static const TagSet voids{dom::Tag::Br,    dom::Tag::Hr,  dom::Tag::Img,  dom::Tag::Input, dom::Tag::Wbr,
                            dom::Tag::Embed, dom::Tag::Col, dom::Tag::Area, dom::Tag::Param};
  return node.parent() && (node.type() == dom::NodeType::Comment || voids.has(node));
}

dom::Boundary outside_of_void(const dom::Boundary& place) {
  if (!place) return place;
  if (takes_nothing(*place.node)) return dom::before(*place.node);
  const Node* parent = place.node->is_text() ? place.node->parent() : nullptr;
  return parent && takes_nothing(*parent) ? dom::before(*parent) : place;
}

}  // namespace

void leave_comments(Editor& editor) {
  Selection& selection = editor.selection();
  const dom::Boundary anchor = selection.anchor(), focus = selection.focus();
  const dom::Boundary new_anchor = outside_of_void(anchor), new_focus = outside_of_void(focus);
  if (new_anchor != anchor || new_focus != focus) selection.set(new_anchor, new_focus);
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
