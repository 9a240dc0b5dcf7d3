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

  /// Puts those that have gone where they stood, or beside the caret if that has gone, too.
  void put_back();

 private:
  void mutated(const dom::Mutation& mutation) override;

  Editor& editor_;
  std::vector<dom::Ref<dom::Node>> selected_;  // these may go
  struct Removed {
    dom::Ref<dom::Node> comment;
    dom::Ref<dom::Node> parent, before;  // where it stood, if it went by itself
  };
  static bool put_back_there(const Removed& removed);
  void put_back_at_caret(const dom::Ref<dom::Node>& comment);
  std::vector<Removed> removed_;
};

}  // namespace tvx::editing
