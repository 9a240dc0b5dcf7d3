#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/editing/reading/accessible_content.h"

namespace tvx::editing {

/// What has become of one element that somebody follows.
struct AccessibleChange {
  dom::Ref<dom::Element> element;
  /// Of its text: what stands there in place of what stood there.
  Offset at = 0;
  std::u16string removed, inserted;
  /// Of its children, each as far as it still is, or was, one.
  std::vector<dom::Ref<dom::Element>> gone, come;
};

struct AccessibleChanges {
  std::vector<AccessibleChange> changes;
  /// What was followed and is in the document no more.
  std::vector<dom::Ref<dom::Element>> left;
};

/// A document as reading programs are told it: elements that mean something by themselves, each with its text
/// and the elements in it. Nothing is computed before it is asked for, and what is asked for again after an
/// edit is computed anew only where that may have changed something. Who follows an element is told, after
/// edits, how its text and its children differ from what they were when told last.
class AccessibleTree final : private dom::MutationObserver {
 public:
  explicit AccessibleTree(dom::Document& document);
  ~AccessibleTree() override;
  AccessibleTree(const AccessibleTree&) = delete;
  AccessibleTree& operator=(const AccessibleTree&) = delete;

  dom::Document& document() const { return *document_; }
  /// The body; null where the document has none.
  dom::Element* root() const { return document_->body(); }
  /// Good until the next change of the tree.
  const AccessibleContent& content(dom::Element& element);
  /// What it stands in; null for the root.
  dom::Element* parent(const dom::Element& element) const;
  /// The nearest at or above a node; null outside of the root.
  dom::Element* at(const dom::Node& node) const;
  /// The same without links, which are parts of lines.
  dom::Element* block_at(const dom::Node& node) const;
  /// The place of a child; -1 if it is none.
  std::ptrdiff_t index_of(dom::Element& parent, const dom::Element& child);

  struct Place {
    dom::Element* element = nullptr;  // that holds the line; null where there is none
    Offset offset = 0;
  };
  /// Where a position stands among the texts.
  Place place_of(const dom::Boundary& position);

  // --- what is followed ---
  void follow(dom::Element& element);
  bool follows(const dom::Element& element) const { return entries_.contains(&element); }
  void forget(const dom::Element& element) { entries_.erase(&element); }
  /// Whether take_changes() may have something to tell.
  bool changed() const { return !soiled_.empty() || everything_ || !removed_.empty(); }
  AccessibleChanges take_changes();
  /// How many edits there were: overlays and new content aren't counted.
  std::uint64_t edits() const { return edits_; }
  /// Counts changes, but for overlays.
  std::uint64_t version() const { return version_; }
  /// Called at each change, within it: it may only note that there was one.
  void set_on_change(std::function<void()> call) { on_change_ = std::move(call); }

 private:
  struct Entry {
    dom::Ref<dom::Element> element;
    bool block = true;
    std::unique_ptr<AccessibleContent> content;                         // null: to be read anew
    std::vector<std::pair<const dom::Element*, std::ptrdiff_t>> order;  // of the children, once asked for
    bool soiled = false;
    // What was told last.
    std::u16string text;
    std::vector<dom::Ref<dom::Element>> children;
  };
  void mutated(const dom::Mutation& mutation) override;
  void soil(dom::Node* node);
  void soil(Entry& entry);
  void soil_everything();
  void note_attribute(const dom::Mutation& mutation);
  void collect_left(AccessibleChanges& changes);
  static AccessibleChange difference(Entry& entry);

  dom::Ref<dom::Document> document_;
  std::unordered_map<const dom::Element*, Entry> entries_;
  std::unique_ptr<AccessibleContent> passing_;  // of an element that nobody follows
  std::vector<dom::Ref<dom::Element>> soiled_;
  std::vector<dom::Ref<dom::Node>> removed_;
  bool everything_ = false;
  std::uint64_t edits_ = 0, version_ = 0;
  std::function<void()> on_change_;
};

}  // namespace tvx::editing
