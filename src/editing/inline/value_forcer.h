#pragma once

#include "tvx/editing/inline/inline_values.h"

namespace tvx::editing {

/// "Force the value of a node" for many nodes in a row: editing commands standard, section "Forcing the value
/// of a node". Keeps what it has learnt about the last node's parent, as most nodes are siblings.
class ValueForcer {
 public:
  ValueForcer(InlineCommand command, const InlineValue& value, Editor& editor)
      : command_(command), value_(value), editor_(editor) {}

  void force(const dom::Ref<dom::Node>& node);

 private:
  NodeList force_one(const dom::Ref<dom::Node>& node);
  void join_neighbour(const dom::Ref<dom::Node>& node);
  bool joins(const dom::Node* node) const;
  bool join_plainly(const dom::Ref<dom::Node>& node);
  bool has_bearer_beside(const dom::Node& node);
  bool is_bearer(const dom::Node& node) const;
  bool is_seen(const dom::Node& node);
  bool looks_right(const dom::Node& node) const;
  NodeList children_to_force(const dom::Node& node) const;
  dom::Ref<dom::Element> make(dom::Tag tag) const;
  dom::Ref<dom::Element> make_font(dom::Name attribute, std::u16string_view text) const;
  dom::Ref<dom::Element> make_wrapper(dom::Node& node) const;
  dom::Ref<dom::Element> make_tag() const;
  dom::Ref<dom::Element> make_link(dom::Node& node) const;
  void style(dom::Element& wrapper) const;

  InlineCommand command_;
  const InlineValue& value_;
  Editor& editor_;
  dom::Ref<dom::Node> parent_;  // the last one asked about, and whether it is rendered: no command of this
  bool rendered_ = false;       // kind changes that
  const dom::Node* next_without_ = nullptr;  // nothing to join stands before it in this version of the tree
  std::uint64_t version_ = 0;
};

}  // namespace tvx::editing
