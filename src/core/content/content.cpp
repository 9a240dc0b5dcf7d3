#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/content/output_filters.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"

/// The road of HTML into the document and out of it.
namespace tvx::core {

std::u16string HTMLed::ConvertUnicodeCharacters(std::u16string_view text) const {
  return properties_.AlwaysConvertUnicodeCharacters ? numeric_references(text) : std::u16string(text);
}

// A read that changes the document: what it changes belongs to the last step, and redo stays possible.
std::u16string HTMLed::RelativeDocumentHTML(std::u16string_view base) {
  const auto kept = docHTML_;
  {
    const dom::UndoStep step(document().tree().journal(), u"", dom::StepJoin::LastStep);
    make_addresses_relative(document(), base.empty() ? properties_.BaseURL : base);
  }
  return ConvertUnicodeCharacters(dom::inner_html(body_of(document())));
}

std::u16string HTMLed::text_of_body() {
  if (properties_.relativeURLs) return RelativeDocumentHTML(u"");
  return ConvertUnicodeCharacters(dom::inner_html(body_of(document())));
}

std::u16string HTMLed::DocumentHTML() {
  attempt([&] { highlight_->restore(); });
  if (!run_time()) return *properties_.DocumentHTML;
  std::u16string text;
  attempt([&] { text = inCodeView_ ? ConvertUnicodeCharacters(txtCode_.Text()) : text_of_body(); });
  raise([&](HTMLedEvents& host) { host.BeforeGetDocumentHTML(text); });
  return text;
}

void HTMLed::set_DocumentHTML(std::u16string_view given) {
  // Stored before anything waits: whoever saves the properties meanwhile saves the new text.
  const SharedText html = share(given);
  properties_.DocumentHTML = html;
  if (run_time()) {
    attempt([&] { wait_until_complete(); });
    if (!base_href_set_) base_href_set_ = attempt([&] { apply_base_url(document()); });
    if (docHTML_ && browser_->Document()) set_docHTML(browser_->Document());
    write_body(*html);
    if (inCodeView_)
      show_as_entered(html, html);
    else
      txtCode_.set_Text(html);
    original_html_ = html;
    attempt([&] { set_design_mode_of_browser(); });
  }
  PropertyChanged(u"DocumentHTML");
  properties_.IsDirty = false;
}

std::u16string HTMLed::allHTML() {
  std::u16string text;
  attempt([&] {
    if (const dom::Element* root = document().documentElement()) text = dom::inner_html(*root);
  });
  return text;
}

std::u16string HTMLed::DocumentText() {
  std::u16string text;
  attempt([&] { text = dom::inner_text(body_of(document())); });
  return text;
}

void HTMLed::set_BaseURL(std::u16string_view url) {
  const std::u16string before = properties_.BaseURL;
  properties_.BaseURL = EncodeURL(ReplaceAll(u"\\", u"/", url, false));
  if (run_time()) {
    base_href_set_ = attempt([&] { apply_base_url(document()); });
    if (!before.empty() && properties_.relativeURLs) attempt([&] { RelativeDocumentHTML(before); });
  }
  PropertyChanged(u"BaseURL");
}

void HTMLed::set_EditorEnabled(bool enabled) {
  properties_.EditorEnabled = enabled;
  if (run_time()) {
    attempt([&] { switch_editing(enabled); });
    UserControl_Resize();
  }
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->editor_enabled_changed(enabled);
  PropertyChanged(u"EditorEnabled");
}

// The content is read before the mode changes and written back behind it. Leaving the code view in between
// writes the typed source as a step of undo; what is written back here then is a step of its own.
void HTMLed::switch_editing(bool enabled) {
  wait_until_complete();
  const std::u16string before = dom::inner_html(body_of(browser_document()));
  const std::u16string html = ConvertUnicodeCharacters(before);
  if (inCodeView_ && !enabled) show_Code();
  attempt([&] { browser_document().set_designMode(enabled ? u"On" : u"Off"); });
  if (enabled) ApplyToolbarState(true);
  wait_until_complete();
  // A body that has stayed as it was keeps its nodes, and with them the caret and the steps of undo.
  if (dom::inner_html(body_of(browser_document())) == before) return;
  const auto shown = browser_->Document();
  const dom::UndoStep step(shown->tree().journal(), u"Source");
  dom::set_inner_html(body_of(*shown), html);
}

void HTMLed::RevertToOriginal() {
  attempt([&] { document().load_body(*original_html_); });
  PropertyChanged(u"DocumentHTML");
  properties_.IsDirty = false;
}

}  // namespace tvx::core
