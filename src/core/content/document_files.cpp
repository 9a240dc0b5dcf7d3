#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/style/style_sheet.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/source/preparation.h"

/// Documents from files and into files, and onto paper.
namespace tvx::core {
namespace {

constexpr std::u16string_view filter_name = u"HTML Documents (*.htm,*.html)";
constexpr std::u16string_view filter_pattern = u"*.htm;*.HTM;*.HTML;*.html";
constexpr std::int32_t command_print = 6, status_enabled = 2, print_asking = 1, print_at_once = 2;

platform::FileDialog file_dialog(std::u16string_view title, std::u16string_view pattern,
                                 platform::WindowHandle owner) {
  return {{{std::u16string(filter_name), std::u16string(pattern)}}, std::u16string(title), u"*.html", owner};
}

bool is_usable(const browser::HTMLDocument& document) {
  const std::u16string state = document.readyState();
  return state == u"interactive" || state == u"complete";
}

}  // namespace

void HTMLed::Open_document(std::u16string& strURL, bool openEntireDoc) {
  const KeepAlive alive(*this);
  opening_document_ = true;
  attempt([&] {
    if (strURL.empty()) {
      const std::u16string chosen = dialogs_.ShowOpen(file_dialog(u"Open HTML File", filter_pattern, hwnd_));
      if (chosen.empty()) return;
      strURL = chosen;
    }
    if (openEntireDoc)
      open_entire_document(strURL);
    else
      open_body(strURL);
    attempt([&] { set_design_mode_of_browser(); });
    while (!is_usable(document())) Wait();
    const SharedText opened = properties_.DocumentHTML;
    if (inCodeView_) show_as_entered(opened, share(source::code_of(*opened)));
  });
  opening_document_ = false;
  PropertyChanged(u"DocumentHTML");
  properties_.IsDirty = false;
}

void HTMLed::open_entire_document(const std::u16string& url) {
  browser_->set_Silent(true);
  attempt([&] { browser_document().set_designMode(u"Off"); });
  browser_->Navigate(url);
  while (browser_->ReadyState() != browser::ReadyState::Complete &&
         browser_->ReadyState() != browser::ReadyState::Interactive)
    Wait();
  set_docHTML(browser_->Document());
  while (!is_usable(document())) Wait();
  properties_.DocumentHTML = share(ConvertUnicodeCharacters(dom::inner_html(body_of(document()))));
  adopt_style_settings();
}

// The members, not the properties: nothing is applied, the document has brought its own.
void HTMLed::adopt_style_settings() {
  LoadStyleClasses();
  properties_.CSSText.clear();
  properties_.CSShttp = false;
  if (!active_style_sheet_) return;
  const std::u16string address = active_style_sheet_->href();
  properties_.CSShttp = !address.empty();
  properties_.CSSText = address.empty() ? active_style_sheet_->css_text() : address;
}

void HTMLed::open_body(const std::u16string& url) {
  const auto opened = browser_->createDocumentFromUrl(url);
  while (!is_usable(*opened)) Wait();
  if (opened->load_failed()) throw RuntimeError(errors::file_not_found, u"File not found");
  const SharedText html = share(dom::inner_html(body_of(*opened)));
  write_body(*html);
  properties_.DocumentHTML = html;
}

void HTMLed::Save_document(const std::u16string& strFilename, bool bEntireDocument) {
  const KeepAlive alive(*this);
  std::u16string path = strFilename;
  if (path.empty()) {
    // One text with its bars, as dialogs have always been handed it.
    const auto dialog = file_dialog(u"Save HTML File", u"*.htm;*.HTM;*.HTML;*.html|All Files|*.*", hwnd_);
    if (!attempt([&] { path = dialogs_.ShowSave(dialog); })) return;
  }
  if (!path.empty())
    attempt([&] {
      const std::u16string text = text_to_save(bEntireDocument);
      WriteTextFile(path, text);
    });
  properties_.IsDirty = false;
}

std::u16string HTMLed::text_to_save(bool entire) {
  if (!entire) return text_of_body();
  const dom::Element* root = document().documentElement();
  return root ? dom::outer_html(*root) : u"";
}

// The border of the current element is for the screen. Printing from the code view prints the document too:
// that is what the browser has.
void HTMLed::print_Document(bool DontShowDialog) {
  const KeepAlive alive(*this);
  constexpr std::u16string_view failed = u"An error occured whilst attempting to print";
  std::int32_t status = 0;
  if (!attempt([&] { status = browser_->QueryStatusWB(command_print); }))
    return raise_error(16385, std::u16string(failed));
  if (!(status & status_enabled)) return raise_error(16384, u"Printing is disabled by the control");
  attempt([&] { highlight_->restore(); });
  const std::int32_t option = DontShowDialog ? print_at_once : print_asking;
  if (!attempt([&] { browser_->ExecWB(command_print, option); })) raise_error(16385, std::u16string(failed));
}

}  // namespace tvx::core
