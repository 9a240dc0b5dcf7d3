#include "tvx/browser/html_document.h"

#include <gmock/gmock.h>

#include "tvx/base/error.h"
#include "tvx/browser/input/drags.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/walk/marks.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/view.h"

namespace tvx::browser {
namespace {

using testing::ElementsAre;

/// Writes down what it hears, with the event's facts.
class Ears : public DocumentHandler {
 public:
  explicit Ears(HTMLDocument& document) : document_(document) { document.connect(this); }
  ~Ears() override { document_.connect(nullptr); }

  void onkeydown() override {
    say("keydown " + std::to_string(document_.event()->key_code));
    if (take_keys) document_.set_event_key_code(0);
  }
  bool onkeypress() override {
    say("keypress");
    return true;
  }
  void onkeyup() override { say("keyup"); }
  void onmousedown() override { say("mousedown" + facts()); }
  bool onclick() override { return say("click" + facts()); }
  bool ondblclick() override { return say("dblclick"); }
  bool oncontrolselect() override { return say("controlselect") && !veto; }
  bool onselectstart() override { return say("selectstart") && !veto; }
  bool ondragstart() override { return say("dragstart"); }
  bool oncontextmenu() override { return say("contextmenu"); }
  void onselectionchange() override {
    say("selectionchange" + facts());
    if (inside) inside();
  }

  std::string facts() const {
    const Event& event = *document_.event();
    return " " + std::to_string(event.client_x) + "," + std::to_string(event.client_y) + " " +
           std::to_string(int(event.button));
  }
  bool say(std::string what) {
    heard.push_back(std::move(what));
    return true;
  }

  std::vector<std::string> heard;
  std::function<void()> inside;
  bool take_keys = false, veto = false;

 private:
  HTMLDocument& document_;
};

class Document : public testing::Test {
 protected:
  explicit Document(std::u16string_view html = u"<p>one</p><p>two <img src=a.gif></p>")
      : document(HTMLDocument::create(dom::parse_document(html), u"file:///x/y.html")) {
    document->set_geometry(&geometry);
    document->set_designMode(u"On");
    document->finish_loading();
    ears = std::make_unique<Ears>(*document);
  }
  ~Document() override { ears.reset(); }

  void load(std::u16string_view marked) {
    editing::load_marked(document->editor(), *document->body(), marked);
    ears->heard.clear();
  }
  std::u16string marked() {
    return editing::dump_marked(document->editor(), *document->body(), dom::Letters::Upper);
  }
  MouseInput press_on(dom::Element* element, MouseButton button = MouseButton::Left) {
    MouseInput mouse;
    mouse.button = button;
    mouse.x = 7;
    mouse.y = int(document->tree().source_index(*element)) * 20;
    mouse.element = element;
    mouse.place = dom::Boundary{element, 0};
    return mouse;
  }
  KeyInput typed(std::u16string text) {
    KeyInput key;
    key.key = key.text = text;
    key.key_code = text[0] - 32;
    return key;
  }

  headless::FixedGeometry geometry;
  std::shared_ptr<HTMLDocument> document;
  std::unique_ptr<Ears> ears;
};

TEST_F(Document, APressIsHeardInItsOrder) {
  document->mouse_press(press_on(document->first(dom::Tag::P)));
  EXPECT_THAT(ears->heard, ElementsAre("selectstart", "selectionchange 7,60 1", "mousedown 7,60 1"));
  EXPECT_EQ(document->event(), nullptr) << "outside any handler there is no event";
}

TEST_F(Document, APressOnAControlIsHeardBeforeTheSelectionsNews) {
  document->mouse_press(press_on(document->first(dom::Tag::Img)));
  EXPECT_THAT(ears->heard,
              ElementsAre("selectstart", "controlselect", "selectionchange 7,100 1", "mousedown 7,100 1"));
  EXPECT_EQ(document->editor().selection().control(), document->first(dom::Tag::Img));
}

TEST_F(Document, AVetoedControlSelectionLeavesTheSelection) {
  load(u"<p>o[]ne <img></p>");
  ears->veto = false;
  struct Veto : Ears {
    using Ears::Ears;
    bool oncontrolselect() override { return false; }
  } veto(*document);
  document->mouse_press(press_on(document->first(dom::Tag::Img)));
  EXPECT_EQ(marked(), u"<P>o[]ne <IMG></P>");
}

TEST_F(Document, ASelectionThatMayNotStartStays) {
  load(u"<p>o[]ne</p><p>two</p>");
  ears->veto = true;
  document->mouse_press(press_on(document->body()));
  EXPECT_EQ(marked(), u"<P>o[]ne</P><P>two</P>");
  EXPECT_EQ(ears->heard.size(), 3u) << "the handlers run all the same";
}

TEST_F(Document, ARightPressWithinTheSelectionKeepsIt) {
  load(u"<p>[one]</p>");
  MouseInput mouse = press_on(document->first(dom::Tag::P), MouseButton::Right);
  mouse.place = dom::Boundary{document->first(dom::Tag::P)->first_child(), 1};
  document->mouse_press(mouse);
  EXPECT_EQ(marked(), u"<P>[one]</P>");
  EXPECT_THAT(ears->heard, ElementsAre("selectionchange 7,60 2", "mousedown 7,60 2"));
}

TEST_F(Document, AShiftPressExtends) {
  load(u"<p>o[]ne</p>");
  MouseInput mouse = press_on(document->first(dom::Tag::P));
  mouse.shift = true;
  mouse.place = dom::Boundary{document->first(dom::Tag::P)->first_child(), 3};
  document->mouse_press(mouse);
  EXPECT_EQ(marked(), u"<P>o[ne]</P>");
}

TEST_F(Document, AKeyIsHeardThenTypedThenItsSelectionChangeOnce) {
  load(u"<p>a[]</p>");
  document->key_down(typed(u"b"));
  ASSERT_EQ(ears->heard.size(), 3u);
  EXPECT_EQ(ears->heard[0], "keydown 66");
  EXPECT_EQ(ears->heard[1], "keypress");
  EXPECT_EQ(ears->heard[2], "selectionchange 0,60 0") << "the caret's parent is the fourth element";
  EXPECT_EQ(marked(), u"<P>ab[]</P>");
}

TEST_F(Document, AKeyWhoseCodeBecomesZeroDoesNothing) {
  load(u"<p>a[]</p>");
  ears->take_keys = true;
  EXPECT_TRUE(document->key_down(typed(u"b")).taken);
  EXPECT_EQ(marked(), u"<P>a[]</P>");
  EXPECT_THAT(ears->heard, ElementsAre("keydown 66"));
}

TEST_F(Document, MovesByLinesAreAskedOfTheView) {
  load(u"<p>a[]</p>");
  KeyInput down;
  down.key = u"ArrowDown";
  down.key_code = 40;
  down.shift = true;
  const KeyOutcome outcome = document->key_down(down);
  EXPECT_EQ(outcome.ask, ViewMove::LineDown);
  EXPECT_TRUE(outcome.extend);
}

TEST_F(Document, InputMethodsRaiseOneKeyDown229) {
  load(u"<p>a[]</p>");
  document->input_text(u"\u4E2D\u6587");
  EXPECT_EQ(ears->heard.front(), "keydown 229");
  EXPECT_EQ(marked(), u"<P>a\u4E2D\u6587[]</P>");
}

TEST_F(Document, ACommandTellsOfTheSelectionOnceAtItsEnd) {
  load(u"<p>[one]</p>");
  document->execCommand(u"Bold", false, u"");
  EXPECT_LE(ears->heard.size(), 1u);
}

// Whoever shows the elements around the caret hears of it.
TEST_F(Document, ACommandThatPutsTheCaretsTextIntoOtherElementsTellsToo) {
  load(u"<p>on[]e</p>");
  ASSERT_TRUE(document->execCommand(u"InsertUnorderedList", false, u""));
  EXPECT_EQ(marked(), u"<UL><LI>on[]e</LI></UL>");
  EXPECT_EQ(std::ranges::count_if(ears->heard,
                                  [](const auto& each) { return each.starts_with("selectionchange"); }),
            1);
}

TEST_F(Document, AHandlerThatMovesTheSelectionIsToldAgainButNotWithoutEnd) {
  int times = 0;
  ears->inside = [&] {
    ++times;
    document->editor().selection().collapse({document->body(), 0});
  };
  document->select([&](editing::Selection& selection) { selection.collapse({document->body(), 1}); });
  EXPECT_GT(times, 1);
  EXPECT_LT(times, 10);
}

TEST_F(Document, TheElementAtAnEventsPointIsItsSnapshots) {
  dom::Ref<dom::Element> seen;
  dom::Element* second = document->body();
  struct Asking : Ears {
    using Ears::Ears;
    std::function<void()> ask;
    bool onclick() override {
      ask();
      return true;
    }
  } asking(*document);
  asking.ask = [&] { seen = document->element_from_point(7, 20); };
  MouseInput mouse = press_on(second);
  mouse.y = 20;  // the geometry would answer HEAD
  document->click(mouse);
  EXPECT_EQ(seen, second);
  asking.ask = [&] { seen = document->element_from_point(8, 20); };
  document->click(mouse);
  EXPECT_EQ(seen->tag(), dom::Tag::Head) << "another point is the layout's";
  asking.ask = [&] {
    dom::insert(*document->body(), document->tree().create_element(dom::Tag::Hr));
    seen = document->element_from_point(7, 20);
  };
  document->click(mouse);
  EXPECT_EQ(seen->tag(), dom::Tag::Head) << "the tree has changed since";
  EXPECT_EQ(document->element_from_point(-1, 20), nullptr);
}

TEST_F(Document, ADocumentMayBeDroppedWithinItsEvent) {
  struct Dropping : DocumentHandler {
    std::shared_ptr<HTMLDocument> document;
    void onkeydown() override {
      document->connect(nullptr);
      document.reset();
    }
  } dropping;
  dropping.document = HTMLDocument::create(dom::parse_document(u"<p>x</p>"), u"");
  const std::weak_ptr<HTMLDocument> weak = dropping.document;
  HTMLDocument* raw = dropping.document.get();
  raw->set_designMode(u"On");
  raw->connect(&dropping);
  raw->key_down(typed(u"b"));
  EXPECT_TRUE(weak.expired());
}

TEST_F(Document, DesignModeIsOnOrOff) {
  document->set_designMode(u"OFF");
  EXPECT_EQ(document->designMode(), u"Off");
  EXPECT_THROW(document->set_designMode(u"maybe"), RuntimeError);
}

TEST_F(Document, TitlesAreStrippedAndMadeWhereThereIsNone) {
  EXPECT_EQ(document->title(), u"");
  document->set_title(u"");
  EXPECT_EQ(document->first(dom::Tag::Title), nullptr);
  document->set_title(u" a \n b ");
  EXPECT_EQ(document->title(), u"a b");
}

TEST_F(Document, AddressesAreSeenFromTheBaseOrTheDocument) {
  EXPECT_EQ(document->absolute_url(u"z.gif"), u"file:///x/z.gif");
  auto base = document->tree().create_element(dom::Tag::Base);
  dom::set_attribute(*base, dom::names::href, u"http://");
  dom::insert(*document->tree().head(), base);
  EXPECT_EQ(document->absolute_url(u"z.gif"), u"z.gif") << "a base that is none";
  dom::set_attribute(*base, dom::names::href, u"http://e.org/d/");
  EXPECT_EQ(document->absolute_url(u"../z.gif"), u"http://e.org/z.gif");
}

TEST_F(Document, CommandsAnswerInThePlatformsWay) {
  load(u"<p><b>[one]</b></p>");
  EXPECT_EQ(document->queryCommandValue(u"BOLD"), CommandValue(true));
  EXPECT_EQ(document->queryCommandValue(u"Italic"), CommandValue(false));
  EXPECT_EQ(document->queryCommandValue(u"Paste"), CommandValue(false));
  EXPECT_THROW(document->queryCommandValue(u"NoSuch"), RuntimeError);
  load(u"<p><font color=#102030>[one]</font></p>");
  EXPECT_EQ(document->queryCommandValue(u"ForeColor"), CommandValue(std::int32_t(0x302010)));
}

TEST_F(Document, NewContentIsNoStep) {
  load(u"<p>a[]</p>");
  document->key_down(typed(u"b"));
  document->load_body(u"<p>new</p>");
  EXPECT_FALSE(document->tree().journal().can_undo());
  EXPECT_EQ(dom::inner_html(*document->body()), u"<P>new</P>");
}

// --- a document that the user may not edit ---

class ReadOnly : public testing::Test, protected DocumentHandler {
 protected:
  ReadOnly() {
    document_->set_designMode(u"On");
    document_->connect(this);
    document_->editor().selection().set({text(), 1}, {text(), 2});
    keys_ = 0;
  }
  ~ReadOnly() override { document_->connect(nullptr); }
  bool user_may_edit() const override { return editable_; }
  void onkeydown() override { ++keys_; }

  dom::Node* text() { return document_->body()->first_child()->first_child(); }
  std::string html() const { return to_utf8(dom::inner_html(*document_->body())); }

  std::shared_ptr<HTMLDocument> document_ =
      HTMLDocument::create(dom::parse_document(u"<p>one two"), u"file:///tmp/a.html");
  bool editable_ = false;
  int keys_ = 0;
};

TEST_F(ReadOnly, KeysAreHeardAndChangeNothing) {
  for (const char16_t* name : {u"Enter", u"Backspace", u"Delete", u"Tab"})
    document_->key_down({.key = name, .key_code = 1});
  document_->key_down({.key = u"x", .text = u"x", .key_code = 88});
  document_->key_down({.key = u"b", .key_code = 66, .control = true});
  EXPECT_EQ(keys_, 6);
  EXPECT_EQ(html(), "<P>one two</P>");
}

TEST_F(ReadOnly, AnInputMethodWritesNothing) {
  document_->compose(u"ni", 2);
  EXPECT_EQ(html(), "<P>one two</P>");
  EXPECT_FALSE(document_->is_composing());
  document_->input_text(u"\u4F60");
  document_->compose({}, 0);
  document_->input_text(u"\u4F60");
  EXPECT_EQ(html(), "<P>one two</P>");
  EXPECT_EQ(keys_, 2);
}

TEST_F(ReadOnly, WhatWasComposedBeforeStaysAndNoMoreComes) {
  editable_ = true;
  document_->compose(u"ni", 2);
  editable_ = false;
  document_->compose(u"nih", 3);
  document_->input_text(u"z");
  EXPECT_EQ(html(), "<P>onie two</P>");
  EXPECT_FALSE(document_->is_composing());
}

TEST_F(ReadOnly, NothingIsDraggedOrDropped) {
  platform::TransferData data;
  data.text = u"new";
  drop_data(*document_, {text(), 0}, data);
  paste_at(*document_, {text(), 0}, data);
  drop_selection(*document_, {text(), 7}, DropEffect::Move);
  EXPECT_EQ(html(), "<P>one two</P>");
  editable_ = true;
  paste_at(*document_, {text(), 0}, data);
  EXPECT_EQ(html(), "<P>newone two</P>");
}

TEST_F(ReadOnly, CommandsOfProgramsAct) {
  EXPECT_TRUE(document_->execCommand(u"bold", false, u""));
  EXPECT_EQ(html(), "<P>o<B>n</B>e two</P>");
}

// --- content that comes later ---

TEST(FilledDocument, ComposesInItsNewContent) {
  const auto document = HTMLDocument::create(dom::parse_document(u"<p>before"), u"file:///tmp/a.html");
  document->set_designMode(u"On");
  document->editor().selection().collapse({document->body()->first_child()->first_child(), 6});
  document->compose(u"ni", 2);
  document->fill(dom::parse_document(u"<p>new"), u"file:///tmp/b.html");
  EXPECT_FALSE(document->is_composing());
  document->set_designMode(u"On");
  document->editor().selection().collapse({document->body()->first_child()->first_child(), 3});
  document->compose(u"xy", 2);
  EXPECT_EQ(to_utf8(dom::inner_html(*document->body())), "<P>newxy</P>");
  document->input_text(u"z");
  EXPECT_EQ(to_utf8(dom::inner_html(*document->body())), "<P>newz</P>");
  EXPECT_EQ(document->tree().journal().depth(), 1u);
}

TEST(FilledDocument, KeepsItsClipboard) {
  headless::Clipboard clipboard;
  const auto document = HTMLDocument::create(dom::parse_document(u"<p>before"), u"file:///tmp/a.html");
  document->set_clipboard(&clipboard);
  document->fill(dom::parse_document(u"<p>new"), u"file:///tmp/b.html");
  document->set_designMode(u"On");
  dom::Node* text = document->body()->first_child()->first_child();
  document->editor().selection().set({text, 0}, {text, 3});
  EXPECT_TRUE(document->execCommand(u"copy", false, u""));
  EXPECT_EQ(clipboard.read("text/plain"), "new");
  document->set_clipboard(nullptr);
}

}  // namespace
}  // namespace tvx::browser
