#include "tvx/editing/ranges/replacement.h"

#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/tree/clone_contents.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// Puts the selection back where the edits of a while have taken it.
class KeptSelection {
 public:
  explicit KeptSelection(Editor& editor)
      : selection_(editor.selection()),
        control_(selection_.control()),
        type_(selection_.type()),
        range_(editor.document(), {selection_.anchor(), selection_.focus()}) {}
  ~KeptSelection() {
    if (control_ && control_->parent()) {
      selection_.select_control(*control_);
    } else if (type_ == SelectionType::None) {
      selection_.clear();
    } else {
      selection_.set(range_.start(), range_.end());
    }
  }
  KeptSelection(const KeptSelection&) = delete;
  KeptSelection& operator=(const KeptSelection&) = delete;

 private:
  Selection& selection_;
  Ref<Element> control_;
  SelectionType type_;
  dom::LiveRange range_;
};

// The break that held an empty line open.
void remove_line_holder(const HeldGap& gap) {
  Node* only = gap.parent->first_child();
  if (only && only == gap.parent->last_child() && only->is(Tag::Br) && is_block_node(*gap.parent) &&
      is_collapsed_block_prop(*only)) {
    dom::remove(*only);
  }
}

bool has_item(const Node& parent) {
  for (const Node* child = parent.first_child(); child; child = child->next_sibling()) {
    if (is_item(*child)) return true;
  }
  return false;
}

bool has_block(const Node& parent) {
  for (const Node* child = parent.first_child(); child; child = child->next_sibling()) {
    if (is_block_piece(*child)) return true;
  }
  return false;
}

/// A block that stays one of its kind when text takes the place of its content.
bool keeps_its_kind(const Element& element) {
  static const TagSet tags{Tag::P,  Tag::H1, Tag::H2, Tag::H3,  Tag::H4,      Tag::H5,      Tag::H6,
                           Tag::Li, Tag::Dd, Tag::Dt, Tag::Pre, Tag::Address, Tag::Summary, Tag::Figcaption};
  return tags.has(element);
}

/// Moves the children of `from` into a copy of `wrapper` there. Children of a fragment that nobody knows.
void wrap_children(Node& from, const Element& wrapper) {
  const Ref<Node> copy = dom::clone(wrapper, dom::document_of(wrapper), dom::Deep::No);
  dom::Builder::move_children(from, *copy);
  dom::Builder::insert(from, copy);
}

bool stands_in_list(const Node& position) {
  for (const Node* node = &position; node && !is_table_part(*node); node = node->parent()) {
    if (is_item(*node) || is_list_of_any_kind(*node)) return true;
  }
  return false;
}

/// A list takes only items, so what stands around items goes into each of them: `<B><LI>` becomes `<LI><B>`,
/// and within a list `<DIV><LI>` becomes `<LI><DIV>`.
void take_wrappers_into_items(dom::DocumentFragment& content, const Node& context) {
  const bool in_list = stands_in_list(context);
  std::vector<Ref<Element>> wrappers;
  for (Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content)) {
    const bool takes_no_items = node->is_element() && !is_item(*node) && !is_list_of_any_kind(*node);
    if (is_look(*node) || (in_list && takes_no_items)) wrappers.emplace_back(static_cast<Element*>(node));
  }
  for (auto place = wrappers.rbegin(); place != wrappers.rend(); ++place) {
    const Ref<Element>& wrapper = *place;
    if (!has_item(*wrapper)) continue;
    for (const Ref<Node>& child : children_of(*wrapper)) {
      dom::Builder::remove(*child);
      dom::Builder::insert(*wrapper->parent(), child, wrapper.get());
      if (is_item(*child)) wrap_children(*child, *wrapper);
    }
    dom::Builder::remove(*wrapper);
  }
}

Element* child_towards(const Node& ancestor, Node* below) {
  while (below && below->parent() != &ancestor) below = below->parent();
  return dom::as<Element>(below);
}

bool is_replaceable_block(const Element* block) {
  return block && is_block_node(*block) && is_editable(*block) && !is_table_part(*block) &&
         !block->is(Tag::Caption);
}

}  // namespace

Replacement::Replacement(Editor& editor, const dom::Range& range)
    : editor_(editor), rest_(editor.document(), range), caret_(editor.document(), {}) {}

Node& Replacement::context() const {
  Node* node = rest_.start().node;
  return node->is_element() || !node->parent() ? *node : *node->parent();
}

Boundary Replacement::run(const Ref<dom::DocumentFragment>& content) {
  take_wrappers_into_items(*content, context());
  if (Ref<Element> first, last; has_block(*content) && covers_blocks(first, last)) {
    replace_blocks(*first, *last, content);
    return finish();
  }
  HeldGap gap = gap_at(rest_.start());
  const bool stretched = !rest_.collapsed();
  if (!stretched && gap.before && gap.before->is(Tag::Br) && content->has_children()) {
    remove_line_holder(gap);
    if (!gap.before->parent()) gap.before = nullptr;
  }
  insert(content, gap);
  if (stretched) delete_rest();
  return finish();
}

Boundary Replacement::run_for(Element& element, const Ref<dom::DocumentFragment>& content) {
  take_wrappers_into_items(*content, element);
  const bool stays = is_item(element) ? !has_item(*content) : !has_block(*content);
  if (keeps_its_kind(element) && stays) {
    replace_children(element, content);
  } else {
    replace_blocks(element, element, content);
  }
  return finish();
}

/// Whether the range holds all of several blocks beside each other, and nothing else.
bool Replacement::covers_blocks(Ref<Element>& first, Ref<Element>& last) const {
  const dom::Range rest = rest_.range();
  Node* parent = dom::common_ancestor(*rest.start.node, *rest.end.node);
  if (rest.collapsed() || !parent || !parent->is_element()) return false;
  first = child_towards(*parent, rest.start.node);
  last = child_towards(*parent, rest.end.node);
  return is_replaceable_block(first.get()) && is_replaceable_block(last.get()) && first != last &&
         covers_content_of({rest.start, {first.get(), dom::length_of(*first)}}, *first) &&
         covers_content_of({{last.get(), 0}, rest.end}, *last);
}

void Replacement::replace_blocks(Element& first, Element& last, const Ref<dom::DocumentFragment>& content) {
  const Ref<Node> parent(first.parent());
  NodeList gone;
  for (Node* node = &first; node != last.next_sibling(); node = node->next_sibling()) gone.emplace_back(node);
  insert(content, {parent, first});
  if (inserted_.empty()) caret_.set({dom::before(first), dom::before(first)});
  for (const Ref<Node>& node : gone) dom::remove(*node);
  if (is_block_node(*parent) && is_allowed_child_name(dom::Name(Tag::Br), *parent) &&
      !has_visible_child(*parent)) {
    append_line_break(*parent);
  }
}

void Replacement::replace_children(Element& element, const Ref<dom::DocumentFragment>& content) {
  const NodeList gone = children_of(element);
  insert(content, {Ref<Node>(element), gone.empty() ? Ref<Node>() : gone.front()});
  for (const Ref<Node>& node : gone) dom::remove(*node);
  if (!has_visible_child(element)) append_line_break(element);
}

void Replacement::insert(const Ref<dom::DocumentFragment>& content, const HeldGap& gap) {
  inserted_ = children_of(*content);
  dom::insert(*gap.parent, content, gap.before.get());
  const Boundary place = !inserted_.empty() ? dom::after(*inserted_.back())
                         : gap.before       ? dom::before(*gap.before)
                                            : Boundary{gap.parent.get(), dom::length_of(*gap.parent)};
  caret_.set({place, place});
  if (!inserted_.empty()) rest_.set({place, rest_.end()});
}

void Replacement::delete_rest() {
  const dom::Range rest = rest_.range();
  if (dom::compare(rest.start, rest.end) >= 0) return;
  // Within one text nothing but the text is concerned.
  const bool in_text = rest.end.node->is_text() && content_is_one_text(rest);
  if (in_text || !is_editable(*rest.start.node) || !is_editable(*rest.end.node)) return delete_contents(rest);
  const KeptSelection kept(editor_);
  editor_.selection().set(rest);
  delete_selection(editor_);
  editor_.overrides().clear();
  if (inserted_.empty()) caret_.set(editor_.selection().range());
}

bool Replacement::content_is_one_text(const dom::Range& rest) const {
  if (inserted_.empty() || rest.end.offset == dom::length_of(*rest.end.node)) return false;
  return rest.start == dom::before(*rest.end.node);
}

Boundary Replacement::finish() {
  for (const Ref<Node>& node : inserted_) fix_disallowed_ancestors_of_whole(node, editor_);
  return caret_.start();
}

}  // namespace tvx::editing
