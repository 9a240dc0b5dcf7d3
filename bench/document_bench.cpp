#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "documents.h"
#include "tvx/base/small_objects.h"
#include "tvx/base/strings.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"

/// One document, an article of 1 MB or `--document FILE` (UTF-8), through what a control asks of it; and
/// documents past all measure.
namespace {

using namespace tvx;
using dom::Document;
using dom::Element;
using dom::Ref;

std::string bytes_of_document;

Ref<Document> the_document() { return dom::parse_document(from_utf8(bytes_of_document)); }

void count_bytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes));
}

// Bytes are decoded and the tree is built; it is destroyed while the clock stands.
void parse_bytes(benchmark::State& state) {
  Ref<Document> document;
  for ([[maybe_unused]] auto turn : state) {
    document = the_document();
    state.PauseTiming();
    document = nullptr;
    state.ResumeTiming();
  }
  count_bytes(state, bytes_of_document.size());
}

void serialise(benchmark::State& state) {
  const Ref<Document> document = the_document();
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(dom::serialise_children(*document));
  count_bytes(state, bytes_of_document.size());
}

std::size_t heap_in_use() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd + SmallObjects::held();
}

// What the tree takes, and what that is above the text that it was made of (as bytes of the file).
void memory(benchmark::State& state) {
  std::size_t taken = 0, elements = 0;
  for ([[maybe_unused]] auto turn : state) {
    const std::size_t before = heap_in_use();
    const Ref<Document> document = the_document();
    taken = heap_in_use() - before;
    elements = document->all().size();
  }
  const double megabyte = 1024 * 1024;
  state.counters["MB"] = static_cast<double>(taken) / megabyte;
  state.counters["MB_above_text"] =
      (static_cast<double>(taken) - static_cast<double>(bytes_of_document.size())) / megabyte;
  state.counters["elements"] = static_cast<double>(elements);
}

std::vector<dom::Text*> texts_of(Document& document) {
  std::vector<dom::Text*> texts;
  for (dom::Node* node = document.body(); node; node = dom::next_in_order(*node, document.body()))
    if (auto* text = dom::as<dom::Text>(node); text && text->parent() != document.body())
      texts.push_back(text);
  return texts;
}

// What the element path asks after each move: every element up to the body with its name and its place, and
// the border of the innermost.
std::size_t branch_of(Document& document, const dom::Node& at) {
  std::size_t sum = 0;
  const Element* innermost = at.parent_element();
  for (const Element* element = innermost; element && !element->is(dom::Tag::Body);
       element = element->parent_element()) {
    sum += element->display_name().size() + document.source_index(*element);
    benchmark::DoNotOptimize(document.all()[document.source_index(*element)]);
  }
  for (const char16_t* name : {u"border-style", u"border-width", u"border-color"})
    sum += dom::style::inline_value(*innermost, name).size();
  return sum;
}

void selection_move(benchmark::State& state) {
  const Ref<Document> document = the_document();
  editing::Editor editor(*document);
  const std::vector<dom::Text*> texts = texts_of(*document);
  std::size_t at = 0;
  for ([[maybe_unused]] auto turn : state) {
    dom::Text& text = *texts[at];
    at = (at + 97) % texts.size();
    editor.selection().collapse({&text, text.length() / 2});
    benchmark::DoNotOptimize(branch_of(*document, text));
  }
}

// The same after an edit of the structure: places are counted anew.
void selection_move_after_edit(benchmark::State& state) {
  const Ref<Document> document = the_document();
  editing::Editor editor(*document);
  const std::vector<dom::Text*> texts = texts_of(*document);
  std::size_t at = 0;
  for ([[maybe_unused]] auto turn : state) {
    dom::Text& text = *texts[at];
    at = (at + 97) % texts.size();
    const Ref<Element> made = document->create_element(dom::Tag::Br);
    dom::insert(*text.parent(), made, &text);
    dom::remove(*made);
    editor.selection().collapse({&text, 0});
    benchmark::DoNotOptimize(branch_of(*document, text));
  }
}

// Lists that are asked for again and again.
void live_collections(benchmark::State& state) {
  const Ref<Document> document = the_document();
  for ([[maybe_unused]] auto turn : state) {
    for (const char16_t* tag : {u"base", u"table", u"p"})
      benchmark::DoNotOptimize(dom::collection_of(*document, dom::CollectionKind::Tag, tag)->item(0));
    benchmark::DoNotOptimize(dom::collection_of(*document, dom::CollectionKind::Images)->length());
  }
}

void inner_text_of_body(benchmark::State& state) {
  const Ref<Document> document = the_document();
  for ([[maybe_unused]] auto turn : state) benchmark::DoNotOptimize(dom::inner_text(*document->body()));
}

// --- documents past all measure: a tenth of it and all of it, to see that cost grows as the input does ---

void read_and_write(benchmark::State& state, const std::u16string& html) {
  for ([[maybe_unused]] auto turn : state) {
    const Ref<Document> document = dom::parse_document(html);
    benchmark::DoNotOptimize(document->all().size());
    benchmark::DoNotOptimize(dom::serialise_children(*document));
  }
}

std::u16string repeated(std::u16string_view text, std::int64_t count) {
  std::u16string result;
  for (std::int64_t i = 0; i < count; ++i) result += text;
  return result;
}

void deep_nesting(benchmark::State& state) { read_and_write(state, repeated(u"<div>", state.range(0))); }
void siblings(benchmark::State& state) { read_and_write(state, repeated(u"<br>", state.range(0))); }
void one_text(benchmark::State& state) {
  read_and_write(state, std::u16string(static_cast<std::size_t>(state.range(0)), u'x'));
}
void attributes(benchmark::State& state) {
  std::u16string html = u"<p";
  for (std::int64_t i = 0; i < state.range(0); ++i) html += u" a" + to_text(i) + u"=v";
  read_and_write(state, html + u">");
}

// First: what documents before it have left at hand would not be counted.
BENCHMARK(memory)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(parse_bytes)->Unit(benchmark::kMillisecond);
BENCHMARK(serialise)->Unit(benchmark::kMillisecond);
BENCHMARK(selection_move)->Unit(benchmark::kMicrosecond);
BENCHMARK(selection_move_after_edit)->Unit(benchmark::kMicrosecond);
BENCHMARK(live_collections)->Unit(benchmark::kMicrosecond);
BENCHMARK(inner_text_of_body)->Unit(benchmark::kMillisecond);
BENCHMARK(deep_nesting)->Arg(20'000)->Arg(200'000)->Unit(benchmark::kMillisecond);
BENCHMARK(siblings)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(one_text)->Arg(2'500'000)->Arg(25'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(attributes)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// Takes `--document FILE` out of the arguments; the rest is the library's. False if it can't be read.
bool read_document(int& count, char** arguments) {
  for (int i = 1; i + 1 < count; ++i) {
    if (std::strcmp(arguments[i], "--document") != 0) continue;
    std::ifstream file(arguments[i + 1], std::ios::binary);
    if (!file) return false;
    bytes_of_document.assign(std::istreambuf_iterator<char>(file), {});
    std::copy(arguments + i + 2, arguments + count, arguments + i);
    count -= 2;
    return true;
  }
  bytes_of_document = to_utf8(bench::article(1'000'000));
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  if (!read_document(count, arguments)) {
    std::cerr << "The document can't be read\n";
    return 1;
  }
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  benchmark::RunSpecifiedBenchmarks();
}
