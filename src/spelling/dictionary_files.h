#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which dictionaries there are, and which of them a language means.
namespace tvx::spelling {

/// Two files, named after the language: `de_DE.aff` and `de_DE.dic`.
struct DictionaryFiles {
  std::u16string language;  // as `lang` names it: "de-DE"
  std::string affixes, words;
  bool operator==(const DictionaryFiles&) const = default;
};

/// Where dictionaries are looked for, the first find of a language counts: the folders of `DICPATH`, the
/// user's own (`$XDG_DATA_HOME/tvxHTML/dictionaries`, `$XDG_DATA_HOME/hunspell`), and the system's.
std::vector<std::string> dictionary_folders();

/// All that are there, by language.
std::vector<DictionaryFiles> installed_dictionaries();
std::vector<DictionaryFiles> dictionaries_in(const std::vector<std::string>& folders);

/// A language as `lang`, a locale or a file's name tells it, in one form: "de_DE.UTF-8" is "de-DE". "" of
/// what names none ("C", "POSIX").
std::u16string language_tag(std::u16string_view name);

/// The dictionary for a language: of that region, else of the region that the language is named after or has
/// most speakers in, else of any region: what British English lacks in the dictionary of another region are a
/// few words, and without one nothing is found. None where the language has no dictionary.
const DictionaryFiles* dictionary_for(const std::vector<DictionaryFiles>& all, std::u16string_view tag);

/// The language of the process's locale ("" if it has none).
std::u16string language_of_locale();

}  // namespace tvx::spelling
