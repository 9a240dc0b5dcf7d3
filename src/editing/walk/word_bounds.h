#pragma once

#include <optional>

#include "tvx/dom/range.h"

/// Words as Unicode standard annex 29 finds them, by ICU, in the text of a line as it is read: elements
/// within the line don't end a word, blocks, line breaks and objects do. White space and punctuation are no
/// words. A question reads the words around the position, not the document.
namespace tvx::editing {

/// The word that the position stands in or touches; where two meet, the one after it.
std::optional<dom::Range> word_at(dom::Boundary place);

/// The first start of a word after the position. A position between nodes stands before the text that follows
/// it, so a word there begins after it. None if there is no word more.
std::optional<dom::Boundary> next_word_begin(dom::Boundary from);
std::optional<dom::Boundary> next_word_end(dom::Boundary from);
/// The last start or end before the position.
std::optional<dom::Boundary> previous_word_begin(dom::Boundary from);
std::optional<dom::Boundary> previous_word_end(dom::Boundary from);

}  // namespace tvx::editing
