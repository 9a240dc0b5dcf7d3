#include "tvx/spelling/dictionary.h"

#include <unicode/uscript.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <hunspell.hxx>

#include "tvx/base/strings.h"

namespace tvx::spelling {

namespace {

constexpr std::size_t most_suggestions = 15;

std::vector<int> scripts_of(std::u16string_view language) {
  UScriptCode codes[8];
  UErrorCode failed = U_ZERO_ERROR;
  const int count = uscript_getCode(to_utf8(language).c_str(), codes, 8, &failed);
  if (U_FAILURE(failed)) return {};
  return {codes, codes + count};
}

}  // namespace

Dictionary::Dictionary(const DictionaryFiles& files)
    : language_(files.language),
      scripts_(scripts_of(files.language)),
      words_(std::make_unique<Hunspell>(files.affixes.c_str(), files.words.c_str())) {
  letters_ = CodePage::by_name(words_->get_dict_encoding()).value_or(CodePage::windows_1252());
  utf8_ = letters_ == CodePage::utf8();
}

Dictionary::~Dictionary() = default;

bool Dictionary::has_script_of(std::u16string_view word) const {
  if (scripts_.empty()) return true;
  for (std::size_t at = 0; at < word.size();) {
    UChar32 letter;
    U16_NEXT(word.data(), at, word.size(), letter);
    if (letter < 0x80) {
      if (is_ascii_alpha(static_cast<char16_t>(letter)) && !std::ranges::count(scripts_, USCRIPT_LATIN))
        return false;
      continue;
    }
    UErrorCode failed = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(letter, &failed);
    const bool of_all = script == USCRIPT_COMMON || script == USCRIPT_INHERITED;
    if (!of_all && !std::ranges::count(scripts_, script)) return false;
  }
  return true;
}

std::string Dictionary::encoded(std::u16string_view word) const {
  return utf8_ ? to_utf8(word) : letters_.encode(word);
}

bool Dictionary::check(std::u16string_view word) { return words_->spell(encoded(word)); }

std::vector<std::u16string> Dictionary::suggest(std::u16string_view word) {
  std::vector<std::u16string> all;
  for (const std::string& found : words_->suggest(encoded(word))) {
    if (all.size() == most_suggestions) break;
    all.push_back(utf8_ ? from_utf8(found) : letters_.decode(found));
  }
  return all;
}

}  // namespace tvx::spelling
