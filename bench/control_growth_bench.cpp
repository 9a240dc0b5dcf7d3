#include <ctime>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/virtual_time_loop.h"

/// What a host and a user ask of the whole control, at n and at 10 n: processor time, and how it grows.
///   control_growth_bench [WORD]   those with the word in their names
/// Ends with 1 if anything takes more than fifteen times as long for ten times as much, or changes nothing
/// where it should.
namespace {

using namespace tvx;

double processor_milliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

/// A control without a screen.
struct Stage {
  Stage() {
    control->UserControl_Initialize();
    control->UserControl_InitProperties();
    control->set_CSShttp(false);  // what is put into CSSText is a sheet, not the address of one
    control->UserControl_Show();
  }
  ~Stage() { control->UserControl_Terminate(); }
  dom::Element& body() { return *control->DOM()->body(); }
  editing::Editor& editor() { return control->DOM()->editor(); }

  headless::VirtualTimeLoop loop;
  headless::Container container{true};
  headless::Dialogs dialogs;
  headless::Clipboard clipboard;
  std::shared_ptr<core::HTMLed> control = core::HTMLed::create(
      {.loop = loop, .container = container, .dialogs = dialogs, .clipboard = &clipboard});
};

std::u16string repeated(std::size_t count, const std::function<std::u16string(std::size_t)>& piece) {
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) text += piece(i);
  return text;
}
std::u16string classes(std::size_t count) {
  return repeated(count, [](std::size_t i) { return u".c" + to_text(i) + u" { color: red }\n"; });
}
std::u16string attributes(std::size_t count) {
  return u"<P" + repeated(count, [](std::size_t i) { return u" a" + to_text(i) + u"=\"v\""; }) + u">x</P>";
}
std::u16string paragraphs(std::size_t count) {
  return repeated(count,
                  [](std::size_t i) { return u"<P>Some words of paragraph " + to_text(i) + u"</P>\n"; });
}
void copy_paragraphs(Stage& stage, std::size_t count) {
  stage.control->set_DocumentHTML(paragraphs(count));
  stage.editor().execute(u"selectAll");
  stage.control->copy_document();
  stage.control->set_DocumentHTML(u"<P>here</P>");
  stage.editor().execute(u"selectAll");
}

enum class Does : std::uint8_t { Edit, Other };

struct Case {
  const char* name;
  std::size_t count;
  std::function<void(Stage&, std::size_t)> before, act;
  Does does = Does::Other;
};

const Case cases[] = {
    {"CSSText put", 2'000, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) { stage.control->set_CSSText(classes(n)); }},
    {"CSSText put over another", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_CSSText(classes(n)); },
     [](Stage& stage, std::size_t n) { stage.control->set_CSSText(classes(n) + u".d {}"); }},
    {"class menu, the last item", 2'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<P>word</P>");
       stage.control->set_CSSText(classes(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t n) { stage.control->mnuMiscClass_Click(std::int16_t(n - 1)); }, Does::Edit},
    {"class on many paragraphs", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.control->set_CSSText(u".a {}");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->mnuMiscClass_Click(1); }, Does::Edit},
    {"style elements in DocumentHTML", 300, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<P>x</P>" + repeated(n, [](std::size_t i) {
                                         return u"<STYLE>.s" + to_text(i) + u" {}</STYLE>";
                                       }));
     }},
    {"attributes in DocumentHTML", 5'000, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(attributes(n)); }},
    {"attributes asked for one by one", 5'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(attributes(n)); },
     [](Stage& stage, std::size_t n) {
       const dom::Element& element = *dom::first_child_element(stage.body());
       for (std::size_t i = 0; i < n; ++i) (void)element.attribute(dom::Name(u"a" + to_text(i)));
     }},
    {"attributes removed from the front", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(attributes(n)); },
     [](Stage& stage, std::size_t n) {
       dom::Element& element = *dom::first_child_element(stage.body());
       for (std::size_t i = 0; i < n; ++i) dom::remove_attribute(element, dom::Name(u"a" + to_text(i)));
     },
     Does::Edit},
    {"DocumentHTML put", 2'000, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); }},
    {"DocumentHTML read", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); },
     [](Stage& stage, std::size_t) { (void)stage.control->DocumentHTML(); }},
    {"code view and back with an edit", 500,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); },
     [](Stage& stage, std::size_t) {
       stage.control->show_Code();
       stage.control->txtCode().TextBox1().set_SelText(u"x");
       stage.control->show_Code();
     },
     Does::Edit},
    {"selectText to the end", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); },
     [](Stage& stage, std::size_t n) { stage.control->selectText(0, std::int32_t(n * 20)); }},
    {"InsertAtCursor", 1'000, [](Stage& stage, std::size_t) { stage.editor().execute(u"selectAll"); },
     [](Stage& stage, std::size_t n) {
       stage.control->InsertAtCursor(paragraphs(n), core::ed_InsertType::ed_InsertReplaceSelection);
     },
     Does::Edit},
    {"FormatSelection", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->FormatSelection(u"<A href=x>", u"</A>"); }, Does::Edit},
    {"copy", 1'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->copy_document(); }},
    {"paste of paragraphs", 1'000, copy_paragraphs,
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of plain text", 1'000,
     [](Stage& stage, std::size_t n) {
       stage.clipboard.SetText(repeated(n, [](std::size_t) { return u"a line of text\n"; }));
       stage.control->set_DocumentHTML(u"<P>here</P>");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of another program's paragraphs", 500,
     [](Stage& stage, std::size_t n) {
       stage.clipboard.put(
           {{"text/html", "<style>.m { color: red }</style>" + to_utf8(repeated(n, [](std::size_t) {
                            return u"<p class=m><span style='font-weight:bold'>w</span> x";
                          }))}});
       stage.control->set_DocumentHTML(u"<P>here</P>");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"undo and redo of all", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
       stage.control->bold_document();
       stage.control->numbered_list();
     },
     [](Stage& stage, std::size_t) {
       stage.control->undo_document();
       stage.control->undo_document();
       stage.control->redo_document();
       stage.control->redo_document();
     },
     Does::Edit},
};

struct Cost {
  double milliseconds = 0;
  bool did_it = false;
};

Cost cost_of(const Case& each, std::size_t count) {
  Stage stage;
  each.before(stage, count);
  const std::uint64_t version = stage.editor().document().version();
  const double start = processor_milliseconds();
  each.act(stage, count);
  return {processor_milliseconds() - start,
          each.does != Does::Edit || stage.editor().document().version() != version};
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view word = argc > 1 ? argv[1] : "";
  int faster = 0, idle = 0;
  for (const Case& each : cases) {
    if (std::string_view(each.name).find(word) == std::string_view::npos) continue;
    const Cost small = cost_of(each, each.count), large = cost_of(each, each.count * 10);
    const double ratio = large.milliseconds / std::max(small.milliseconds, 0.05);
    faster += ratio > 15;
    idle += !small.did_it || !large.did_it;
    std::printf("%s %-40s %6zu %9.2f ms %10.2f ms x%.1f%s\n", ratio > 15 ? "!" : " ", each.name, each.count,
                small.milliseconds, large.milliseconds, ratio,
                small.did_it && large.did_it ? "" : " changes nothing");
  }
  std::printf("%d grow faster than fifteenfold for ten times as much\n", faster);
  return faster > 0 || idle > 0;
}
