#pragma once

#include <cstdint>

#include "tvx/dom/node.h"

namespace tvx::dom::parser {

/// The sets of elements at which a search through the stack of open elements stops.
enum class Boundary : std::uint8_t {
  Scope,          // HTML standard, section 13.2.4.2: "has an element in scope"
  ListItemScope,  // with ol and ul
  ButtonScope,    // with button
  TableScope,
  Special,
  ListItemStop,  // the special elements without address, div and p: where the search for an open li ends
  ModeDecider,   // elements that decide the insertion mode when it is reset
  Html,          // any HTML element: where the search for an open foreign element ends
  Count
};

using BoundarySet = std::uint8_t;

constexpr BoundarySet bit(Boundary boundary) { return BoundarySet(1u << static_cast<unsigned>(boundary)); }

/// Which of the sets an element belongs to.
BoundarySet boundaries_of(const Element& element);
inline bool is_special(const Element& element) { return boundaries_of(element) & bit(Boundary::Special); }

bool is_heading(Tag tag);
/// dd, dt, li, optgroup, option, p, rb, rp, rt, rtc: end tags that are implied.
bool has_implied_end(Tag tag);
/// Also the parts of tables: at the end of a template.
bool has_thoroughly_implied_end(Tag tag);
/// table, tbody, tfoot, thead, tr: text in them goes before the table.
bool is_table_structure(Tag tag);

}  // namespace tvx::dom::parser
