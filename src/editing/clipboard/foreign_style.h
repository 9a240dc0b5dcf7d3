#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"

/// What the elements of another program say of their style and of themselves.
namespace tvx::editing {

class ForeignSource;

/// The style that an element brings along, with what its classes show. Without the layout of the program it
/// comes from: line heights, page breaks, indents of bullets, the sizes of a grid.
std::u16string foreign_style(const ForeignSource& source, const dom::Element& element);
/// Whether an attribute says something to the program alone that wrote it.
bool is_residue(const ForeignSource& source, const dom::Element& element, std::u16string_view name);

}  // namespace tvx::editing
