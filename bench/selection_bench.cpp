#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/core/commands/selection_operations.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/editor.h"

/// Selecting by characters: the walk is linear in the place, in many paragraphs as in a single one.
namespace {

using namespace tvx;

void select_a_word_at(benchmark::State& state, const std::u16string& html) {
  const dom::Ref<dom::Document> document = dom::parse_document(html);
  editing::Editor editor(*document);
  editor.set_design_mode(true);
  const auto place = static_cast<std::int32_t>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(core::select_characters(editor, place, 5));
  state.SetComplexityN(state.range(0));
}

void in_an_article(benchmark::State& state) {
  select_a_word_at(state, bench::article(static_cast<std::size_t>(state.range(0)) * 2));
}
void in_one_paragraph(benchmark::State& state) {
  std::u16string html = u"<p>";
  while (html.size() < static_cast<std::size_t>(state.range(0)) + 100) html += u"words after words ";
  select_a_word_at(state, html);
}

void places(benchmark::internal::Benchmark* bench) {
  bench->RangeMultiplier(10)->Range(1'000, 1'000'000)->Unit(benchmark::kMillisecond)->Complexity();
}
BENCHMARK(in_an_article)->Apply(places);
BENCHMARK(in_one_paragraph)->Apply(places);

}  // namespace
