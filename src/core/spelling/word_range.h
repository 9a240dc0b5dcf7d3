#pragma once

#include <cstdint>
#include <optional>

#include "tvx/dom/range.h"
#include "tvx/editing/walk/word_index.h"
#include "tvx/spelling/spelling_dialog.h"

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::core {

/// The range of a word of the document, counted from the body's start: 0 is what stands before the first
/// word, which is nothing. `step` is 1. No range at the end of the text. Afterwards nothing is selected, and
/// the caret stands where the word begins.
///
/// Two pointers go on from the body's start, one by beginnings and one by ends of words, as often as the
/// number says; a caret then shows where in the line the first one can stand. Where the number comes near the
/// length of the whole text, the range goes to the body's end.
std::optional<dom::Range> GetWordRange(browser::HTMLDocument& document, std::int32_t wordIndex,
                                       std::int32_t step);

/// The same ranges one after the other, without starting over for each.
class WordRanges {
 public:
  explicit WordRanges(browser::HTMLDocument& document);
  /// Leaves the selection alone: its caller selects.
  std::optional<dom::Range> word(std::int32_t number);

 private:
  bool is_near_end(std::int32_t number, const dom::Boundary& end);

  browser::HTMLDocument& document_;
  editing::WordIndex index_;
};

/// The text around a word, to the ends of its sentence or of the line.
spelling::Sentence sentence_around(const dom::Range& word);

}  // namespace tvx::core
