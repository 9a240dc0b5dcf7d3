#include "tvx/spelling/spell.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/open_file.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/spelling/word_list.h"

namespace tvx::spelling {

clsSpell::clsSpell(const StartApplication& start) {
  try {
    if (!start) throw RuntimeError(no_such_application, u"There is no speller");
    application_ = start();
    application_->set_Visible(false);
  } catch (const RuntimeError& failure) {
    not_installed_ = failure.number() == no_such_application;
    application_.reset();
  }
}

clsSpell::~clsSpell() {
  found_.clear();
  if (application_) attempt([&] { application_->Quit(false); });
}

bool clsSpell::check(const std::u16string& word) {
  using Argument = SpellingApplication::Argument;
  if (custom_dictionary_.empty()) {
    const Argument arguments[] = {word, added_words_};
    return application_->CheckSpelling(arguments);
  }
  const Argument arguments[] = {word, added_words_, {}, {}, custom_dictionary_};
  return application_->CheckSpelling(arguments);
}

bool clsSpell::SpellCheckWord(const std::u16string& word, std::vector<std::u16string>& suggestions,
                              std::int32_t& count) {
  bool right = false;
  attempt([&] {
    if (!application_) throw RuntimeError(errors::object_not_set, u"There is no speller");
    if (application_->Documents_count() == 0) application_->Documents_Add();
    right = word.empty() || check(word);
    if (right) return;
    found_ = application_->GetSpellingSuggestions(word);
    count = static_cast<std::int32_t>(found_.size());
    if (count < 1) return;
    suggestions.resize(found_.size() + 1);
    std::ranges::copy(found_, suggestions.begin() + 1);
  });
  return right;
}

// --- lists ---

namespace {

template <class Words>
std::u16string item_of(const Words& words, std::u16string_view word) {
  const auto found = words.find(upper_cased(word));
  return found == words.end() ? std::u16string() : found->second;
}

}  // namespace

bool clsSpell::IsWordIgnored(std::u16string_view word) const { return !item_of(ignored_, word).empty(); }
void clsSpell::AddWordToIgnoredList(const std::u16string& word) {
  ignored_.try_emplace(upper_cased(word), word);
}
bool clsSpell::IsWordChanged(std::u16string_view word) const { return !item_of(changed_, word).empty(); }
void clsSpell::AddWordToChangedList(const std::u16string& old_word, const std::u16string& new_word) {
  changed_.try_emplace(upper_cased(old_word), new_word);
}
std::u16string clsSpell::GetChangedWord(std::u16string_view word) const { return item_of(changed_, word); }

// --- files ---

bool clsSpell::DoesFileExists(std::u16string_view file) {
  const std::string path = file_system_path(file);
  // A pipe would wait for its writer.
  const OpenFile opened(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat facts {};
  return opened.is_open() && ::fstat(opened.descriptor(), &facts) == 0 && S_ISREG(facts.st_mode);
}

void clsSpell::AppendToAddWordsFile(std::u16string_view file, std::u16string_view word) {
  if (file.empty()) return;
  std::error_code failed;
  std::string path = file_system_path(file);
  if (path.find('/') == path.npos) path = (std::filesystem::current_path(failed) / path).string();
  // Other programs write that file anew with each word.
  if (path == user_words_path()) return void(add_to_user_words(word));
  OpenFile words(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666));
  if (!words.is_open()) return;
  // In one write: several programs may append to one file.
  words.write(CodePage::system().encode(word) + "\r\n");
}

}  // namespace tvx::spelling
