#include "tvx/browser/view/shown_context.h"

#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/view.h"
#include "tvx/editing/selection.h"

namespace tvx::browser {
namespace {

constexpr Offset context_length = 400;

/// What stands around the caret. An input method counts without the text that it is composing.
void set_surroundings(InputContext& context, HTMLDocument& document) {
  const editing::Selection& selection = document.editor().selection();
  dom::Boundary focus = selection.focus(), anchor = selection.anchor();
  const auto* text = dom::as<dom::Text>(focus.node);
  if (!text) return;
  const auto composed = document.composed();
  const Offset left_out = composed && composed->text == text ? composed->length : 0;
  if (left_out > 0) focus.offset = anchor.offset = composed->start;
  const Offset start = focus.offset > context_length ? focus.offset - context_length : 0;
  context.text = text->data().substr(start, 2 * context_length + left_out);
  context.text.erase(focus.offset - start, left_out);
  context.cursor = static_cast<std::uint32_t>(focus.offset - start);
  context.anchor = context.cursor;
  if (anchor.node == text && anchor.offset >= start && anchor.offset - start <= context.text.size())
    context.anchor = static_cast<std::uint32_t>(anchor.offset - start);
}

}  // namespace

void ShownContext::send(HTMLDocument& document, bool editable) {
  InputContext context;
  context.enabled = editable && document.editor().design_mode();
  context.interruptions = shown_.interruptions;
  if (std::exchange(composing_, document.is_composing()) && !document.is_composing()) ++context.interruptions;
  set_surroundings(context, document);
  if (context == shown_) return;
  shown_ = context;
  view_.set_input_context(shown_);
}

}  // namespace tvx::browser
