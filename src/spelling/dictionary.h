#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/code_page.h"
#include "tvx/spelling/dictionary_files.h"

class Hunspell;

namespace tvx::spelling {

/// The words of one language, by Hunspell. Costs some megabytes and a moment to make: see DictionaryStore.
class Dictionary {
 public:
  explicit Dictionary(const DictionaryFiles& files);
  ~Dictionary();
  Dictionary(const Dictionary&) = delete;
  Dictionary& operator=(const Dictionary&) = delete;

  const std::u16string& language() const { return language_; }
  /// Whether words of these letters are of its language at all; of letters that no language owns, yes.
  bool has_script_of(std::u16string_view word) const;
  bool check(std::u16string_view word);
  /// The best first; at most as many as fit a list.
  std::vector<std::u16string> suggest(std::u16string_view word);

 private:
  std::string encoded(std::u16string_view word) const;

  std::u16string language_;
  std::vector<int> scripts_;
  std::unique_ptr<Hunspell> words_;
  bool utf8_ = true;
  CodePage letters_ = CodePage::utf8();
};

}  // namespace tvx::spelling
