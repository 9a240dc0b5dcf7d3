#include "tvx/editing/gestures/composition.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::editing {

using dom::Boundary;

void Composition::mutated(const dom::Mutation&) {
  if (!writing_) disturbed_ = true;
}

void Composition::begin() {
  dom::Document& document = editor_.document();
  document.journal().end_typing_run();
  look_ = record_current_overrides(editor_);
  document.journal().open(u"Typing");
  document.add_observer(*this);
  range_ = std::make_unique<dom::LiveRange>(document, dom::Range{});
  active_ = true;
  disturbed_ = false;
  length_ = 0;
}

void Composition::end() {
  active_ = false;
  range_.reset();
  editor_.document().remove_observer(*this);
  editor_.document().journal().close();
}

void Composition::update(std::u16string_view text, Offset cursor) {
  if (text.empty()) return cancel();
  if (!active_ && !editor_.enabled(u"insertText")) return;
  editor_.selection().hold_notifications();
  if (active_) {
    take_back();
  } else {
    begin();
  }
  write(text, cursor);
  editor_.selection().release_notifications();
}

void Composition::write(std::u16string_view text, Offset cursor) {
  writing_ = true;
  type_text(editor_, text);
  writing_ = false;
  const Boundary end = editor_.selection().focus();
  length_ = 0;
  if (!dom::as<dom::Text>(end.node) || end.offset < text.size()) return;
  length_ = text.size();
  const Offset start = end.offset - length_;
  range_->set({{end.node, start}, end});
  editor_.selection().collapse({end.node, start + std::min<Offset>(cursor, length_)});
}

// Back to what was before the first letter; the pending style comes back with it. If others have changed the
// document only the composed text goes: their changes are none of ours to take back.
void Composition::take_back() {
  writing_ = true;
  if (!disturbed_) {
    editor_.document().journal().roll_back();
  } else if (const auto there = stretch()) {
    editor_.selection().collapse({there->text, there->start});
    dom::replace_data(*there->text, there->start, there->length, u"");
  }
  writing_ = false;
  if (editor_.selection().collapsed()) restore_look(look_, editor_);
}

void Composition::accept() {
  if (active_) end();
}

void Composition::cancel() {
  if (!active_) return;
  editor_.selection().hold_notifications();
  take_back();
  end();
  editor_.selection().release_notifications();
}

std::optional<ComposedStretch> Composition::stretch() const {
  if (!active_ || length_ == 0) return {};
  const dom::Range range = range_->range();
  auto* text = dom::as<dom::Text>(range.start.node);
  if (!text || range.end.node != text || range.end.offset - range.start.offset != length_ ||
      !dom::is_connected(*text))
    return {};
  return ComposedStretch{text, range.start.offset, length_};
}

}  // namespace tvx::editing
