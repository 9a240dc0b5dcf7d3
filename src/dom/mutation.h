#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/document.h"
#include "tvx/dom/node.h"

/// The one door of change. Every change of a tree is one of these five primitives, and undo, the view's
/// patches, live ranges, collections and change marks all listen here. Nothing else touches a tree.
namespace tvx::dom {

/// One primitive change, as it was made. What is needed to take it back is in it.
struct Mutation {
  enum class Type : std::uint8_t { Insert, Remove, ReplaceData, SetAttribute };

  Type type;
  MutationKind kind;
  Ref<Node> node;                    // the child, the text, the element
  Ref<Node> parent;                  // Insert, Remove
  Ref<Node> before;                  // Insert, Remove: the sibling after the child's place, empty at the end
  Offset offset = 0;                 // ReplaceData
  std::u16string removed, inserted;  // ReplaceData
  Name attribute;                    // SetAttribute
  AttributeNamespace attribute_namespace = AttributeNamespace::None;
  std::size_t attribute_index = 0;  // SetAttribute: where the attribute stood, if it was there
  std::optional<std::u16string> old_value, new_value;  // SetAttribute; none: absent
};

class MutationObserver {
 public:
  virtual ~MutationObserver() = default;
  virtual void mutated(const Mutation& mutation) = 0;
};

/// Puts `child` into `parent` before `before` (a child of `parent`; null: at the end). A child that stands
/// elsewhere is removed there first; a fragment gives its children. Throws RuntimeError(5) if the child
/// holds the parent or is of another document, and where a node can't stand (a text in a document).
void insert(Node& parent, Ref<Node> child, Node* before = nullptr);

/// Takes `child` out of its parent. Nothing happens if it has none.
Ref<Node> remove(Node& child);

/// Replaces `count` units from `at` on. Live ranges move as the DOM standard's "replace data" tells.
/// Throws RuntimeError(5) if `at` is after the end; a count that is too long is cut. Writing what is
/// there already is no mutation.
void replace_data(CharacterData& node, Offset at, Offset count, std::u16string_view text);

/// Sets an attribute. Writing an equal value is no mutation.
void set_attribute(Element& element, Name name, std::u16string_view value,
                   AttributeNamespace name_space = AttributeNamespace::None);
void remove_attribute(Element& element, Name name);

// --- made of these ---

/// Splits a text at an offset, DOM standard section 4.11 "split a Text node": the first part stays in
/// `text`, ranges after the split move into the new node, which is returned.
Ref<Text> split_text(Text& text, Offset at);
/// Removes all children.
void clear(Node& parent);
/// Removes all children and puts `child` (perhaps a fragment) in their place.
void replace_children(Node& parent, Ref<Node> child);

}  // namespace tvx::dom
