#pragma once

#include <functional>
#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"

/// Operations on trees that the commands share. The names are those of the editing commands standard,
/// sections "Assorted common algorithms" to "Allowed children", and "Splitting a node list's parent".
namespace tvx::editing {

using NodeList = std::vector<dom::Ref<dom::Node>>;

/// Moves a node; boundaries that stood in it or at its edges move along ("preserving ranges").
void move_preserving_ranges(dom::Ref<dom::Node> node, dom::Node& new_parent, dom::Node* before);
/// Moves consecutive siblings one after the other, each before `before`. Boundaries are counted once for all.
void move_run_preserving_ranges(const NodeList& nodes, dom::Node& new_parent, dom::Node* before);
/// All children of `from` to the end of `to`.
void move_children_preserving_ranges(dom::Node& from, dom::Node& to);
/// Removes a node and leaves its children in its position.
void remove_preserving_descendants(dom::Ref<dom::Node> node);
/// The element under a new name, with its attributes and children; the new element, or the old one if
/// the name is the same.
dom::Ref<dom::Element> set_tag_name(dom::Element& element, dom::Name name);
void remove_extraneous_line_breaks_before(const dom::Ref<dom::Node>& node);
void remove_extraneous_line_breaks_at_end_of(const dom::Ref<dom::Node>& node);
void remove_extraneous_line_breaks_from(const dom::Ref<dom::Node>& node);
/// A `br` as the last child.
void append_line_break(dom::Node& parent);
bool has_visible_child(const dom::Node& node);

using NodeCriteria = std::function<bool(const dom::Node&)>;
/// Puts siblings into a neighbour that fits `criteria`, or else into what `make_parent` gives (may be
/// empty: nothing happens). Returns the new parent, empty if there is none.
dom::Ref<dom::Node> wrap(NodeList nodes, const NodeCriteria& sibling_criteria = {},
                         const std::function<dom::Ref<dom::Node>()>& make_parent = {});
/// Breaks up the parent of consecutive siblings; the lines stay the lines that they were.
void split_parent(const NodeList& nodes);
/// "Normalize sublists": what follows a list inside an item becomes an item of its own.
void normalize_sublists(const dom::Ref<dom::Node>& item);

enum class Visit : std::uint8_t { Children, Skip, Stop };
/// Calls `visitor` for the nodes that the range contains, in tree order. Linear in what it visits. The
/// visitor must not change the tree.
void walk_contained(const dom::Range& range, const std::function<Visit(dom::Node&)>& visitor);
/// The contained nodes that fit, without those that stand below one that fits.
NodeList topmost_contained(const dom::Range& range, const NodeCriteria& criteria);
/// The contained visible editable nodes without children.
NodeList visible_leaves(const dom::Range& range);
/// The first of them, empty if there is none.
dom::Ref<dom::Node> first_visible_leaf(const dom::Range& range);

/// Takes a run of siblings from the front of a list: the first, and then each that is the next sibling of
/// the one before and fits.
NodeList take_siblings(const NodeList& nodes, std::size_t& at, const NodeCriteria& criteria = {});
/// The children of a node as a list.
NodeList children_of(const dom::Node& node);

}  // namespace tvx::editing
