#pragma once

#include <vector>

#include "tvx/dom/mutation.h"

namespace tvx::editing {

class Editor;

/// Comments that stand where letters are taken away stay in the document, if they aren't selected themselves:
/// they are no part of the text.
class CommentKeeper final : private dom::MutationObserver {
 public:
  explicit CommentKeeper(Editor& editor);
  ~CommentKeeper() override;
  CommentKeeper(const CommentKeeper&) = delete;
  CommentKeeper& operator=(const CommentKeeper&) = delete;

  /// Puts those that have gone beside the caret.
  void put_back();

 private:
  void mutated(const dom::Mutation& mutation) override;

  Editor& editor_;
  std::vector<dom::Ref<dom::Node>> selected_;  // these may go
  std::vector<dom::Ref<dom::Node>> removed_;
};

}  // namespace tvx::editing
