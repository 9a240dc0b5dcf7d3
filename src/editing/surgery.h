#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "dom/mutation.h"
#include "dom/range.h"

/// Operations on trees that the commands share. The names are those of the editing commands standard,
/// sections "Assorted common algorithms" to "Allowed children", and "Splitting a node list's parent".
namespace tvx::editing {

class Editor;
using NodeList = std::vector<dom::Ref<dom::Node>>;

/// Moves a node; boundaries that stood in it or at its edges move along ("preserving ranges").
void move_preserving_ranges(dom::Ref<dom::Node> node, dom::Node& new_parent, dom::Node* before);
/// Removes an element and leaves its children in its place.
void remove_preserving_descendants(dom::Ref<dom::Node> node);
/// The element under a new name, with its attributes and children; the new element, or the old one if
/// the name is the same.
dom::Ref<dom::Element> set_tag_name(dom::Element& element, dom::Name name);
void remove_extraneous_line_breaks_before(const dom::Ref<dom::Node>& node);
void remove_extraneous_line_breaks_at_end_of(const dom::Ref<dom::Node>& node);
void remove_extraneous_line_breaks_from(const dom::Ref<dom::Node>& node);

/// Puts siblings into a neighbour that fits `criteria`, or else into what `make_parent` gives (may be
/// empty: nothing happens). Returns the new parent, empty if there is none.
dom::Ref<dom::Node> wrap(const NodeList& nodes,
                         const std::function<bool(const dom::Node&)>& sibling_criteria = {},
                         const std::function<dom::Ref<dom::Node>()>& make_parent = {});
void fix_disallowed_ancestors(const dom::Ref<dom::Node>& node, Editor& editor);
void split_parent(const NodeList& nodes);
/// Bottom-up nodes wholly in the range that are editable; "effectively contained" is in inline_values.h.
NodeList nodes_contained(const dom::Range& range);

/// What "record the values" keeps: for each node and command the specified value it had.
struct RecordedValue {
  dom::Ref<dom::Node> node;
  std::u16string_view command;  // a row's name in small letters
  std::optional<std::u16string> value;
};
using RecordedValues = std::vector<RecordedValue>;
RecordedValues record_values(const NodeList& nodes);
void restore_values(const RecordedValues& values, Editor& editor);

/// "Record current states and values", "record current overrides" and "restore states and values".
struct RecordedLook {
  std::vector<std::pair<std::u16string_view, bool>> states;
  std::vector<std::pair<std::u16string_view, std::u16string>> values;
};
RecordedLook record_current_overrides(Editor& editor);
RecordedLook record_current_look(Editor& editor);
void restore_look(const RecordedLook& look, Editor& editor);

}  // namespace tvx::editing
