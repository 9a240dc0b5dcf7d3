#include <benchmark/benchmark.h>
#include <malloc.h>

#include "documents.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace {

using namespace tvx::dom;

void count_bytes(benchmark::State& state, std::size_t units) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * units * sizeof(char16_t)));
}

// The tree is kept until the clock stands: what is measured is the parser alone.
void parse(benchmark::State& state) {
  const std::u16string html = tvx::bench::article(static_cast<std::size_t>(state.range(0)));
  Ref<Document> document;
  for ([[maybe_unused]] auto turn : state) {
    document = parse_document(html);
    state.PauseTiming();
    document = nullptr;
    state.ResumeTiming();
  }
  count_bytes(state, html.size());
  const std::size_t before = mallinfo2().uordblks;
  document = parse_document(html);
  state.counters["heap_per_unit"] =
      static_cast<double>(mallinfo2().uordblks - before) / static_cast<double>(html.size());
}

void destroy(benchmark::State& state) {
  const std::u16string html = tvx::bench::article(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto turn : state) {
    state.PauseTiming();
    Ref<Document> document = parse_document(html);
    state.ResumeTiming();
    document = nullptr;
  }
  count_bytes(state, html.size());
}

void serialise(benchmark::State& state) {
  const std::u16string html = tvx::bench::article(static_cast<std::size_t>(state.range(0)));
  const Ref<Document> document = parse_document(html);
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(serialise_children(*document));
  count_bytes(state, html.size());
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(10'000, 10'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(parse)->Apply(sizes);
BENCHMARK(destroy)->Apply(sizes);
BENCHMARK(serialise)->Apply(sizes);

}  // namespace
