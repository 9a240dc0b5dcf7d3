#pragma once

#include <optional>

#include "tvx/dom/mutation.h"
#include "tvx/editing/walk/word_bounds.h"

namespace tvx::editing {

/// The words of a document by their number, as somebody counts who goes on by word from the body's start: the
/// first is 1. Asked for one after the other they cost one walk over the content, with edits in between as
/// well: what stands before an edit is not counted again.
class WordIndex final : private dom::MutationObserver {
 public:
  explicit WordIndex(dom::Document& document);
  ~WordIndex() override;
  WordIndex(const WordIndex&) = delete;
  WordIndex& operator=(const WordIndex&) = delete;

  /// From the word's first letter to after its last. None where there are fewer, or no body.
  std::optional<dom::Range> word(std::size_t number);

 private:
  void mutated(const dom::Mutation& mutation) override;
  void read_from(dom::Boundary place, std::size_t before);

  dom::Ref<dom::Document> document_;
  std::optional<WordReader> reader_;
  std::size_t before_reader_ = 0;  // words before where the reader began
  std::size_t read_ = 0;           // the number of the last word read
  std::optional<dom::Range> last_;
  /// Where to read on after an edit, and how many words stand before it.
  dom::LiveRange checkpoint_;
  std::size_t before_checkpoint_ = 0;
};

}  // namespace tvx::editing
