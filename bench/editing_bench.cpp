#include <benchmark/benchmark.h>

#include "editing_article.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/editing/walk/caret.h"

/// Commands on everything, typing, and moves of the caret, in articles of 10 KB to 10 MB and among many
/// images.
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

/// From the first of many images in one parent to after the last, one by one.
void walk_over_images(benchmark::State& state) {
  std::u16string html = u"<p>";
  for (int i = 0; i < state.range(0); ++i) html += u"<img>";
  const dom::Ref<dom::Document> document = dom::parse_document(html);
  editing::Editor editor(*document);
  editor.set_design_mode(true);
  dom::Node* paragraph = document->body()->first_child();
  for (auto _ : state) {
    editor.selection().collapse({paragraph, 0});
    while (editing::move_caret(editor, editing::Direction::Forward, editing::Granularity::Character,
                               editing::Extend::No)) {
    }
  }
  if (editor.selection().focus().offset != paragraph->child_count()) state.SkipWithError("not at the end");
  state.SetComplexityN(state.range(0));
}
BENCHMARK(walk_over_images)
    ->RangeMultiplier(10)
    ->Range(200, 20'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace
