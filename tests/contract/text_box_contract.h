#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/platform/clipboard.h"
#include "tvx/platform/text_box.h"

/// What every text box does, with a screen and without one.
namespace tvx::contract {

/// Writes down what a box raises.
class BoxEars final : public platform::TextBoxHandler {
 public:
  void KeyDown(std::int16_t& key_code, std::int16_t) override {
    heard.push_back("down " + std::to_string(key_code));
    if (takes_keys) key_code = 0;
  }
  void KeyPress(std::int16_t& character) override {
    heard.push_back("press " + std::to_string(character));
    if (takes_characters) character = 0;
  }
  void KeyUp(std::int16_t& key_code, std::int16_t) override {
    heard.push_back("up " + std::to_string(key_code));
  }
  void Change() override { ++changes; }
  void GotFocus() override { ++focused; }

  bool TakeBack(bool again) override {
    if (takes_back) taken_back += again ? "redo " : "undo ";
    return takes_back;
  }

  std::vector<std::string> heard;
  bool takes_back = false;
  std::string taken_back;
  int changes = 0, focused = 0;
  bool takes_keys = false, takes_characters = false;
};

constexpr int shift_key = 1, control_key = 2;

/// A `Room` has a box() and its clipboard(), key(name, held) as a user's press and release, show(bool).
template <class Room>
class TextBoxContract : public testing::Test {
 protected:
  TextBoxContract() {
    box().set_handler(&ears);
    box().set_clipboard(&room.clipboard());
    room.show(true);
  }
  ~TextBoxContract() override { box().set_handler(nullptr); }
  platform::TextBox& box() { return room.box(); }
  std::string text() { return to_utf8(box().Text()); }
  void key(std::u16string_view name, int held = 0) { room.key(name, held); }
  void type(std::u16string_view letters) {
    for (std::size_t at = 0; at < letters.size(); ++at) key(letters.substr(at, 1));
  }
  std::size_t caret() { return box().SelStart() + box().SelLength(); }

  Room room;
  BoxEars ears;
};

TYPED_TEST_SUITE_P(TextBoxContract);

TYPED_TEST_P(TextBoxContract, LinesGoInAnyhowAndComeOutWithCrLf) {
  this->box().set_Text(u"one\ntwo\r\nthree");
  EXPECT_EQ(this->text(), "one\r\ntwo\r\nthree");
  EXPECT_EQ(this->box().length(), 13u) << "a line break counts as one";
  EXPECT_EQ(this->box().line_count(), 3u);
  EXPECT_EQ(this->box().line_of(3), 0u);
  EXPECT_EQ(this->box().line_of(4), 1u);
  this->box().select(2, 3);
  EXPECT_EQ(this->box().SelText(), u"e\r\nt");
}

TYPED_TEST_P(TextBoxContract, ATextFromOutsideIsNoChange) {
  this->box().set_Text(u"one");
  EXPECT_EQ(this->ears.changes, 0);
  EXPECT_FALSE(this->box().can_undo());
  this->box().set_SelText(u"x");
  EXPECT_EQ(this->ears.changes, 1);
  EXPECT_EQ(this->text(), "xone");
  EXPECT_EQ(this->box().SelStart(), 1u);
  EXPECT_EQ(this->box().SelLength(), 0u);
}

TYPED_TEST_P(TextBoxContract, ASelectionEndsWithTheText) {
  this->box().set_Text(u"one");
  this->box().select(1, 99);
  EXPECT_EQ(this->box().SelStart(), 1u);
  EXPECT_EQ(this->box().SelLength(), 2u);
  this->box().select(99, 1);
  EXPECT_EQ(this->box().SelStart(), 3u);
}

TYPED_TEST_P(TextBoxContract, KeysTypeAndAreHeard) {
  this->type(u"ab");
  EXPECT_EQ(this->text(), "ab");
  EXPECT_EQ(this->ears.heard,
            (std::vector<std::string>{"down 65", "press 97", "up 65", "down 66", "press 98", "up 66"}));
  this->ears.heard.clear();
  this->key(u"Enter");
  EXPECT_EQ(this->text(), "ab\r\n");
  EXPECT_EQ(this->ears.heard, (std::vector<std::string>{"down 13", "press 13", "up 13"}));
}

TYPED_TEST_P(TextBoxContract, TabTypesAndShiftTabDoesNot) {
  this->key(u"Tab");
  EXPECT_EQ(this->text(), "\t");
  EXPECT_EQ(this->ears.heard, (std::vector<std::string>{"down 9", "press 9", "up 9"}));
  this->key(u"Tab", shift_key);
  EXPECT_EQ(this->text(), "\t");
}

TYPED_TEST_P(TextBoxContract, KeysThatTypeNothingAreNoCharacters) {
  this->box().set_Text(u"abc");
  for (const char16_t* name : {u"Delete", u"ArrowRight", u"Home", u"F5"}) this->key(name);
  for (const std::string& heard : this->ears.heard) EXPECT_FALSE(heard.starts_with("press")) << heard;
  EXPECT_EQ(this->text(), "bc");
}

TYPED_TEST_P(TextBoxContract, BackspaceIsACharacterThatMayBeTakenAway) {
  this->box().set_Text(u"abc");
  this->box().select(3, 0);
  this->key(u"Backspace");
  EXPECT_EQ(this->ears.heard, (std::vector<std::string>{"down 8", "press 8", "up 8"}));
  EXPECT_EQ(this->text(), "ab");
  this->ears.takes_characters = true;
  this->key(u"Backspace");
  this->key(u"x");
  EXPECT_EQ(this->text(), "ab");
}

TYPED_TEST_P(TextBoxContract, AKeyThatIsTakenAwayDoesNothing) {
  this->box().set_Text(u"abc");
  this->ears.takes_keys = true;
  for (const char16_t* name : {u"x", u"Delete", u"Enter", u"Tab", u"End"}) this->key(name);
  EXPECT_EQ(this->text(), "abc");
  EXPECT_EQ(this->caret(), 0u);
}

TYPED_TEST_P(TextBoxContract, TheCaretMovesByCharactersAndLines) {
  this->box().set_Text(u"one\ntwo \U0001F600!");
  this->key(u"End");
  EXPECT_EQ(this->caret(), 3u);
  this->key(u"ArrowDown");
  EXPECT_EQ(this->caret(), 7u);
  this->key(u"ArrowRight");
  this->key(u"ArrowRight");
  EXPECT_EQ(this->caret(), 10u) << "both halves of a character";
  this->key(u"Backspace");
  EXPECT_EQ(this->text(), "one\r\ntwo !");
  this->key(u"Home", control_key);
  EXPECT_EQ(this->caret(), 0u);
  this->key(u"ArrowRight", shift_key);
  EXPECT_EQ(this->box().SelLength(), 1u);
  this->key(u"x");
  EXPECT_EQ(this->text(), "xne\r\ntwo !");
}

TYPED_TEST_P(TextBoxContract, ALockedBoxTakesNoEdits) {
  this->box().set_Text(u"abc");
  this->type(u"x");
  this->box().set_Locked(true);
  this->room.clipboard().SetText(u"new");
  for (const char16_t* name : {u"y", u"Delete", u"Enter", u"Tab"}) this->key(name);
  for (const char16_t* name : {u"v", u"x", u"z", u"y"}) this->key(name, control_key);
  EXPECT_EQ(this->text(), "xabc");
  EXPECT_TRUE(this->box().Locked());
}

TYPED_TEST_P(TextBoxContract, EditsAreTakenBackAndMadeAgain) {
  this->box().set_Text(u"abc");
  this->key(u"Delete");
  EXPECT_TRUE(this->box().can_undo());
  this->key(u"z", control_key);
  EXPECT_EQ(this->text(), "abc");
  EXPECT_FALSE(this->box().can_undo());
  this->key(u"y", control_key);
  EXPECT_EQ(this->text(), "bc");
  platform::SendMessage(this->box().handle(), platform::EM_UNDO);
  EXPECT_EQ(this->text(), "abc");
  platform::SendMessage(this->box().handle(), platform::EM_REDO);
  EXPECT_EQ(this->text(), "bc");
}

TYPED_TEST_P(TextBoxContract, SeveralStretchesAreReplacedAsOneEdit) {
  this->box().set_Text(u"one two\none");
  this->box().replace({{0, 3, u"1"}, {4, 0, u"and\r\n"}, {8, 3, u""}});
  EXPECT_EQ(this->text(), "1 and\r\ntwo\r\n");
  EXPECT_EQ(this->caret(), 10u);
  EXPECT_EQ(this->ears.changes, 1);
  this->box().Undo();
  EXPECT_EQ(this->text(), "one two\r\none");
  EXPECT_FALSE(this->box().can_undo());
  this->box().Redo();
  EXPECT_EQ(this->text(), "1 and\r\ntwo\r\n");
}

TYPED_TEST_P(TextBoxContract, LettersTypedOneAfterTheOtherAreOneStep) {
  this->type(u"abc");
  this->box().Undo();
  EXPECT_EQ(this->text(), "");
  this->box().Redo();
  EXPECT_EQ(this->text(), "abc");
}

TYPED_TEST_P(TextBoxContract, ALineOfAnyLengthIsOneLine) {
  const std::u16string line(30'000, u'x');
  this->box().set_Text(line + u"\nend");
  EXPECT_EQ(this->box().length(), line.size() + 4);
  EXPECT_EQ(this->box().line_count(), 2u);
  EXPECT_EQ(this->box().line_of(29'999), 0u);
  EXPECT_EQ(this->box().line_of(30'001), 1u);
  EXPECT_EQ(this->box().Text(), line + u"\r\nend");
  this->box().select(900, 3000);
  EXPECT_EQ(this->box().SelText(), line.substr(0, 3000));
  this->box().select(0, 0);
  for (std::size_t at = 1; at <= 3000; ++at) {
    this->key(u"ArrowRight");
    ASSERT_EQ(this->caret(), at);
  }
  for (std::size_t at = 3000; at-- > 900;) {
    this->key(u"ArrowLeft");
    ASSERT_EQ(this->caret(), at);
  }
}

TYPED_TEST_P(TextBoxContract, EachKeyInALongLineTakesOneLetter) {
  const std::u16string line(12'000, u'x');
  this->box().set_Text(line);
  this->box().select(2500, 0);
  std::size_t length = line.size();
  for (std::size_t at = 2500; at-- > 900;) {
    this->key(u"Backspace");
    ASSERT_EQ(this->box().length(), --length);
    ASSERT_EQ(this->caret(), at);
  }
  for (int i = 0; i < 1200; ++i) {
    this->key(u"Delete");
    ASSERT_EQ(this->box().length(), --length);
    ASSERT_EQ(this->caret(), 900u);
  }
  this->type(u"abc");
  this->key(u"Enter");
  EXPECT_EQ(this->box().line_count(), 2u);
  EXPECT_EQ(this->box().Text(), line.substr(0, 900) + u"abc\r\n" + line.substr(0, length - 900));
  while (this->box().can_undo()) this->box().Undo();
  EXPECT_EQ(this->box().Text(), line);
}

// Whatever is done, the text is what the edits make of it, and all of them are taken back.
TYPED_TEST_P(TextBoxContract, EditsOfLongLinesAreWhatTheySay) {
  std::u16string text;
  for (int i = 0; i < 3000; ++i) text += i % 700 == 0 ? u"ab>cdef\n" : u"ab> cdefgh";
  const std::u16string first = text;
  this->box().set_Text(text);
  std::uint32_t random = 7;
  const auto below = [&](std::size_t limit) {
    random = random * 1664525 + 1013904223;
    return (random >> 8) % limit;
  };
  const std::u16string pieces[] = {u"", u"x", u"\n", u"a\nb\n", std::u16string(15'000, u'y')};
  for (int i = 0; i < 300; ++i) {
    const std::size_t at = below(text.size()),
                      length = below(3) == 0 ? 0 : below(std::min<std::size_t>(text.size() - at, 4000));
    const std::u16string& piece = pieces[below(std::size(pieces))];
    this->box().select(at, length);
    if (below(4) == 0) {
      this->key(u"x");
      text.replace(at, length, u"x");
    } else {
      this->box().set_SelText(piece);
      text.replace(at, length, piece);
    }
    ASSERT_EQ(this->box().length(), text.size()) << "edit " << i;
    if (i % 20 != 0) continue;
    std::u16string left = this->box().Text();
    std::erase(left, u'\r');
    ASSERT_TRUE(left == text) << "edit " << i;
    ASSERT_EQ(this->box().line_count(), std::size_t(std::ranges::count(text, u'\n')) + 1);
  }
  while (this->box().can_undo()) this->box().Undo();
  std::u16string left = this->box().Text();
  std::erase(left, u'\r');
  EXPECT_TRUE(left == first);
}

TYPED_TEST_P(TextBoxContract, WhatFollowsAnotherSideIsNoEdit) {
  this->box().set_Text(u"one\ntwo\nthree");
  this->box().select(4, 3);
  this->key(u"x");
  this->box().select(6, 2);
  this->ears.heard.clear();
  this->box().follow(0, 3, u"a\r\nlonger");
  EXPECT_EQ(this->text(), "a\r\nlonger\r\nx\r\nthree");
  EXPECT_EQ(this->box().SelText(), u"th") << "the selection stays on what it is on";
  EXPECT_TRUE(this->ears.heard.empty());
  EXPECT_FALSE(this->box().can_undo());
  this->box().follow(this->box().length(), 0, u"!");
  EXPECT_EQ(this->box().SelText(), u"th");
  this->key(u"y");
  EXPECT_EQ(this->text(), "a\r\nlonger\r\nx\r\nyree!");
  EXPECT_TRUE(this->box().can_undo());
}

TYPED_TEST_P(TextBoxContract, AnEmptyFollowingEndsTheHistoryAlone) {
  this->box().set_Text(u"one");
  this->key(u"x");
  EXPECT_TRUE(this->box().can_undo());
  this->box().follow(0, 0, {});
  EXPECT_FALSE(this->box().can_undo());
  EXPECT_EQ(this->text(), "xone");
}

TYPED_TEST_P(TextBoxContract, StepsMayBeSomebodyElses) {
  this->box().set_Text(u"one");
  this->key(u"x");
  this->ears.takes_back = true;
  this->key(u"z", control_key);
  EXPECT_EQ(this->text(), "xone");
  EXPECT_EQ(this->ears.taken_back, "undo ");
  this->key(u"y", control_key);
  EXPECT_EQ(this->ears.taken_back, "undo redo ");
  this->ears.takes_back = false;
  this->key(u"z", control_key);
  EXPECT_EQ(this->text(), "one");
}

TYPED_TEST_P(TextBoxContract, TheClipboardIsTheOneThatItWasGiven) {
  this->box().set_Text(u"one two");
  this->box().select(0, 3);
  this->key(u"c", control_key);
  EXPECT_EQ(this->room.clipboard().GetText(), u"one");
  this->key(u"x", control_key);
  EXPECT_EQ(this->text(), " two");
  this->room.clipboard().SetText(u"a\r\nb");
  this->key(u"v", control_key);
  EXPECT_EQ(this->text(), "a\r\nb two");
  this->box().select(0, 0);
  this->key(u"c", control_key);
  EXPECT_EQ(this->room.clipboard().GetText(), u"a\r\nb") << "nothing is selected";
}

TYPED_TEST_P(TextBoxContract, TheKeyboardComesToABoxThatIsShown) {
  this->box().SetFocus();
  EXPECT_TRUE(this->box().has_focus());
  EXPECT_EQ(this->ears.focused, 1);
  this->box().SetFocus();
  EXPECT_EQ(this->ears.focused, 1) << "it has it already";
  this->room.show(false);
  EXPECT_FALSE(this->box().has_focus());
  this->box().SetFocus();
  EXPECT_FALSE(this->box().has_focus()) << "nobody could see where the text goes";
  EXPECT_EQ(this->ears.focused, 1);
}

TYPED_TEST_P(TextBoxContract, ADisabledBoxTakesNeitherKeysNorTheKeyboard) {
  this->box().set_Enabled(false);
  this->box().SetFocus();
  EXPECT_FALSE(this->box().has_focus());
  this->key(u"x");
  EXPECT_EQ(this->text(), "");
  EXPECT_TRUE(this->ears.heard.empty());
  this->box().set_Enabled(true);
  this->key(u"x");
  EXPECT_EQ(this->text(), "x");
}

REGISTER_TYPED_TEST_SUITE_P(TextBoxContract, LinesGoInAnyhowAndComeOutWithCrLf, ATextFromOutsideIsNoChange,
                            ASelectionEndsWithTheText, KeysTypeAndAreHeard, TabTypesAndShiftTabDoesNot,
                            KeysThatTypeNothingAreNoCharacters, BackspaceIsACharacterThatMayBeTakenAway,
                            AKeyThatIsTakenAwayDoesNothing, TheCaretMovesByCharactersAndLines,
                            ALockedBoxTakesNoEdits, EditsAreTakenBackAndMadeAgain,
                            SeveralStretchesAreReplacedAsOneEdit, LettersTypedOneAfterTheOtherAreOneStep,
                            ALineOfAnyLengthIsOneLine, EachKeyInALongLineTakesOneLetter,
                            EditsOfLongLinesAreWhatTheySay, WhatFollowsAnotherSideIsNoEdit,
                            AnEmptyFollowingEndsTheHistoryAlone, StepsMayBeSomebodyElses,
                            TheClipboardIsTheOneThatItWasGiven, TheKeyboardComesToABoxThatIsShown,
                            ADisabledBoxTakesNeitherKeysNorTheKeyboard);

}  // namespace tvx::contract
