#include "tvx/core/content/content.h"

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/browser/browser.h"
#include "tvx/core/content/output_filters.h"
#include "tvx/core/events.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/platform/common_dialogs.h"

namespace tvx::core {

std::u16string Content::ConvertUnicodeCharacters(std::u16string_view text) const {
  return properties_.AlwaysConvertUnicodeCharacters ? numeric_references(text) : std::u16string(text);
}

// A read that changes the document: what it changes belongs to the last step, and redo stays possible.
std::u16string Content::RelativeDocumentHTML(std::u16string_view base) {
  const auto kept = DOM();
  {
    const dom::UndoStep step(document().tree().journal(), u"", dom::StepJoin::LastStep);
    make_addresses_relative(document(), base.empty() ? properties_.BaseURL : base);
  }
  return ConvertUnicodeCharacters(dom::inner_html(body_of(document())));
}

std::u16string Content::text_of_body() {
  if (properties_.relativeURLs) return RelativeDocumentHTML(u"");
  return ConvertUnicodeCharacters(dom::inner_html(body_of(document())));
}

std::u16string Content::DocumentHTML() {
  attempt([&] { highlight_.restore(); });
  if (!run_time()) return *properties_.DocumentHTML;
  std::u16string text;
  attempt([&] { text = code_.in_front() ? ConvertUnicodeCharacters(code_.box().Text()) : text_of_body(); });
  raise([&](HTMLedEvents& host) { host.BeforeGetDocumentHTML(text); });
  return text;
}

void Content::set_DocumentHTML(std::u16string_view given) {
  // Stored before anything waits: whoever saves the properties meanwhile saves the new text.
  const SharedText html = share(given);
  properties_.DocumentHTML = html;
  if (run_time()) {
    attempt([&] { context_.wait_until_complete(); });
    if (!base_href_set_) base_href_set_ = attempt([&] { apply_base_url(document()); });
    if (DOM() && browser().Document()) context_.set_DOM(browser().Document());
    write_body(*html);
    if (code_.in_front())
      code_.show_as_entered(source::SourceText::as_it_is(html));
    else
      code_.box().set_Text(html);
    take_over(html);
  }
  context_.mark_clean();
}

void Content::LoadStoredDocumentHTML() {
  const SharedText html = properties_.DocumentHTML;
  if (run_time()) {
    attempt([&] { context_.wait_until_complete(); });
    write_body(*html);
    code_.box().set_Text(html);
    take_over(html);
  }
  context_.mark_clean();
}

void Content::take_over(const SharedText& html) {
  keep_original(html);
  attempt([&] { context_.set_design_mode_of_browser(); });
}

std::u16string Content::allHTML() {
  std::u16string text;
  attempt([&] {
    if (const dom::Element* root = document().documentElement()) text = dom::inner_html(*root);
  });
  return text;
}

std::u16string Content::DocumentText() {
  std::u16string text;
  attempt([&] { text = dom::inner_text(body_of(document())); });
  return text;
}

void Content::set_BaseURL(std::u16string_view url) {
  const std::u16string before = properties_.BaseURL;
  properties_.BaseURL = EncodeURL(ReplaceAll(u"\\", u"/", url, false));
  if (run_time()) {
    base_href_set_ = attempt([&] { apply_base_url(document()); });
    if (!before.empty() && properties_.relativeURLs) attempt([&] { RelativeDocumentHTML(before); });
  }
  context_.PropertyChanged(u"BaseURL");
}

void Content::apply_base_url(browser::HTMLDocument& document) {
  base_element_ = document.first(dom::Tag::Base);
  if (!base_element_) throw RuntimeError(errors::object_not_set, u"The document has no base element");
  dom::set_attribute(*base_element_, dom::names::href, properties_.BaseURL);
}

// Both references usually name one document. Writing it twice gives what writing it once gives, so the second
// is for the case that they don't: a document that has just been replaced.
void Content::write_body(std::u16string_view html) {
  const auto first = DOM(), second = browser().Document();
  attempt([&] { document().load_body(html); });
  if (second != first) attempt([&] { browser_document().load_body(html); });
  const dom::Element* current = highlight_.element();
  if (current && !dom::is_connected(*current)) highlight_.set_element({});
}

// Where the host has never given a text, a document that was opened is what there is to go back to.
const std::u16string& Content::revert_text() const {
  return !original_given_ && opened_html_ ? *opened_html_ : *original_html_;
}

void Content::make_original() {
  attempt([&] {
    const dom::WithoutOverlay bare(document().tree());
    keep_original(share(dom::inner_html(body_of(document()))));
  });
}

void Content::keep_original(SharedText html) {
  original_html_ = std::move(html);
  original_given_ = true;
}

void Content::RevertToOriginal() {
  attempt([&] { document().load_body(revert_text()); });
  let_code_follow();
  context_.mark_clean();
}

void Content::let_code_follow() {
  if (!code_.in_front()) return;
  attempt([&] {
    const SharedText text = share(text_of_body());
    const auto& entered = code_.entered();
    const bool unedited = entered && code_.box().untouched_text() == entered->code();
    if (!unedited || *text != entered->markup()) code_.show_as_entered(source::SourceText::formatted(text));
  });
}

void Content::ask_and_revert() {
  const platform::MessageAnswer answer =
      surroundings().dialogs.show_message({.text = u"Discard Changes?",
                                           .title = u"HTML Editor",
                                           .buttons = platform::MessageButtons::ok_cancel,
                                           .icon = platform::MessageIcon::critical,
                                           .owner = surroundings().hwnd,
                                           .asks = true});
  if (answer == platform::MessageAnswer::ok)
    attempt([&] {
      const auto kept = DOM();
      dom::Element& body = body_of(document());
      const dom::UndoStep step(document().tree().journal(), u"Revert");
      dom::set_inner_html(body, revert_text());
    });
  context_.mark_clean();
}

}  // namespace tvx::core
