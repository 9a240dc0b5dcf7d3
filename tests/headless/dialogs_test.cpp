#include "tvx/headless/dialogs.h"

#include <gtest/gtest.h>

#include <vector>

namespace tvx::headless {
namespace {

using platform::FileDialog;
using platform::MessageAnswer;
using platform::MessageBox;
using platform::MessageButtons;
using platform::WindowHandle;

const FileDialog some_file = {
    {{u"HTML Documents", u"*.htm;*.html"}}, u"Open HTML File", u"*.html", WindowHandle{7}};
const MessageBox discard = {.text = u"Discard Changes?", .buttons = MessageButtons::ok_cancel};

TEST(Dialogs, AreCancelledWhereNothingIsExpected) {
  Dialogs dialogs;
  EXPECT_EQ(dialogs.ShowColor(white, WindowHandle::none), no_colour);
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"");
  EXPECT_EQ(dialogs.ShowSave(some_file), u"");
  EXPECT_EQ(dialogs.show_message(discard), MessageAnswer::cancel);
  EXPECT_EQ(dialogs.show_message(MessageBox{.text = u"Find"}), MessageAnswer::ok);
}

TEST(Dialogs, AreAnsweredByTheOldestExpectationOfTheirKind) {
  Dialogs dialogs;
  dialogs.expect({.kind = DialogKind::open, .answer = std::u16string(u"/a")});
  dialogs.expect({.kind = DialogKind::save, .answer = std::u16string(u"/s")});
  dialogs.expect({.kind = DialogKind::open, .answer = std::u16string(u"/b")});
  EXPECT_EQ(dialogs.ShowSave(some_file), u"/s");
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"/a");
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"/b");
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"");
  EXPECT_EQ(dialogs.expectations(), 0u);
}

TEST(Dialogs, ALinkIsAnsweredWithItsAddress) {
  Dialogs dialogs;
  std::u16string seen;
  dialogs.expect({.kind = DialogKind::link,
                  .answer = std::u16string(u" http://a.b/ "),
                  .while_open = [&](const ShownDialog& shown) {
                    seen = std::get<platform::LinkDialog>(shown).address;
                  }});
  dialogs.expect({.kind = DialogKind::link, .answer = std::u16string(u"  ")});
  EXPECT_EQ(dialogs.ask_link({u"old"}), u"http://a.b/");
  EXPECT_EQ(seen, u"old");
  EXPECT_EQ(dialogs.ask_link({u"old"}), std::nullopt);
  EXPECT_EQ(dialogs.ask_link({u"old"}), std::nullopt);
}

TEST(Dialogs, AnExpectationLastsAsOftenAsTold) {
  Dialogs dialogs;
  dialogs.expect({.kind = DialogKind::color, .answer = Colour(255), .times = 2});
  EXPECT_EQ(dialogs.ShowColor(white, WindowHandle::none), 255);
  EXPECT_EQ(dialogs.ShowColor(white, WindowHandle::none), 255);
  EXPECT_EQ(dialogs.ShowColor(white, WindowHandle::none), no_colour);
}

TEST(Dialogs, AnExpectedCancelIsACancel) {
  Dialogs dialogs;
  dialogs.expect({.kind = DialogKind::open});
  dialogs.expect({.kind = DialogKind::open, .answer = std::u16string(u"/b")});
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"");
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"/b");
}

TEST(Dialogs, AnAnswerTheDialogDoesNotHaveCancels) {
  Dialogs dialogs;
  dialogs.expect({.kind = DialogKind::color, .answer = std::u16string(u"red")});
  dialogs.expect({.kind = DialogKind::msgbox, .answer = MessageAnswer::yes});
  EXPECT_EQ(dialogs.ShowColor(white, WindowHandle::none), no_colour);
  EXPECT_EQ(dialogs.show_message(discard), MessageAnswer::cancel);
}

TEST(Dialogs, APathEndsAtItsFirstNul) {
  Dialogs dialogs;
  dialogs.expect({.kind = DialogKind::open, .answer = std::u16string(u"/a.html\0/b", 10)});
  EXPECT_EQ(dialogs.ShowOpen(some_file), u"/a.html");
}

TEST(Dialogs, TheObserverHearsWhatWasShown) {
  Dialogs dialogs;
  std::vector<ShownDialog> opened, closed;
  std::vector<int> ids;
  dialogs.on_opened([&](const ShownDialog& dialog) { opened.push_back(dialog); });
  dialogs.on_closed([&](const ShownDialog& dialog, const ExpectedDialog* expected) {
    closed.push_back(dialog);
    ids.push_back(expected ? expected->id : -1);
  });
  dialogs.expect({.kind = DialogKind::open, .id = 42});
  dialogs.ShowOpen(some_file);
  dialogs.show_message(discard);
  ASSERT_EQ(opened.size(), 2u);
  ASSERT_EQ(closed.size(), 2u);
  EXPECT_EQ(ids, std::vector({42, -1}));
  EXPECT_EQ(name_of(kind_of(closed[0])), u"open");
  EXPECT_EQ(std::get<OpenDialog>(closed[0]).filters, some_file.filters);
  EXPECT_EQ(std::get<OpenDialog>(closed[0]).preset, u"*.html");
  EXPECT_EQ(std::get<OpenDialog>(closed[0]).owner, WindowHandle{7});
  EXPECT_EQ(std::get<MessageBox>(closed[1]).text, u"Discard Changes?");
}

TEST(Dialogs, NestWhileOneIsOpen) {
  Dialogs dialogs;
  MessageAnswer inner = MessageAnswer::cancel;
  dialogs.expect({.kind = DialogKind::msgbox,
                  .answer = MessageAnswer::ok,
                  .while_open = [&](const ShownDialog&) { inner = dialogs.show_message(discard); },
                  .id = 1});
  dialogs.expect({.kind = DialogKind::msgbox, .answer = MessageAnswer::ok, .id = 2});
  EXPECT_EQ(dialogs.show_message(discard), MessageAnswer::ok);
  EXPECT_EQ(inner, MessageAnswer::ok);
  EXPECT_EQ(dialogs.expectations(), 0u);
}

TEST(Dialogs, AnExpectationCanBeTakenBack) {
  Dialogs dialogs;
  dialogs.expect({.kind = DialogKind::color, .answer = Colour(1), .id = 1});
  dialogs.expect({.kind = DialogKind::color, .answer = Colour(2), .id = 2});
  dialogs.forget(1);
  EXPECT_EQ(dialogs.ShowColor(white, WindowHandle::none), 2);
}

}  // namespace
}  // namespace tvx::headless
