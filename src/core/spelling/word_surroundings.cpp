#include "tvx/core/spelling/word_surroundings.h"

#include <algorithm>

#include "tvx/dom/node.h"
#include "tvx/spelling/word_rules.h"

namespace tvx::core {

namespace {

/// The text that a word stands in, where it is one.
const dom::Text* text_of(const dom::Range& word) {
  return word.start.node == word.end.node ? dom::as<dom::Text>(word.start.node) : nullptr;
}

}  // namespace

bool is_in_address(const dom::Range& word) {
  const dom::Text* text = text_of(word);
  return text && spelling::is_in_address(text->data(), word.start.offset, word.end.offset);
}

bool is_right_with_hyphen(const dom::Range& word,
                          const std::function<bool(const std::u16string&)>& is_right) {
  const dom::Text* text = text_of(word);
  return text && std::ranges::any_of(spelling::with_hyphens(text->data(), word.start.offset, word.end.offset),
                                     is_right);
}

}  // namespace tvx::core
