#include "tvx/qt/web/watchdog.h"

#include <fstream>
#include <sstream>
#include <string>

namespace tvx::qt {

// proc(5), "stat": the name stands in brackets and may hold any letter; after it the state, ten numbers, and
// the time used by the program and by the system for it.
std::optional<ProcessSample> sample_process(std::int64_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  if (process <= 0 || !std::getline(file, line)) return std::nullopt;
  const std::size_t name_end = line.rfind(')');
  if (name_end == std::string::npos) return std::nullopt;
  std::istringstream rest(line.substr(name_end + 1));
  char state = 0;
  std::string skipped;
  rest >> state;
  for (int i = 0; i < 10; ++i) rest >> skipped;
  std::uint64_t program = 0, system = 0;
  if (!(rest >> program >> system)) return std::nullopt;
  return ProcessSample{state == 'R' || state == 'D', program + system};
}

bool Watchdog::check(const std::optional<ProcessSample>& sample) {
  if (++checks_ == 1) {
    last_ = sample;
    return false;
  }
  const bool works = sample && (sample->runs || (last_ && sample->processor_time > last_->processor_time));
  idle_ = works ? 0 : idle_ + 1;
  last_ = sample;
  return idle_ >= longest_idle || checks_ > longest_work;
}

}  // namespace tvx::qt
