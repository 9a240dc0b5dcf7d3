#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/clipboard/clip.h"
#include "tvx/clipboard/html_format.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/editing/ranges/control_range.h"

/// Cut, copy and paste: the document's own commands first, and where they report failure by hand. In the
/// code view they are messages to its box.
namespace tvx::core {
namespace {

using platform::ClipboardFormat;

/// Whether the document's command did it. One that breaks off has failed.
bool succeeds(browser::HTMLDocument& document, std::u16string_view command) {
  bool done = false;
  attempt([&] { done = document.execCommand(command, false, u""); });
  return done;
}

}  // namespace

std::u16string_view HTMLed::selection_type() const {
  std::u16string_view type = u"None";
  attempt([&] { type = editing::selection_type_name(document().editor()); });
  return type;
}

void HTMLed::copy_document() {
  const KeepAlive alive(*this);
  const std::u16string_view type = selection_type();
  if (type == u"None") return;
  attempt([&] { clipboard().Clear(); });
  if (inCodeView_) return clip_.Copy(txtCode_.hwnd());
  if (succeeds(document(), u"Copy")) return;
  attempt([&] { copy_by_hand(type); });
}

void HTMLed::copy_by_hand(std::u16string_view type) {
  editing::AnyRange range = editing::create_range(document().editor());
  std::u16string html, prefix = u"<HTML><BODY>", suffix = u"</BODY></HTML>";
  if (type == u"Text")
    html = ConvertUnicodeCharacters(editing::text_range_of(range).html_text());
  else
    html = dom::outer_html(std::get<editing::ControlRange>(range).item(0));
  clipboard::PutHTMLOnClipboard(clipboard(), html, prefix, suffix);
}

void HTMLed::cut_document() {
  const KeepAlive alive(*this);
  if (inCodeView_) {
    clip_.Cut(txtCode_.hwnd());
  } else {
    if (selection_type() == u"None") return;
    if (!succeeds(document(), u"Cut")) {
      copy_document();
      attempt([&] { browser_document().execCommand(u"Delete", false, u"true"); });
    }
  }
  mark_changed();
}

void HTMLed::paste_document() {
  const KeepAlive alive(*this);
  if (inCodeView_)
    clip_.Paste(txtCode_.hwnd());
  else
    attempt([&] {
      const auto kept = docHTML_;
      if (!succeeds(document(), u"Paste")) paste_by_hand();
    });
  mark_changed();
}

// What comes from the clipboard goes in as it stands, plain text as markup too; the fragment only where there
// is no text at all.
void HTMLed::paste_by_hand() {
  editing::AnyRange range = editing::create_range(document().editor());
  platform::Clipboard& from = clipboard();
  if (auto* control = std::get_if<editing::ControlRange>(&range))
    return dom::assign_outer_html(control->item(0), from.GetText());
  std::u16string html;
  if (from.GetFormat(ClipboardFormat::text))
    html = from.GetText(ClipboardFormat::text);
  else if (from.GetFormat(ClipboardFormat::unicode_text))
    html = from.GetText(ClipboardFormat::unicode_text);
  else
    html = clipboard::GetHTMLFromClipboard(from);
  editing::text_range_of(range).paste_html(html);
}

}  // namespace tvx::core
