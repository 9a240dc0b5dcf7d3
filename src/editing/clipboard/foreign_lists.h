#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "tvx/dom/node.h"

/// Lists of word processors, which write each item as a paragraph with a drawn bullet or number, and lists
/// that stand between the items of another instead of in one.
namespace tvx::editing {

class ForeignSource;

/// What a paragraph with a drawn marker says of itself.
struct ListMark {
  std::u16string list;                           // its name in the program's style sheet
  int level = 1;                                 // from 1
  double indent = 0;                             // of its text, in points
  std::u16string marker;                         // as drawn, "1.", "b)"
  bool from_list = false, ordered_list = false;  // it stood in UL or OL, and in which
  std::optional<int> number;                     // that the program names beside the marker
};
/// Of blocks that were copied, by the copy.
using ListMarks = std::unordered_map<const dom::Node*, ListMark>;
using Indents = std::unordered_map<const dom::Node*, double>;

/// The list that an element belongs to by its style or attributes; none if it is no item.
std::optional<ListMark> list_mark_of(const ForeignSource& source, const dom::Element& element);
/// Whether all items of a list say by themselves where they belong: their list means nothing then.
bool is_list_of_marked_items(const ForeignSource& source, const dom::Element& list);
/// Whether the element is the drawn bullet or number.
bool is_drawn_marker(const dom::Element& element);

/// Makes items of the marked blocks. Blocks that are indented as far as an item before them belong to it.
void make_lists(dom::Node& content, const ForeignSource& source, const ListMarks& marks,
                const Indents& indents);
/// A list in a list comes to stand in the item before it, and what else stands beside items as well. An item
/// that is one paragraph has its text itself.
void put_lists_right(dom::Node& content);

}  // namespace tvx::editing
