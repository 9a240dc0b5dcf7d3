#include "tvx/qt/web/watchdog.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tvx::qt {
namespace {

constexpr ProcessSample asleep{false, 100};

/// After how many looks a process is ended that uses so much processor time between them; 0: never in a
/// hundred.
int checks_until_ended(std::uint64_t used, bool runs = false) {
  Watchdog watchdog;
  ProcessSample sample{runs, 0};
  for (int looks = 1; looks <= 100; ++looks, sample.processor_time += used)
    if (watchdog.check(sample)) return looks;
  return 0;
}

TEST(Watchdog, EndsAProcessThatDoesNothingSoonerThanOneThatWorks) {
  EXPECT_EQ(checks_until_ended(0), Watchdog::longest_idle + 1);
  EXPECT_EQ(checks_until_ended(300), Watchdog::longest_work + 1);
  EXPECT_EQ(checks_until_ended(1), Watchdog::longest_work + 1) << "a busy machine leaves little time to each";
  EXPECT_EQ(checks_until_ended(0, true), Watchdog::longest_work + 1) << "and sometimes none";
}

TEST(Watchdog, EndsAProcessThatFallsAsleepAtItsWork) {
  Watchdog watchdog;
  for (std::uint64_t time = 0; time < 8; ++time) EXPECT_FALSE(watchdog.check(ProcessSample{false, time}));
  int more = 1;
  while (!watchdog.check(ProcessSample{false, 7})) ++more;
  EXPECT_EQ(more, Watchdog::longest_idle);
}

TEST(Watchdog, OneThatIsGoneOrNotToBeSeenDoesNothing) {
  Watchdog watchdog;
  int looks = 1;
  while (!watchdog.check(std::nullopt)) ++looks;
  EXPECT_EQ(looks, Watchdog::longest_idle + 1);
}

TEST(Watchdog, AnAnswerBeginsItAllAnew) {
  Watchdog watchdog;
  for (int round = 0; round < 20; ++round) {
    for (int look = 0; look < Watchdog::longest_idle; ++look) EXPECT_FALSE(watchdog.check(asleep));
    EXPECT_TRUE(watchdog.waits());
    watchdog.heard();
    EXPECT_FALSE(watchdog.waits());
  }
}

/// A process that sleeps, or computes without end.
class OtherProcess {
 public:
  explicit OtherProcess(bool computes) : id_(::fork()) {
    if (id_ != 0) return;
    ::alarm(60);
    for (;;)
      if (!computes) ::pause();
  }
  ~OtherProcess() {
    ::kill(id_, SIGKILL);
    ::waitpid(id_, nullptr, 0);
  }
  void send(int signal) const { ::kill(id_, signal); }
  std::optional<ProcessSample> sample() const { return sample_process(id_); }
  bool works_within(int milliseconds) const {
    const auto before = sample();
    ::usleep(static_cast<useconds_t>(milliseconds) * 1000);
    const auto after = sample();
    return before && after && (after->runs || after->processor_time > before->processor_time);
  }

 private:
  pid_t id_;
};

TEST(SampleProcess, TellsWorkFromSleep) {
  const OtherProcess worker(true), sleeper(false);
  ::usleep(100'000);
  EXPECT_TRUE(worker.works_within(200));
  EXPECT_FALSE(sleeper.works_within(200));
  worker.send(SIGSTOP);
  ::usleep(100'000);
  EXPECT_FALSE(worker.works_within(200)) << "one that is stopped doesn't work";
}

TEST(SampleProcess, KnowsNothingOfAProcessThatIsGone) {
  EXPECT_FALSE(sample_process(0));
  EXPECT_FALSE(sample_process(-1));
  EXPECT_FALSE(sample_process(0x7FFFFFF0));
}

}  // namespace
}  // namespace tvx::qt
