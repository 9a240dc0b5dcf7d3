#include "tvx/core/content/document_files.h"

#include <memory>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/browser.h"
#include "tvx/core/content/content.h"
#include "tvx/core/content/style_sheet.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/inner_html.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/source/source_text.h"

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

bool DocumentFiles::brings_frame(const browser::Navigation& navigation) const {
  return navigation.part_of_page && DOM() && opened_document_.lock() == browser().Document();
}

void DocumentFiles::Open_document(std::u16string& strURL, bool openEntireDoc) {
  const KeepAlive alive(context_);
  opening_document_ = true;
  attempt([&] {
    if (strURL.empty()) {
      const std::u16string chosen = surroundings().dialogs.ShowOpen(
          file_dialog(u"Open HTML File", filter_pattern, surroundings().hwnd));
      if (chosen.empty()) return;
      strURL = chosen;
    }
    if (openEntireDoc)
      open_entire_document(strURL);
    else
      open_body(strURL);
    attempt([&] { context_.set_design_mode_of_browser(); });
    context_.wait_while([&] { return !is_usable(document()); });
    const SharedText opened = properties_.DocumentHTML;
    content_.keep_opened(opened);
    if (code_.in_front()) code_.show_as_entered(source::SourceText::formatted(opened));
  });
  opening_document_ = false;
  context_.mark_clean();
}

void DocumentFiles::open_entire_document(const std::u16string& url) {
  browser().set_Silent(true);
  attempt([&] { browser_document().set_designMode(u"Off"); });
  browser().Navigate(url);
  context_.wait_while([&] { return browser().ReadyState() < browser::ReadyState::Interactive; });
  context_.set_DOM(browser().Document());
  opened_document_ = DOM();
  context_.wait_while([&] { return !is_usable(document()); });
  std::u16string html = dom::inner_html(body_of(document()));
  if (properties_.AlwaysConvertUnicodeCharacters) html = content_.ConvertUnicodeCharacters(html);
  properties_.DocumentHTML = std::make_shared<const std::u16string>(std::move(html));
  sheet_.adopt_settings();
}

void DocumentFiles::open_body(const std::u16string& url) {
  const auto opened = browser().createDocumentFromUrl(url);
  context_.wait_while([&] { return !is_usable(*opened); });
  if (opened->load_failed() || !is_usable(*opened))
    throw RuntimeError(errors::file_not_found, u"File not found");
  const SharedText html = share(dom::inner_html(body_of(*opened)));
  content_.write_body(*html);
  properties_.DocumentHTML = html;
}

void DocumentFiles::Save_document(const std::u16string& strFilename, bool bEntireDocument) {
  const KeepAlive alive(context_);
  std::u16string path = strFilename;
  if (path.empty()) {
    // One text with its bars, as dialogs have always been handed it.
    const auto dialog =
        file_dialog(u"Save HTML File", u"*.htm;*.HTM;*.HTML;*.html|All Files|*.*", surroundings().hwnd);
    if (!attempt([&] { path = surroundings().dialogs.ShowSave(dialog); })) return;
  }
  // A cancelled dialog counts as saved, as it always has. What couldn't be written doesn't: the file is what
  // it was, and the host sees by the flag that the text is still here alone.
  bool saved = path.empty();
  if (!saved) attempt([&] { saved = WriteTextFile(path, text_to_save(bEntireDocument)); });
  if (saved) properties_.IsDirty = false;
  context_.state_changed();
}

std::u16string DocumentFiles::text_to_save(bool entire) {
  if (!entire) return content_.text_of_body();
  const dom::Element* root = document().documentElement();
  return root ? dom::outer_html(*root) : u"";
}

// The border of the current element is for the screen. Printing from the code view prints the document too:
// that is what the browser has.
void DocumentFiles::print_Document(bool DontShowDialog) {
  const KeepAlive alive(context_);
  constexpr std::u16string_view failed = u"An error occured whilst attempting to print";
  std::int32_t status = 0;
  if (!attempt([&] { status = browser().QueryStatusWB(command_print); }))
    return raise_error(16385, std::u16string(failed));
  if (!(status & status_enabled)) return raise_error(16384, u"Printing is disabled by the control");
  attempt([&] { highlight_.restore(); });
  const std::int32_t option = DontShowDialog ? print_at_once : print_asking;
  if (!attempt([&] { browser().ExecWB(command_print, option); })) raise_error(16385, std::u16string(failed));
}

}  // namespace tvx::core
