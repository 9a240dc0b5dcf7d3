#pragma once

#include "tvx/dom/range.h"

/// What a node is to the lines of text on the page.
namespace tvx::editing {

/// Whether a node is a line of text that merges with another: a paragraph, a heading, a list item.
bool is_text_block(const dom::Node& node);
/// An element of a line that gives its text a style: all that is neither a block nor a thing by itself.
bool is_look(const dom::Node& node);

/// The nearest block around a position.
dom::Element* block_around(dom::Boundary place);
/// Nothing is seen in it, but perhaps the break that holds it open.
bool is_empty_line(const dom::Node& block);
/// A node that can't stand within a paragraph, or holds one that can't.
bool is_block_piece(const dom::Node& node);
/// White space or a comment: nothing to see between blocks.
bool is_filling(const dom::Node& node);
/// What can't be edited in the midst of what can: one thing for who writes.
bool is_island(const dom::Node& node);

}  // namespace tvx::editing
