#include "editing_article.h"
#include "tvx/editing/gestures/typing.h"

/// What is put into articles of 10 KB to 10 MB: lists, fragments, tables, ten thousand characters; and
/// undone.
namespace {

using namespace tvx;
using bench::Article;
using bench::sizes;

void list_on(benchmark::State& state) {
  Article article(state.range(0));
  for (auto _ : state) {
    article.editor.execute(u"insertUnorderedList");
    article.start_again(state);
  }
}
BENCHMARK(list_on)->Apply(sizes);

/// The command once more takes it all out of its lists.
void list_off(benchmark::State& state) {
  Article article(state.range(0));
  article.editor.execute(u"insertUnorderedList");
  article.document->journal().clear();
  if (!article.editor.state(u"insertUnorderedList")) return state.SkipWithError("not all is a list");
  for (auto _ : state) {
    article.editor.execute(u"insertUnorderedList");
    article.start_again(state);
  }
}
BENCHMARK(list_off)->Apply(sizes);

/// A fragment as large as the article itself, at its middle.
void paste_fragment(benchmark::State& state) {
  Article article(state.range(0));
  const std::u16string fragment = bench::article(state.range(0));
  for (auto _ : state) {
    article.caret_in_the_middle();
    article.editor.execute(u"insertHTML", fragment);
    article.start_again(state);
  }
}
BENCHMARK(paste_fragment)->Apply(sizes);

void insert_table(benchmark::State& state) {
  Article article(state.range(0));
  std::u16string table = u"<TABLE><TBODY>";
  for (int row = 0; row < 100; ++row) {
    table += u"<TR>";
    for (int column = 0; column < 20; ++column) table += u"<TD>&nbsp;</TD>";
    table += u"</TR>";
  }
  table += u"</TBODY></TABLE>";
  for (auto _ : state) {
    article.caret_at_the_start();
    article.editor.execute(u"insertHTML", table);
    article.start_again(state);
  }
}
BENCHMARK(insert_table)->Apply(sizes);

void type_ten_thousand(Article& article) {
  article.caret_in_the_middle();
  for (int i = 0; i < 10'000; ++i) editing::type_text(article.editor, i % 6 == 5 ? u" " : u"a");
}

void ten_thousand_characters(benchmark::State& state) {
  Article article(state.range(0));
  for (auto _ : state) {
    type_ten_thousand(article);
    article.start_again(state);
  }
}
BENCHMARK(ten_thousand_characters)->Apply(sizes);

void undo_ten_thousand_characters(benchmark::State& state) {
  Article article(state.range(0));
  type_ten_thousand(article);
  for (auto _ : state) {
    article.document->journal().undo();
    state.PauseTiming();
    article.document->journal().redo();
    state.ResumeTiming();
  }
}
BENCHMARK(undo_ten_thousand_characters)->Apply(sizes);

void redo_ten_thousand_characters(benchmark::State& state) {
  Article article(state.range(0));
  type_ten_thousand(article);
  article.document->journal().undo();
  for (auto _ : state) {
    article.document->journal().redo();
    state.PauseTiming();
    article.document->journal().undo();
    state.ResumeTiming();
  }
}
BENCHMARK(redo_ten_thousand_characters)->Apply(sizes);

}  // namespace
