#include "core/control_fixture.h"
#include "tvx/dom/journal.h"

/// What can be seen can be used: each button and each item does something, or says why it can't.
namespace tvx::core {
namespace {

using browser::MouseButton;

constexpr std::u16string_view page =
    u"<P>one two</P><P><A href=\"http://a.b/\">link</A></P>"
    u"<TABLE><TBODY><TR><TD>a</TD><TD>b</TD><TD>c</TD></TR><TR><TH>d</TH><TD>e</TD><TD>f</TD></TR></TBODY>"
    u"</TABLE><P><IMG src=\"x.gif\"></P><UL><LI>item</LI></UL>";

class NothingDead : public Control {
 protected:
  /// A document with something selected, something to undo, to redo and to paste.
  void start_ready() {
    menus = {};
    start_with(page);
    control->set_CSSText(u".a { color: green }");
    control->set_showFormToolbar(true);
    clipboard.publish({{"text/plain", "pasted"}});
    select_word();
    control->InsertAtCursor(u"ONE", ed_InsertType::ed_InsertReplaceSelection);
    control->InsertAtCursor(u"TWO", ed_InsertType::ed_InsertReplaceSelection);
    control->undo_document();
    select_word();
    watch();
  }
  void select_word() {
    dom::Node* text = element(dom::Tag::P)->first_child();
    control->DOM()->select([&](editing::Selection& selection) { selection.set({{text, 0}, {text, 3}}); });
  }
  void select(dom::Tag tag) {
    dom::Element* target = element(tag);
    control->DOM()->select([&](editing::Selection& selection) {
      selection.set({{target, 0}, {target, dom::length_of(*target)}});
    });
  }
  void watch() {
    dialogs.on_opened([this](const headless::ShownDialog&) { ++opened_; });
    forms.on_opened([this](platform::Form& form) {
      ++opened_;
      form.cancel();
    });
    dialogs.expect(
        {.kind = headless::DialogKind::link, .answer = std::u16string(u"http://new/"), .times = 9});
  }
  /// All that a user could see of what was done.
  std::u16string seen() {
    std::u16string all = body() + (control->InCodeView() ? u"code" : u"design");
    all += from_utf8(std::to_string(opened_) + " " +
                     std::to_string(std::ranges::count(window.told, "print asking")) + " " +
                     std::to_string(clipboard.changes()));
    return all;
  }

 private:
  int opened_ = 0;
};

TEST_F(NothingDead, EveryVisibleButtonActsOrSaysWhyNot) {
  start_ready();
  int acted = 0, excused = 0;
  for (const bool forms_bar : {false, true}) {
    const auto bar = [&]() -> platform::Toolbar& {
      return forms_bar ? control->Toolbar2() : control->Toolbar1();
    };
    for (int i = 1; i <= bar().Count(); ++i) {
      start_ready();
      platform::Button& button = bar().Item(i);
      if (!button.Visible() || button.Style() == platform::ButtonStyle::Separator) continue;
      if (!button.Enabled() || !button.Obstacle().empty()) {
        EXPECT_FALSE(button.Obstacle().empty()) << to_utf8(button.Key());
        ++excused;
        continue;
      }
      const std::u16string key = button.Key();
      // What is left-aligned already looks the same aligned to the left.
      if (key == u"Align Left") control->Right_justify();
      if (key == u"unindent") control->indent_document();
      // Where all words are right nobody is asked.
      if (key == u"Spell Check") control->InsertAtCursor(u"qqxqqx", ed_InsertType::ed_InsertReplaceSelection);
      window.told.clear();
      const std::u16string before = seen();
      control->press(bar(), key);
      EXPECT_NE(seen(), before) << to_utf8(key);
      ++acted;
    }
  }
  EXPECT_EQ(acted, 37);
  EXPECT_EQ(excused, 0);
}

TEST_F(NothingDead, EveryItemOfTheMousesMenusActsOrSaysWhyNot) {
  for (const dom::Tag tag : {dom::Tag::P, dom::Tag::A, dom::Tag::Img, dom::Tag::Table}) {
    std::vector<std::u16string> names;
    const auto open = [&](std::u16string choose, const std::function<void(platform::Menu&)>& inside) {
      start_ready();
      if (tag == dom::Tag::A || tag == dom::Tag::P) select(tag);
      menus.expect({.menu = u"", .choose = std::move(choose), .while_open = inside});
      browser::MouseInput mouse = at(element(tag), MouseButton::Right);
      if (tag == dom::Tag::A || tag == dom::Tag::P)
        mouse.place = dom::Boundary{element(tag)->first_child(), 1};
      control->DOM()->mouse_press(mouse);
    };
    open(u"", [&](platform::Menu& menu) {
      for (platform::Menu* item : platform::all_items(menu)) {
        if (item->is_separator() || !item->Visible() || !item->items().empty()) continue;
        if (item->Enabled() && item->Obstacle().empty())
          names.push_back(platform::name_with_index(*item));
        else
          EXPECT_FALSE(item->Obstacle().empty()) << to_utf8(item->Name());
      }
    });
    EXPECT_GT(names.size(), 2u);
    for (const std::u16string& name : names) {
      if (name == u"mnuMiscClass(0)") continue;  // takes a class away, and there is none
      std::u16string before;
      open(name, [&](platform::Menu&) { before = seen(); });
      EXPECT_NE(seen(), before) << to_utf8(name);
    }
  }
}

TEST_F(NothingDead, EveryItemOfTheElementPathActsOrSaysWhyNot) {
  int excused = 0;
  for (const dom::Tag tag : {dom::Tag::P, dom::Tag::A, dom::Tag::Img, dom::Tag::Table, dom::Tag::Tbody,
                             dom::Tag::Tr, dom::Tag::Td, dom::Tag::Th, dom::Tag::Li}) {
    std::vector<std::u16string> names;
    const auto open = [&](std::u16string choose, const std::function<void(platform::Menu&)>& inside) {
      start_ready();
      control->DOM()->mouse_press(at(element(tag)));
      menus.expect({.menu = u"mnuToolProp", .choose = std::move(choose), .while_open = inside});
      platform::Toolbar& path = control->tlbDOM();
      path.press(path.Item(path.Count()));
    };
    open(u"", [&](platform::Menu& menu) {
      for (platform::Menu* item : platform::all_items(menu)) {
        if (item->is_separator() || !item->Visible() || !item->items().empty()) continue;
        if (item->parent() && !item->parent()->Visible() && item->parent()->parent()) continue;
        if (item->Enabled() && item->Obstacle().empty()) {
          names.push_back(platform::name_with_index(*item));
        } else {
          EXPECT_FALSE(item->Obstacle().empty()) << to_utf8(item->Name());
          ++excused;
        }
      }
    });
    for (const std::u16string& name : names) {
      if (name == u"mnuClass(0)") continue;  // takes a class away, and there is none
      std::u16string before;
      open(name, [&](platform::Menu&) { before = seen(); });
      EXPECT_NE(seen(), before) << to_utf8(name) << " of " << to_utf8(element(tag)->display_name());
    }
  }
  EXPECT_GT(excused, 5);
}

// --- what can't act just now is grey ---

class WhatCanAct : public Control {
 protected:
  std::u16string obstacle(std::u16string_view key) { return control->Toolbar1().Item(key).Obstacle(); }
  bool can_act(std::u16string_view key) { return obstacle(key).empty(); }
  void news() {
    control->DOM()->select([&](editing::Selection& selection) { selection.set(selection.range()); });
  }
};

TEST_F(WhatCanAct, CuttingAndCopyingWantASelection) {
  start();
  load(u"<P>o[]ne</P>");
  news();
  EXPECT_FALSE(can_act(u"Copy"));
  EXPECT_FALSE(can_act(u"Cut"));
  EXPECT_TRUE(control->Toolbar1().Item(u"Copy").Enabled()) << "what hosts set and read is another matter";
  control->DOM()->execCommand(u"selectAll", false, u"");
  EXPECT_TRUE(can_act(u"Copy"));
  EXPECT_TRUE(can_act(u"Cut"));
  control->cut_document();
  EXPECT_FALSE(can_act(u"Cut"));
}

TEST_F(WhatCanAct, PastingWantsSomethingOnTheClipboard) {
  start();
  load(u"<P>o[]ne</P>");
  news();
  EXPECT_EQ(obstacle(u"Paste"), u"There is nothing to paste");
  clipboard.publish({{"text/plain", "x"}});
  EXPECT_TRUE(can_act(u"Paste")) << "another program has copied, and nothing else has happened";
  clipboard.publish({});
  EXPECT_FALSE(can_act(u"Paste"));
}

TEST_F(WhatCanAct, TheMousesMenuSaysTheSame) {
  start_with(u"<P>one</P>");
  const auto obstacle_of = [&](std::u16string_view item) { return control->menu(item)->Obstacle(); };
  const auto right_press = [&] { control->DOM()->mouse_press(at(element(dom::Tag::P), MouseButton::Right)); };
  right_press();
  EXPECT_EQ(obstacle_of(u"mnuMiscCut"), u"Nothing is selected");
  EXPECT_EQ(obstacle_of(u"mnuMiscCopy"), u"Nothing is selected");
  EXPECT_EQ(obstacle_of(u"mnuMiscPaste"), u"There is nothing to paste");
  EXPECT_TRUE(control->menu(u"mnuMiscPaste")->Enabled()) << "as hosts know it on an empty clipboard";
  EXPECT_EQ(obstacle_of(u"mnuMiscSource"), u"");
  clipboard.publish({{"text/plain", "x"}});
  control->set_HiddenButtons(u"toggle");
  right_press();
  EXPECT_EQ(obstacle_of(u"mnuMiscPaste"), u"");
  EXPECT_EQ(obstacle_of(u"mnuMiscSource"), u"The code view is switched off");
}

TEST_F(WhatCanAct, UndoAndRedoFollowTheJournal) {
  start_with(u"<P>one</P>");
  load(u"<P>one[]</P>");
  EXPECT_FALSE(can_act(u"Undo"));
  EXPECT_FALSE(can_act(u"Redo"));
  key(u"x", 88);
  EXPECT_TRUE(can_act(u"Undo"));
  EXPECT_FALSE(can_act(u"Redo"));
  control->press(control->Toolbar1(), u"Undo");
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_FALSE(can_act(u"Undo"));
  EXPECT_TRUE(can_act(u"Redo"));
  control->press(control->Toolbar1(), u"Redo");
  EXPECT_TRUE(can_act(u"Undo"));
  std::u16string file = path("saved.html");
  control->Save_document(file, false);
  EXPECT_FALSE(can_act(u"Undo")) << "of a document that is saved the button undoes nothing";
}

TEST_F(WhatCanAct, AlignmentAndListsShowTheParagraphsState) {
  start();
  load(u"<P align=\"center\">o[]ne</P><OL><LI>two</LI></OL>");
  news();
  const auto pressed = [&](std::u16string_view key) { return control->Toolbar1().Item(key).Value() == 1; };
  EXPECT_TRUE(pressed(u"Center"));
  EXPECT_FALSE(pressed(u"Align Left"));
  EXPECT_FALSE(pressed(u"orderedlist"));
  control->press(control->Toolbar1(), u"Align Right");
  EXPECT_TRUE(pressed(u"Align Right"));
  EXPECT_FALSE(pressed(u"Center"));
  load(u"<P>one</P><OL><LI>t[]wo</LI></OL>");
  news();
  EXPECT_TRUE(pressed(u"orderedlist"));
  EXPECT_FALSE(pressed(u"unorderedlist"));
  control->press(control->Toolbar1(), u"unorderedlist");
  EXPECT_TRUE(pressed(u"unorderedlist"));
}

}  // namespace
}  // namespace tvx::core
