#include "tvx/editing/facts/line_memo.h"

#include "tvx/dom/document.h"

namespace tvx::editing {
namespace {

LineMemo* innermost = nullptr;

}  // namespace

LineMemo::LineMemo() : outer_(innermost) { innermost = this; }

LineMemo::~LineMemo() { innermost = outer_; }

// A document that lives as long as the command can't be another one at the same address.
void LineMemo::follow(const dom::Document& document) {
  if (document_ == &document && version_ == document.version()) return;
  document_ = &document;
  version_ = document.version();
  for (auto& side : known_) side.clear();
  sights_.clear();
}

std::optional<LineGoes> LineMemo::find(const dom::Node& node, Side side) {
  if (!innermost) return std::nullopt;
  innermost->follow(dom::document_of(node));
  const auto& known = innermost->known_[std::size_t(side)];
  const auto found = known.find(&node);
  return found == known.end() ? std::nullopt : std::optional(found->second);
}

void LineMemo::note(const std::vector<const dom::Node*>& nodes, Side side, LineGoes goes) {
  // One step is walked as fast as it is looked up.
  if (!innermost || nodes.size() < 2) return;
  innermost->follow(dom::document_of(*nodes.front()));
  for (const dom::Node* node : nodes) innermost->known_[std::size_t(side)].insert_or_assign(node, goes);
}

std::optional<bool> LineMemo::find_sight(const dom::Node& node) {
  if (!innermost || innermost->sights_.empty()) return std::nullopt;
  innermost->follow(dom::document_of(node));
  const auto found = innermost->sights_.find(&node);
  return found == innermost->sights_.end() ? std::nullopt : std::optional(found->second);
}

void LineMemo::note_sight(const std::vector<const dom::Node*>& nodes, bool seen) {
  if (!innermost || nodes.empty()) return;
  innermost->follow(dom::document_of(*nodes.front()));
  for (const dom::Node* node : nodes) innermost->sights_.insert_or_assign(node, seen);
}

}  // namespace tvx::editing
