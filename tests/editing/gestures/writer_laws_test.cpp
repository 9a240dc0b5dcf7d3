#include <cstdio>
#include <cstdlib>
#include <random>

#include "editing/editing_fixture.h"
#include "editing/gestures/writer_laws.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/editing/walk/caret.h"

/// The laws of writer_laws.h, checked after each of many random gestures.
namespace tvx::editing::test {
namespace {

using dom::Boundary;
using dom::Node;

const std::vector<std::string_view> documents{
    "<p>{}<br></p>",
    "<p>[]one</p><p>two <b>bold</b> three</p>",
    "<h1>Title</h1><p>Some <i>text <b>in</b></i> a "
    "par[]agraph.</p><ul><li>a</li><li>b<ol><li>c</li></ol></li></ul>",
    "<ul><li>a</li><li>b<ul><li>c[]</li><li>d</li></ul></li></ul><p>end</p>",
    "<p>a[]</p><table><tbody><tr><td>1</td><td>2</td></tr><tr><td>3</td><td>4</td></tr></tbody></"
    "table><hr><p>z</p>",
    "<blockquote><p>quoted[]</p></blockquote><pre>pre\n  text</pre><p>see <a "
    "href=\"http://a.b/\">link</a></p>",
    "<p>one[]<!--note--> two</p><!--between--><p>see <span contenteditable=\"false\">island</span> "
    "there</p><div contenteditable=\"false\">wide</div><p><x-word>an unknown word</x-word> end</p>",
    "<p><font color=\"#ff0000\" face=\"Arial\">re[]d</font> and <span style=\"color: blue\">blue</span></p>"
    "<ol><li><b>x</b></li><li>y</li></ol><hr>",
    "<table><tbody><tr><td><p>in</p><ul><li>a[]</li></ul></td><td><br></td></tr></tbody></"
    "table><table><tbody>"
    "<tr><td>z</td></tr></tbody></table>",
    "<ul>\n  <li style=\"display: inline\"><a href=\"http://a.b/\">one[]</a></li>\n  <li style=\"display: "
    "inline\">two</li>\n</ul>\n<p>text</p>\n<ol>\n  <li>\n    <p>three</p>\n    <ul>\n      "
    "<li>four</li>\n    </ul>\n  </li>\n  <li><h2>five</h2><p>six</p></li>\n</ol>\n",
    "<dl>\n  <dt>t[]</dt>\n  <dd>d</dd>\n  <dt>u</dt>\n  <dd>\n    <p>e</p>\n    <p>f</p>\n  </dd>\n</dl>\n"
    "<table>\n  <caption>cap</caption>\n  <thead>\n    <tr>\n      <th>h</th>\n      <th>i</th>\n    </tr>\n"
    "  </thead>\n  <tbody>\n    <tr>\n      <td>a</td>\n      <td>\n        <p>b</p>\n      </td>\n    "
    "</tr>\n"
    "  </tbody>\n</table>\n",
    "<dl><dt>t[]<ul><li>x</li></ul></dt><dd>d<table><tbody><tr><td>c</td></tr></tbody></table>e</dd>"
    "<dd>text<p>para</p>more</dd></dl><p>z</p>",
    "<dl>\n  <dt>term[]\n    <p>para</p>\n  </dt>\n  <dd>what\n    <dl>\n      <dt>in<br>ner</dt>\n      "
    "<dd><b>de</b>f</dd>\n    </dl>\n  </dd>\n</dl>\n<p>z</p>\n",
    "<div>a[]<p>b</p>c<div>d<h2>e</h2></div></div><blockquote>q<p>r</p>s</blockquote>",
    "<table><tbody><tr><td>a[]<p>b</p>c</td><td><dl><dt>d<p>e</p></dt></dl></td></tr></tbody></table><p>f</"
    "p>",
    "<figure><img src=\"a.png\" alt=\"\"><figcaption>c[]<p>p</p></figcaption></figure><details open>"
    "<summary>s</summary>t<ul><li>u</li></ul>v</details>",
    "<section>\n  <h2>a[]</h2>\n  text\n  <p>p</p>\n  more <i>it</i>\n  <ul>\n    <li>x\n      <p>y</p>\n "
    "     z\n    </li>\n  </ul>\n</section>\n",
    "<center>a[]<p>b</p></center><address>c<br>d</address><dl><dd><ul><li>e</li></ul></dd></dl>",
    "<h1>\n  a\n</h1>\n<p>\n  one[]\n  two <b>three\n  four</b>\n</p>\nbare\n<ul>\n  <li>\n    five\n    "
    "<ol>\n      <li>six</li>\n    </ol>\n  </li>\n</ul>\n<div>\n  seven<br>\n  eight\n</div>\n",
};

const std::vector<std::string_view> pasted{"word",
                                           "<b>bold</b> and <i>slanted</i>",
                                           "<p>one</p><p>two</p>",
                                           "<ul><li>i</li><li>j<ol><li>k</li></ol></li></ul>",
                                           "<h2>head</h2>text",
                                           "<table><tbody><tr><td>1</td><td>2</td></tr></tbody></table>"};

class Door final : public ClipboardDoor {
 public:
  std::u16string html;
  bool put(const CopiedContent&) override { return true; }
  bool paste(Editor& editor) override { return paste_html(editor, html); }
};

struct Key {
  GestureKind kind;
  std::u16string_view name;
  bool shift = false, control = false;
};

constexpr Key keys[] = {
    {GestureKind::Enter, u"Enter"},
    {GestureKind::Enter, u"Enter"},
    {GestureKind::LineBreak, u"Enter", true},
    {GestureKind::Delete, u"Backspace"},
    {GestureKind::Delete, u"Backspace"},
    {GestureKind::Delete, u"Delete"},
    {GestureKind::DeleteWord, u"Backspace", false, true},
    {GestureKind::DeleteWord, u"Delete", false, true},
    {GestureKind::Other, u"Tab"},
    {GestureKind::Other, u"Tab", true},
    {GestureKind::Move, u"ArrowLeft"},
    {GestureKind::Move, u"ArrowLeft"},
    {GestureKind::Move, u"ArrowRight"},
    {GestureKind::Move, u"ArrowRight"},
    {GestureKind::Move, u"ArrowRight", true},
    {GestureKind::Move, u"ArrowLeft", true},
    {GestureKind::Move, u"ArrowRight", false, true},
    {GestureKind::Move, u"End"},
    {GestureKind::Command, u"b", false, true},
    {GestureKind::Command, u"i", false, true},
};

struct Button {
  std::u16string_view command, value;
};

constexpr Button buttons[] = {
    {u"insertUnorderedList", {}}, {u"insertOrderedList", {}}, {u"indent", {}},        {u"outdent", {}},
    {u"foreColor", u"#ff0000"},   {u"formatBlock", u"h2"},    {u"formatBlock", u"p"}, {u"justifyCenter", {}}};

/// The parameter is the number of a shard.
class WriterLaws : public EditingFixture, public ::testing::WithParamInterface<unsigned> {
 protected:
  WriterLaws() { editor.set_clipboard(&door_); }
  ~WriterLaws() override { editor.set_clipboard(nullptr); }

  std::size_t pick(std::size_t count) { return std::size_t(random_() % count); }

  /// One gesture: what it is, then the deed. Gives its name.
  std::string gesture(Moment& before, GestureKind& kind) {
    const auto starts = [&](GestureKind what) {
      kind = what;
      before = Moment::of(editor, host, what);
    };
    switch (pick(10)) {
      case 0:
      case 1: {
        static constexpr std::u16string_view texts[] = {u"a", u"b", u"word", u" ", u"e\u0301"};
        const std::u16string_view text = texts[pick(std::size(texts))];
        starts(GestureKind::Type);
        type_text(editor, text);
        return "type " + to_utf8(text);
      }
      case 2: return press_button(starts);
      case 3: return pick(2) ? paste(starts) : click(starts);
      case 5: return drag(starts);
      case 4:
        starts(GestureKind::Journal);
        editor.execute(pick(3) ? u"undo" : u"redo");
        return "undo or redo";
      default: {
        const Key& key = keys[pick(std::size(keys))];
        starts(key.kind);
        press_key(editor, {std::u16string(key.name), {}, key.control, key.shift, false});
        return (key.control ? "Ctrl+" : "") + std::string(key.shift ? "Shift+" : "") + to_utf8(key.name);
      }
    }
  }

  template <class Starts>
  std::string press_button(const Starts& starts) {
    const Button& button = buttons[pick(std::size(buttons))];
    starts(GestureKind::Command);
    execute_as_writer(editor, button.command, button.value);
    return "button " + to_utf8(button.command) + " " + to_utf8(button.value);
  }

  template <class Starts>
  std::string paste(const Starts& starts) {
    const std::string_view html = pasted[pick(pasted.size())];
    starts(GestureKind::Paste);
    door_.html = from_utf8(html);
    editor.execute(u"paste");
    return "paste " + std::string(html);
  }

  /// A place in the text that a mouse can be pressed at.
  Boundary place_to_press() {
    std::vector<Boundary> places;
    for (Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host))
      if (node->is_text() && is_editable_text(*node) && !is_collapsed_whitespace_node(*node))
        places.push_back({node, pick(dom::length_of(*node) + 1)});
    return places.empty() ? Boundary{} : places[pick(places.size())];
  }

  template <class Starts>
  std::string click(const Starts& starts) {
    starts(GestureKind::Move);
    const Boundary place = place_to_press();
    if (!place) return "nothing to click";
    document->journal().end_typing_run();
    editor.selection().collapse(place);
    return "click";
  }

  /// Over some of the text, or, as three presses select, over a text up to the next line.
  template <class Starts>
  std::string drag(const Starts& starts) {
    starts(GestureKind::Move);
    const Boundary from = place_to_press(), to = place_to_press();
    if (!from) return "nothing to select";
    document->journal().end_typing_run();
    const std::u16string& text = static_cast<const dom::Text*>(from.node)->data();
    const auto next = next_caret_place({from.node, text.size()}, Direction::Forward, Granularity::Character);
    const bool whole = pick(2) && next;
    if (whole)
      editor.selection().set({from.node, std::min(text.find_first_not_of(u" \n"), text.size())}, *next);
    else
      editor.selection().set(from, to);
    return whole ? "select a line" : "drag";
  }

  static bool is_editable_text(const Node& node) { return editing_host_of(node) && is_editable(node); }

  /// A round of gestures in one document. False after a broken law.
  bool play(std::uint32_t seed, int count) {
    random_.seed(seed);
    load(documents[seed % documents.size()]);
    document->journal().clear();
    const std::string first = html();
    for (int i = 0; i < count; ++i) {
      const std::string from = std::getenv("TVX_SHOW_GESTURES") || tracing_ ? marked() : std::string();
      Moment before;
      GestureKind kind{};
      const std::string what = gesture(before, kind);
      if (std::getenv("TVX_SHOW_GESTURES")) std::printf("%s\n%s\n", what.c_str(), marked().c_str());
      const std::string law = broken_law(editor, host, before, kind);
      if (law.empty()) continue;
      if (!std::exchange(tracing_, true)) return play(seed, count);
      ADD_FAILURE() << law << "\nseed " << seed << ", gesture " << i << ": " << what << "\nfrom " << from
                    << "\nto   " << marked();
      tracing_ = false;
      return false;
    }
    const std::string last = html();
    while (document->journal().can_undo()) document->journal().undo();
    EXPECT_EQ(html(), first) << "undone it is what it was; seed " << seed;
    while (document->journal().can_redo()) document->journal().redo();
    return !HasFailure();
  }

  bool tracing_ = false;
  std::mt19937 random_;
  Door door_;
};

TEST_P(WriterLaws, HoldAfterEachOfManyGestures) {
  const char* wanted = std::getenv("TVX_WRITER_GESTURES");
  const long all = (wanted ? std::atol(wanted) : 100'000) / 8;
  const char* first = std::getenv("TVX_WRITER_SEED");
  const char* finds = std::getenv("TVX_WRITER_FINDS");
  const int most_finds = finds ? std::atoi(finds) : 3;
  constexpr int round = 25;
  long done = 0;
  int failures = 0;
  for (std::uint32_t seed = (first ? std::atol(first) : 0) + GetParam() + 1;
       done < all && failures < most_finds; seed += 8) {
    failures += !play(seed, round);
    done += round;
  }
  std::printf("%ld gestures of a writer\n", done);
}

TEST_P(WriterLaws, WhatCanBeClickedIsReachedByArrowKeys) {
  for (std::size_t i = GetParam(); i < documents.size(); i += 8) {
    load(documents[i]);
    EXPECT_EQ(broken_law_of_moves(editor, host), "") << marked();
  }
}

/// The documents that gestures make have lines that nobody would write down for a test.
TEST_P(WriterLaws, WhatCanBeClickedIsReachedInWhatGesturesMake) {
  const char* wanted = std::getenv("TVX_WRITER_WALKS");
  const char* first = std::getenv("TVX_WRITER_SEED");
  const char* finds = std::getenv("TVX_WRITER_FINDS");
  const long all = (wanted ? std::atol(wanted) : 800) / 8;
  int failures = 0;
  for (long i = 0; i < all && failures < (finds ? std::atoi(finds) : 3); ++i) {
    const std::uint32_t seed = (first ? std::atol(first) : 0) + GetParam() + 1 + 8 * i;
    if (!play(seed, 25)) continue;
    const std::string before = html();
    const std::string law = broken_law_of_moves(editor, host);
    if (law.empty()) continue;
    ADD_FAILURE() << law << "\nseed " << seed << ", gesture 0: walk\nfrom " << before << "\nto   "
                  << marked();
    ++failures;
  }
}

INSTANTIATE_TEST_SUITE_P(EightShards, WriterLaws, ::testing::Range(0u, 8u));

}  // namespace
}  // namespace tvx::editing::test
