#include "tvx/editing/tree/clone_contents.h"

#include <unordered_set>
#include <vector>

#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Deep;
using dom::Node;
using dom::Ref;

namespace {

/// Walks from one end to the other once and copies on the way. The copies of the open elements are a list, so
/// that depth costs no stack.
class Cloning {
 public:
  explicit Cloning(const dom::Range& range)
      : range_(range),
        document_(dom::document_of(*range.start.node)),
        fragment_(document_.create_fragment()) {
    holders_.push_back(fragment_.get());
    ancestor_ = dom::common_ancestor(*range.start.node, *range.end.node);
    for (Node* node = range.end.node; node && node != ancestor_; node = node->parent())
      end_path_.insert(node);
  }

  Ref<dom::DocumentFragment> run() {
    if (range_.start.node == range_.end.node && range_.start.node->is_text()) {
      add_text(*range_.start.node, range_.start.offset, range_.end.offset);
      return fragment_;
    }
    Gap gap = open_start();
    const Node* end_child =
        range_.end.node->is_text() ? nullptr : dom::child_at(*range_.end.node, range_.end.offset);
    while (!(gap.node == range_.end.node && gap.next == end_child)) {
      if (!gap.next) {
        gap = Gap::after(*gap.node);
        holders_.pop_back();
      } else if (gap.next == range_.end.node && gap.next->is_text()) {
        add_text(*gap.next, 0, range_.end.offset);
        break;
      } else if (end_path_.contains(gap.next)) {
        open(*gap.next);
        gap = Gap::start_of(*gap.next);
      } else {
        add(dom::clone(*gap.next, document_, Deep::Yes));
        gap.next = gap.next->next_sibling();
      }
    }
    return fragment_;
  }

 private:
  // Copies the elements that are already open at the start.
  Gap open_start() {
    Node* start = range_.start.node;
    std::vector<Node*> path;
    for (Node* node = start; node != ancestor_; node = node->parent()) path.push_back(node);
    for (auto node = path.rbegin(); node != path.rend(); ++node) {
      if (!(*node)->is_text()) open(**node);
    }
    if (!start->is_text()) return Gap::at(range_.start);
    add_text(*start, range_.start.offset, dom::length_of(*start));
    return Gap::after(*start);
  }

  void add(const Ref<Node>& node) { dom::Builder::insert(*holders_.back(), node); }
  void open(const Node& node) {
    const Ref<Node> copy = dom::clone(node, document_, Deep::No);
    add(copy);
    holders_.push_back(copy.get());
  }
  void add_text(const Node& node, Offset from, Offset to) {
    if (to > from)
      add(document_.create_text(dom::as<dom::CharacterData>(&node)->data().substr(from, to - from)));
  }

  const dom::Range& range_;
  dom::Document& document_;
  Ref<dom::DocumentFragment> fragment_;
  std::vector<Node*> holders_;
  Node* ancestor_;
  std::unordered_set<const Node*> end_path_;
};

void cut(const Boundary& place, Offset from, Offset to) {
  if (auto* data = dom::as<dom::CharacterData>(place.node)) dom::replace_data(*data, from, to - from, u"");
}

}  // namespace

Ref<dom::DocumentFragment> clone_contents(const dom::Range& range) { return Cloning(range).run(); }

void delete_contents(const dom::Range& range) {
  if (range.start.node == range.end.node && range.start.node->is_text())
    return cut(range.start, range.start.offset, range.end.offset);
  const Ref<Node> start(range.start.node), end(range.end.node);
  const NodeList contained = topmost_contained(range, [](const Node&) { return true; });
  cut({start.get(), 0}, range.start.offset, dom::length_of(*start));
  cut({end.get(), 0}, 0, range.end.offset);
  for (const Ref<Node>& node : contained) dom::remove(*node);
}

}  // namespace tvx::editing
