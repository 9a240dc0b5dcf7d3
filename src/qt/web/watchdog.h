#pragma once

#include <cstdint>
#include <optional>

namespace tvx::qt {

/// What a process was found doing.
struct ProcessSample {
  bool runs = false;                 // it computes or waits for a disk just now; not asleep, stopped or ended
  std::uint64_t processor_time = 0;  // all that it has used so far, in the system's ticks

  friend bool operator==(const ProcessSample&, const ProcessSample&) = default;
};

/// Nothing if there is no such process, or nobody may look at it.
std::optional<ProcessSample> sample_process(std::int64_t process);

/// Tells an engine's process that has died, though it is still there, from one that has much to do. It counts
/// its checks, not the time: a program that was busy itself has not listened meanwhile.
class Watchdog {
 public:
  /// So many checks without an answer end a process that does nothing.
  static constexpr int longest_idle = 5;
  /// So many end one that works: whoever edits doesn't wait for ever.
  static constexpr int longest_work = 15;

  /// The process has said something, or there is another one.
  void heard() { *this = {}; }
  /// Whether the process is to be ended. It was asked for an answer at the check before.
  bool check(const std::optional<ProcessSample>& sample);
  /// Whether an answer is still to come.
  bool waits() const { return checks_ > 1; }

 private:
  int checks_ = 0;
  int idle_ = 0;  // checks at which it had done nothing since the one before
  std::optional<ProcessSample> last_;
};

}  // namespace tvx::qt
