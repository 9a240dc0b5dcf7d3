#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/base/text_pattern.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/search/read_text.h"
#include "tvx/editing/search/replace_read.h"

/// What finding costs in an article of 1 MB: its text as a reader sees it, all hits in that, both together,
/// and replacing all of them.
namespace {

using namespace tvx;

constexpr std::size_t megabyte = 1'000'000;

dom::Document& document() {
  static const dom::Ref<dom::Document> made = dom::parse_document(bench::article(megabyte));
  return *made;
}

const editing::ReadText& read_text() {
  static const editing::ReadText text(*document().body());
  return text;
}

void read(benchmark::State& state) {
  for ([[maybe_unused]] auto turn : state)
    benchmark::DoNotOptimize(editing::ReadText(*document().body()).text().size());
}
BENCHMARK(read)->Unit(benchmark::kMillisecond);

void find(benchmark::State& state, std::u16string_view sought, TextPattern::Options options) {
  std::size_t hits = 0;
  for ([[maybe_unused]] auto turn : state)
    hits = TextPattern(sought, options).hits_in(read_text().text()).size();
  state.counters["hits"] = static_cast<double>(hits);
}
constexpr TextPattern::Options plain{}, words{.whole_words = true}, expression{.regular_expression = true};
BENCHMARK_CAPTURE(find, letter, u"e", plain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, word, u"the", plain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, whole_word, u"the", words)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, nothing, u"not there at all", plain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, expression, u"\\bt(\\w+)e\\b", expression)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, every_word, u"\\w+", expression)->Unit(benchmark::kMillisecond);

void find_all(benchmark::State& state) {
  for ([[maybe_unused]] auto turn : state) {
    const editing::ReadText text(*document().body());
    benchmark::DoNotOptimize(TextPattern(u"the", plain).hits_in(text.text()).size());
  }
}
BENCHMARK(find_all)->Unit(benchmark::kMillisecond);

void replace_all(benchmark::State& state) {
  std::size_t replaced = 0;
  for ([[maybe_unused]] auto turn : state) {
    state.PauseTiming();
    const dom::Ref<dom::Document> made = dom::parse_document(bench::article(megabyte));
    state.ResumeTiming();
    const editing::ReadText text(*made->body());
    const auto hits = TextPattern(u"the", plain).hits_in(text.text());
    const dom::UndoStep step(made->journal(), u"Replace");
    for (std::size_t i = hits.size(); i-- > 0;)
      editing::replace_read(text.pieces_of(hits[i].from, hits[i].to), u"that");
    replaced = hits.size();
  }
  state.counters["replaced"] = static_cast<double>(replaced);
}
BENCHMARK(replace_all)->Unit(benchmark::kMillisecond);

}  // namespace
