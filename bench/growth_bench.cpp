#include <ctime>

#include <cstdio>
#include <cstdlib>

#include "support/growth_shapes.h"
#include "tvx/base/strings.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/editor.h"

/// Every command on everything, in every shape, at n, 10 n and 100 n: processor time, steps, and how they
/// grow each time.
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
  double worst_ratio = 0, longest = 0;
  std::string worst, slowest;
  for (const growth::Shape& shape : growth::shapes) {
    for (const growth::Command& command : growth::commands) {
      const std::string name = to_utf8(shape.name) + ", " + growth::name_of(command);
      if (name.find(word) == name.npos) continue;
      const std::size_t most = growth::limited(shape, count * 100);
      Cost last = cost_of(shape, command, most / 100);
      std::printf("%-58s %7.2f ms", name.c_str(), last.milliseconds);
      bool grows = false;
      for (const std::size_t size : {most / 10, most}) {
        const Cost cost = cost_of(shape, command, size);
        const double time_ratio = cost.milliseconds / std::max(last.milliseconds, 0.02);
        const double step_ratio = double(cost.steps) / double(std::max<std::uint64_t>(last.steps, most / 10));
        std::printf(" %9.2f ms x%-5.1f steps %10llu x%-5.1f", cost.milliseconds, time_ratio,
                    static_cast<unsigned long long>(cost.steps), step_ratio);
        grows = grows || step_ratio > growth::most_growth;
        if (step_ratio > worst_ratio) worst_ratio = step_ratio, worst = name;
        if (cost.milliseconds > longest) longest = cost.milliseconds, slowest = name;
        last = cost;
      }
      std::printf("%s\n", grows ? " !" : "");
      ++asked;
      faster += grows;
    }
  }
  std::printf("%d of %d take more than %.0f times the steps; the most: %s, x%.1f; the slowest: %s, %.0f ms\n",
              faster, asked, growth::most_growth, worst.c_str(), worst_ratio, slowest.c_str(), longest);
  return faster > 0;
}
