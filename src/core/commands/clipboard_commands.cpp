#include "tvx/core/commands/clipboard_commands.h"

#include "tvx/base/error.h"
#include "tvx/browser/browser.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/clipboard/html_format.h"
#include "tvx/core/content/content.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/pasted_content.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/ranges/control_range.h"

namespace tvx::core {
namespace {

using platform::ClipboardFormat;

/// Whether a command did it. One that breaks off has failed.
template <class Command>
bool succeeds(Command&& command) {
  bool done = false;
  attempt([&] { done = command(); });
  return done;
}

}  // namespace

platform::Clipboard& ClipboardCommands::clipboard() const {
  if (!surroundings().clipboard) throw RuntimeError(errors::object_not_set, u"There is no clipboard");
  return *surroundings().clipboard;
}

std::u16string_view ClipboardCommands::selection_type() const {
  std::u16string_view type = u"None";
  attempt([&] { type = editing::selection_type_name(document().editor()); });
  return type;
}

void ClipboardCommands::copy() {
  const KeepAlive alive(context_);
  if (selection_type() == u"None") return;
  attempt([&] { clipboard().Clear(); });
  if (code_.in_front()) return clip_.Copy(code_.box().hwnd());
  if (succeeds([&] { return document().execCommand(u"Copy", false, u""); })) return;
  attempt([&] { copy_by_hand(); });
}

// What is selected may be another than before the document's own command: handlers have run.
void ClipboardCommands::copy_by_hand() {
  const dom::WithoutOverlay bare(document().tree());
  editing::AnyRange range = editing::create_range(document().editor());
  std::u16string html, prefix = u"<HTML><BODY>", suffix = u"</BODY></HTML>";
  if (auto* text = std::get_if<editing::TextRange>(&range))
    html = content_.ConvertUnicodeCharacters(text->html_text());
  else
    html = dom::outer_html(std::get<editing::ControlRange>(range).item(0));
  clipboard::PutHTMLOnClipboard(clipboard(), html, prefix, suffix);
}

void ClipboardCommands::cut() {
  const KeepAlive alive(context_);
  if (code_.in_front()) {
    clip_.Cut(code_.box().hwnd());
  } else {
    if (selection_type() == u"None") return;
    // The user's cut: what it empties stays a line.
    if (!succeeds([&] { return browser::press_command(document(), u"Cut"); })) {
      copy();
      // With nothing selected any more it would take what stands before the caret.
      if (selection_type() == u"None") return;
      attempt([&] { browser_document().execCommand(u"Delete", false, u"true"); });
    }
  }
  mark_changed();
}

void ClipboardCommands::paste() {
  paste_with([this] {
    if (!succeeds([&] { return document().execCommand(u"Paste", false, u""); })) paste_by_hand();
  });
}

void ClipboardCommands::paste_text() {
  paste_with([this] {
    editing::Editor& editor = document().editor();
    if (editor.clipboard()) editor.clipboard()->paste_text(editor);
  });
}

void ClipboardCommands::paste_with(const std::function<void()>& paste_into_page) {
  const KeepAlive alive(context_);
  if (code_.in_front())
    clip_.Paste(code_.box().hwnd());
  else
    attempt([&] {
      const auto kept = DOM();
      paste_into_page();
    });
  mark_changed();
}

// Plain text counts as markup too; the fragment only where there is no text at all. By hand or not: what acts
// comes in on neither path, and what may not be edited isn't.
void ClipboardCommands::paste_by_hand() {
  const auto kept = DOM();
  editing::AnyRange range = editing::create_range(document().editor());
  platform::Clipboard& from = clipboard();
  const auto fit = [&](std::u16string_view html) { return editing::pasted_content(document().tree(), html); };
  if (auto* control = std::get_if<editing::ControlRange>(&range)) {
    const dom::Ref<dom::Element> element(&control->item(0));
    if (!editing::is_editable(*element)) return;
    return dom::assign_outer_nodes(*element, fit(from.GetText()));
  }
  editing::TextRange& text = editing::text_range_of(range);
  const dom::Range ends = text.range();
  if (!ends.start || !editing::editing_host_of(*ends.start.node) ||
      !editing::in_same_editing_host(*ends.start.node, *ends.end.node))
    return;
  std::u16string html;
  if (from.GetFormat(ClipboardFormat::text))
    html = from.GetText(ClipboardFormat::text);
  else if (from.GetFormat(ClipboardFormat::unicode_text))
    html = from.GetText(ClipboardFormat::unicode_text);
  else
    html = clipboard::GetHTMLFromClipboard(from);
  text.paste_nodes(fit(html));
}

}  // namespace tvx::core
