#pragma once

#include <span>

#include "tvx/library/objects/element_object.h"

/// What elements of one kind have beside the members of every element: the rows, by subject.
namespace tvx::library {

using ElementRows = std::span<const MemberOf<ElementObject>>;

// table_object.cpp
ElementRows table_members();
ElementRows table_section_members();
ElementRows table_row_members();
ElementRows table_cell_members();
ElementRows table_part_members();  // of all of these

// form_object.cpp
ElementRows form_members();
ElementRows field_members();   // INPUT, BUTTON, SELECT, TEXTAREA
ElementRows select_members();  // beside those of a field
ElementRows option_members();
ElementRows label_members();

// media_object.cpp
ElementRows image_members();  // IMG and INPUT
ElementRows link_members();   // A, AREA, LINK
ElementRows base_members();
ElementRows sheet_owner_members();  // STYLE, LINK
ElementRows script_members();

/// The row that an element of this kind has under a name; null if it has none.
const MemberOf<ElementObject>* find_kind_member(const dom::Element& element, std::u16string_view name);

}  // namespace tvx::library
