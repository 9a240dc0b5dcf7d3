#pragma once

#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"

namespace tvx::bench {

/// An article that is being edited, in the document alone: no view, no observers.
struct Article {
  explicit Article(std::size_t units) : document(dom::parse_document(article(units))), editor(*document) {
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
  void caret_at_the_start() { editor.selection().collapse({document->body(), 0}); }

  /// Takes everything back, outside the clock.
  void start_again(benchmark::State& state) {
    state.PauseTiming();
    while (document->journal().undo()) {
    }
    document->journal().clear();
    state.ResumeTiming();
  }

  dom::Ref<dom::Document> document;
  editing::Editor editor;
};

/// 10 KB to 10 MB.
inline void sizes(benchmark::internal::Benchmark* bench) {
  for (const int size : {10'000, 100'000, 1'000'000, 10'000'000}) bench->Arg(size);
  bench->Unit(benchmark::kMillisecond);
}

}  // namespace tvx::bench
