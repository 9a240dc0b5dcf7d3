#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "tvx/base/work_count.h"
#include "tvx/dom/document.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::editing {

/// Remembers what nodes have from their ancestors, so that asking for each of many nested ones costs no
/// climb. Follows the tree while it changes: what is moved to where the answer is the same keeps its own.
template <class Answer>
class AncestorMemo : private dom::MutationObserver {
 public:
  explicit AncestorMemo(dom::Document& document) : document_(document), version_(document.version()) {
    document.add_observer(*this);
  }
  ~AncestorMemo() override { document_->remove_observer(*this); }
  AncestorMemo(const AncestorMemo&) = delete;
  AncestorMemo& operator=(const AncestorMemo&) = delete;

  /// What the children of the node have from it and from what is above it; none: not known.
  std::optional<Answer> find(const dom::Node& parent) {
    if (known_.empty() || !is_up_to_date()) return std::nullopt;
    settle();
    const auto found = known_.find(parent.id());
    return found == known_.end() ? std::nullopt : std::optional(found->second);
  }

  /// The same of all from `first` up to `end`, which is not counted in.
  void note(const dom::Node& first, const dom::Node* end, Answer answer) {
    if (!is_up_to_date()) return;
    settle();
    for (const dom::Node* node = &first; node != end; node = node->parent())
      known_.insert_or_assign(node->id(), answer);
  }

 protected:
  /// Asked where something is put in: none if nobody knows.
  virtual std::optional<Answer> answer_below(const dom::Node& parent) = 0;
  virtual bool depends_on(const dom::Name& attribute) const = 0;

 private:
  // Others hear of a change before this does, and may ask meanwhile.
  bool is_up_to_date() const { return version_ == document_->version(); }

  void mutated(const dom::Mutation& mutation) override {
    version_ = document_->version();
    if (known_.empty()) return;
    switch (mutation.type) {
      case dom::Mutation::Type::Insert: return came(mutation);
      case dom::Mutation::Type::Remove: return left(mutation);
      case dom::Mutation::Type::SetAttribute:
        if (depends_on(mutation.attribute)) forget(*mutation.node);
        return;
      case dom::Mutation::Type::ReplaceData: return;
    }
  }

  void left(const dom::Mutation& mutation) {
    if (!mutation.node->has_children()) {
      known_.erase(mutation.node->id());
      return;
    }
    settle();
    answer_of_away_ = mutation.parent ? answer_below(*mutation.parent) : std::nullopt;
    away_ = mutation.node;
  }

  // What was asked about while it stood nowhere has other answers now: forgotten when somebody asks, for it
  // may be put into something larger first.
  void came(const dom::Mutation& mutation) {
    const dom::Node& node = *mutation.node;
    if (away_ && &node == away_.get()) {
      away_ = nullptr;
      const auto answer = mutation.parent ? answer_below(*mutation.parent) : std::nullopt;
      if (!answer || answer != answer_of_away_) forget(node);
    } else if (!node.has_children()) {
      known_.erase(node.id());
    } else {
      if (away_ && away_->parent() != &node) settle();
      away_ = mutation.node;
      answer_of_away_ = std::nullopt;
    }
  }

  void settle() {
    if (!away_) return;
    const dom::Ref<dom::Node> gone = away_;
    away_ = nullptr;
    forget(*gone);
  }

  void forget(const dom::Node& root) {
    for (const dom::Node* node = &root; node && !known_.empty(); node = dom::next_in_order(*node, &root)) {
      count_work();
      known_.erase(node->id());
    }
  }

  dom::Ref<dom::Document> document_;
  std::uint64_t version_;
  std::unordered_map<dom::NodeId, Answer> known_;
  /// What has been taken out last, and what it had: put in elsewhere at once it may have the same.
  dom::Ref<dom::Node> away_;
  std::optional<Answer> answer_of_away_;
};

}  // namespace tvx::editing
