#include "tvx/editing/blocks/indentation.h"

#include <algorithm>
#include <unordered_map>

#include "tvx/base/work_count.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/blocks/lists.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/path_facts.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/recorded_values.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

// "margin" is set by "margin-left" too.
bool sets(const dom::style::Declaration& declaration, std::u16string_view property) {
  const std::u16string_view name = declaration.name;
  return name.starts_with(property) && (name.size() == property.size() || name[property.size()] == u'-');
}

bool every_declaration(const Element& element, const auto& criteria) {
  const dom::style::Declarations declarations(element.attribute_or_empty(dom::names::style));
  for (std::size_t i = 0; i < declarations.length(); ++i) {
    if (!criteria(declarations.item(i))) return false;
  }
  return true;
}

bool sets_margin(const Element& element) {
  if (!element.has_attribute(dom::names::style)) return false;
  return !every_declaration(element, [](const auto& declaration) { return !sets(declaration, u"margin"); });
}

}  // namespace

bool is_indentation_element(const Node& node) {
  if (node.is(Tag::Blockquote)) return true;
  return node.is(Tag::Div) && sets_margin(static_cast<const Element&>(node));
}

bool is_simple_indentation_element(const Node& node) {
  if (!is_indentation_element(node)) return false;
  const auto& element = static_cast<const Element&>(node);
  const bool plain = std::all_of(
      element.attributes().begin(), element.attributes().end(), [](const dom::Attribute& attribute) {
        return attribute.name == dom::names::style || attribute.name == dom::names::dir;
      });
  return plain && every_declaration(element, [](const auto& declaration) {
           return sets(declaration, u"margin") || sets(declaration, u"border") ||
                  sets(declaration, u"padding");
         });
}

bool has_editable_descendant(const Node& node) {
  for (const Node* below = node.first_child(); below; below = dom::next_in_order(*below, &node)) {
    if (is_editable(*below)) return true;
  }
  return false;
}

void indent(const NodeList& nodes, Editor& editor) {
  if (nodes.empty()) return;
  dom::Document& document = editor.document();
  if (const Node* list = nodes.front()->parent(); list && is_list(*list)) {
    const Name name = static_cast<const Element*>(list)->name();
    wrap(
        nodes, [name](const Node& sibling) { return is_html_element_of(sibling, name); },
        [&] { return Ref<Node>(document.create_element(name)); });
    return;
  }
  const Ref<Node> quote = wrap(nodes, is_simple_indentation_element,
                               [&] { return Ref<Node>(document.create_element(Tag::Blockquote)); });
  if (quote) fix_disallowed_ancestors(quote, editor);
}

namespace {

/// The indentation around a node: the element that makes it, and what lies between, the innermost first.
struct Indentation {
  NodeList between;
  Node* maker = nullptr;
};

Indentation indentation_around(const Node& node, bool (*makes_it)(const Node&)) {
  Indentation found;
  Node* ancestor = node.parent();
  while (ancestor && ancestor->is_element() && is_editable(*ancestor) && !makes_it(*ancestor) &&
         !is_list(*ancestor)) {
    found.between.emplace_back(ancestor);
    ancestor = ancestor->parent();
  }
  if (ancestor && is_editable(*ancestor) && makes_it(*ancestor)) found.maker = ancestor;
  return found;
}

void unset_indentation(Element& element) {
  dom::remove_attribute(element, dom::names::dir);
  for (const std::u16string_view property : {u"margin", u"padding", u"border"}) {
    dom::style::remove_inline_value(element, property);
  }
  set_tag_name(element, Name(Tag::Div));
}

// Step 8: a list that nothing indents but itself.
void outdent_list(Element& list, Editor& editor) {
  for (const std::u16string_view name : {u"reversed", u"start", u"type"}) {
    dom::remove_attribute(list, Name(name));
  }
  const NodeList children = children_of(list);
  if (!list.attributes().empty() && !(list.parent() && is_list(*list.parent()))) {
    set_tag_name(list, Name(Tag::Div));
  } else {
    const RecordedValues values = record_values(children);
    remove_preserving_descendants(list);
    restore_values(values, editor);
  }
  for (const Ref<Node>& child : children) fix_disallowed_ancestors(child, editor);
}

// Step 12: on one level, everything but the way to the node keeps its indentation.
void indent_siblings(const Node& target, Editor& editor) {
  Node* next = target.next_sibling();
  if (is_inline_node(target) && !target.is(Tag::Br) && next && next->is(Tag::Br)) dom::remove(*next);
  NodeList before, behind;
  for (Node* node = target.previous_sibling(); node; node = node->previous_sibling())
    before.emplace_back(node);
  std::reverse(before.begin(), before.end());
  for (Node* node = target.next_sibling(); node; node = node->next_sibling()) behind.emplace_back(node);
  indent(before, editor);
  indent(behind, editor);
}

// Steps 2, 3: the node is indentation itself.
bool outdent_itself(const Ref<Node>& node) {
  if (is_simple_indentation_element(*node)) {
    remove_preserving_descendants(node);
  } else if (is_indentation_element(*node)) {
    unset_indentation(static_cast<Element&>(*node));
  } else {
    return false;
  }
  return true;
}

}  // namespace

// The numbers are the steps of the standard's "outdent".
void outdent(const Ref<Node>& node, Editor& editor) {
  if (!is_editable(*node) || outdent_itself(node)) return;
  Indentation indentation = indentation_around(*node, is_simple_indentation_element);       // 6
  if (!indentation.maker) indentation = indentation_around(*node, is_indentation_element);  // 7
  const Ref<Node> maker(indentation.maker);
  if (!maker && is_list(*node)) return outdent_list(static_cast<Element&>(*node), editor);  // 8
  if (!maker) return;
  // 12: from the maker down, the target on each level is the next one of the way.
  NodeList& way = indentation.between;
  way.insert(way.begin(), node);
  for (auto target = way.rbegin(); target != way.rend(); ++target) indent_siblings(**target, editor);
  outdent_itself(maker);  // 13
}

// Editing commands standard, section "The indent command".
bool indent_selection(Editor& editor, std::u16string_view) {
  normalize_items_of(editor.selection().range());
  const dom::Range range = block_extend(editor.selection().range());
  const NodeList nodes = topmost_contained(range, [](const Node& node) {
    return is_editable(node) &&
           (is_allowed_child(node, Name(Tag::Div)) || is_allowed_child(node, Name(Tag::Ol)));
  });
  const auto first =
      std::find_if(nodes.begin(), nodes.end(), [](const auto& node) { return is_visible(*node); });
  if (first != nodes.end() && (*first)->is(Tag::Li) && (*first)->parent() && is_list(*(*first)->parent())) {
    Node* sibling = (*first)->previous_sibling();
    while (sibling && is_invisible(*sibling)) sibling = sibling->previous_sibling();
    if (sibling) normalize_sublists(sibling);
  }
  for (std::size_t at = 0; at < nodes.size();) indent(take_siblings(nodes, at), editor);
  return true;
}

namespace {

bool is_list_item(const Node& node) { return node.is(Tag::Li) && node.parent() && is_list(*node.parent()); }

bool stands_in_list(const Node& node) { return node.parent() && is_list(*node.parent()); }

/// What indents a node, for many nodes: nobody climbs where another has climbed, as long as the tree
/// stays as it is.
class IndentationMakers {
 public:
  explicit IndentationMakers(bool (*makes_it)(const Node&)) : makes_it_(makes_it) {}
  Node* of(const Node& node) {
    follow(dom::document_of(node));
    std::vector<const Node*> climbed;
    Node* found = nullptr;
    for (Node* ancestor = node.parent(); ancestor && ancestor->is_element(); ancestor = ancestor->parent()) {
      count_work();
      const auto known = makers_.find(ancestor);
      if (known != makers_.end()) found = known->second;
      if (known != makers_.end() || !is_editable(*ancestor)) break;
      if (makes_it_(*ancestor)) found = ancestor;
      if (found || is_list(*ancestor)) break;
      climbed.push_back(ancestor);
    }
    for (const Node* ancestor : climbed) makers_.emplace(ancestor, found);
    return found;
  }

 private:
  void follow(const dom::Document& document) {
    if (version_ == document.version()) return;
    version_ = document.version();
    makers_.clear();
  }

  bool (*makes_it_)(const Node&);
  std::uint64_t version_ = 0;
  std::unordered_map<const Node*, Node*> makers_;
};

// Where all that an element indents is to be outdented and nothing in it indents anew, the element goes, once
// for all. One node after the other comes to the same, but indents the rest anew each time. Gives how many
// nodes that was, 0 if it does not apply.
std::size_t outdent_together(const NodeList& nodes, std::size_t at, const dom::Range& range,
                             IndentationMakers& makers) {
  const Ref<Node> maker(makers.of(*nodes[at]));
  if (!maker || !dom::contains(range, *maker)) return 0;
  // What has been outdented already keeps the level that is left to it.
  if (at > 0 && dom::is_ancestor(*maker, *nodes[at - 1])) return 0;
  std::size_t count = 0;
  for (std::size_t i = at; i < nodes.size(); ++i, ++count) {
    if (makers.of(*nodes[i]) != maker.get()) {
      if (dom::is_ancestor(*maker, *nodes[i])) return 0;
      break;
    }
    if (stands_in_list(*nodes[i]) || is_indentation_element(*nodes[i])) return 0;
  }
  outdent_itself(maker);
  return count;
}

}  // namespace

// Editing commands standard, section "The outdent command".
bool outdent_selection(Editor& editor, std::u16string_view) {
  normalize_items_of(editor.selection().range());
  const dom::LiveRange range(editor.document(), block_extend(editor.selection().range()));
  PathFacts facts;
  const NodeList nodes = topmost_contained(range.range(), [&facts](const Node& node) {
    return facts.is_editable(node) && (is_list(node) || is_list_item(node) || !has_editable_descendant(node));
  });
  IndentationMakers makers(is_simple_indentation_element), all_makers(is_indentation_element);
  // Of hundreds of levels that nothing indents none has to climb to find that out.
  const auto can_be_outdented = [&](const Node& node) {
    return is_list(node) || is_indentation_element(node) || makers.of(node) || all_makers.of(node);
  };
  for (std::size_t at = 0; at < nodes.size();) {
    if (is_list(*nodes[at]) || !stands_in_list(*nodes[at])) {
      if (const std::size_t together = outdent_together(nodes, at, range.range(), makers)) {
        at += together;
      } else {
        if (can_be_outdented(*nodes[at])) outdent(nodes[at], editor);
        ++at;
      }
      continue;
    }
    const NodeList siblings = take_siblings(nodes, at, [](const Node& node) { return !is_list(node); });
    const RecordedValues values = record_values(siblings);
    split_parent(siblings);
    for (const Ref<Node>& node : siblings) fix_disallowed_ancestors(node, editor);
    restore_values(values, editor);
  }
  return true;
}

}  // namespace tvx::editing
