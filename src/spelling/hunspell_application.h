#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "tvx/spelling/application.h"
#include "tvx/spelling/dictionary_store.h"
#include "tvx/spelling/word_list.h"

namespace tvx::spelling {

/// The speller of this system: Hunspell with the dictionaries that are installed, the user's own words, and
/// the custom dictionaries that it is given. It opens no document in fact, it only counts them.
class HunspellApplication final : public SpellingApplication {
 public:
  /// The store outlives it. Throws RuntimeError(429) where no dictionary is installed.
  explicit HunspellApplication(DictionaryStore& store);

  void set_Visible(bool visible) override { visible_ = visible; }
  int Documents_count() override { return documents_; }
  void Documents_Add() override;
  bool CheckSpelling(std::span<const Argument> arguments) override;
  std::vector<std::u16string> GetSpellingSuggestions(std::u16string_view word) override;
  void Quit(bool save_changes) override;
  void set_language(std::u16string_view tag) override;

  bool Visible() const { return visible_; }

 private:
  bool is_in(std::map<std::string, WordList>& lists, std::u16string_view file, std::u16string_view word);

  DictionaryStore& store_;
  std::shared_ptr<Dictionary> dictionary_;
  std::u16string language_;
  std::map<std::string, WordList> lists_;
  WordList user_words_;
  int documents_ = 0;
  bool visible_ = true;
};

}  // namespace tvx::spelling
