#include <benchmark/benchmark.h>
#include <malloc.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <hunspell.hxx>

#include "tvx/automation/inside.h"
#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/property_bag.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/platform/special_folders.h"
#include "tvx/spelling/dictionary_files.h"

/// What spelling costs: a run over words that are right beside Hunspell alone with the same words, waves in
/// documents of 10 KB to 10 MB, keys with and without them, suggestions, and what dictionaries weigh. All in
/// processor time, without a screen. Needs the dictionaries of American English, German and French.
namespace {

using namespace tvx;

double processor_seconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

double megabytes_in_use() {
  const struct mallinfo2 facts = mallinfo2();
  return double(facts.uordblks + facts.hblkhd) / 1e6;
}

spelling::DictionaryFiles dictionary_of(std::u16string_view language) {
  static const auto all = spelling::installed_dictionaries();
  const spelling::DictionaryFiles* found = spelling::dictionary_for(all, language);
  if (!found) throw std::runtime_error("A dictionary is missing: " + to_utf8(language));
  return *found;
}

/// Words that the dictionary of American English has, from all over it.
const std::vector<std::string>& right_words() {
  static const std::vector<std::string> words = [] {
    const spelling::DictionaryFiles files = dictionary_of(u"en-US");
    Hunspell hunspell(files.affixes.c_str(), files.words.c_str());
    std::vector<std::string> all;
    std::ifstream list(files.words);
    std::string line;
    for (int number = 0; std::getline(list, line); ++number) {
      const std::string word = line.substr(0, line.find_first_of("/\t\r"));
      const bool letters = word.size() > 2 && word.size() < 14 &&
                           std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
      if (number % 9 == 0 && letters && hunspell.spell(word)) all.push_back(word);
    }
    return all;
  }();
  return words;
}

/// The word of this number in every text here.
const std::string& word_of(std::size_t number) {
  const std::vector<std::string>& words = right_words();
  return words[number * 7919 % words.size()];
}

/// Paragraphs of forty words, some of them in bold; `wrong_each`: a wrong one for so many right ones.
std::u16string text_of(std::size_t words, std::size_t wrong_each = 0) {
  std::string html;
  for (std::size_t number = 0; number < words; ++number) {
    if (number % 40 == 0) html += number ? ".</P><P>" : "<P>";
    const bool bold = number % 17 == 5;
    html += bold ? " <B>" : " ";
    html += wrong_each && number % wrong_each == wrong_each - 1 ? "wrrongq" : word_of(number);
    if (bold) html += "</B>";
  }
  return from_utf8(html + ".</P>");
}

std::u16string text_of_size(std::size_t bytes) { return text_of(bytes * 100 / 869, 50); }

class Editor {
 public:
  Editor() {
    folder_ = std::filesystem::temp_directory_path() / ("tvx-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, from_utf8((folder_ / "").string()));
    core::Surroundings surroundings{.loop = loop, .container = container_, .dialogs = dialogs_};
    surroundings.geometry = &geometry_;
    surroundings.forms = &forms;
    control = core::HTMLed::create(surroundings);
    control->set_events(&host_);
    control->UserControl_Initialize();
    control->set_size(12000, 9000);
    control->UserControl_ReadProperties(headless::PropertyBag());
    control->UserControl_Show();
    control->set_SpellingLanguage(u"en-US");
  }
  ~Editor() {
    control.reset();
    loop.settle();
    std::filesystem::remove_all(folder_);
  }
  core::Parts& parts() { return core::Inside::parts(*control); }
  /// Until every word has been looked at; how long the longest turn of the loop took.
  double settle_marks() {
    double longest = 0;
    do {
      const double before = processor_seconds();
      loop.pump(0);
      longest = std::max(longest, processor_seconds() - before);
    } while (!parts().spelling_marks.settled());
    return longest;
  }

  headless::VirtualTimeLoop loop;
  headless::Forms forms;

 private:
  std::filesystem::path folder_;
  headless::Container container_{true};
  headless::Dialogs dialogs_;
  headless::FixedGeometry geometry_;
  core::HTMLedEvents host_;

 public:
  std::shared_ptr<core::HTMLed> control;
};

/// Hunspell's own time for these words, as it comes out of a loop with nothing else in it.
double hunspell_alone(std::size_t count) {
  const spelling::DictionaryFiles files = dictionary_of(u"en-US");
  static Hunspell hunspell(files.affixes.c_str(), files.words.c_str());
  std::vector<const std::string*> words;
  for (std::size_t number = 0; number < count; ++number) words.push_back(&word_of(number));
  const double before = processor_seconds();
  for (const std::string* word : words) benchmark::DoNotOptimize(hunspell.spell(*word));
  return processor_seconds() - before;
}

void run_over_right_words(benchmark::State& state) {
  const auto count = std::size_t(state.range(0));
  Editor editor;
  editor.control->set_DocumentHTML(text_of(count));
  editor.control->SpellCheck();  // the dictionary is loaded once
  double alone = 0, run = 0;
  for (auto _ : state) {
    alone += hunspell_alone(count);
    const double before = processor_seconds();
    editor.control->SpellCheck();
    const double taken = processor_seconds() - before;
    run += taken;
    state.SetIterationTime(taken);
  }
  const auto rounds = double(state.iterations());
  state.counters["hunspell_ms"] = alone / rounds * 1e3;
  state.counters["own_ms"] = (run - alone) / rounds * 1e3;
  state.counters["hunspell_words/s"] = double(count) * rounds / alone;
  state.counters["run_words/s"] = double(count) * rounds / run;
  if (!editor.forms.shown().empty() && editor.forms.shown().back() == u"frmSpelling")
    state.SkipWithError("a word was wrong");
}
BENCHMARK(run_over_right_words)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// From a document with a wave in each fiftieth word being there to the last wave being known.
void mark_document(benchmark::State& state) {
  Editor editor;
  const std::u16string html = text_of_size(std::size_t(state.range(0)));
  editor.control->set_DocumentHTML(html);
  double longest = 0;
  for (auto _ : state) {
    editor.control->set_CheckSpellingAsYouType(false);
    const double before = processor_seconds();
    editor.control->set_CheckSpellingAsYouType(true);
    longest = std::max(longest, editor.settle_marks());
    state.SetIterationTime(processor_seconds() - before);
  }
  state.counters["bytes"] = double(html.size());
  state.counters["longest_turn_ms"] = longest * 1e3;
}
void sizes(benchmark::internal::Benchmark* bench) {
  for (const int size : {10'000, 100'000, 1'000'000, 10'000'000}) bench->Arg(size);
  bench->UseManualTime()->Unit(benchmark::kMillisecond);
}
BENCHMARK(mark_document)->Apply(sizes);

/// A letter in the middle of 1 MB and all that follows from it; with waves and without.
void type_a_letter(benchmark::State& state) {
  Editor editor;
  editor.control->set_DocumentHTML(text_of_size(std::size_t(state.range(0))));
  editor.control->set_CheckSpellingAsYouType(state.range(1) != 0);
  editor.settle_marks();
  browser::HTMLDocument& document = *editor.control->DOM();
  dom::Node* paragraph = dom::child_at(*document.body(), dom::length_of(*document.body()) / 2);
  document.editor().selection().collapse({paragraph->first_child(), 5});
  std::size_t typed = 0;
  for (auto _ : state) {
    document.input_text(++typed % 6 ? u"a" : u" ");
    editor.settle_marks();
  }
}
BENCHMARK(type_a_letter)
    ->ArgsProduct({{10'000, 1'000'000}, {0, 1}})
    ->ArgNames({"bytes", "marks"})
    ->Unit(benchmark::kMicrosecond);

void suggestions(benchmark::State& state, const char16_t* language, std::vector<std::u16string> words) {
  spelling::DictionaryStore store;
  const auto dictionary = store.find(language);
  if (!dictionary) return state.SkipWithError("no dictionary");
  std::size_t number = 0;
  for (auto _ : state) benchmark::DoNotOptimize(dictionary->suggest(words[number++ % words.size()]));
}
BENCHMARK_CAPTURE(suggestions, en, u"en-US",
                  {u"wrold", u"recieve", u"definately", u"seperate", u"occured", u"untill"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(suggestions, de, u"de-DE",
                  {u"Standart", u"vieleicht", u"nehmlich", u"Rythmus", u"Packet", u"wiederspiegeln"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(suggestions, fr, u"fr",
                  {u"langauge", u"apeler", u"bienvenu\u00E9", u"parmis", u"malgr\u00E8", u"dilemne"})
    ->Unit(benchmark::kMillisecond);

/// What the first control takes for a dictionary, and each further one of the process.
void memory_of_controls(benchmark::State& state) {
  double first = 0, further = 0;
  constexpr int controls = 8;
  for (auto _ : state) {
    std::vector<std::unique_ptr<Editor>> editors;
    for (int number = 0; number < controls; ++number) {
      editors.push_back(std::make_unique<Editor>());
      editors.back()->control->set_DocumentHTML(
          u"<P lang=de>Ein Satz</P><P lang=fr>Une phrase</P><P>A sentence</P>");
    }
    for (int number = 0; number < controls; ++number) {
      const double before = megabytes_in_use();
      editors[std::size_t(number)]->control->set_CheckSpellingAsYouType(true);
      editors[std::size_t(number)]->settle_marks();
      (number == 0 ? first : further) += megabytes_in_use() - before;
    }
  }
  const auto rounds = double(state.iterations());
  state.counters["first_control_KB"] = first / rounds * 1e3;
  state.counters["each_further_KB"] = further / rounds / (controls - 1) * 1e3;
}
BENCHMARK(memory_of_controls)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
