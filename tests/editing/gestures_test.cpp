#include <algorithm>
#include <random>

#include "editing/caret.h"
#include "editing/editing_fixture.h"
#include "editing/keyboard.h"
#include "editing/typing.h"

namespace tvx::editing::test {

using dom::Boundary;
using dom::Node;

namespace {

const std::vector<std::string_view> documents{
    "",
    "<p>[]one</p><p>two <b>bold</b> three</p>",
    "<h1>Title</h1><p>Some <i>text <b>in</b></i> a "
    "paragraph.</p><ul><li>a</li><li>b<ol><li>c</li></ol></li></ul>",
    "<table><tbody><tr><td>1</td><td>2</td></tr><tr><td><p>3</p></td><td></td></tr></tbody></table>",
    "bare line<br>second<br><br>fourth <a href=\"http://a.b/\">link</a> end",
    "<blockquote><p>quoted</p><p>twice</p></blockquote><div align=\"center\">middle</div><hr><p><br></p>",
    "<p>image <img src=\"x.png\"> inside</p><pre>pre\n  text\n</pre><dl><dt>term</dt><dd>what</dd></dl>",
    "<ol><li>\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D</li><li>e\xCC\x81 \xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9"
    "</li></ol> \n <p> spaced   text </p>\n",
};

const std::vector<std::u16string_view> texts{
    u"a",           u"word",          u" ",      u"  ", u"two words", u"é", u"\U0001F600", u"e\u0301",
    u"line\nbreak", u"http://x.org ", u"me@a.b "};

const std::vector<Command> commands{{"bold"},
                                    {"italic"},
                                    {"underline"},
                                    {"strikethrough"},
                                    {"subscript"},
                                    {"superscript"},
                                    {"forecolor", "red"},
                                    {"fontsize", "5"},
                                    {"fontname", "Arial"},
                                    {"removeformat"},
                                    {"createlink", "http://l.org/"},
                                    {"unlink"},
                                    {"insertorderedlist"},
                                    {"insertunorderedlist"},
                                    {"indent"},
                                    {"outdent"},
                                    {"justifycenter"},
                                    {"justifyleft"},
                                    {"justifyright"},
                                    {"formatblock", "h2"},
                                    {"formatblock", "p"},
                                    {"formatblock", "pre"},
                                    {"inserthorizontalrule"},
                                    {"insertimage", "i.png"},
                                    {"insertlinebreak"},
                                    {"insertparagraph"},
                                    {"inserthtml", "<p>x<b>y</b></p>z"},
                                    {"inserthtml", "<ul><li>q</ul>"},
                                    {"inserttext", "typed"},
                                    {"delete"},
                                    {"forwarddelete"},
                                    {"selectall"},
                                    {"backcolor", "yellow"},
                                    {"hilitecolor", "#00ff00"},
                                    {"stylewithcss", "true"},
                                    {"stylewithcss", "false"}};

}  // namespace

class Gestures : public EditingFixture {
 protected:
  std::mt19937 random;

  std::size_t pick(std::size_t count) { return random() % count; }

  Boundary random_place() {
    std::vector<Node*> nodes{&host};
    for (Node* node = dom::next_in_order(host, &host); node; node = dom::next_in_order(*node, &host)) {
      nodes.push_back(node);
    }
    Node* node = nodes[pick(nodes.size())];
    return {node, pick(dom::length_of(*node) + 1)};
  }

  void select_somewhere() {
    Boundary anchor = random_place(), focus = pick(3) ? anchor : random_place();
    editor.document().journal().end_typing_run();
    editor.selection().set(anchor, focus);
  }

  std::string gesture() {
    switch (pick(14)) {
      case 0:
      case 1:
      case 2: {
        const std::u16string_view text = texts[pick(texts.size())];
        type_text(editor, text);
        return "type " + to_utf8(text);
      }
      case 3: press_enter(editor); return "enter";
      case 4: pick(4) ? delete_backward(editor) : delete_word_backward(editor); return "backspace";
      case 5: pick(4) ? delete_forward(editor) : delete_word_forward(editor); return "delete";
      case 6: press_shift_enter(editor); return "shift enter";
      case 7: press_tab(editor, pick(3) == 0); return "tab";
      case 8:
      case 9: {
        const Command& command = commands[pick(commands.size())];
        run(command);
        return "command " + command.name + " " + command.value;
      }
      case 10: editor.execute(pick(2) ? u"undo" : u"redo"); return "undo or redo";
      case 11:
      case 12:
        move_caret(editor, Direction(pick(2)), Granularity(pick(8) ? pick(2) : 2), Extend(pick(3) == 0));
        return "move";
      default: select_somewhere(); return "select";
    }
  }

  // What must hold whatever was done.
  ::testing::AssertionResult sound() {
    const Selection& selection = editor.selection();
    for (const Boundary& end : {selection.anchor(), selection.focus()}) {
      if (!end) return ::testing::AssertionFailure() << "no selection";
      if (!dom::is_inclusive_ancestor(host, *end.node))
        return ::testing::AssertionFailure() << "selection outside";
      if (end.offset > dom::length_of(*end.node))
        return ::testing::AssertionFailure() << "selection behind the end";
    }
    if (host.next_sibling()->first_child() == nullptr)
      return ::testing::AssertionFailure() << "neighbour changed";
    return ::testing::AssertionSuccess();
  }

  void play(std::string_view start, unsigned seed, int count) {
    random.seed(seed);
    load(start);
    if (editor.selection().type() == SelectionType::None) editor.selection().collapse({&host, 0});
    const std::string first = html();
    for (int i = 0; i < count; ++i) {
      const std::string before = marked();
      const std::string name = gesture();
      EXPECT_TRUE(sound()) << "seed " << seed << ", gesture " << i << ": " << name << "\nbefore: " << before
                           << "\nafter: " << html();
      if (HasFailure()) return;
    }
    const std::string last = marked();
    dom::Journal& journal = document->journal();
    while (journal.can_undo()) ASSERT_TRUE(journal.undo());
    EXPECT_EQ(html(), first) << "seed " << seed;
    while (journal.can_redo()) ASSERT_TRUE(journal.redo());
    if (!last.empty()) {
      // Steps that were undone at the end are redone here too: undo all again and compare the start.
      while (journal.can_undo()) journal.undo();
      EXPECT_EQ(html(), first) << "seed " << seed;
    }
  }
};

TEST_F(Gestures, TwentyThousandAtRandomCanBeTakenBack) {
  unsigned seed = 1;
  for (int round = 0; round < 5; ++round) {
    for (const std::string_view start : documents) {
      play(start, seed++, 500);
      if (HasFailure()) return;
    }
  }
}

}  // namespace tvx::editing::test
