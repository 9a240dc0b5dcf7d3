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
      removed_.push_back(node == mutation.node.get() ? Removed{node, mutation.parent, mutation.before}
                                                     : Removed{node, {}, {}});
}

bool CommentKeeper::put_back_there(const Removed& removed) {
  const Ref<Node>& parent = removed.parent;
  if (!parent || !dom::is_connected(*parent) || (removed.before && removed.before->parent() != parent.get()))
    return false;
  dom::insert(*parent, removed.comment, removed.before.get());
  return true;
}

void CommentKeeper::put_back_at_caret(const Ref<Node>& comment) {
  const Boundary caret = editor_.selection().focus();
  if (!caret) return;
  if (!caret.node->is_text()) {
    dom::insert(*caret.node, comment, dom::child_at(*caret.node, caret.offset));
    editor_.selection().collapse({caret.node, caret.offset + 1});
  } else {
    const bool at_end = caret.offset == dom::length_of(*caret.node);
    dom::insert(*caret.node->parent(), comment, at_end ? caret.node->next_sibling() : caret.node);
  }
}

// The last one first: it may be what another stood before.
void CommentKeeper::put_back() {
  auto comments = std::exchange(removed_, {});
  for (std::size_t i = comments.size(); i-- > 0;) {
    const Ref<Node>& comment = comments[i].comment;
    if (&dom::root_of(*comment) == &editor_.document()) continue;
    if (comment->parent()) dom::remove(*comment);
    if (!put_back_there(comments[i])) put_back_at_caret(comment);
  }
}

}  // namespace tvx::editing
