#include "tvx/spelling/hunspell_application.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/text_file.h"
#include "tvx/spelling/word_rules.h"

namespace tvx::spelling {

HunspellApplication::HunspellApplication(DictionaryStore& store)
    : store_(store), user_words_(user_words_path()) {
  fault_point(u"CreateObject");
  if (store.installed().empty()) throw RuntimeError(no_such_application, u"No dictionary is installed");
  set_language(u"en-US");
}

void HunspellApplication::Documents_Add() {
  fault_point(u"Documents.Add");
  ++documents_;
}

void HunspellApplication::set_language(std::u16string_view tag) {
  if (tag == language_) return;
  language_ = tag;
  dictionary_ = tag.empty() ? nullptr : store_.find(tag);
}

bool HunspellApplication::is_in(std::map<std::string, WordList>& lists, std::u16string_view file,
                                std::u16string_view word) {
  if (file.empty()) return false;
  const std::string path = file_system_path(file);
  return lists.try_emplace(path, path).first->second.has(word);
}

bool HunspellApplication::CheckSpelling(std::span<const Argument> arguments) {
  if (arguments.empty() || !arguments[0]) throw RuntimeError(errors::invalid_call, u"Which word?");
  if (documents_ == 0) throw RuntimeError(errors::invalid_call, u"No document is open");
  if (const auto answer = fault_point(u"CheckSpelling")) return *answer != 0;
  if (!dictionary_ || !is_asked(*arguments[0])) return true;
  const std::u16string word = asked_form(*arguments[0]);
  if (!dictionary_->has_script_of(word) || dictionary_->check(word) || user_words_.has(word)) return true;
  for (const Argument& file : arguments.subspan(1))
    if (file && is_in(lists_, *file, word)) return true;
  return false;
}

std::vector<std::u16string> HunspellApplication::GetSpellingSuggestions(std::u16string_view word) {
  std::vector<std::u16string> all;
  if (fault_point(u"GetSpellingSuggestions") || !dictionary_) return all;
  for (std::u16string& found : dictionary_->suggest(asked_form(word))) {
    std::u16string fitting = like(word, std::move(found));
    if (std::ranges::find(all, fitting) == all.end()) all.push_back(std::move(fitting));
  }
  return all;
}

void HunspellApplication::Quit(bool) {
  documents_ = 0;
  dictionary_.reset();
}

}  // namespace tvx::spelling
