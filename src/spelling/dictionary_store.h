#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/spelling/dictionary.h"

namespace tvx::spelling {

/// The dictionaries of one control, made when first asked for. Controls of one process share them: each is in
/// the memory once, and for as long as somebody uses it.
class DictionaryStore {
 public:
  /// Looks where dictionaries are; see dictionary_folders().
  DictionaryStore();
  explicit DictionaryStore(std::vector<DictionaryFiles> installed);

  const std::vector<DictionaryFiles>& installed() const { return installed_; }
  /// Null where the language has none, or a broken one.
  std::shared_ptr<Dictionary> find(std::u16string_view tag);

  /// Called once for each dictionary that can't be used, with a sentence for the user.
  void set_failed(std::function<void(const std::u16string&)> tell) { tell_failure_ = std::move(tell); }

 private:
  std::shared_ptr<Dictionary> load(const DictionaryFiles& files);

  std::vector<DictionaryFiles> installed_;
  std::map<std::u16string, std::shared_ptr<Dictionary>, std::less<>> asked_;  // by the tag that was asked
  std::map<std::string, std::shared_ptr<Dictionary>> loaded_;                 // by file; null: broken
  std::function<void(const std::u16string&)> tell_failure_;
};

}  // namespace tvx::spelling
