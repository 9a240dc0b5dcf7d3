#pragma once

#include <string_view>

#include "tvx/dom/range.h"

/// A position that the document and its code have in common. Both have the same letters in the same order,
/// whatever white space and markup stand between them: a position is known by how many come before it. Line
/// breaks, images and fields count as letters, since a caret stands beside them where there is no text.
namespace tvx::core {

struct LetterPlace {
  std::size_t before = 0;
  bool after_letter = false;  // right after the last of these, not before the next one
  friend bool operator==(const LetterPlace&, const LetterPlace&) = default;
};

LetterPlace letter_place(dom::Node& body, const dom::Boundary& place);
/// A position in the nearest text or beside what counts as a letter; the body's start where there is none.
dom::Boundary boundary_at(dom::Node& body, const LetterPlace& place);

/// In a source, whose lines end anyhow. A position within a tag or a comment counts as one beside it.
LetterPlace letter_place(std::u16string_view source, Offset place);
Offset offset_at(std::u16string_view source, const LetterPlace& place);

}  // namespace tvx::core
