#include <benchmark/benchmark.h>

#include "editing/typing.h"
#include "editing_article.h"

/// Commands on everything, and typing, in articles of 10 KB to 10 MB.
namespace {

using namespace tvx;
using bench::Article;
using bench::sizes;

/// Bold on everything, and off again by undo outside the clock.
void bold_on(benchmark::State& state) {
  Article article(state.range(0));
  for (auto _ : state) {
    article.editor.execute(u"bold");
    state.PauseTiming();
    article.document->journal().undo();
    article.document->journal().clear();
    state.ResumeTiming();
  }
}
BENCHMARK(bold_on)->Apply(sizes);

void bold_off(benchmark::State& state) {
  Article article(state.range(0));
  article.editor.execute(u"bold");
  for (auto _ : state) {
    article.editor.execute(u"bold");
    state.PauseTiming();
    article.document->journal().undo();
    state.ResumeTiming();
  }
}
BENCHMARK(bold_off)->Apply(sizes);

void undo_bold(benchmark::State& state) {
  Article article(state.range(0));
  article.editor.execute(u"bold");
  for (auto _ : state) {
    article.document->journal().undo();
    state.PauseTiming();
    article.document->journal().redo();
    state.ResumeTiming();
  }
}
BENCHMARK(undo_bold)->Apply(sizes);

void queries_of_all(benchmark::State& state) {
  Article article(state.range(0));
  article.editor.execute(u"bold");
  for (auto _ : state) benchmark::DoNotOptimize(article.editor.state(u"bold"));
}
BENCHMARK(queries_of_all)->Apply(sizes);

void remove_format(benchmark::State& state) {
  Article article(state.range(0));
  for (auto _ : state) {
    article.editor.execute(u"removeFormat");
    state.PauseTiming();
    article.document->journal().undo();
    article.document->journal().clear();
    state.ResumeTiming();
  }
}
BENCHMARK(remove_format)->Apply(sizes);

void type_in_the_middle(benchmark::State& state) {
  Article article(state.range(0));
  article.caret_in_the_middle();
  for (auto _ : state) editing::type_text(article.editor, u"a");
}
BENCHMARK(type_in_the_middle)->Apply(sizes)->Unit(benchmark::kMicrosecond);

void undo_typing(benchmark::State& state) {
  Article article(state.range(0));
  article.caret_in_the_middle();
  for (auto _ : state) {
    state.PauseTiming();
    article.document->journal().end_typing_run();
    editing::type_text(article.editor, u"a");
    state.ResumeTiming();
    article.document->journal().undo();
  }
}
BENCHMARK(undo_typing)->Apply(sizes)->Unit(benchmark::kMicrosecond);

}  // namespace
