#pragma once

#include <array>
#include <memory>
#include <vector>

#include "tvx/dom/node.h"

namespace tvx::dom {

class Journal;
class LiveRange;
class MutationObserver;

/// HTML standard, section 13.2.6.4.1: what the document type asks of the layout.
enum class CompatibilityMode : std::uint8_t { NoQuirks, LimitedQuirks, Quirks };

/// How a change of the tree counts.
enum class MutationKind : std::uint8_t {
  Step,     // an edit: journalled
  Overlay,  // the selection border: seen by tree, serialiser and view, and by nobody else
  Load      // new content: not journalled; the loader clears the journal
};

/// What other subjects keep with a document: made when first asked for, gone with it.
class DocumentExtension {
 public:
  virtual ~DocumentExtension() = default;
};
enum class ExtensionSlot : std::uint8_t { Style, Collections, Count };

/// A document: the root of a tree, the maker of its nodes, and what follows its changes.
class Document final : public Node {
 public:
  static bool matches(const Node& node) { return node.type() == NodeType::Document; }
  /// A document with no node in it.
  static Ref<Document> create();

  // --- making nodes; they belong to this document and stand in no tree yet ---
  Ref<Element> create_element(Name name, Namespace name_space = Namespace::Html);
  Ref<Element> create_element(Tag tag) { return create_element(Name(tag)); }
  Ref<Text> create_text(std::u16string data);
  Ref<Comment> create_comment(std::u16string data);
  Ref<DocumentType> create_document_type(std::u16string name, std::u16string public_id,
                                         std::u16string system_id);
  Ref<DocumentFragment> create_fragment();

  // --- places ---
  Element* document_element() const;
  Element* head() const;
  /// The first BODY or FRAMESET child of the HTML element.
  Element* body() const;
  DocumentType* document_type() const;

  CompatibilityMode compatibility_mode() const { return compatibility_mode_; }
  void set_compatibility_mode(CompatibilityMode mode) { compatibility_mode_ = mode; }

  // --- preorder, made when first asked in each state of the structure ---
  /// Every element of the tree in document order. Valid until the structure changes.
  const std::vector<Element*>& all() const;
  /// The place of a connected element in all().
  std::size_t source_index(const Element& element) const;
  /// Counts insertions and removals.
  std::uint64_t structure_version() const { return structure_version_; }
  /// Counts every mutation.
  std::uint64_t version() const { return version_; }

  // --- change ---
  MutationKind mutation_kind() const { return mutation_kind_; }
  Journal& journal() const { return *journal_; }
  /// Observers are called after each mutation, in order of addition. They must not change the tree.
  void add_observer(MutationObserver& observer);
  void remove_observer(MutationObserver& observer);
  /// The ranges that follow this document's edits (dom/range.h).
  const std::vector<LiveRange*>& live_ranges() const { return live_ranges_; }
  /// Empty until its subject fills it.
  std::unique_ptr<DocumentExtension>& extension(ExtensionSlot slot) { return extensions_[std::size_t(slot)]; }

 private:
  friend class Node;
  friend class LiveRange;
  friend class MutationScope;
  friend class MutationDoor;
  Document(DocumentAnchor& anchor);
  ~Document();

  CompatibilityMode compatibility_mode_ = CompatibilityMode::NoQuirks;
  MutationKind mutation_kind_ = MutationKind::Step;
  std::uint64_t structure_version_ = 1;
  std::uint64_t version_ = 0;
  mutable std::uint64_t order_version_ = 0;
  mutable std::vector<Element*> order_;
  std::unique_ptr<Journal> journal_;
  std::vector<MutationObserver*> observers_;
  std::vector<LiveRange*> live_ranges_;
  std::array<std::unique_ptr<DocumentExtension>, std::size_t(ExtensionSlot::Count)> extensions_;
};

/// Sets the kind of the mutations made while it lives.
class MutationScope {
 public:
  MutationScope(Document& document, MutationKind kind)
      : document_(document), previous_(document.mutation_kind_) {
    document.mutation_kind_ = kind;
  }
  ~MutationScope() { document_->mutation_kind_ = previous_; }
  MutationScope(const MutationScope&) = delete;
  MutationScope& operator=(const MutationScope&) = delete;

 private:
  Ref<Document> document_;
  MutationKind previous_;
};

}  // namespace tvx::dom
