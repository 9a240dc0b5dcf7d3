#pragma once

#include <string>

#include "tvx/dom/document.h"

namespace tvx::dom {

/// Builds trees that nobody has seen yet: no range stands in them, no view shows them and no journal
/// has heard of them. For the parser and for clone(); everybody else goes through dom/mutation.h.
class Builder {
 public:
  /// Links a child without a parent. `before` is a child of `parent` or null.
  static void insert(Node& parent, Ref<Node> child, Node* before = nullptr);
  static void remove(Node& child);
  /// Moves all children of `from` to the end of `to`.
  static void move_children(Node& from, Node& to);
  static void append_data(CharacterData& node, std::u16string_view text);
  /// Adds an attribute that the element doesn't have yet.
  static void add_attribute(Element& element, Attribute attribute);
  static void reserve_attributes(Element& element, std::size_t count);
  /// A template's contents: a fragment.
  static void set_template_content(Element& element, Ref<Node> content);
  /// A number of the parser's own beside an element that it still holds open. It stands where
  /// Document::all() later counts, and is 0 again when the parser is done.
  static std::uint32_t& parsing_mark(const Element& element) { return element.source_index_; }

 private:
  friend class MutationDoor;
  static std::u16string& data(CharacterData& node) { return node.data_; }
  static AttributeList& attributes(Element& element) { return element.attributes_; }
};

/// A copy of a node as a fresh node of `document`; with everything below it if `deep`. Of a document: a
/// fragment with what may stand in one, so without the document type.
enum class Deep : bool { No, Yes };
Ref<Node> clone(const Node& node, Document& document, Deep deep);

}  // namespace tvx::dom
