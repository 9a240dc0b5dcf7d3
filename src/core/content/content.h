#pragma once

#include <string>
#include <string_view>

#include "tvx/core/part.h"

namespace tvx::core {

class CodePane;
class SelectionHighlight;

/// HTML into the document and out of it: what was given, what a host reads, the base, and the way back to
/// what was given.
class Content final : public Part {
 public:
  Content(Context& context, CodePane& code, SelectionHighlight& highlight)
      : Part(context), code_(code), highlight_(highlight) {}

  std::u16string DocumentHTML();
  void set_DocumentHTML(std::u16string_view given);
  std::u16string allHTML();
  std::u16string DocumentText();
  void set_BaseURL(std::u16string_view url);
  void RevertToOriginal();
  /// What the document holds now is what a revert goes back to.
  void make_original();
  /// What a revert goes back to where no host ever gives a text.
  void keep_opened(SharedText html) { opened_html_ = std::move(html); }
  /// The code, while it shows, becomes that of the document as it is now.
  void let_code_follow();
  /// Asks the user first. The document counts as unchanged whatever the answer is.
  void ask_and_revert();
  /// What the properties' store brought, at the start.
  void LoadStoredDocumentHTML();

  /// What was given last, or read from a file.
  const std::u16string& original_html() const { return *original_html_; }
  dom::Element* base_element() const { return base_element_.get(); }
  bool base_href_set() const { return base_href_set_; }

  /// As a text goes out: by number, where the property says so.
  std::u16string ConvertUnicodeCharacters(std::u16string_view text) const;
  /// The body's HTML, with `base` (empty: that of the property) taken out of the document's addresses.
  std::u16string RelativeDocumentHTML(std::u16string_view base);
  /// The body's HTML by the properties.
  std::u16string text_of_body();
  void write_body(std::u16string_view html);
  /// Writes the base into the document's base element. Throws RuntimeError(91) if it has none.
  void apply_base_url(browser::HTMLDocument& document);
  /// Lets go of the elements of the document.
  void forget_document() { base_element_ = {}; }

 private:
  void take_over(const SharedText& html);
  void keep_original(SharedText html);
  const std::u16string& revert_text() const;

  CodePane& code_;
  SelectionHighlight& highlight_;
  SharedText original_html_ = share(u"");
  SharedText opened_html_;       // of the last document that was opened; null: none was
  bool original_given_ = false;  // original_html_ comes from outside
  dom::Ref<dom::Element> base_element_;
  bool base_href_set_ = false;
};

}  // namespace tvx::core
