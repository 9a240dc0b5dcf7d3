#include "tvx/browser/view/shown_marks.h"

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/view.h"

namespace tvx::browser {

namespace {

/// So that the page has time for keys between two lots of them.
constexpr std::size_t most_texts_at_once = 200;

}  // namespace

void ShownMarks::set(MarkKind kind, const dom::Text& text, std::vector<MarkedStretch> stretches) {
  const Key key(static_cast<std::uint32_t>(text.id()), kind);
  const bool is_pending = unsent_.contains(key) || waiting_.erase(key) > 0;
  if (stretches.empty() && all_.erase(key) == 0 && !is_pending) return;
  if (!stretches.empty()) all_[key] = std::move(stretches);
  unsent_.insert(key);
}

void ShownMarks::clear() {
  waiting_.clear();
  for (const auto& [key, stretches] : all_) unsent_.insert(key);
  all_.clear();
}

void ShownMarks::clear(MarkKind kind) {
  std::erase_if(all_, [&](const auto& marks) {
    if (marks.first.second != kind) return false;
    unsent_.insert(marks.first);
    return true;
  });
}

const std::vector<MarkedStretch>* ShownMarks::find(MarkKind kind, const dom::Text& text) const {
  const auto found = all_.find({static_cast<std::uint32_t>(text.id()), kind});
  return found == all_.end() ? nullptr : &found->second;
}

void ShownMarks::page_began() {
  unsent_.clear();
  waiting_.clear();
  for (const auto& [key, stretches] : all_) unsent_.insert(key);
}

bool ShownMarks::send(const Mirror& mirror) {
  if (unsent_.empty()) return false;
  std::vector<TextMarks> lot;
  for (auto key = unsent_.begin(); key != unsent_.end() && lot.size() < most_texts_at_once;) {
    const auto id = dom::NodeId(key->first);
    const auto found = all_.find(*key);
    // What is still to be loaded waits; what is gone has none to take away.
    if (!mirror.node(id)) {
      if (found != all_.end()) waiting_.insert(*key);
      key = unsent_.erase(key);
      continue;
    }
    lot.push_back({id, key->second, found == all_.end() ? std::vector<MarkedStretch>() : found->second});
    key = unsent_.erase(key);
  }
  if (!lot.empty()) view_.mark(lot);
  return lot.size() == most_texts_at_once;
}

void ShownMarks::came(const std::vector<PatchOperation>& operations) {
  for (const PatchOperation& operation : operations) {
    if (waiting_.empty()) return;
    if (operation.type != PatchOperation::Type::Text) continue;
    const auto id = static_cast<std::uint32_t>(operation.node);
    for (auto key = waiting_.lower_bound({id, MarkKind{}}); key != waiting_.end() && key->first == id;)
      unsent_.insert(waiting_.extract(key++));
  }
}

}  // namespace tvx::browser
