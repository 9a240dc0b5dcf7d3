#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/browser/input/paste.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/headless/clipboard.h"

/// Copying and pasting articles of 10 KB to 5 MB, by a clipboard in memory: the whole way from the selection
/// to the bytes of three formats, and from those to a caret after the new content.
namespace {

using namespace tvx;

struct Page {
  explicit Page(std::u16string_view html)
      : document(browser::HTMLDocument::create(dom::parse_document(html), u"")) {
    document->set_designMode(u"On");
    document->set_clipboard(&clipboard);
  }
  bool run(std::u16string_view command) { return document->execCommand(command, false, u""); }

  headless::Clipboard clipboard;
  std::shared_ptr<browser::HTMLDocument> document;
};

void sizes(benchmark::internal::Benchmark* bench) {
  for (const int size : {10'000, 100'000, 1'000'000, 5'000'000}) bench->Arg(size);
  bench->Unit(benchmark::kMillisecond);
}

void copy_all(benchmark::State& state) {
  Page page(bench::article(state.range(0)));
  page.run(u"selectAll");
  for (auto _ : state) benchmark::DoNotOptimize(page.run(u"Copy"));
}
BENCHMARK(copy_all)->Apply(sizes);

void paste_in_line(benchmark::State& state) {
  Page page(bench::article(state.range(0)));
  page.run(u"selectAll");
  page.run(u"Copy");
  Page target(u"<p>before and after</p>");
  target.clipboard.publish(page.clipboard.items());
  dom::Node* text = target.document->body()->first_child()->first_child();
  for (auto _ : state) {
    target.document->editor().selection().collapse({text, 7});
    target.run(u"Paste");
    state.PauseTiming();
    target.document->tree().journal().undo();
    state.ResumeTiming();
  }
}
BENCHMARK(paste_in_line)->Apply(sizes);

void paste_over_itself(benchmark::State& state) {
  Page page(bench::article(state.range(0)));
  page.run(u"selectAll");
  page.run(u"Copy");
  for (auto _ : state) {
    page.run(u"Paste");
    state.PauseTiming();
    page.document->tree().journal().undo();
    state.ResumeTiming();
  }
}
BENCHMARK(paste_over_itself)->Apply(sizes);

void paste_text(benchmark::State& state) {
  std::u16string lines;
  while (lines.size() < static_cast<std::size_t>(state.range(0)))
    lines += u"a line of plain text, no longer than most\n";
  Page target(u"<p>before and after</p>");
  target.clipboard.SetText(lines);
  dom::Node* text = target.document->body()->first_child()->first_child();
  for (auto _ : state) {
    target.document->editor().selection().collapse({text, 7});
    target.run(u"Paste");
    state.PauseTiming();
    target.document->tree().journal().undo();
    state.ResumeTiming();
  }
}
BENCHMARK(paste_text)->Apply(sizes);

}  // namespace
