#include "tvx/editing/editor.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Node;

std::u16string override_key(std::u16string_view command) {
  std::u16string key = ascii_lower(command);
  return key == u"backcolor" ? u"hilitecolor" : key;
}

Editor::Editor(dom::Document& document) : document_(document), selection_(document) {
  document.journal().set_selection_keeper(&selection_);
  selection_.add_observer(*this);
}

Editor::~Editor() {
  selection_.remove_observer(*this);
  document_->journal().set_selection_keeper(nullptr);
  set_design_mode(false);
}

void Editor::set_design_mode(bool on) {
  design_mode_ = on;
  set_whole_document_editable(*document_, on);
}

Editor::KnownPosition Editor::position_of(const dom::Boundary& boundary) {
  return {boundary ? boundary.node->id() : dom::NodeId{}, boundary.offset};
}

// The standard drops them at each change of a boundary. Edits move boundaries too, and nobody tells of that:
// so the positions are compared whenever the selection is set and whenever somebody asks.
Overrides& Editor::overrides() {
  const KnownPosition anchor = position_of(selection_.anchor()), focus = position_of(selection_.focus());
  if (anchor != overrides_anchor_ || focus != overrides_focus_) overrides_.clear();
  overrides_anchor_ = anchor;
  overrides_focus_ = focus;
  return overrides_;
}

void Editor::selection_changed() { overrides(); }

std::optional<dom::Range> Editor::active_range() const {
  const dom::Range range = selection_.range();
  if (!range.start) return std::nullopt;
  return range;
}

namespace {

// A comment, or an element that is written without content: what is put there is lost.
bool takes_nothing(const Node& node) {
  static const TagSet voids{dom::Tag::Br,    dom::Tag::Hr,  dom::Tag::Img,  dom::Tag::Input, dom::Tag::Wbr,
                            dom::Tag::Embed, dom::Tag::Col, dom::Tag::Area, dom::Tag::Param};
  return node.parent() && (node.type() == dom::NodeType::Comment || voids.has(node));
}

dom::Boundary outside_of_void(const dom::Boundary& place) {
  if (!place) return place;
  if (takes_nothing(*place.node)) return dom::before(*place.node);
  const Node* parent = place.node->is_text() ? place.node->parent() : nullptr;
  return parent && takes_nothing(*parent) ? dom::before(*parent) : place;
}

}  // namespace

void leave_comments(Editor& editor) {
  Selection& selection = editor.selection();
  const dom::Boundary anchor = selection.anchor(), focus = selection.focus();
  const dom::Boundary new_anchor = outside_of_void(anchor), new_focus = outside_of_void(focus);
  if (new_anchor != anchor || new_focus != focus) selection.set(new_anchor, new_focus);
}

}  // namespace tvx::editing
