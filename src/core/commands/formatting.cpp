#include <variant>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/base/text.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/commands/selection_operations.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"

/// The public formatting operations: each names its command to the document and marks it changed.
namespace tvx::core {

void HTMLed::run_command(std::u16string_view command) {
  attempt([&] { browser_document().execCommand(command, false, u"true"); });
  mark_changed();
}

void HTMLed::show_pressed(int button, std::u16string_view query) {
  attempt([&] {
    const browser::CommandValue value = document().queryCommandValue(query);
    const bool* pressed = std::get_if<bool>(&value);
    toolbars_->Toolbar1.Item(button).set_Value(pressed && *pressed ? 1 : 0);
  });
}

// The queries keep their letters, "BOLD" beside "Bold": hosts see them in what they trace.
void HTMLed::run_toggle(std::u16string_view command, bool guarded, int button, std::u16string_view query) {
  bool enabled = !guarded;
  if (guarded) attempt([&] { enabled = browser_document().queryCommandEnabled(command); });
  if (!enabled) return;
  attempt([&] { browser_document().execCommand(command, false, u"true"); });
  show_pressed(button, query);
  mark_changed();
}

void HTMLed::bold_document() { run_toggle(u"Bold", true, button_bold, u"BOLD"); }
void HTMLed::italic_document() { run_toggle(u"Italic", true, button_italic, u"Italic"); }
void HTMLed::underline_document() { run_toggle(u"Underline", true, button_underline, u"Underline"); }
void HTMLed::strike_document() { run_toggle(u"strikethrough", false, button_strike, u"StrikeThrough"); }
void HTMLed::indent_document() { run_command(u"indent"); }
void HTMLed::unindent_document() { run_command(u"outdent"); }
void HTMLed::Left_Justify() { run_command(u"JustifyLeft"); }
void HTMLed::Center_justify() { run_command(u"JustifyCenter"); }
void HTMLed::Right_justify() { run_command(u"JustifyRight"); }
void HTMLed::numbered_list() { run_command(u"InsertOrderedList"); }
void HTMLed::unnumbered_list() { run_command(u"InsertUnorderedList"); }

void HTMLed::undo_document() {
  if (!inCodeView_) return run_command(u"undo");
  txtCode_.Undo();
  mark_changed();
}

void HTMLed::redo_document() {
  if (!inCodeView_) return run_command(u"redo");
  txtCode_.Redo();
  mark_changed();
}

void HTMLed::insert_HR() {
  const KeepAlive alive(*this);
  InsertAtCursor(u"<HR>", ed_InsertType::ed_InsertReplaceSelection);
  mark_changed();
}

void HTMLed::insert_Link() {
  const KeepAlive alive(*this);
  if (properties_.relativeURLs) attempt([&] { make_link_under_mouse_relative(); });
  attempt([&] { browser_document().execCommand(u"CreateLink", true, u""); });
  mark_changed();
}

// The dialog shows the address that is there: within the site, it shall be one of the site's.
void HTMLed::make_link_under_mouse_relative() {
  const browser::Event* event = document().event();
  if (!event) return;
  dom::Element* element = document().element_from_point(event->x(), event->y());
  while (element && !element->is(dom::Tag::A) && !element->is(dom::Tag::Body))
    element = element->parent_element();
  if (!element || !element->is(dom::Tag::A)) return;
  std::u16string address(element->attribute_or_empty(dom::names::href));
  address = ReplaceAll(properties_.BaseURL, u"", address, false);
  const std::size_t hash = address.rfind(u'#');
  const dom::Ref<dom::Element> link(element);
  const dom::UndoStep step(document().tree().journal(), u"Link");
  dom::set_attribute(*link, dom::names::href, hash == address.npos ? address : address.substr(hash));
}

void HTMLed::FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag) {
  const KeepAlive alive(*this);
  const auto kept = docHTML_;
  const auto failure = failure_of([&] { wrap_selection(document().editor(), OpeningTag, ClosingTag); });
  if (failure) return raise_error(5, u"Selection fomatting could not be applied : " + failure->text());
  mark_changed();
}

}  // namespace tvx::core
