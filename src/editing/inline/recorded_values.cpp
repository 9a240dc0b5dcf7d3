#include "tvx/editing/inline/recorded_values.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>

#include "tvx/base/work_count.h"
#include "tvx/dom/document.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/inline_values.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;

namespace {

// Subscript comes first, so that it doesn't get in the way of the font size; superscript is told by it.
constexpr std::array recorded_commands{
    std::u16string_view(u"subscript"), std::u16string_view(u"bold"),
    std::u16string_view(u"fontname"),  std::u16string_view(u"fontsize"),
    std::u16string_view(u"forecolor"), std::u16string_view(u"hilitecolor"),
    std::u16string_view(u"italic"),    std::u16string_view(u"strikethrough"),
    std::u16string_view(u"underline")};

struct Specified {
  Specified() = default;
  Specified(const Element* element, InlineValue said) : holder(element), value(std::move(said)) {}

  const Element* holder = nullptr;  // the nearest element that specifies a value; null: none does
  InlineValue value;
};

/// Finds what the nearest ancestor specifies. Nodes that are asked about are mostly siblings, so the answer
/// of their parent is kept for as long as the tree stays as it is.
class SpecifiedValues {
 public:
  explicit SpecifiedValues(const CommandDefinition& command) : command_(&command) {}

  Specified of(const Node& node) {
    if (const auto* element = dom::as<Element>(&node)) {
      if (InlineValue own = specified_command_value(*element, *command_)) return {element, std::move(own)};
    }
    return above(node.parent());
  }

 private:
  const Specified& above(const Node* parent) {
    static const Specified nothing;
    if (!parent) return nothing;
    follow(dom::document_of(*parent));
    if (parent != parent_) {
      parent_ = parent;
      kept_ = climb(parent);
    }
    return *kept_;
  }

  void follow(const dom::Document& document) {
    if (version_ == document.version()) return;
    version_ = document.version();
    parent_ = nullptr;
    known_.clear();
  }

  // Of many levels in one another none is climbed twice.
  std::shared_ptr<const Specified> climb(const Node* parent) {
    std::shared_ptr<const Specified> found;
    std::size_t climbed = 0;
    const Element* const first = dom::as<Element>(parent);
    const Element* element = first;
    for (; element && !found; element = element->parent_element(), ++climbed) {
      count_work();
      if (const auto known = known_.find(element); known != known_.end()) {
        found = known->second;
        break;
      }
      if (InlineValue value = specified_command_value(*element, *command_))
        found = std::make_shared<Specified>(element, std::move(value));
    }
    static const auto nothing = std::make_shared<const Specified>();
    if (!found) found = nothing;
    if (climbed < short_climb) return found;
    for (const Element* passed = first; passed != element; passed = passed->parent_element())
      known_.emplace(passed, found);
    return found;
  }

  static constexpr std::size_t short_climb = 8;  // up to here climbing costs no more than looking up

  const CommandDefinition* command_;
  const Node* parent_ = nullptr;
  std::uint64_t version_ = 0;
  std::shared_ptr<const Specified> kept_;
  std::unordered_map<const Element*, std::shared_ptr<const Specified>> known_;
};

std::vector<SpecifiedValues> finders() {
  std::vector<SpecifiedValues> finders;
  for (const std::u16string_view name : recorded_commands) finders.emplace_back(inline_row(name));
  return finders;
}

}  // namespace

RecordedValues record_values(const NodeList& nodes) {
  RecordedValues values;
  auto specified = finders();
  for (const Ref<Node>& node : nodes) {
    for (std::size_t i = 0; i < recorded_commands.size(); ++i) {
      values.push_back({node, recorded_commands[i], specified[i].of(*node).value});
    }
  }
  return values;
}

void restore_values(const RecordedValues& values, Editor& editor) {
  auto specified = finders();
  for (const RecordedValue& recorded : values) {
    if (!recorded.node->parent()) continue;
    const auto place = std::find(recorded_commands.begin(), recorded_commands.end(), recorded.command);
    const CommandDefinition& command = inline_row(recorded.command);
    const Specified present = specified[place - recorded_commands.begin()].of(*recorded.node);
    if (!recorded.value && present.holder) {
      push_down_values(recorded.node, command, std::nullopt, editor);
    } else if (present.holder ? !equivalent_values(command, present.value, recorded.value)
                              : recorded.value.has_value()) {
      force_value(recorded.node, command, recorded.value, editor);
    }
  }
}

namespace {

constexpr std::array state_commands{std::u16string_view(u"bold"),          std::u16string_view(u"italic"),
                                    std::u16string_view(u"strikethrough"), std::u16string_view(u"subscript"),
                                    std::u16string_view(u"superscript"),   std::u16string_view(u"underline")};

// The first formattable node effectively contained in what is selected.
Node* first_formattable(Editor& editor) {
  const std::optional<dom::Range> range = editor.active_range();
  if (!range || range->collapsed()) return nullptr;
  Node* found = nullptr;
  const auto try_node = [&](Node& node) {
    if (!found && is_formattable(node) && is_effectively_contained(node, *range)) found = &node;
  };
  if (range->start.node->is_text()) try_node(*range->start.node);
  walk_contained(*range, [&](Node& node) {
    try_node(node);
    return found ? Visit::Stop : Visit::Children;
  });
  if (!found && range->end.node->is_text()) try_node(*range->end.node);
  return found;
}

}  // namespace

RecordedLook record_current_overrides(Editor& editor) {
  RecordedLook look;
  const Overrides& overrides = editor.overrides();
  // The order matters when they are restored: a link sets colour and underline, subscript the size.
  const auto add_value = [&](std::u16string_view name) {
    const auto found = overrides.values.find(name);
    if (found != overrides.values.end()) look.values.emplace_back(name, found->second);
  };
  add_value(u"createlink");
  for (const std::u16string_view name : state_commands) {
    const auto found = overrides.states.find(name);
    if (found != overrides.states.end()) look.states.emplace_back(name, found->second);
  }
  for (const std::u16string_view name : {u"fontname", u"fontsize", u"forecolor", u"hilitecolor"}) {
    add_value(name);
  }
  return look;
}

RecordedLook record_current_look(Editor& editor) {
  RecordedLook look;
  const Node* node = first_formattable(editor);
  if (!node) return look;
  const auto add_effective = [&](std::u16string_view name) {
    if (auto value = effective_command_value(*node, inline_row(name))) {
      look.values.emplace_back(name, *std::move(value));
    }
  };
  add_effective(u"createlink");
  for (const std::u16string_view name : state_commands) {
    const CommandDefinition& command = inline_row(name);
    look.states.emplace_back(name, is_activated_value(command, effective_command_value(*node, command)));
  }
  for (const std::u16string_view name : {u"fontname", u"forecolor", u"hilitecolor"}) {
    look.values.emplace_back(name, inline_row(name).value(editor));
  }
  add_effective(u"fontsize");
  return look;
}

namespace {

// The caret has no text to change: what is typed next shall have the style.
void set_overrides(const RecordedLook& look, Editor& editor) {
  for (const auto& [name, state] : look.states) editor.overrides().states[std::u16string(name)] = state;
  for (const auto& [name, value] : look.values) editor.overrides().values[std::u16string(name)] = value;
}

/// Steps 2 of "restore states and values": each command runs only where the style differs.
class LookRestorer {
 public:
  explicit LookRestorer(Editor& editor) : editor_(editor), node_(first_formattable(editor)) {}
  bool has_node() const { return node_ != nullptr; }

  void restore_state(std::u16string_view name, bool state) {
    if (editor_.state(name) != state) run(name, {});
  }

  void restore_value(std::u16string_view name, const std::u16string& value) {
    const CommandDefinition& command = inline_row(name);
    if (name == u"createlink") {
      if (present(name, command) != value) run(name, value);
    } else if (name == u"fontsize") {
      const bool same = override_of(name) ? *override_of(name) == value
                                          : loosely_equivalent_values(command, present(name, command), value);
      if (!same) run(name, legacy_font_size_of(value));
    } else if (!equivalent_values(command, editor_.value(name), value)) {
      run(name, value);
    }
  }

 private:
  const std::u16string* override_of(std::u16string_view name) const {
    const auto& values = editor_.overrides().values;
    const auto found = values.find(name);
    return found == values.end() ? nullptr : &found->second;
  }
  InlineValue present(std::u16string_view name, const CommandDefinition& command) const {
    if (const std::u16string* value = override_of(name)) return *value;
    return effective_command_value(*node_, command);
  }
  // The text may have been split by the command.
  void run(std::u16string_view name, std::u16string_view value) {
    inline_row(name).action(editor_, value);
    if (Node* node = first_formattable(editor_)) node_ = node;
  }

  Editor& editor_;
  Node* node_;
};

}  // namespace

void restore_look(const RecordedLook& look, Editor& editor) {
  if (look.states.empty() && look.values.empty()) return;
  LookRestorer restorer(editor);
  if (!restorer.has_node()) return set_overrides(look, editor);
  const auto restore_values_of = [&](bool link) {
    for (const auto& [name, value] : look.values) {
      if ((name == u"createlink") == link) restorer.restore_value(name, value);
    }
  };
  restore_values_of(true);
  for (const auto& [name, state] : look.states) restorer.restore_state(name, state);
  restore_values_of(false);
}

}  // namespace tvx::editing
