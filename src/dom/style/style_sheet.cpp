#include "tvx/dom/style/style_sheet.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/set_attribute_again.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {

bool StyleSheet::is_link() const { return owner_->is(Tag::Link); }

std::u16string StyleSheet::href() const {
  return is_link() ? std::u16string(owner_->attribute_or_empty(names::href)) : std::u16string();
}

void StyleSheet::set_href(std::u16string_view address) {
  if (!is_link()) return;
  // The same address again means that another sheet is there now: who shows it must look again as well.
  if (owner_->attribute_or_empty(names::href) == address) {
    set_attribute_again(*owner_, names::href);
  } else {
    set_attribute(*owner_, names::href, address);
  }
  if (engine_) engine_->reload(*owner_);
}

std::u16string StyleSheet::media() const { return std::u16string(owner_->attribute_or_empty(names::media)); }

std::u16string StyleSheet::css_text() const {
  return is_link() ? loaded_text_.value_or(u"") : text_content(*owner_);
}

void StyleSheet::set_css_text(std::u16string_view text) {
  if (text == css_text()) return;
  if (is_link()) {
    loaded_text_ = text;
    if (engine_) engine_->text_changed();
  } else {
    replace_children(*owner_, document_of(*owner_).create_text(std::u16string(text)));
  }
}

const std::vector<Rule>& StyleSheet::rules() const {
  std::u16string text = css_text();
  if (!parsed_ || text != parsed_text_) {
    parsed_ = true;
    parsed_text_ = std::move(text);
    rules_ = parse_rules(parsed_text_);
  }
  return rules_;
}

}  // namespace tvx::dom::style
