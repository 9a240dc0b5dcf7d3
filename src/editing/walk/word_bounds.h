#pragma once

#include <memory>
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

/// The words after a position, one after the other; asking next_word_begin() and next_word_end() again and
/// again gives the same ones. All of them together cost one walk. The tree may not change meanwhile.
class WordReader {
 public:
  /// A position that no word goes over, as the start of a block or of what checkpoint() gave.
  explicit WordReader(dom::Boundary from);
  ~WordReader();
  WordReader(WordReader&&) noexcept;
  WordReader& operator=(WordReader&&) noexcept;

  /// None at the end of the content.
  std::optional<dom::Range> next();
  /// A position at or before the last word that no word goes over, whatever comes after it; and how many of
  /// the words that were given stand after it. No position before the first word.
  dom::Boundary checkpoint() const;
  std::size_t given_since() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace tvx::editing
