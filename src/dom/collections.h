#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "tvx/dom/document.h"

namespace tvx::dom {

enum class CollectionKind : std::uint8_t {
  All,    // every element
  Tag,    // those of one name
  Links,  // A and AREA with an address
  Images,
  Scripts,
  Forms,
  Children  // the element children of the root
};

/// Elements below a node in document order (but for a template's contents, which stand apart), as they stand
/// at the moment of each question. The list is kept while nothing happens that could change it.
class Collection {
 public:
  /// Below `root`, which is not part of it. `tag` in any letters; "*" is every name.
  Collection(Node& root, CollectionKind kind, std::u16string_view tag = {});

  std::size_t length() const { return elements().size(); }
  /// Null out of range.
  Element* item(std::size_t index) const;
  /// The first with that `id`, else the first with that `name` attribute; null if there is none.
  Element* named_item(std::u16string_view name) const;
  /// Those of one tag name.
  Collection tags(std::u16string_view name) const;
  /// Valid until the next mutation.
  const std::vector<Element*>& elements() const;

 private:
  Ref<Node> root_;
  CollectionKind kind_;
  Name tag_;  // empty: every name
  mutable std::uint64_t version_ = ~std::uint64_t{0};
  mutable std::vector<Element*> elements_;  // of roots below a document, whose lists stand with the document
};

/// A document's own collection. Its lists stand with the document, so all.tags(u"base") asked for on each key
/// costs a style-up.
std::shared_ptr<const Collection> collection_of(Document& document, CollectionKind kind,
                                                std::u16string_view tag = {});

}  // namespace tvx::dom
