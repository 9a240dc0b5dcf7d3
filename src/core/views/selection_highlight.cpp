#include "tvx/core/views/selection_highlight.h"

#include <utility>

#include "tvx/base/error.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"

namespace tvx::core {
namespace {

using dom::style::set_inline_value;

BorderLook look_of(const dom::style::Declarations& style) {
  return {style.get(u"border-style"), style.get(u"border-width"), style.get(u"border-color")};
}

}  // namespace

SelectionHighlight::~SelectionHighlight() { watch(nullptr); }

void SelectionHighlight::watch(dom::Document* document) {
  if (document_ == document) return;
  if (document_) document_->journal().set_overlay_keeper(nullptr);
  document_ = document;
  taken_off_ = false;
  if (document_) document_->journal().set_overlay_keeper(this);
}

void SelectionHighlight::set_element(dom::Ref<dom::Element> element) {
  // Made the current one again, an element keeps its border and what comes back when that is taken off.
  if (drawn_ && element == element_) return;
  element_ = std::move(element);
  drawn_.reset();
  watch(element_ ? element_->document() : nullptr);
  save_look();
}

// The same text says the same: a long style isn't read again after each key.
void SelectionHighlight::save_look() {
  const std::u16string* text = element_ ? element_->attribute(dom::names::style) : nullptr;
  if (text && saved_text_ == *text) return;
  saved_ = {};
  saved_text_.reset();
  if (!text) return;
  saved_ = look_of(dom::style::Declarations(*text));
  saved_text_ = *text;
}

// Without a border drawn there is nothing to take off, and what the border is by now is somebody's edit.
void SelectionHighlight::restore() {
  if (!element_ || !std::exchange(drawn_, {}) || taken_off_) return;
  dom::MutationScope scope(dom::document_of(*element_), dom::MutationKind::Overlay);
  if (element_->attribute_or_empty(dom::names::style) == drawn_text_) {
    if (saved_text_)
      dom::set_attribute(*element_, dom::names::style, *saved_text_);
    else
      dom::remove_attribute(*element_, dom::names::style);
    return;
  }
  set_inline_value(*element_, u"border-style", saved_.style);
  set_inline_value(*element_, u"border-width", saved_.width);
  set_inline_value(*element_, u"border-color", saved_.color);
}

void SelectionHighlight::draw(const BorderLook& border) {
  if (!element_) return;
  drawn_ = border;
  if (taken_off_) return;  // put_back draws it
  dom::MutationScope scope(dom::document_of(*element_), dom::MutationKind::Overlay);
  set_inline_value(*element_, u"border-width", border.width);
  set_inline_value(*element_, u"border-style", border.style);
  set_inline_value(*element_, u"border-color", border.color);
  drawn_text_ = element_->attribute_or_empty(dom::names::style);
}

// Undo replays against a tree without overlays. drawn_ tells put_back what to draw again. Which element is
// the current one may change in between: its border waits until then as well, or it would be saved as its
// own.
void SelectionHighlight::take_off() {
  const auto drawn = drawn_;
  attempt([&] { restore(); });
  drawn_ = drawn;
  taken_off_ = true;
}

void SelectionHighlight::put_back() {
  if (!std::exchange(taken_off_, false)) return;
  const auto drawn = std::exchange(drawn_, {});
  if (!element_) return;
  save_look();
  if (drawn) attempt([&] { draw(*drawn); });
}

}  // namespace tvx::core
