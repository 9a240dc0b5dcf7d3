#pragma once

#include "tvx/editing/facts/ancestor_memo.h"
#include "tvx/editing/inline/inline_values.h"

namespace tvx::editing {

/// Whether an ancestor of a node says a value of a command itself, for many nodes while they change.
class SaidAbove final : public AncestorMemo<bool> {
 public:
  SaidAbove(dom::Document& document, InlineCommand command) : AncestorMemo(document), command_(command) {}

  bool is_above(const dom::Node& node) { return node.parent() && is_said_at_or_above(*node.parent()); }

 private:
  bool is_said_at_or_above(const dom::Node& first) {
    const dom::Node* node = &first;
    bool said = false;
    for (; node && !said; node = node->parent()) {
      count_work();
      if (const auto known = find(*node)) {
        said = *known;
        break;
      }
      const auto* element = dom::as<dom::Element>(node);
      said = element && specified_command_value(*element, command_);
    }
    note(first, node, said);
    return said;
  }
  std::optional<bool> answer_below(const dom::Node& parent) override { return is_said_at_or_above(parent); }
  bool depends_on(const dom::Name&) const override { return true; }

  InlineCommand command_;
};

}  // namespace tvx::editing
