#include "tvx/core/spelling/speller.h"

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"
#include "tvx/dom/name.h"
#include "tvx/spelling/dictionary_files.h"
#include "tvx/spelling/hunspell_application.h"

namespace tvx::core {

namespace {

const dom::Name& spellcheck() {
  static const dom::Name name(u"spellcheck");
  return name;
}

bool is_of_programs(const dom::Node& node) {
  using dom::Tag;
  return node.is(Tag::Code) || node.is(Tag::Kbd) || node.is(Tag::Samp) || node.is(Tag::Var);
}

}  // namespace

spelling::DictionaryStore& Speller::dictionaries() {
  if (!store_) {
    store_ = std::make_unique<spelling::DictionaryStore>();
    store_->set_failed([this](const std::u16string& text) { raise_error(broken_dictionary, text); });
  }
  return *store_;
}

spelling::StartApplication Speller::application() {
  if (start_) return start_;
  return [this] { return std::make_unique<spelling::HunspellApplication>(dictionaries()); };
}

std::u16string Speller::language() const {
  std::u16string tag = spelling::language_tag(properties_.SpellingLanguage);
  if (tag.empty()) tag = spelling::language_of_locale();
  return tag.empty() ? u"en-US" : tag;
}

std::u16string Speller::language_of(const dom::Node& node, std::u16string_view otherwise) {
  std::optional<std::u16string> tag;
  bool says = false;  // the innermost `spellcheck` counts
  for (const dom::Node* above = &node; above; above = above->parent()) {
    const auto* element = dom::as<dom::Element>(above);
    if (!element) continue;
    if (is_of_programs(*element)) return {};
    if (const std::u16string* check = says ? nullptr : element->attribute(spellcheck())) {
      says = true;
      if (equals_ignoring_ascii_case(*check, u"false")) return {};
    }
    const std::u16string* named = tag ? nullptr : element->attribute(dom::names::lang);
    if (named) tag = *named;
  }
  // A name that is empty says that the language isn't known (HTML standard, section 3.2.6.2).
  if (tag) return spelling::language_tag(*tag);
  return std::u16string(otherwise);
}

}  // namespace tvx::core
