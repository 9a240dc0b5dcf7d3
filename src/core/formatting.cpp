#include <variant>

#include "base/error.h"
#include "browser/html_document.h"
#include "commands/toolbars.h"
#include "core/htmled.h"

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

void HTMLed::bold_document() { run_toggle(u"Bold", true, commands::button_bold, u"BOLD"); }
void HTMLed::italic_document() { run_toggle(u"Italic", true, commands::button_italic, u"Italic"); }
void HTMLed::underline_document() {
  run_toggle(u"Underline", true, commands::button_underline, u"Underline");
}
void HTMLed::strike_document() {
  run_toggle(u"strikethrough", false, commands::button_strike, u"StrikeThrough");
}
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

}  // namespace tvx::core
