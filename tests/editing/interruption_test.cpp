#include "tvx/base/interruption.h"

#include "editing_fixture.h"
#include "tvx/editing/commands/command_table.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::editing::test {
namespace {

/// A user who stops what runs at its n-th change.
class StopAt final : public InterruptionWatch {
 public:
  explicit StopAt(int change) : left_(change) { set_interruption_watch(this, 1); }
  ~StopAt() override { set_interruption_watch(nullptr); }
  int loop_level() const override { return level; }
  void started() override { ++open_; }
  void ended() override { --open_; }
  bool wants_to_stop() override { return --left_ < 0; }
  bool is_open() const { return open_ != 0; }

  int level = 1;

 private:
  int left_, open_ = 0;
};

struct Act {
  std::string name;
  std::function<void(Editor&)> run;
};

/// What a person can do, each with a value that it takes.
std::vector<Act> acts() {
  static const std::map<std::u16string_view, std::u16string> values{
      {u"backColor", u"#ff0000"},   {u"createLink", u"http://a.example/"},
      {u"fontName", u"Arial"},      {u"fontSize", u"5"},
      {u"foreColor", u"#00ff00"},   {u"formatBlock", u"<h2>"},
      {u"hiliteColor", u"#0000ff"}, {u"insertHTML", u"a<ul><li>b</ul><p>c"},
      {u"insertImage", u"a.png"},   {u"insertText", u"new"}};
  std::vector<Act> acts;
  for (const CommandDefinition& row : command_table()) {
    const std::u16string name(row.name);
    if (row.is_mode || name == u"undo" || name == u"redo") continue;
    const auto value = values.find(row.name);
    const std::u16string given = value == values.end() ? std::u16string() : value->second;
    acts.push_back({to_utf8(name), [name, given](Editor& editor) { editor.execute(name, given); }});
    acts.push_back({to_utf8(name) + " as a writer",
                    [name, given](Editor& editor) { execute_as_writer(editor, name, given); }});
  }
  acts.push_back({"typing", [](Editor& editor) { type_text(editor, u"x"); }});
  for (const char16_t* key : {u"Enter", u"Backspace", u"Delete", u"Tab"})
    acts.push_back({to_utf8(key), [key](Editor& editor) { press_key(editor, {.key = key}); }});
  return acts;
}

constexpr const char* documents[] = {
    "<p>o[ne</p><ul><li>a<li><b>b</b><ol><li>c</ol></ul><div align=right><i>d</i> e</div><h1>f]g</h1>",
    "<p><b>a[b</b><u>c</u><font color=red>d</font><a href=x>e</a></p><blockquote><p>f]</p></blockquote>",
    "<table><tr><td>[a<td>b<tr><td><p>c</p>d<td>e]</table><p>after",
    "<ol><li>a</ol><p>b[]c</p><ul><li>d</ul>",
    "{<pre>a\nb</pre><dl><dt>c<dd>d</dl><span style=\"font-weight:bold\">e<br>f</span>}"};

}  // namespace

class Interruption : public EditingFixture {
 protected:
  /// With a step that can be undone, and one that can be redone.
  void prepare(const char* text) {
    load(text);
    dom::set_attribute(host, dom::names::lang, u"en");
    dom::set_attribute(host, dom::names::dir, u"rtl");
    document->journal().undo();
  }
  std::string all() const { return to_utf8(dom::serialise_node(*document)) + marked(); }

  void expect_nothing_done_when_stopped(const Act& act, const char* text) {
    prepare(text);
    act.run(editor);
    const std::string wanted = all();
    for (int change = 0; change < 2000; ++change) {
      SCOPED_TRACE(act.name + " on " + text + ", stopped at " + std::to_string(change));
      prepare(text);
      const std::string before = all();
      const std::size_t depth = document->journal().depth();
      StopAt user(change);
      const bool done = run_interruptible([&] { act.run(editor); });
      EXPECT_FALSE(user.is_open());
      EXPECT_FALSE(document->journal().is_open());
      if (done) {
        EXPECT_EQ(all(), wanted);
        return;
      }
      ++stopped;
      ASSERT_EQ(all(), before);
      EXPECT_EQ(document->journal().depth(), depth);
      EXPECT_TRUE(document->journal().can_redo());
      set_interruption_watch(nullptr);
      act.run(editor);
      ASSERT_EQ(all(), wanted);
    }
    FAIL() << act.name << " never ended";
  }

  int stopped = 0;
};

TEST_F(Interruption, AtAnyChangeOfAnyActNothingHasBeenDone) {
  editor.set_design_mode(false);
  for (const Act& act : acts())
    for (const char* text : documents) {
      expect_nothing_done_when_stopped(act, text);
      if (HasFatalFailure()) return;
    }
  EXPECT_GT(stopped, 2000);
}

TEST_F(Interruption, AtAnyChangeOfAnUndoOrRedoNothingHasBeenDone) {
  editor.set_design_mode(false);
  for (const Act& act : acts()) {
    if (act.name.find(" as a writer") != std::string::npos) continue;
    prepare(documents[0]);
    act.run(editor);
    dom::Journal& journal = document->journal();
    if (!journal.can_undo()) continue;
    for (const char16_t* command : {u"undo", u"redo"}) {
      const std::string before = all();
      const std::size_t depth = journal.depth();
      bool done = false;
      for (int change = 0; !done; ++change) {
        SCOPED_TRACE(act.name + ", " + to_utf8(command) + " stopped at " + std::to_string(change));
        ASSERT_LT(change, 2000);
        const StopAt user(change);
        done = run_interruptible([&] { editor.execute(command); });
        EXPECT_FALSE(user.is_open());
        if (done) break;
        ++stopped;
        ASSERT_EQ(all(), before);
        EXPECT_EQ(journal.depth(), depth);
        EXPECT_EQ(journal.can_redo(), command == std::u16string_view(u"redo"));
      }
      EXPECT_NE(all(), before) << act.name;
      EXPECT_NE(journal.depth(), depth);
    }
  }
  EXPECT_GT(stopped, 500);
}

TEST_F(Interruption, WhatAHostCallsIsNotStopped) {
  prepare(documents[0]);
  const StopAt user(0);
  EXPECT_TRUE(editor.execute(u"bold"));
  EXPECT_TRUE(editor.execute(u"insertOrderedList"));
}

TEST_F(Interruption, WhatAHostCallsInAnActIsNotStopped) {
  prepare(documents[0]);
  const StopAt user(0);
  EXPECT_TRUE(run_interruptible([&] {
    const Uninterrupted host;
    EXPECT_TRUE(editor.execute(u"bold"));
  }));
}

TEST_F(Interruption, WhatRunsInALoopWithinAnActIsNotThatAct) {
  prepare(documents[0]);
  StopAt user(0);
  EXPECT_TRUE(run_interruptible([&] {
    user.level = 2;
    EXPECT_TRUE(editor.execute(u"bold"));
    // An act of its own, which ends in there.
    EXPECT_FALSE(run_interruptible([&] { editor.execute(u"italic"); }));
    user.level = 1;
  }));
}

// A dialog that shows what it will do, in a step that is open around it.
TEST_F(Interruption, WhatADialogChangesInAStepOfTheActIsNotStopped) {
  prepare(documents[0]);
  StopAt user(0);
  EXPECT_TRUE(run_interruptible([&] {
    const dom::UndoStep step(document->journal(), u"Preview");
    user.level = 2;
    EXPECT_TRUE(editor.execute(u"bold"));
    user.level = 1;
  }));
}

TEST_F(Interruption, TheRestOfAnActIsLeftToo) {
  prepare(documents[0]);
  const StopAt user(5);
  bool went_on = false;
  EXPECT_FALSE(run_interruptible([&] {
    run_interruptible([&] { editor.execute(u"bold"); });
    went_on = true;
  }));
  EXPECT_FALSE(went_on);
}

// They join the run: with it, all that was typed before would go.
TEST_F(Interruption, LettersOfARunAreNotStopped) {
  prepare("<p>[]</p>");
  const StopAt user(1000);
  type_text(editor, u"a");
  {
    const StopAt impatient(0);
    EXPECT_TRUE(run_interruptible([&] { type_text(editor, u"b"); }));
  }
  EXPECT_EQ(html(), "<P>ab</P>");
}

}  // namespace tvx::editing::test
