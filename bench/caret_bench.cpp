#include <benchmark/benchmark.h>

#include <filesystem>

#include "documents.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/property_bag.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/platform/special_folders.h"

/// What a move of the caret costs in the control: the key's events, the element under the caret, the path to
/// it, its border, and the state of the buttons. Articles of 10 KB to 10 MB; no view.
namespace {

using namespace tvx;

class Editor {
 public:
  explicit Editor(std::size_t units) {
    folder_ = std::filesystem::temp_directory_path() / ("tvx-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
    platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, from_utf8((folder_ / "").string()));
    control = core::HTMLed::create(
        {.loop = loop_, .container = container_, .dialogs = dialogs_, .geometry = &geometry_});
    control->UserControl_Initialize();
    control->set_size(12000, 9000);
    control->UserControl_ReadProperties(headless::PropertyBag());
    control->UserControl_Show();
    control->set_DocumentHTML(bench::article(units));
    for (dom::Element* element : control->DOM()->tree().all())
      if (element->first_child() && element->first_child()->is_text())
        places.push_back(element->first_child());
    go_to(places.size() / 2);
  }
  ~Editor() {
    control.reset();
    loop_.settle();
    std::filesystem::remove_all(folder_);
  }

  void go_to(std::size_t place) {
    control->DOM()->select([&](editing::Selection& selection) { selection.collapse({places[place], 1}); });
  }
  void key(const char16_t* name, int code) {
    browser::KeyInput input;
    input.key = name;
    input.key_code = code;
    control->DOM()->key_down(input);
  }

 private:
  std::filesystem::path folder_;
  headless::VirtualTimeLoop loop_;
  headless::Container container_{true};
  headless::Dialogs dialogs_;
  headless::FixedGeometry geometry_;

 public:
  std::shared_ptr<core::HTMLed> control;
  std::vector<dom::Node*> places;  // texts, first in their elements
};

void sizes(benchmark::internal::Benchmark* bench) {
  for (const int size : {10'000, 100'000, 1'000'000, 10'000'000}) bench->Arg(size);
  bench->Unit(benchmark::kMillisecond);
}

/// To the next character and back, as an arrow key does it.
void caret_by_key(benchmark::State& state) {
  Editor editor(std::size_t(state.range(0)));
  bool back = false;
  for (auto _ : state) {
    back ? editor.key(u"ArrowLeft", 37) : editor.key(u"ArrowRight", 39);
    back = !back;
  }
}
BENCHMARK(caret_by_key)->Apply(sizes);

/// From element to element all over the document: every move has another path.
void caret_anywhere(benchmark::State& state) {
  Editor editor(std::size_t(state.range(0)));
  std::size_t place = 0;
  for (auto _ : state) editor.go_to(place = (place + 7919) % editor.places.size());
}
BENCHMARK(caret_anywhere)->Apply(sizes);

/// The same with the border drawn around each element in turn.
void caret_anywhere_with_border(benchmark::State& state) {
  Editor editor(std::size_t(state.range(0)));
  editor.control->set_HighlightDOMSelectionOnClick(true);
  std::size_t place = 0;
  for (auto _ : state) editor.go_to(place = (place + 7919) % editor.places.size());
}
BENCHMARK(caret_anywhere_with_border)->Apply(sizes);

/// After Return: the elements that follow are counted anew.
void caret_after_a_change_of_structure(benchmark::State& state) {
  Editor editor(std::size_t(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    editor.key(u"Enter", 13);
    editor.control->DOM()->tree().journal().clear();
    state.ResumeTiming();
    editor.key(u"ArrowLeft", 37);
  }
}
BENCHMARK(caret_after_a_change_of_structure)->Apply(sizes)->Iterations(50);

}  // namespace
