#pragma once

#include <string_view>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/platform/toolbar.h"

namespace tvx::core {

/// The way from the body down to an element, one button an element: its tag as the caption, "KEY" and its
/// number in the document as the key.
///
/// The way is a list of these numbers and holds no element: each is looked up anew where it is needed.
namespace branch {

inline constexpr float button_height = 345, button_width = 500;  // twips

/// The numbers from the child of the body down to the element; the body itself has none. An element outside
/// the body begins at the root. Empty for no element and for one that has left the document.
std::vector<std::size_t> path_to(const dom::Document& document, const dom::Element* element);

/// Puts the buttons of a way in place of those that are there.
void show_path(platform::Toolbar& toolbar, const dom::Document& document,
               const std::vector<std::size_t>& path);

/// The element that a button's key stands for; null if there is none by now. Throws RuntimeError(13) for what
/// is no key.
dom::Element* element_of(const dom::Document& document, std::u16string_view key);

/// What the menu of a button offers for an element.
struct ElementActions {
  bool edit_tag, properties;
};
/// By the tag in lower case.
ElementActions actions_for(std::u16string_view tag);

}  // namespace branch
}  // namespace tvx::core
