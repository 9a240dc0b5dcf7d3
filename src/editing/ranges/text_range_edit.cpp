#include "tvx/base/error.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/ranges/text_range.h"
#include "tvx/editing/tree/clone_contents.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// The selection's observers hear of a change once, when it is done.
class HeldSelection {
 public:
  explicit HeldSelection(Selection& selection) : selection_(selection) { selection_.hold_notifications(); }
  ~HeldSelection() { selection_.release_notifications(); }
  HeldSelection(const HeldSelection&) = delete;
  HeldSelection& operator=(const HeldSelection&) = delete;

 private:
  Selection& selection_;
};

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

/// A place to insert at: between the children of a node.
struct Slot {
  Ref<Node> parent;
  Ref<Node> before;  // empty: at the end
};

/// Splits a text that the place is within.
Slot slot_at(const Boundary& place) {
  auto* data = dom::as<dom::CharacterData>(place.node);
  if (!data) return {place.node, dom::child_at(*place.node, place.offset)};
  if (place.offset == 0) return {data->parent(), data};
  auto* text = dom::as<dom::Text>(data);
  if (place.offset >= data->length() || !text) return {data->parent(), data->next_sibling()};
  const Ref<dom::Text> tail = dom::split_text(*text, place.offset);
  return {text->parent(), tail};
}

Ref<dom::DocumentFragment> parse_in(Node& parent, std::u16string_view html) {
  const auto* context = dom::as<Element>(&parent);
  const bool usable = context && !context->is(Tag::Html);
  return dom::parse_fragment(dom::document_of(parent),
                             usable ? dom::context_of(*context) : dom::FragmentContext(), html);
}

/// Blanks that would show as one become blanks and no-break spaces.
std::u16string with_visible_spaces(std::u16string_view text) {
  std::u16string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t space = std::min(text.find(u"  ", at), text.size());
    result += text.substr(at, space - at);
    const std::size_t end = std::min(text.find_first_not_of(u' ', space), text.size());
    if (end > space) result += canonical_spaces(end - space, false, false);
    at = end;
  }
  return result;
}

// The break that held an empty line open.
void remove_line_holder(const Slot& slot) {
  Node* only = slot.parent->first_child();
  if (only && only == slot.parent->last_child() && only->is(Tag::Br) && is_block_node(*slot.parent) &&
      is_collapsed_block_prop(*only)) {
    dom::remove(*only);
  }
}

/// Puts nodes in the place of a range, in the order that keeps the white space around them as it is: first
/// insert, then delete what was there.
class Replacement {
 public:
  Replacement(Editor& editor, const dom::Range& range)
      : editor_(editor), rest_(editor.document(), range), caret_(editor.document(), {}) {}

  Node& context() const {
    Node* node = rest_.start().node;
    return node->is_element() || !node->parent() ? *node : *node->parent();
  }

  /// Where the caret then stands.
  Boundary run(const Ref<dom::DocumentFragment>& content) {
    Slot slot = slot_at(rest_.start());
    const bool stretched = !rest_.collapsed();
    if (!stretched && slot.before && slot.before->is(Tag::Br) && content->has_children()) {
      remove_line_holder(slot);
      if (!slot.before->parent()) slot.before = nullptr;
    }
    insert(content, slot);
    if (stretched) delete_rest();
    fix_inserted();
    return caret_.start();
  }

  /// The content takes the place of a whole element.
  Boundary run_for(Element& element, const Ref<dom::DocumentFragment>& content) {
    const Ref<Element> held(element);
    insert(content, {element.parent(), element});
    const Ref<Node> parent(element.parent());
    if (inserted_.empty()) caret_.set({dom::before(element), dom::before(element)});
    dom::remove(*held);
    if (is_block_node(*parent) && is_allowed_child_name(dom::Name(Tag::Br), *parent) &&
        !has_visible_child(*parent)) {
      append_line_break(*parent);
    }
    fix_inserted();
    return caret_.start();
  }

 private:
  void insert(const Ref<dom::DocumentFragment>& content, const Slot& slot) {
    for (Node* node = content->first_child(); node; node = dom::next_in_order(*node, content.get()))
      inserted_.emplace_back(node);
    const Ref<Node> last(content->last_child());
    dom::insert(*slot.parent, content, slot.before.get());
    const Boundary place = last          ? dom::after(*last)
                           : slot.before ? dom::before(*slot.before)
                                         : Boundary{slot.parent.get(), dom::length_of(*slot.parent)};
    caret_.set({place, place});
    if (last) rest_.set({place, rest_.end()});
  }

  void delete_rest() {
    const dom::Range rest = rest_.range();
    if (dom::compare(rest.start, rest.end) >= 0) return;
    // Within one text nothing but the text is concerned.
    const bool in_text = rest.end.node->is_text() && content_is_one_text(rest);
    if (in_text || !is_editable(*rest.start.node) || !is_editable(*rest.end.node))
      return delete_contents(rest);
    const KeptSelection kept(editor_);
    editor_.selection().set(rest);
    delete_selection(editor_);
    editor_.overrides().clear();
    if (inserted_.empty()) caret_.set(editor_.selection().range());
  }

  bool content_is_one_text(const dom::Range& rest) const {
    if (inserted_.empty() || rest.end.offset == dom::length_of(*rest.end.node)) return false;
    return rest.start == dom::before(*rest.end.node);
  }

  void fix_inserted() {
    for (const Ref<Node>& node : inserted_) {
      if (node->parent()) fix_disallowed_ancestors(node, editor_);
    }
  }

  Editor& editor_;
  dom::LiveRange rest_, caret_;
  NodeList inserted_;
};

}  // namespace

void TextRange::finish_at(const Boundary& place) {
  range_->set({place, place});
  if (from_selection_) editor_.selection().collapse(place);
}

void TextRange::paste_html(std::u16string_view html) {
  const dom::Range seen = extent();
  if (!seen.start) throw RuntimeError(errors::object_not_set, u"The document has no content");
  const HeldSelection held(editor_.selection());
  const dom::UndoStep step(editor_.document().journal(), u"Insert");
  Replacement replacement(editor_, seen);
  Element* whole = covered_element();
  if (whole && whole->parent_element()) {
    finish_at(replacement.run_for(*whole, parse_in(*whole->parent(), html)));
  } else {
    finish_at(replacement.run(parse_in(replacement.context(), html)));
  }
}

void TextRange::set_text(std::u16string_view text) {
  const dom::Range seen = extent();
  if (!seen.start) throw RuntimeError(errors::object_not_set, u"The document has no content");
  const HeldSelection held(editor_.selection());
  const dom::UndoStep step(editor_.document().journal(), u"Text");
  auto* data = dom::as<dom::Text>(seen.start.node);
  const std::u16string units = data && !collapses(*data) ? std::u16string(text) : with_visible_spaces(text);
  const bool one_line = units.find_first_of(u"\r\n") == units.npos;
  if (data && data == seen.end.node && one_line && !units.empty()) {
    dom::replace_data(*data, seen.start.offset, seen.end.offset - seen.start.offset, units);
    return finish_at({data, seen.start.offset + units.size()});
  }
  finish_at(Replacement(editor_, seen).run(dom::lines_of(editor_.document(), units)));
}

}  // namespace tvx::editing
