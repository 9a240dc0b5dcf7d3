#include <algorithm>

#include "core/control_fixture.h"
#include "tvx/base/work_count.h"

/// What a person or a host does with the control: ten times as much takes at most fifteen times the steps,
/// which are nodes visited, attributes looked at and changes made, and the same on every machine.
namespace tvx::core {
namespace {

using editing::Selection;

struct Work {
  std::string name;
  /// A document, or what is pasted into one, of that many parts.
  std::u16string (*markup)(std::size_t parts);
  enum class Way : std::uint8_t { Give, Paste, List, Code, Bold, Type, Delete } way;
};

std::u16string times(std::u16string_view part, std::size_t count) {
  std::u16string text;
  text.reserve(part.size() * count);
  while (count-- > 0) text += part;
  return text;
}

std::u16string element_with_attributes(std::size_t count) {
  std::u16string text = u"<P";
  for (std::size_t i = 0; i < count; ++i) text += u" a" + from_utf8(std::to_string(i)) + u"=1";
  return text + u">x</P>";
}

std::u16string sheets(std::size_t count) {
  return times(u"<STYLE>.a{color:red}</STYLE>", count) + u"<P class=a>x</P>";
}

std::u16string long_style(std::size_t count) {
  return u"<P style=\"" + times(u"color:red;", count) + u"\">x</P>";
}

const Work works[] = {
    {"PasteUnknownNested", [](std::size_t n) { return times(u"<xx>a", n); }, Work::Way::Paste},
    {"PasteParagraphs", [](std::size_t n) { return times(u"<p>a <b>b</b></p>", n); }, Work::Way::Paste},
    {"PasteItems", [](std::size_t n) { return u"<ul>" + times(u"<li>a</li>", n) + u"</ul>"; },
     Work::Way::Paste},
    {"PasteRows", [](std::size_t n) { return u"<table>" + times(u"<tr><td>a<td>b</tr>", n) + u"</table>"; },
     Work::Way::Paste},
    {"PasteHidden", [](std::size_t n) { return times(u"<p hidden>a</p>b", n); }, Work::Way::Paste},
    {"ListOverLinks", [](std::size_t n) { return times(u"<P><A href=x>l</A> t</P>", n); }, Work::Way::List},
    {"ListOverLines", [](std::size_t n) { return times(u"t<BR>", n); }, Work::Way::List},
    {"SourceOfParagraphs", [](std::size_t n) { return times(u"<P>t</P>", n); }, Work::Way::Code},
    {"SourceOfAngles", [](std::size_t n) { return times(u"&lt;", n); }, Work::Way::Code},
    {"SourceOfAttributes", element_with_attributes, Work::Way::Code},
    {"GiveAttributes", element_with_attributes, Work::Way::Give},
    {"GiveSheets", sheets, Work::Way::Give},
    {"GiveScripts", [](std::size_t n) { return times(u"<SCRIPT></SCRIPT>", n) + u"<P>x</P>"; },
     Work::Way::Give},
    {"BoldUnderSheets", sheets, Work::Way::Bold},
    {"BoldUnderALongStyle", long_style, Work::Way::Bold},
    {"TypeUnderSheets", sheets, Work::Way::Type},
    {"TypeAfterScripts", [](std::size_t n) { return times(u"<SCRIPT></SCRIPT>", n) + u"<P>x</P>"; },
     Work::Way::Type},
    {"DeleteScripts", [](std::size_t n) { return times(u"<SCRIPT></SCRIPT>a", n); }, Work::Way::Delete},
    {"DeleteComments", [](std::size_t n) { return times(u"<!--c-->a", n); }, Work::Way::Delete},
};

class CoreGrowth : public Control, public testing::WithParamInterface<Work> {
 protected:
  void select_all() {
    control->DOM()->select([&](Selection& selection) {
      dom::Element* body = control->DOM()->body();
      selection.set({{body, 0}, {body, body->child_count()}});
    });
  }
  void caret_at_end() {
    control->DOM()->select([&](Selection& selection) {
      dom::Node* last = control->DOM()->body();
      while (last->last_child()) last = last->last_child();
      selection.collapse({last, dom::length_of(*last)});
    });
  }
  void offer(const std::u16string& html) {
    clipboard.OpenClipboard();
    clipboard.EmptyClipboard();
    clipboard.set_data("text/html", to_utf8(html));
    clipboard.CloseClipboard();
  }
  void act(Work::Way way, const std::u16string& markup) {
    switch (way) {
      case Work::Way::Give: control->set_DocumentHTML(markup); break;
      case Work::Way::Paste: control->paste_document(); break;
      case Work::Way::List: control->numbered_list(); break;
      case Work::Way::Code: control->show_Code(); break;
      case Work::Way::Bold: control->bold_document(); break;
      case Work::Way::Type: key(u"y", 'Y'); break;
      case Work::Way::Delete: key(u"Delete", 46); break;
    }
    loop.settle();
  }
  std::uint64_t steps(std::size_t parts) {
    const Work& work = GetParam();
    start();
    const std::u16string markup = work.markup(parts);
    if (work.way == Work::Way::Paste) {
      control->set_DocumentHTML(u"<P>x</P>");
      offer(markup);
    } else if (work.way != Work::Way::Give) {
      control->set_DocumentHTML(markup);
    }
    if (work.way == Work::Way::Type || work.way == Work::Way::Paste)
      caret_at_end();
    else if (work.way != Work::Way::Give)
      select_all();
    const auto version = [this] { return control->DOM()->tree().version(); };
    const std::uint64_t done = work_done, changes = version();
    act(work.way, markup);
    return work_done - done + version() - changes;
  }
};

TEST_P(CoreGrowth, TakesNoMoreThanInProportion) {
  constexpr std::size_t parts = 30;
  std::uint64_t before = steps(parts);
  for (const std::size_t more : {parts * 10, parts * 100}) {
    const std::uint64_t now = steps(more);
    EXPECT_LT(now, 15 * std::max<std::uint64_t>(before, more / 10))
        << more << " parts: " << now << " after " << before;
    before = now;
  }
}

INSTANTIATE_TEST_SUITE_P(Works, CoreGrowth, testing::ValuesIn(works),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace tvx::core
