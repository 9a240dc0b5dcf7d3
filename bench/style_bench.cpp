#include <benchmark/benchmark.h>

#include "documents.h"
#include "tvx/base/strings.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/style_engine.h"

namespace {

using namespace tvx::dom;

std::u16string sheet_of(int rules) {
  std::u16string text = u"p { color: #222 } td { font-size: 90% } ";
  for (int i = 0; i < rules; ++i) {
    const std::u16string number = tvx::to_text(i);
    text += u".c" + number + u" { color: red } div p .d" + number + u" b { font-weight: bold } ";
  }
  return text;
}

Ref<Document> article(benchmark::State& state) {
  return parse_document(tvx::bench::article(static_cast<std::size_t>(state.range(0))));
}

// Nothing is known: each element is asked for once.
void computed_of_all(benchmark::State& state) {
  const Ref<Document> document = article(state);
  style::StyleEngine& engine = style::style_of(*document);
  for ([[maybe_unused]] auto turn : state) {
    engine.set_extra_sheets({sheet_of(100)});
    for (Element* element : document->all()) benchmark::DoNotOptimize(engine.display(*element));
  }
  state.counters["elements"] = static_cast<double>(document->all().size());
}

// What a command does: change something, ask again.
void computed_after_edits(benchmark::State& state) {
  const Ref<Document> document = article(state);
  style::StyleEngine& engine = style::style_of(*document);
  engine.set_extra_sheets({sheet_of(100)});
  const std::vector<Element*> all = document->all();
  for (Element* element : all) engine.display(*element);
  std::size_t at = all.size() / 2;
  for ([[maybe_unused]] auto turn : state) {
    Element& element = *all[at];
    set_attribute(element, names::align,
                  element.attribute_or_empty(names::align) == u"left" ? u"right" : u"left");
    benchmark::DoNotOptimize(engine.display(element));
    at = at + 1 < all.size() ? at + 1 : all.size() / 2;
  }
}

void text_of_body(benchmark::State& state) {
  const Ref<Document> document = article(state);
  inner_text(*document->body());
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(inner_text(*document->body()));
}

void look_up_in_collection(benchmark::State& state) {
  const Ref<Document> document = article(state);
  for ([[maybe_unused]] auto turn : state) {
    benchmark::DoNotOptimize(collection_of(*document, CollectionKind::Tag, u"p")->item(10));
  }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(100'000, 10'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(computed_of_all)->Apply(sizes);
BENCHMARK(computed_after_edits)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(text_of_body)->Apply(sizes);
BENCHMARK(look_up_in_collection)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

}  // namespace
