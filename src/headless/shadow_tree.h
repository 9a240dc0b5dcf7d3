#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tvx/browser/view/messages.h"

namespace tvx::headless {

/// The tree that a view has made from patches, kept in plain structures: what a view without a screen
/// shows, and what tests compare with the document. Strict where a browser is: an operation on a node that
/// isn't known, or at a position that isn't there, is reported and does nothing.
class ShadowTree {
 public:
  struct Node {
    dom::NodeId id{};
    browser::PatchOperation::Type type = browser::PatchOperation::Type::Element;
    std::u16string name;
    dom::Namespace name_space = dom::Namespace::Html;
    std::vector<browser::PatchOperation::Attribute> attributes;
    std::u16string text;
    Node* parent = nullptr;
    std::vector<Node*> children;
  };

  /// Applies a patch; the nodes whose operations failed.
  std::vector<dom::NodeId> apply(const browser::Patch& patch);
  /// Null if the id isn't known.
  const Node* find(dom::NodeId id) const;
  /// The root of all.
  const Node& page() const { return page_; }
  std::size_t size() const { return nodes_.size(); }
  /// The form of browser::print_mirrored.
  std::u16string print() const;

 private:
  bool apply(const browser::PatchOperation& operation);
  bool put(Node& node, dom::NodeId parent, dom::NodeId before);
  bool make(const browser::PatchOperation& operation);
  bool set_attribute(Node& node, const browser::PatchOperation& operation);
  void detach(Node& node);
  void forget(Node& root);
  Node* known(dom::NodeId id);

  std::map<dom::NodeId, std::unique_ptr<Node>> nodes_;
  Node page_;
};

}  // namespace tvx::headless
