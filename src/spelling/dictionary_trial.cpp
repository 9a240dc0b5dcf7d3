#include "tvx/spelling/dictionary_trial.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <new>

#include "tvx/base/strings.h"
#include "tvx/spelling/dictionary.h"

namespace tvx::spelling {

namespace {

constexpr std::size_t tried_words = 40;

/// As they stand in the list, without their flags; spread over the whole of it.
std::vector<std::u16string> sample_of(const std::string& list) {
  std::ifstream file(list, std::ios::binary);
  file.seekg(0, std::ios::end);
  const auto size = static_cast<std::streamoff>(file.tellg());
  std::vector<std::u16string> sample;
  for (std::size_t number = 0; number < tried_words; ++number) {
    file.clear();
    file.seekg(size * static_cast<std::streamoff>(number) / static_cast<std::streamoff>(tried_words));
    std::string line;
    std::getline(file, line);
    if (!std::getline(file, line)) continue;
    sample.push_back(from_utf8(line.substr(0, line.find_first_of("/\t\r"))));
  }
  return sample;
}

std::size_t address_space_in_use() {
  std::ifstream file("/proc/self/statm");
  std::size_t pages = 0;
  file >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// In the new process; never returns.
[[noreturn]] void try_out(const DictionaryFiles& files, const TrialLimits& limits) {
  const rlim_t memory = address_space_in_use() + limits.memory;
  const rlimit space{memory, memory}, no_core{0, 0};
  const auto seconds = static_cast<rlim_t>(limits.time.count() / 1000 + 1);
  const rlimit time{seconds, seconds};
  setrlimit(RLIMIT_AS, &space);
  setrlimit(RLIMIT_CPU, &time);
  setrlimit(RLIMIT_CORE, &no_core);
  try {
    Dictionary dictionary(files);
    const std::vector<std::u16string> sample = sample_of(files.words);
    bool knows_any = sample.empty();
    for (const std::u16string& word : sample) {
      if (dictionary.check(word)) knows_any = true;
      dictionary.check(word + word);
      if (word.size() < 20) dictionary.suggest(u"q" + word);
    }
    // Where its memory ends, Hunspell goes on with fewer words, or with none.
    if (!knows_any) _exit(2);
  } catch (...) {
    _exit(2);
  }
  _exit(0);
}

/// The end of the process, waited for no longer than it may take.
std::optional<int> end_of(pid_t process, int its_end, std::chrono::milliseconds time) {
  const auto last = std::chrono::steady_clock::now() + time;
  for (;;) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(last - std::chrono::steady_clock::now());
    pollfd wait{its_end, POLLIN, 0};
    // The pipe's other end is closed when the process is gone.
    const int woken = left.count() > 0 ? ::poll(&wait, 1, static_cast<int>(left.count())) : 0;
    if (woken < 0 && errno == EINTR) continue;
    if (woken <= 0) ::kill(process, SIGKILL);
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return woken > 0 ? std::optional(status) : std::nullopt;
  }
}

bool only_root_writes(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && facts.st_uid == 0 && (facts.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace

std::optional<std::u16string> trial_of(const DictionaryFiles& files, const TrialLimits& limits) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return u"it can't be tried";
  const pid_t process = ::fork();
  if (process == 0) {
    ::close(ends[0]);
    try_out(files, limits);
  }
  ::close(ends[1]);
  std::optional<std::u16string> answer;
  if (process < 0) {
    answer = u"it can't be tried";
  } else if (const auto status = end_of(process, ends[0], limits.time); !status) {
    answer = u"its rules have no end";
  } else if (!WIFEXITED(*status) || WEXITSTATUS(*status) != 0) {
    answer = u"its rules can't be worked with";
  }
  ::close(ends[0]);
  return answer;
}

bool needs_trial(const DictionaryFiles& files) {
  // Tests run as root; what lies in the system's folders is the administrator's.
  const bool of_system = files.affixes.starts_with("/usr/") && files.words.starts_with("/usr/");
  return !of_system || !only_root_writes(files.affixes) || !only_root_writes(files.words);
}

}  // namespace tvx::spelling
