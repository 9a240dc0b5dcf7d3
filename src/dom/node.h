#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/attribute_list.h"
#include "tvx/dom/name.h"
#include "tvx/dom/ref.h"

namespace tvx::dom {

class Document;
class Element;
class Node;

enum class NodeType : std::uint8_t { Element, Text, Comment, DocumentType, Document, DocumentFragment };

/// Numbers a node within its document, from 1, in order of creation; never used again.
enum class NodeId : std::uint32_t {};

/// A child and its position among its siblings, kept of the last question in a long list: the next one mostly
/// asks nearby (dom/sibling_places.h).
struct KnownPlace {
  const Node* parent = nullptr;  // null: none is known
  const Node* child = nullptr;
  std::uint32_t index = 0;
};

/// What nodes know of their document: outlives it, so that a node can tell that the document is gone.
struct DocumentAnchor {
  Document* document = nullptr;
  std::uint32_t users = 0;
  std::uint32_t last_id = 0;
  KnownPlace known_place;
};

/// A node of the tree. Reading is open to all; only the functions of dom/mutation.h change a tree that
/// anybody else may know, and only the parser and clone() build fresh ones (dom/builder.h).
///
/// Children are a doubly linked list: an insertion or removal costs the same anywhere, in a body of
/// two children or of two hundred thousand.
class Node {
 public:
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  NodeType type() const { return type_; }
  NodeId id() const { return NodeId(id_); }

  Node* parent() const { return parent_; }
  Element* parent_element() const;
  Node* first_child() const { return first_child_; }
  Node* last_child() const { return last_child_; }
  Node* previous_sibling() const { return previous_; }
  Node* next_sibling() const { return next_; }
  bool has_children() const { return first_child_ != nullptr; }
  std::size_t child_count() const { return child_count_; }

  /// The document that made this node, null when it is gone.
  Document* document() const { return anchor_->document; }

  bool is_element() const { return type_ == NodeType::Element; }
  bool is_text() const { return type_ == NodeType::Text; }
  /// An HTML element of that name.
  inline bool is(Tag tag) const;

  void retain() { ++references_; }
  void release() {
    if (--references_ == 0) destroy(this);
  }

 protected:
  Node(NodeType type, DocumentAnchor& anchor);
  ~Node();

 private:
  friend class Builder;
  friend class Document;
  friend class SiblingPlaces;
  static void destroy(Node* node);
  static void delete_node(Node* node);

  std::uint32_t references_ = 0;
  std::uint32_t id_;
  NodeType type_;

 protected:
  // Room of the derived classes in the gap after type_.
  Namespace namespace_ = Namespace::Html;
  mutable std::uint32_t source_index_ = 0;

 private:
  DocumentAnchor* anchor_;
  Node* parent_ = nullptr;
  Node* first_child_ = nullptr;
  Node* last_child_ = nullptr;
  std::uint32_t child_count_ = 0;
  Node* previous_ = nullptr;
  Node* next_ = nullptr;
};

class Element final : public Node {
 public:
  static bool matches(const Node& node) { return node.type() == NodeType::Element; }

  Name name() const { return name_; }
  Namespace name_space() const { return namespace_; }
  /// Known HTML name, Tag::Unknown for any other and for every foreign element.
  Tag tag() const { return namespace_ == Namespace::Html ? name_.tag() : Tag::Unknown; }
  bool is_html() const { return namespace_ == Namespace::Html; }
  /// The name as this system shows it: capitals for HTML, own letters for foreign elements.
  const std::u16string& display_name() const { return is_html() ? name_.upper() : name_.text(); }

  const AttributeList& attributes() const { return attributes_; }
  /// The value as written, null when absent.
  const std::u16string* attribute(Name name) const;
  bool has_attribute(Name name) const { return attribute(name) != nullptr; }
  /// The value as written, empty when absent.
  std::u16string_view attribute_or_empty(Name name) const;

  /// The contents of a `template` element, null for any other.
  Node* template_content() const { return content_.get(); }

 private:
  friend class Builder;
  friend class Document;
  friend class Node;
  Element(DocumentAnchor& anchor, Name name, Namespace name_space)
      : Node(NodeType::Element, anchor), name_(name) {
    namespace_ = name_space;
  }

  Name name_;
  AttributeList attributes_;
  Ref<Node> content_;
};

/// Text and comments.
class CharacterData : public Node {
 public:
  static bool matches(const Node& node) {
    return node.type() == NodeType::Text || node.type() == NodeType::Comment;
  }
  const std::u16string& data() const { return data_; }
  Offset length() const { return data_.size(); }

 protected:
  friend class Builder;
  friend class Document;
  friend class Node;
  CharacterData(NodeType type, DocumentAnchor& anchor, std::u16string data)
      : Node(type, anchor), data_(std::move(data)) {}
  std::u16string data_;
};

class Text final : public CharacterData {
 public:
  static bool matches(const Node& node) { return node.type() == NodeType::Text; }

 private:
  friend class Document;
  friend class Node;
  Text(DocumentAnchor& anchor, std::u16string data)
      : CharacterData(NodeType::Text, anchor, std::move(data)) {}
};

class Comment final : public CharacterData {
 public:
  static bool matches(const Node& node) { return node.type() == NodeType::Comment; }

 private:
  friend class Document;
  friend class Node;
  Comment(DocumentAnchor& anchor, std::u16string data)
      : CharacterData(NodeType::Comment, anchor, std::move(data)) {}
};

class DocumentType final : public Node {
 public:
  static bool matches(const Node& node) { return node.type() == NodeType::DocumentType; }
  const std::u16string& name() const { return name_; }
  const std::u16string& public_id() const { return public_id_; }
  const std::u16string& system_id() const { return system_id_; }

 private:
  friend class Document;
  friend class Node;
  DocumentType(DocumentAnchor& anchor, std::u16string name, std::u16string public_id,
               std::u16string system_id)
      : Node(NodeType::DocumentType, anchor),
        name_(std::move(name)),
        public_id_(std::move(public_id)),
        system_id_(std::move(system_id)) {}
  std::u16string name_, public_id_, system_id_;
};

class DocumentFragment final : public Node {
 public:
  static bool matches(const Node& node) { return node.type() == NodeType::DocumentFragment; }

 private:
  friend class Document;
  friend class Node;
  explicit DocumentFragment(DocumentAnchor& anchor) : Node(NodeType::DocumentFragment, anchor) {}
};

/// The node as a T, null if it is none (or null).
template <class T>
T* as(Node* node) {
  return node && T::matches(*node) ? static_cast<T*>(node) : nullptr;
}
template <class T>
const T* as(const Node* node) {
  return node && T::matches(*node) ? static_cast<const T*>(node) : nullptr;
}
template <class T>
T* as(const Ref<Node>& node) {
  return as<T>(node.get());
}

inline bool Node::is(Tag tag) const {
  return is_element() && static_cast<const Element*>(this)->tag() == tag;
}
inline Element* Node::parent_element() const { return as<Element>(parent_); }

/// The document of a node. Throws RuntimeError(91) when it is gone.
Document& document_of(const Node& node);

}  // namespace tvx::dom
