#pragma once

#include "tvx/dom/node.h"

namespace tvx::editing {

/// Takes out what a program's content has and nobody would write: paragraphs with nothing in them, the breaks
/// between paragraphs, elements of a line that say nothing, boxes that hold blocks and nothing else.
void tidy_content(dom::Node& content);

/// Names that no link in the content leads to: a page's own marks, a word processor's hidden bookmarks.
void drop_unused_names(dom::Node& content);

/// The empty paragraphs alone, and what comes between blocks.
void drop_empty_paragraphs(dom::Node& content);

}  // namespace tvx::editing
