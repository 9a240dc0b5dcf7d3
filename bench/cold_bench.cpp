#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "documents.h"
#include "tvx/base/strings.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/range.h"
#include "tvx/dom/serialise.h"
#include "tvx/editing/editor.h"

/// What a document costs the first time in a process, when every page of memory is still the system's to
/// give: loaded, read back, and made bold. Each turn is a process of its own; medians of processor time and
/// of the pages that the system had to give.
///
///   cold_bench [TURNS [UNITS]]          21 turns of an article of 1,000,000 16-bit units
namespace {

using namespace tvx;

struct Cost {
  double milliseconds = 0;
  long pages = 0;
};

enum Step { load, read_back, bold, step_count };
constexpr std::array<const char*, step_count> step_names{"load", "read back", "bold on everything"};
using Turn = std::array<Cost, step_count>;

/// Processor time and pages since it was made.
class Meter {
 public:
  Cost spent() const {
    const Cost now = read();
    return {now.milliseconds - start_.milliseconds, now.pages - start_.pages};
  }

 private:
  static Cost read() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return {static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6,
            usage.ru_minflt};
  }

  Cost start_ = read();
};

Turn take_turn(const std::string& bytes) {
  Turn turn;
  const Meter loading;
  const dom::Ref<dom::Document> document = dom::parse_document(from_utf8(bytes));
  turn[load] = loading.spent();

  const Meter reading;
  const std::u16string text = dom::serialise_children(*document);
  turn[read_back] = reading.spent();
  if (text.size() < bytes.size() / 2) std::abort();

  editing::Editor editor(*document);
  editor.set_design_mode(true);
  editor.execute(u"selectAll");
  const Meter making;
  if (!editor.execute(u"bold")) std::abort();
  turn[bold] = making.spent();
  return turn;
}

/// Runs one turn in a process that has nothing of this one: started anew, with the document on its input.
std::optional<Turn> turn_in_fresh_process(const std::string& path) {
  std::array<int, 2> pipe_ends{};
  if (pipe(pipe_ends.data()) != 0) return std::nullopt;
  const pid_t child = fork();
  if (child == 0) {
    dup2(pipe_ends[1], STDOUT_FILENO);
    execl("/proc/self/exe", "cold_bench", "--turn", path.c_str(), nullptr);
    _exit(127);
  }
  close(pipe_ends[1]);
  Turn turn;
  const ssize_t taken = read(pipe_ends[0], turn.data(), sizeof turn);
  close(pipe_ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return taken == ssize_t(sizeof turn) && status == 0 ? std::optional(turn) : std::nullopt;
}

int run_turn(const char* path) {
  std::FILE* file = std::fopen(path, "rb");
  if (!file) return 1;
  std::fseek(file, 0, SEEK_END);
  std::string bytes(static_cast<std::size_t>(std::ftell(file)), '\0');
  std::rewind(file);
  const bool whole = std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size();
  std::fclose(file);
  if (!whole) return 1;
  const Turn turn = take_turn(bytes);
  return write(STDOUT_FILENO, turn.data(), sizeof turn) == ssize_t(sizeof turn) ? 0 : 1;
}

template <class Value>
Value middle(std::vector<Value> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void print(const std::vector<Turn>& turns) {
  std::printf("%-20s %10s %10s\n", "first time", "ms", "pages");
  for (int step = 0; step < step_count; ++step) {
    std::vector<double> times;
    std::vector<long> pages;
    for (const Turn& turn : turns) {
      times.push_back(turn[std::size_t(step)].milliseconds);
      pages.push_back(turn[std::size_t(step)].pages);
    }
    std::printf("%-20s %10.2f %10ld\n", step_names[std::size_t(step)], middle(times), middle(pages));
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::strcmp(arguments[1], "--turn") == 0) return run_turn(arguments[2]);
  const int wanted = count > 1 ? std::max(1, std::atoi(arguments[1])) : 21;
  const std::size_t units = count > 2 ? std::strtoul(arguments[2], nullptr, 10) : 1'000'000;
  std::string path = "/tmp/cold_bench.XXXXXX";
  const int file = mkstemp(path.data());
  const std::string bytes = to_utf8(bench::article(units));
  const bool written = file >= 0 && write(file, bytes.data(), bytes.size()) == ssize_t(bytes.size());
  std::vector<Turn> turns;
  for (int i = 0; written && i < wanted; ++i)
    if (const std::optional<Turn> turn = turn_in_fresh_process(path)) turns.push_back(*turn);
  unlink(path.c_str());
  if (turns.size() != std::size_t(wanted)) {
    std::fputs("A turn failed\n", stderr);
    return 1;
  }
  print(turns);
}
