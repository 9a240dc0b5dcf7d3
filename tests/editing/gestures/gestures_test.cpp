#include <random>

#include "editing/editing_fixture.h"
#include "tvx/base/error.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/move_content.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/facts/control.h"
#include "tvx/editing/gestures/composition.h"
#include "tvx/editing/gestures/control_box.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/headless/shadow_tree.h"

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
    "<form><input "
    "id=\"t\"><textarea>a\nb</textarea><select><option>one</select><button>press</button></form>",
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
                                    {"inserthtml", "<table><tr><th>h<td>d<tr><td colspan=2>s</table>"},
                                    {"inserttext", "typed"},
                                    {"delete"},
                                    {"forwarddelete"},
                                    {"selectall"},
                                    {"backcolor", "yellow"},
                                    {"hilitecolor", "#00ff00"},
                                    {"InsertInputText", "Textbox1"},
                                    {"InsertTextArea", "TextArea1"},
                                    {"InsertSelectDropdown", "Select1"},
                                    {"InsertInputCheckbox", "Check1"},
                                    {"InsertInputHidden", "Hidden1"},
                                    {"Overwrite"},
                                    {"stylewithcss", "true"},
                                    {"stylewithcss", "false"}};

const std::vector<std::u16string_view> pasted{u"word",
                                              u" two words ",
                                              u"<b>bold</b> and <i>slanted</i>",
                                              u"<p>one</p><p>two</p>",
                                              u"<p>whole line</p><p></p>",
                                              u"<ul><li>i</li><li>j<ol><li>k</li></ol></li></ul>",
                                              u"<table><tbody><tr><td>1</td><td>2</td></tr></tbody></table>",
                                              u"<h2>head</h2>text behind",
                                              u"<blockquote><p>q</p></blockquote>",
                                              u"<img src=\"p.png\">",
                                              u"<a href=\"#\">link</a> ",
                                              u"<div style=\"position: absolute\">box</div>",
                                              u"<td>stray</td><li>item",
                                              u"<form><input><textarea>t</textarea></form>"};

/// A clipboard of its own.
class Door final : public ClipboardDoor {
 public:
  std::u16string html;
  bool put(const CopiedContent& content) override {
    html = content.html;
    return true;
  }
  bool paste(Editor& editor) override { return !html.empty() && paste_html(editor, html); }
};

}  // namespace

/// A border around one element, as the control draws it: in the tree, and no change of the document.
class Overlay final : public dom::OverlayKeeper {
 public:
  explicit Overlay(dom::Document& document) : document_(document) {
    document.journal().set_overlay_keeper(this);
  }
  ~Overlay() override { document_.journal().set_overlay_keeper(nullptr); }

  /// Null: none.
  void show_on(dom::Ref<dom::Element> element) {
    hide();
    element_ = std::move(element);
    draw();
  }
  void hide() {
    take_off();
    element_ = {};
  }

 private:
  void take_off() override {
    if (!element_) return;
    const dom::MutationScope scope(document_, dom::MutationKind::Overlay);
    dom::remove_attribute(*element_, border_);
  }
  void put_back() override { draw(); }
  void draw() {
    if (!element_) return;
    const dom::MutationScope scope(document_, dom::MutationKind::Overlay);
    dom::set_attribute(*element_, border_, u"drawn");
  }

  const dom::Name border_{u"data-border"};
  dom::Document& document_;
  dom::Ref<dom::Element> element_;
};

/// Everything that a person, a command or the host's own code may do, at random: keys, commands, the
/// clipboard, an input method, the mouse, changes of the tree, the border around an element. The parameter is
/// the number of a shard: ten documents each, one after the other.
class Gestures : public EditingFixture, public ::testing::WithParamInterface<unsigned> {
 protected:
  std::mt19937 random;
  browser::Mirror mirror{*document};
  headless::ShadowTree view;
  Overlay overlay{*document};
  Door door;
  Composition composition{editor};

  Gestures() { editor.set_clipboard(&door); }
  ~Gestures() override { editor.set_clipboard(nullptr); }

  std::size_t pick(std::size_t count) { return random() % count; }

  std::vector<Node*> all_nodes() {
    std::vector<Node*> nodes{&host};
    for (Node* node = dom::next_in_order(host, &host); node; node = dom::next_in_order(*node, &host)) {
      nodes.push_back(node);
    }
    return nodes;
  }
  Node& random_node() {
    const auto nodes = all_nodes();
    return *nodes[pick(nodes.size())];
  }
  /// An element below the host; null where the first one met is none.
  dom::Element* random_element() {
    Node& node = random_node();
    return &node == &host ? nullptr : dom::as<dom::Element>(&node);
  }
  Boundary random_place() {
    Node& node = random_node();
    return {&node, pick(dom::length_of(node) + 1)};
  }

  std::string select_somewhere() {
    document->journal().end_typing_run();
    dom::Element* element = random_element();
    if (pick(4) == 0 && element && is_control(*element)) {
      editor.selection().select_control(*element);
      return "select control";
    }
    const Boundary anchor = random_place(), focus = pick(3) ? anchor : random_place();
    editor.selection().set(anchor, focus);
    return "select";
  }

  std::string type() {
    const std::u16string_view text = texts[pick(texts.size())];
    type_text(editor, text);
    return "type " + to_utf8(text);
  }

  std::string command() {
    const Command& command = commands[pick(commands.size())];
    run(command);
    return "command " + command.name + " " + command.value;
  }

  // What a host's program may do to the tree by itself.
  std::string change_from_outside() {
    Node& node = random_node();
    if (&node == &host) return "nothing";
    switch (pick(5)) {
      case 0: dom::remove(node); return "host removes";
      case 1:
        dom::insert(*node.parent(), document->create_text(u"host"), &node);
        return "host inserts a text";
      case 2:
        dom::insert(*node.parent(), document->create_comment(u"host"), node.next_sibling());
        return "host inserts a comment";
      case 3:
        if (auto* element = dom::as<dom::Element>(&node)) {
          dom::set_attribute(*element, dom::names::align, pick(2) ? u"left" : u"center");
        }
        return "host sets an attribute";
      default:
        if (auto* text = dom::as<dom::Text>(&node)) {
          dom::replace_data(*text, 0, pick(text->length() + 1), u"written");
        }
        return "host writes a text";
    }
  }

  std::string use_clipboard() {
    switch (pick(5)) {
      case 0: run({"copy"}); return "copy";
      case 1: run({"cut"}); return "cut";
      case 2: run({"paste"}); return "paste " + to_utf8(door.html);
      case 3: {
        const dom::UndoStep step(document->journal(), u"Paste");
        const std::u16string_view text = texts[pick(texts.size())];
        if (editor.enabled(u"paste")) paste_plain_text(editor, text);
        return "paste text " + to_utf8(text);
      }
      default:
        door.html = pasted[pick(pasted.size())];
        run({"paste"});
        return "paste " + to_utf8(door.html);
    }
  }

  // An input method; now and then the host or another gesture comes in between.
  std::string compose() {
    if (!editor.enabled(u"insertText")) return "nothing to compose in";
    static constexpr std::u16string_view steps[] = {u"n", u"ni", u"\u306B", u"\u306B h", u"\U0001F600"};
    for (std::size_t i = pick(4) + 1; i > 0; --i) {
      const std::u16string_view text = steps[pick(std::size(steps))];
      composition.update(text, pick(text.size() + 1));
      if (pick(12) == 0) change_from_outside();
    }
    if (pick(3) == 0)
      composition.cancel();
    else
      composition.accept();
    return "compose";
  }

  std::string drag() {
    const Boundary to = random_place();
    if (pick(4) == 0) {
      if (dom::Element* element = random_element(); element && is_control(*element))
        set_control_box(editor, *element, {.width = int(pick(300)), .height = int(pick(300))});
      return "size";
    }
    move_selection(editor, to, KeepSource(pick(2)));
    return "drag";
  }

  std::string switch_overlay() {
    if (dom::Element* element = pick(3) ? random_element() : nullptr) {
      overlay.show_on(element);
      return "overlay on";
    }
    overlay.hide();
    return "overlay off";
  }

  std::string gesture() {
    switch (pick(19)) {
      case 16: return use_clipboard();
      case 17: return pick(2) ? use_clipboard() : compose();
      case 18: return pick(2) ? drag() : select_somewhere();
      case 0:
      case 1:
      case 2: return type();
      case 3: press_enter(editor); return "enter";
      case 4: pick(4) ? delete_backward(editor) : delete_word_backward(editor); return "backspace";
      case 5: pick(4) ? delete_forward(editor) : delete_word_forward(editor); return "delete";
      case 6: press_shift_enter(editor); return "shift enter";
      case 7: press_tab(editor, pick(3) == 0); return "tab";
      case 8:
      case 9: return command();
      case 10: editor.execute(pick(2) ? u"undo" : u"redo"); return "undo or redo";
      case 11:
      case 12:
        move_caret(editor, Direction(pick(2)), Granularity(pick(8) ? pick(2) : 2), Extend(pick(3) == 0));
        return "move";
      case 13: return pick(3) ? select_somewhere() : change_from_outside();
      case 14: return pick(3) ? select_somewhere() : switch_overlay();
      default: return select_somewhere();
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
    if (host.parent() != document->body() || !host.next_sibling() || !host.next_sibling()->first_child())
      return ::testing::AssertionFailure() << "neighbour changed";
    if (document->journal().is_open()) return ::testing::AssertionFailure() << "a step was left open";
    return ::testing::AssertionSuccess();
  }

  void expect_view_agrees(const std::string& where) {
    browser::Patch patch;
    patch.operations = mirror.flush(1'000'000);
    EXPECT_TRUE(view.apply(patch).empty()) << where;
    EXPECT_EQ(to_utf8(view.print()), to_utf8(browser::print_mirrored(*document))) << where;
  }

  std::string gesture_that_never_fails() {
    try {
      return gesture();
    } catch (const RuntimeError& error) {
      ADD_FAILURE() << "a gesture failed: " << error.what();
      return "the last one";
    }
  }

  void play(std::string_view start, unsigned seed, int count) {
    const std::string where = "seed " + std::to_string(seed);
    random.seed(seed);
    overlay.hide();
    load(start);
    if (editor.selection().type() == SelectionType::None) editor.selection().collapse({&host, 0});
    const std::string first = html();
    for (int i = 0; i < count; ++i) {
      const std::string before = std::getenv("TVX_SHOW_GESTURES") ? marked() : "";
      const std::string name = gesture_that_never_fails();
      ASSERT_FALSE(HasFailure()) << where << ", gesture " << i << ": " << name << "\nbefore: " << before;
      ASSERT_TRUE(sound()) << where << ", gesture " << i << ": " << name << "\nbefore: " << before
                           << "\nafter: " << html();
      if (i % 100 == 99) expect_view_agrees(where + ", gesture " + std::to_string(i));
    }
    overlay.hide();
    dom::Journal& journal = document->journal();
    while (journal.can_redo()) ASSERT_TRUE(journal.redo()) << where;
    const std::string last = html();
    while (journal.can_undo()) ASSERT_TRUE(journal.undo()) << where;
    ASSERT_EQ(html(), first) << where;
    expect_view_agrees(where + ", all undone");
    while (journal.can_redo()) ASSERT_TRUE(journal.redo()) << where;
    ASSERT_EQ(html(), last) << where;
    expect_view_agrees(where + ", all redone");
  }
};

TEST_P(Gestures, AThousandInEachOfTenDocumentsCanBeTakenBack) {
  for (unsigned i = 0; i < 10; ++i) {
    const unsigned number = GetParam() * 10 + i;
    play(documents[number % documents.size()], number + 1, 1000);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(AHundredDocuments, Gestures, ::testing::Range(0u, 10u));

}  // namespace tvx::editing::test
