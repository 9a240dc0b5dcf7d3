#include <ctime>

#include <cstdio>
#include <cstdlib>

#include "support/growth_shapes.h"
#include "tvx/base/strings.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/editor.h"

/// Every command on everything, in every shape, at n and at 10 n: processor time, steps, and how they grow.
///   growth_bench [N [WORD]]   n (100 if not given), and which shapes and commands: those with the word in
///   their names.
namespace {

using namespace tvx;

struct Cost {
  double milliseconds = 0;
  std::uint64_t steps = 0;
};

double processor_milliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

Cost cost_of(const growth::Shape& shape, const growth::Command& command, std::size_t count) {
  const dom::Ref<dom::Document> document = dom::parse_document(shape.of(count));
  editing::Editor editor(*document);
  editor.set_design_mode(true);
  growth::prepare(editor, command);
  const double start = processor_milliseconds();
  const std::uint64_t steps = work_done;
  growth::act(editor, command);
  return {processor_milliseconds() - start, work_done - steps};
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t count = argc > 1 ? std::size_t(std::atoll(argv[1])) : 100;
  const std::string_view word = argc > 2 ? argv[2] : "";
  int faster = 0, asked = 0;
  double worst_ratio = 0;
  std::string worst;
  for (const growth::Shape& shape : growth::shapes) {
    for (const growth::Command& command : growth::commands) {
      const std::string name = to_utf8(shape.name) + ", " + growth::name_of(command);
      if (name.find(word) == name.npos) continue;
      const std::size_t most = growth::limited(shape, count * 10);
      const Cost small = cost_of(shape, command, most / 10), large = cost_of(shape, command, most);
      const double time_ratio = large.milliseconds / std::max(small.milliseconds, 0.02);
      const double step_ratio = double(large.steps) / double(std::max<std::uint64_t>(small.steps, count));
      const double allowed = growth::most_growth;
      const bool grows = step_ratio > allowed || (time_ratio > allowed && large.milliseconds > 20);
      ++asked;
      faster += grows;
      if (step_ratio > worst_ratio) worst_ratio = step_ratio, worst = name;
      std::printf("%s %-58s %8.2f ms %9.2f ms x%-6.1f steps %9llu x%.1f\n", grows ? "!" : " ", name.c_str(),
                  small.milliseconds, large.milliseconds, time_ratio,
                  static_cast<unsigned long long>(large.steps), step_ratio);
    }
  }
  std::printf("%d of %d grow faster than they may; of what stands side by side the most: %s, x%.1f\n", faster,
              asked, worst.c_str(), worst_ratio);
}
