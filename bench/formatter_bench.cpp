#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/source/formatter.h"
#include "tvx/source/preparation.h"

namespace {

using namespace tvx::source;

void count_bytes(benchmark::State& state, std::size_t units) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * units * sizeof(char16_t)));
}

void format(benchmark::State& state) {
  const std::u16string html = tvx::bench::article(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(FormatHTMLSource(html, 2, false, false));
  count_bytes(state, html.size());
}

void prepare(benchmark::State& state) {
  const std::u16string html = tvx::bench::article(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(prepare_for_formatting(html).text);
  count_bytes(state, html.size());
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(10'000, 10'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(format)->Apply(sizes);
BENCHMARK(prepare)->Apply(sizes);

}  // namespace
