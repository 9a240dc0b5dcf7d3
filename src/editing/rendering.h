#pragma once

#include <cstdint>

#include "dom/node.h"

/// What the editing commands need to know of an element's look. The document answers, never the view.
namespace tvx::editing {

enum class Display : std::uint8_t {
  None,
  Inline,
  InlineBlock,
  InlineTable,
  Block  // every other value: the commands make no difference between them
};
Display display_of(const dom::Element& element);

enum class WhiteSpace : std::uint8_t { Normal, NoWrap, Pre, PreWrap, PreLine };
WhiteSpace white_space_of(const dom::Element& element);

/// Whether no element at or above the node has "display: none".
bool is_rendered(const dom::Node& node);

}  // namespace tvx::editing
