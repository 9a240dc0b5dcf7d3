#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/core/htmled.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/virtual_time_loop.h"

namespace {

/// A control without a screen that shows an article.
struct Stage {
  explicit Stage(std::size_t units) {
    control->UserControl_Initialize();
    control->UserControl_InitProperties();
    control->UserControl_Show();
    control->set_DocumentHTML(tvx::bench::article(units));
  }
  ~Stage() { control->UserControl_Terminate(); }

  tvx::headless::VirtualTimeLoop loop;
  tvx::headless::Container container{true};
  tvx::headless::Dialogs dialogs;
  std::shared_ptr<tvx::core::HTMLed> control =
      tvx::core::HTMLed::create({.loop = loop, .container = container, .dialogs = dialogs});
};

void to_code_and_back(benchmark::State& state) {
  Stage stage(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto turn : state) {
    stage.control->show_Code();
    stage.control->show_Code();
  }
}

void back_with_an_edit(benchmark::State& state) {
  Stage stage(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto turn : state) {
    state.PauseTiming();
    stage.control->show_Code();
    stage.control->txtCode().TextBox1().set_SelText(u"x");
    state.ResumeTiming();
    stage.control->show_Code();
  }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(10'000, 10'000'000)->Unit(benchmark::kMillisecond)->MinTime(0.2);
}

BENCHMARK(to_code_and_back)->Apply(sizes);
// The journal keeps what each edit replaced, so few rounds of it.
BENCHMARK(back_with_an_edit)
    ->RangeMultiplier(10)
    ->Range(10'000, 10'000'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

}  // namespace
