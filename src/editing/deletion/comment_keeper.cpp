#include "tvx/editing/deletion/comment_keeper.h"

#include <algorithm>

#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;

CommentKeeper::CommentKeeper(Editor& editor) : editor_(editor) {
  const dom::Range selected = editor.selection().range();
  if (selected.start && !selected.collapsed())
    walk_contained(selected, [&](Node& node) {
      if (node.type() == dom::NodeType::Comment) selected_.emplace_back(node);
      return Visit::Children;
    });
  editor_.document().add_observer(*this);
}
CommentKeeper::~CommentKeeper() { editor_.document().remove_observer(*this); }

void CommentKeeper::mutated(const dom::Mutation& mutation) {
  if (mutation.type != dom::Mutation::Type::Remove) return;
  for (Node* node = mutation.node.get(); node; node = dom::next_in_order(*node, mutation.node.get()))
    if (node->type() == dom::NodeType::Comment && std::ranges::find(selected_, node) == selected_.end())
      removed_.emplace_back(node);
}

void CommentKeeper::put_back() {
  const auto comments = std::exchange(removed_, {});
  for (const Ref<Node>& comment : comments) {
    const Boundary caret = editor_.selection().focus();
    if (!caret || &dom::root_of(*comment) == &editor_.document()) continue;
    if (comment->parent()) dom::remove(*comment);
    if (!caret.node->is_text()) {
      dom::insert(*caret.node, comment, dom::child_at(*caret.node, caret.offset));
      editor_.selection().collapse({caret.node, caret.offset + 1});
    } else {
      const bool at_end = caret.offset == dom::length_of(*caret.node);
      dom::insert(*caret.node->parent(), comment, at_end ? caret.node->next_sibling() : caret.node);
    }
  }
}

}  // namespace tvx::editing
