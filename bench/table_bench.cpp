#include <benchmark/benchmark.h>

#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/menus.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

/// Items of a large table's menu, from the right press to the view that has it all: the menu, the work, the
/// undo step, the patches, and the tree that a view makes of them.
namespace {

using namespace tvx;

std::u16string table(std::int64_t rows, std::int64_t columns) {
  std::u16string html = u"<TABLE border=1>";
  for (std::int64_t row = 0; row < rows; ++row) {
    html += u"<TR>";
    for (std::int64_t column = 0; column < columns; ++column) html += u"<TD>cell</TD>";
    html += u"</TR>";
  }
  return html + u"</TABLE>";
}

/// A control without a screen, and a view that its document is sent to.
struct Stage {
  Stage(std::int64_t rows, std::int64_t columns) {
    control->UserControl_Initialize();
    control->UserControl_InitProperties();
    control->UserControl_Show();
    control->set_DocumentHTML(table(rows, columns));
    shown.show(control->DOM());
    settle();
  }
  ~Stage() {
    shown.show(nullptr);
    control->UserControl_Terminate();
  }

  void settle() {
    while (!shown.settled()) loop.pump(1);
  }
  void choose(std::u16string item) {
    menus.expect({.menu = u"mnuT", .choose = std::move(item)});
    browser::MouseInput mouse;
    mouse.button = browser::MouseButton::Right;
    mouse.element = control->DOM()->first(dom::Tag::Table);
    mouse.place = dom::Boundary{mouse.element.get(), 0};
    control->DOM()->mouse_press(mouse);
    settle();
  }
  void undo() {
    control->DOM()->tree().journal().undo();
    settle();
  }

  headless::VirtualTimeLoop loop;
  headless::Container container{true};
  headless::Dialogs dialogs;
  headless::Menus menus;
  headless::Forms forms;
  headless::View view{loop};
  browser::DocumentView shown{view, loop};
  std::shared_ptr<core::HTMLed> control = core::HTMLed::create(
      {.loop = loop, .container = container, .dialogs = dialogs, .popups = &menus, .forms = &forms});
};

/// Repeats an item, taking it back in between; the undo doesn't count.
void repeat(benchmark::State& state, Stage& stage, std::u16string_view item) {
  for ([[maybe_unused]] auto turn : state) {
    const std::size_t patches = stage.view.patches();
    stage.choose(std::u16string(item));
    state.PauseTiming();
    if (stage.control->DOM()->tree().journal().depth() != 1) state.SkipWithError("it wasn't one step");
    if (stage.view.patches() == patches) state.SkipWithError("the view wasn't told");
    stage.undo();
    state.ResumeTiming();
  }
}

void insert_column(benchmark::State& state) {
  Stage stage(state.range(0), 3);
  repeat(state, stage, u"mnuTInsCol");
}

void delete_column(benchmark::State& state) {
  Stage stage(state.range(0), 3);
  repeat(state, stage, u"mnuTDelCol");
}

void undo_of_a_column(benchmark::State& state) {
  Stage stage(state.range(0), 3);
  for ([[maybe_unused]] auto turn : state) {
    state.PauseTiming();
    stage.choose(u"mnuTInsCol");
    state.ResumeTiming();
    stage.undo();
  }
}

/// As many cells as the argument says, four in a row.
void settings(benchmark::State& state) {
  Stage stage(state.range(0) / 4, 4);
  stage.forms.expect({.form = u"Frminserttable",
                      .while_open =
                          [](platform::Form& form) {
                            form.Controls(u"txtBackColour").set_Text(u"#FF0000");
                            form.Controls(u"txtBorderColour").set_Text(u"green");
                          },
                      .press = u"cmdApply",
                      .times = 1'000'000});
  repeat(state, stage, u"mnuTProp");
}

void sizes(benchmark::internal::Benchmark* bench) {
  bench->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMillisecond)->MinTime(0.2);
}

BENCHMARK(insert_column)->Apply(sizes);
BENCHMARK(delete_column)->Apply(sizes);
BENCHMARK(undo_of_a_column)->Apply(sizes);
BENCHMARK(settings)->Apply(sizes);

}  // namespace
