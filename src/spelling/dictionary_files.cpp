#include "tvx/spelling/dictionary_files.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <filesystem>

#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"

namespace tvx::spelling {

namespace fs = std::filesystem;

std::vector<std::string> dictionary_folders() {
  std::vector<std::string> folders;
  if (const char* listed = std::getenv("DICPATH")) {
    const std::u16string all = from_utf8(listed);
    for (const std::u16string_view folder : split(all, u':'))
      if (!folder.empty()) folders.push_back(to_utf8(folder));
  }
  std::string data = absolute_path_in("XDG_DATA_HOME");
  const std::string home = absolute_path_in("HOME");
  if (data.empty() && !home.empty()) data = home + "/.local/share";
  if (!data.empty()) {
    folders.push_back(data + "/tvxHTML/dictionaries");
    folders.push_back(data + "/hunspell");
  }
  folders.insert(folders.end(), {"/usr/share/hunspell", "/usr/share/myspell", "/usr/share/myspell/dicts"});
  return folders;
}

std::vector<DictionaryFiles> installed_dictionaries() { return dictionaries_in(dictionary_folders()); }

std::vector<DictionaryFiles> dictionaries_in(const std::vector<std::string>& folders) {
  std::vector<DictionaryFiles> all;
  for (const std::string& folder : folders) {
    std::error_code failed;
    for (fs::directory_iterator file(folder, failed), end; !failed && file != end; file.increment(failed)) {
      if (file->path().extension() != ".aff") continue;
      fs::path words = file->path();
      words.replace_extension(".dic");
      std::error_code missing;
      if (!fs::exists(words, missing)) continue;
      DictionaryFiles found{language_tag(from_utf8(words.stem().string())), file->path().string(),
                            words.string()};
      const bool known = std::ranges::find(all, found.language, &DictionaryFiles::language) != all.end();
      if (!found.language.empty() && !known) all.push_back(std::move(found));
    }
  }
  std::ranges::sort(all, {}, &DictionaryFiles::language);
  return all;
}

std::u16string language_tag(std::u16string_view name) {
  name = trimmed(name.substr(0, name.find_first_of(u".@")));
  if (equals_ignoring_ascii_case(name, u"C") || equals_ignoring_ascii_case(name, u"POSIX")) return {};
  std::u16string tag;
  std::size_t number = 0;
  for (std::size_t at = 0; at <= name.size(); ++number) {
    const std::size_t end = std::min(name.find_first_of(u"-_", at), name.size());
    std::u16string part = ascii_lower(name.substr(at, end - at));
    if (number == 0 && (part.size() < 2 || part.size() > 8 || !std::ranges::all_of(part, is_ascii_alpha)))
      return {};
    if (number > 0) {
      if (part.size() == 2) part = ascii_upper(part);
      if (part.size() == 4 && is_ascii_alpha(part[0])) part[0] = ascii_upper(part.substr(0, 1))[0];
      tag += u'-';
    }
    tag += part;
    at = end + 1;
  }
  return tag;
}

namespace {

std::u16string_view primary(std::u16string_view tag) { return tag.substr(0, tag.find(u'-')); }

/// "en" is "en-US", "de" is "de-DE".
std::u16string with_likely_region(std::u16string_view language) {
  char full[ULOC_FULLNAME_CAPACITY] = {};
  UErrorCode failed = U_ZERO_ERROR;
  uloc_addLikelySubtags(to_utf8(language).c_str(), full, sizeof full, &failed);
  char region[ULOC_COUNTRY_CAPACITY] = {};
  if (U_SUCCESS(failed)) uloc_getCountry(full, region, sizeof region, &failed);
  if (U_FAILURE(failed) || !region[0]) return std::u16string(language);
  return std::u16string(language) + u"-" + from_utf8(region);
}

}  // namespace

const DictionaryFiles* dictionary_for(const std::vector<DictionaryFiles>& all, std::u16string_view tag) {
  const std::u16string wanted = language_tag(tag), language(primary(wanted));
  if (wanted.empty()) return nullptr;
  for (const std::u16string& name : {wanted, with_likely_region(language), language}) {
    const auto found = std::ranges::find(all, name, &DictionaryFiles::language);
    if (found != all.end()) return &*found;
  }
  const auto any =
      std::ranges::find(all, language, [](const DictionaryFiles& files) { return primary(files.language); });
  return any == all.end() ? nullptr : &*any;
}

std::u16string language_of_locale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return language_tag(from_utf8(value));
  }
  return {};
}

}  // namespace tvx::spelling
