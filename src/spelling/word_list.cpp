#include "tvx/spelling/word_list.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unicode/unistr.h>

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/file_replacement.h"
#include "tvx/base/open_file.h"
#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/spelling/word_rules.h"

namespace tvx::spelling {

namespace {

constexpr std::size_t largest_list = std::size_t{16} << 20;

std::u16string of(const icu::UnicodeString& text) {
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}
icu::UnicodeString view_of(std::u16string_view text) {
  return {false, text.data(), static_cast<std::int32_t>(text.size())};
}

bool is_utf8(std::string_view bytes) { return from_utf8(bytes).find(u'\uFFFD') == std::u16string::npos; }

}  // namespace

std::set<std::u16string, std::less<>> words_of_lines(std::string_view bytes) {
  std::set<std::u16string, std::less<>> words;
  const std::u16string text = is_utf8(bytes) ? from_utf8(bytes) : CodePage::system().decode(bytes);
  for (std::u16string_view line : split(text, u'\n')) {
    if (line.starts_with(u'\uFEFF')) line.remove_prefix(1);
    const std::u16string_view word = trimmed(line);
    if (!word.empty()) words.insert(asked_form(word));
  }
  return words;
}

void WordList::read_if_changed() {
  struct stat facts {};
  if (::stat(path_.c_str(), &facts) != 0) {
    words_.clear();
    size_ = -1;
    return;
  }
  const std::int64_t changed = facts.st_mtim.tv_sec * 1000000000LL + facts.st_mtim.tv_nsec;
  if (facts.st_size == size_ && changed == changed_) return;
  size_ = facts.st_size;
  changed_ = changed;
  words_ = words_of_lines(read_bytes(from_utf8(path_), largest_list).value_or(std::string()));
}

bool WordList::has(std::u16string_view word) {
  read_if_changed();
  if (words_.empty()) return false;
  if (words_.contains(word)) return true;
  const icu::UnicodeString given = view_of(word);
  const std::u16string small = of(icu::UnicodeString(given).toLower());
  if (small == word) return false;
  const bool capitals = given == icu::UnicodeString(given).toUpper();
  const bool one_capital = small.substr(1) == word.substr(1);
  if ((capitals || one_capital) && words_.contains(small)) return true;
  std::u16string name = small;
  name[0] = word[0];
  return capitals && words_.contains(name);
}

std::string user_words_path() {
  std::string data = absolute_path_in("XDG_DATA_HOME");
  const std::string home = absolute_path_in("HOME");
  if (data.empty() && !home.empty()) data = home + "/.local/share";
  return data.empty() ? "" : data + "/tvxHTML/words.txt";
}

namespace {

std::string folder_of(const std::string& path) { return path.substr(0, path.rfind('/')); }

}  // namespace

bool make_user_words() {
  const std::string path = user_words_path();
  if (path.empty() || !make_private_folder(folder_of(path))) return false;
  return OpenFile(::open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600)).is_open();
}

bool add_to_user_words(std::u16string_view word) {
  const std::string path = user_words_path();
  const std::u16string added = asked_form(trimmed(word));
  if (path.empty() || added.empty()) return false;
  if (!make_private_folder(folder_of(path))) return false;
  // Who adds holds the lock from reading to writing, or two programs would each write without the other's
  // word.
  const OpenFile lock(::open((folder_of(path) + "/.words.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock.is_open() || ::flock(lock.descriptor(), LOCK_EX) != 0) return false;
  struct stat facts {};
  std::string bytes;
  if (::stat(path.c_str(), &facts) == 0) {
    // A file that is there and can't be read isn't written anew without what was in it.
    const auto present = read_bytes(from_utf8(path), largest_list);
    if (!present) return false;
    bytes = *present;
  }
  if (words_of_lines(bytes).contains(added)) return true;
  if (!bytes.empty() && bytes.back() != '\n') bytes += '\n';
  bytes += to_utf8(added) + "\n";
  return attempt([&] { replace_file(path, bytes, OldFile::Keep); });
}

}  // namespace tvx::spelling
