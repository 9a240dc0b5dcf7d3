#include <ctime>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "support/control_growth.h"

/// What a host and a user ask of the whole control, at n, 10 n and 100 n: processor time, and how it grows.
///   control_growth_bench [WORD]   those with the word in their names
/// Ends with 1 if anything takes more than thirty times as long for ten times as much, or changes nothing
/// where it should. What no longer fits the caches takes up to twenty times as long; what grows with the
/// square, a hundred.
namespace {

using namespace tvx;
using growth::Case;
using growth::control_cases;
using growth::Does;
using growth::Stage;

constexpr double most_growth = 30;

double processor_milliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

struct Cost {
  double milliseconds = 0;
  bool did_it = false;
};

Cost cost_of(const Case& each, std::size_t count) {
  Stage stage;
  each.before(stage, count);
  const std::uint64_t version = stage.editor().document().version();
  const double start = processor_milliseconds();
  each.act(stage, count);
  return {processor_milliseconds() - start,
          each.does != Does::Edit || stage.editor().document().version() != version};
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view word = argc > 1 ? argv[1] : "";
  int faster = 0, idle = 0;
  for (const Case& each : control_cases) {
    if (std::string_view(each.name).find(word) == std::string_view::npos) continue;
    Cost last;
    bool did_it = true;
    std::printf("  %-42s %6zu", each.name, each.count);
    for (const std::size_t times : {1, 10, 100}) {
      const Cost cost = cost_of(each, each.count * times);
      const double ratio = cost.milliseconds / std::max(last.milliseconds, 0.2);
      did_it = did_it && cost.did_it;
      std::printf(" %9.2f ms", cost.milliseconds);
      if (times > 1) {
        std::printf(" x%-5.1f%s", ratio, ratio > most_growth ? "!" : " ");
        faster += ratio > most_growth;
      }
      last = cost;
    }
    std::printf("%s\n", did_it ? "" : " changes nothing");
    idle += !did_it;
  }
  std::printf("%d grow faster than %.0ffold for ten times as much\n", faster, most_growth);
  return faster > 0 || idle > 0;
}
