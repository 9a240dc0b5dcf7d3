#pragma once

#include "tvx/editing/editor.h"

/// What the keys of a writer do to lists. A list stands in an item, items stand in a list, and an item goes
/// wherever it goes with the list that is in it. The undo step is the caller's.
namespace tvx::editing {

/// Makes the selected items parts of the item before them. False outside of lists; where there is no item
/// before, nothing happens.
bool indent_items(Editor& editor);
/// Takes the selected items out of their list into the one around it; those after them become parts of the
/// last. At the outermost level nothing happens. False outside of lists.
bool outdent_items(Editor& editor);

bool is_in_list(Editor& editor);
/// Whether the selected items stand in a list that an item of another holds.
bool is_in_nested_list(Editor& editor);

/// The selected items become paragraphs, whatever lists they stood in.
void leave_lists(Editor& editor);

/// Backspace with the caret at the start of an item, and Enter in an empty one: out by one level, at the
/// outermost one into paragraphs where the item stood. False where the caret isn't so.
bool leave_item_at_start(Editor& editor);
bool leave_empty_item(Editor& editor);
/// Enter in the empty first or last part of a description list: a paragraph beside the list takes its place.
/// The command would part the list there and leave one that holds nothing but the white space of the source.
bool leave_empty_description(Editor& editor);

/// The list buttons: numbers become bullets and bullets numbers in the whole list, white space between
/// paragraphs makes no items, and lines that a break parts are an item each. False where the command itself
/// does all that is to do; the ground may be prepared for it then.
bool toggle_list_as_writer(Editor& editor, std::u16string_view command);

/// A list without items goes; comments in it stay where it stood.
void remove_if_without_items(dom::Node& list);
/// A list that stands among the items of another comes to stand in the item before it; before the first one
/// its items are items of that list, or of one before that.
void put_list_into_item(dom::Node& list);
/// All of these in the list around a node.
void put_lists_into_items(dom::Node& node);

}  // namespace tvx::editing
