#include <benchmark/benchmark.h>

#include "documents.h"
#include "dom/journal.h"
#include "dom/parse.h"
#include "dom/tree.h"
#include "editing/editor.h"
#include "editing/typing.h"

/// Commands and typing in articles of 10 KB to 10 MB, in the document alone: no view, no observers.
namespace {

using namespace tvx;

struct Article {
  explicit Article(std::size_t units)
      : document(dom::parse_document(bench::article(units))), editor(*document) {
    editor.set_design_mode(true);
    select_all();
  }
  void select_all() { editor.execute(u"selectAll"); }

  /// A caret within the text nearest to the middle of the document.
  void caret_in_the_middle() {
    const auto& all = document->all();
    for (const dom::Node* node = all[all.size() / 2]; node; node = dom::next_in_order(*node)) {
      const auto* text = dom::as<dom::Text>(node);
      if (!text || text->length() < 10) continue;
      editor.selection().collapse({const_cast<dom::Node*>(node), text->length() / 2});
      return;
    }
  }

  dom::Ref<dom::Document> document;
  editing::Editor editor;
};

void sizes(benchmark::internal::Benchmark* bench) {
  for (const int size : {10'000, 100'000, 1'000'000, 10'000'000}) bench->Arg(size);
  bench->Unit(benchmark::kMillisecond);
}

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
