#include "tvx/core/views/view_switch.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/text.h"
#include "tvx/browser/browser.h"
#include "tvx/core/chrome/toolbar_commands.h"
#include "tvx/core/content/content.h"
#include "tvx/core/events.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/panes.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/views/side_source.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/source/source_text.h"

/// The switch between the design view and the code view, and what is done in the code view. The text moves at
/// the switch; while the code shows, the document isn't touched.
namespace tvx::core {

namespace {

/// Counted from 1; 0: it isn't there.
std::int32_t position_of(std::u16string_view part, std::u16string_view text) {
  const std::size_t found = FirstOccurrence(part, text);
  return found == text.npos ? 0 : static_cast<std::int32_t>(found) + 1;
}

}  // namespace

void ViewSwitch::show_Code() {
  const KeepAlive alive(context_);
  bool wysiwyg = !code_.in_front(), cancel = false;
  raise([&](HTMLedEvents& host) { host.BeforeCodeViewChange(wysiwyg, cancel); });
  if (!cancel) {
    side_.take();
    const bool done = attempt([&] {
      capture_selected_html();
      code_.in_front() ? leave_code_view() : enter_code_view();
    });
    if (done) {
      code_.set_in_front(!code_.in_front());
      side_.apply();
    } else {
      raise_error(106, u"the editor cannot parse the code and cant show the code");
    }
  }
  panes_.resize();
}

// With no element that is the current one, or one that has left the document, what was selected before stays.
void ViewSwitch::capture_selected_html() {
  const std::u16string_view type = editing::selection_type_name(document().editor());
  if (type == u"None") return;
  const dom::Element* current = highlight_.element();
  const bool here = current && dom::is_connected(*current);
  code_.selection().source_index =
      here ? static_cast<std::int32_t>(document().tree().source_index(*current)) : -1;
  if (code_.selection().source_index == -1) return;
  code_.selection().html = type == u"Text" ? dom::inner_html(*current) : dom::outer_html(*current);
}

void ViewSwitch::enter_code_view() {
  highlight_.restore();
  toolbars_.ApplyToolbarState(false);
  fault_point(u"body.innerHTML");
  source::SourceText text = source::SourceText::formatted(share(content_.text_of_body()));
  code_.selection().code_start = position_of(code_.selection().html, *text.code());
  code_.lock_as_told();
  code_.keep_code_text(text.code());
  code_.box().attachMessages();
  code_.show_as_entered(std::move(text));
  code_.box().set_Visible(true);
  code_.box().set_TabStop(true);
  code_.box().ZOrder(true);
  code_.box().SetFocus();
}

void ViewSwitch::leave_code_view() {
  const auto kept = DOM();
  code_.box().ZOrder(false);
  toolbars_.ApplyToolbarState(true);
  const auto untouched = code_.box().untouched_text();
  code_.keep_code_text(untouched ? untouched : share(code_.box().Text()));
  write_code_to_body();
  code_.box().DetachAllMessages();
  code_.box().set_TabStop(false);
  code_.box().set_Visible(false);
  code_.forget_entered();
  if (browser().window()) {
    if (dom::Element* current = highlight_.element()) browser().window()->scroll_into_view(*current);
    browser().window()->focus();
  }
  if (dom::inner_html(body_of(document())) != content_.original_html()) mark_changed();
}

// The document keeps its undo and its caret where the code stands as it was entered.
void ViewSwitch::write_code_to_body() {
  dom::Element& body = body_of(document());
  fault_point(u"body.innerHTML");
  const std::optional<std::u16string> html = code_.edited_body();
  if (!html) return;
  const dom::UndoStep step(document().tree().journal(), u"Source");
  dom::set_inner_html(body, *html);
  const dom::Element* current = highlight_.element();
  if (current && !dom::is_connected(*current)) highlight_.set_element({});
}

void ViewSwitch::change_document(const std::function<void()>& change) {
  const KeepAlive alive(context_);
  if (code_.in_front()) attempt([&] { write_code_to_body(); });
  side_.take();
  change();
  content_.let_code_follow();
}

// The content is read before the mode changes and written back after it. Leaving the code view in between
// writes the typed source as a step of undo; what is written back here then is a step of its own.
void ViewSwitch::switch_editing(bool enabled) {
  side_.take();
  context_.wait_until_complete();
  const std::u16string before = dom::inner_html(body_of(browser_document()));
  const std::u16string html = content_.ConvertUnicodeCharacters(before);
  if (code_.in_front() && !enabled) show_Code();
  attempt([&] { browser_document().set_designMode(enabled ? u"On" : u"Off"); });
  if (enabled) toolbars_.ApplyToolbarState(true);
  context_.wait_until_complete();
  // A body that has stayed as it was keeps its nodes, and with them the caret and the steps of undo.
  if (dom::inner_html(body_of(browser_document())) == before) return;
  const auto shown = browser().Document();
  const dom::UndoStep step(shown->tree().journal(), u"Source");
  dom::set_inner_html(body_of(*shown), html);
}

}  // namespace tvx::core
