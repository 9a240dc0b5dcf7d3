#include "tvx/spelling/dictionary_store.h"

#include <filesystem>

#include "tvx/base/strings.h"
#include "tvx/spelling/affix_file.h"
#include "tvx/spelling/dictionary_trial.h"

namespace tvx::spelling {

namespace {

/// What is in the memory of this process, by file.
std::map<std::string, std::weak_ptr<Dictionary>>& shared() {
  static std::map<std::string, std::weak_ptr<Dictionary>> all;
  return all;
}

/// Several languages may be one file.
std::string key_of(const DictionaryFiles& files) {
  std::error_code failed;
  const std::filesystem::path path = std::filesystem::canonical(files.words, failed);
  return failed ? files.words : path.string();
}

std::optional<std::u16string> what_is_wrong(const DictionaryFiles& files) {
  if (auto damage = damage_of(files.affixes, files.words)) return damage;
  return needs_trial(files) ? trial_of(files) : std::nullopt;
}

}  // namespace

DictionaryStore::DictionaryStore() : installed_(installed_dictionaries()) {}
DictionaryStore::DictionaryStore(std::vector<DictionaryFiles> installed) : installed_(std::move(installed)) {}

std::shared_ptr<Dictionary> DictionaryStore::find(std::u16string_view tag) {
  const auto known = asked_.find(tag);
  if (known != asked_.end()) return known->second;
  const DictionaryFiles* files = dictionary_for(installed_, tag);
  const std::shared_ptr<Dictionary> dictionary = files ? load(*files) : nullptr;
  asked_.emplace(tag, dictionary);
  return dictionary;
}

std::shared_ptr<Dictionary> DictionaryStore::load(const DictionaryFiles& files) {
  const std::string key = key_of(files);
  const auto known = loaded_.find(key);
  if (known != loaded_.end()) return known->second;
  std::shared_ptr<Dictionary> dictionary = shared()[key].lock();
  if (!dictionary) {
    if (const auto damage = what_is_wrong(files)) {
      loaded_.emplace(key, nullptr);
      if (tell_failure_)
        tell_failure_(u"The dictionary " + from_utf8(files.words) + u" can't be used: " + *damage);
      return nullptr;
    }
    dictionary = std::make_shared<Dictionary>(files);
    shared()[key] = dictionary;
  }
  loaded_.emplace(key, dictionary);
  return dictionary;
}

}  // namespace tvx::spelling
