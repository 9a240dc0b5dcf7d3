#include "tvx/source/code_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/headless/property_bag.h"
#include "tvx/platform/clipboard.h"

namespace tvx::source {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t grey = colour_button_shadow, dark = colour_window_text;

// --- the numbers of lines ---

std::vector<std::pair<int, std::uint32_t>> numbers(const LineMarks& marks, int rows) {
  std::vector<std::pair<int, std::uint32_t>> result;
  for (const LineNumber& row : line_numbers(marks, {rows * 16, 16}))
    result.push_back({int(row.number), row.colour});
  return result;
}

TEST(LineNumbers, OneLineShowsOneDarkNumber) {
  EXPECT_THAT(numbers({.count = 1}, 20), ElementsAre(std::pair(1, dark)));
}

TEST(LineNumbers, SelectedLinesStandDark) {
  EXPECT_THAT(numbers({.count = 7, .first_selected = 2, .last_selected = 4}, 20),
              ElementsAre(std::pair(1, grey), std::pair(2, grey), std::pair(3, dark), std::pair(4, dark),
                          std::pair(5, dark), std::pair(6, grey), std::pair(7, grey)));
}

TEST(LineNumbers, ASelectionThatBeginsAboveThePaneStaysGrey) {
  EXPECT_THAT(numbers({.count = 7, .first_visible = 3, .first_selected = 2, .last_selected = 4}, 20),
              ElementsAre(std::pair(4, grey), std::pair(5, grey), std::pair(6, grey), std::pair(7, grey)));
}

TEST(LineNumbers, WholeLinesOnlyAndOneAtLeast) {
  EXPECT_EQ(line_numbers({.count = 100}, {50, 16}).size(), 3u);
  EXPECT_EQ(line_numbers({.count = 100}, {48, 16}).size(), 3u);
  EXPECT_EQ(line_numbers({.count = 100}, {47, 16}).size(), 2u);
  EXPECT_EQ(line_numbers({.count = 100}, {0, 16}).size(), 1u);
  EXPECT_EQ(line_numbers({.count = 100}, {100, 0}).size(), 100u) << "a height that is none ends too";
}

TEST(LineNumbers, EachStandsALineBelowTheOneBefore) {
  const auto rows = line_numbers({.count = 3}, {100, 17});
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[2], (LineNumber{3, grey, 34}));
}

// --- the control ---

class MemoryClipboard final : public platform::Clipboard {
 public:
  std::vector<std::string> targets() const override {
    std::vector<std::string> names;
    for (const auto& item : items) names.push_back(item.first);
    return names;
  }
  std::string read(std::string_view target) const override {
    for (const auto& item : items)
      if (item.first == target) return item.second;
    return {};
  }
  void publish(platform::TransferItems content) override { items = std::move(content); }
  platform::TransferItems items;
};

class CodeView : public testing::Test, protected CodeViewEvents {
 protected:
  CodeView() {
    code.set_clipboard(&clipboard);
    code.set_events(this);
  }
  ~CodeView() override { clear_faults(); }

  void Click() override { heard.push_back("Click"); }
  void DblClick() override { heard.push_back("DblClick"); }
  void KeyDown(std::int16_t& key, std::int16_t shift) override {
    heard.push_back("KeyDown " + std::to_string(key) + " " + std::to_string(shift));
    if (take_key) key = 0;
  }
  void KeyPress(std::int16_t& key) override { heard.push_back("KeyPress " + std::to_string(key)); }
  void KeyUp(std::int16_t& key, std::int16_t shift) override {
    heard.push_back("KeyUp " + std::to_string(key) + " " + std::to_string(shift));
  }
  void Change() override { heard.push_back("Change"); }
  void GotFocus() override { heard.push_back("GotFocus"); }
  void PropertyChanged(std::u16string_view key) override { changed.push_back(to_utf8(key)); }

  void show(std::u16string_view text) {
    code.set_Text(text);
    code.set_Visible(true);
    code.attachMessages();
    heard.clear();
    changed.clear();
  }
  void key(int key_code, int shift = 0, std::u16string_view text = {}) {
    code.plain_box().key(std::int16_t(key_code), std::int16_t(shift), text, true);
  }
  void type(std::u16string_view text) {
    for (const char16_t c : text) key(ascii_upper(c), 0, std::u16string(1, c));
  }
  void send(platform::Message message) { platform::SendMessage(code.hwnd(), message); }
  std::u16string on_clipboard() const { return clipboard.GetText(); }

  static constexpr int shift = 1, control = 2;
  MemoryClipboard clipboard;
  OrvelCV code;
  std::vector<std::string> heard, changed;
  bool take_key = false;
};

TEST_F(CodeView, TextReadsWithCarriageReturns) {
  code.set_Text(u"a\nb\r\nc\rd");
  EXPECT_EQ(code.Text(), u"a\r\nb\r\nc\r\nd");
  EXPECT_EQ(code.TextBox1().Text(), u"a\r\nb\r\nc\r\nd");
  EXPECT_THAT(changed, ElementsAre("Text"));
  EXPECT_THAT(heard, ElementsAre()) << "a text put in is no change";
}

TEST_F(CodeView, LinesAreFoundByCharacters) {
  show(u"one\ntwo\n\nfour");
  EXPECT_EQ(code.LineCount(), 4);
  EXPECT_EQ(code.LineForCharacterIndex(0), 0);
  EXPECT_EQ(code.LineForCharacterIndex(3), 0);
  EXPECT_EQ(code.LineForCharacterIndex(4), 1);
  EXPECT_EQ(code.LineForCharacterIndex(8), 2);
  EXPECT_EQ(code.LineForCharacterIndex(9), 3);
  EXPECT_EQ(code.LineForCharacterIndex(999), 3);
  EXPECT_EQ(code.FirstVisibleLine(), 0);
}

TEST_F(CodeView, LongLinesAreOneNumberEach) {
  show(std::u16string(100'000, u'x') + u"\n" + std::u16string(100'000, u'y'));
  EXPECT_EQ(code.LineCount(), 2);
  EXPECT_EQ(code.line_numbers().size(), 1u) << "no pane yet: one row";
  code.set_pane({1000, 16});
  EXPECT_EQ(code.line_numbers().size(), 2u);
}

TEST_F(CodeView, TheNumbersFollowSelectionAndScrolling) {
  show(u"1\n2\n3\n4\n5\n6\n7");
  code.resize(9000, 10 * 16 * 15);
  code.TextBox1().select(4, 5);  // lines 3 to 5
  const auto rows = code.line_numbers();
  ASSERT_EQ(rows.size(), 7u);
  for (std::size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(rows[i].colour, i >= 2 && i <= 4 ? dark : grey) << i + 1;
  code.plain_box().scroll_to(3);
  EXPECT_EQ(code.line_numbers().front(), (LineNumber{4, grey, 0}));
}

TEST_F(CodeView, ASelectionThatEndsBehindALineBreakEndsInThatLine) {
  show(u"1\n2\n3");
  code.TextBox1().select(0, 2);
  EXPECT_EQ(code.line_marks().last_selected, 0u);
  code.TextBox1().select(0, 3);
  EXPECT_EQ(code.line_marks().last_selected, 1u);
  code.TextBox1().select(1, 1);
  EXPECT_EQ(code.line_marks().last_selected, 0u) << "the line break belongs to its line";
}

struct Repaints final : CodeViewObserver {
  int times = 0;
  void code_view_changed() override {}
  void line_numbers_changed() override { ++times; }
};

TEST_F(CodeView, TheNumbersArePaintedAgainWhereTheyMayHaveChanged) {
  show(u"a\nb");
  Repaints repaints;
  code.add_observer(repaints);
  const auto painted = [&](auto&& act) {
    repaints.times = 0;
    act();
    return repaints.times > 0;
  };
  EXPECT_TRUE(painted([&] { code.plain_box().key(65, 0, u"", false); })) << "a key let go";
  EXPECT_TRUE(painted([&] { type(u"x"); }));
  EXPECT_TRUE(painted([&] { code.TextBox1().select(0, 1); }));
  EXPECT_TRUE(painted([&] { send(platform::WM_VSCROLL); }));
  EXPECT_TRUE(painted([&] { code.resize(100, 200); }));
  EXPECT_FALSE(painted([&] { code.resize(100, 200); }));
  EXPECT_FALSE(painted([&] { code.set_SelStart(3); }));
  code.remove_observer(repaints);
}

TEST_F(CodeView, TabTypesATab) {
  show(u"ab");
  code.TextBox1().select(1, 0);
  key(9, 0, u"\t");
  EXPECT_EQ(code.Text(), u"a\tb");
  EXPECT_THAT(heard, ElementsAre("KeyDown 9 0", "Change"));
  key(9, shift, u"\t");
  EXPECT_EQ(heard[2], "KeyDown 9 1");
}

TEST_F(CodeView, TabReplacesTheSelection) {
  show(u"abc");
  code.TextBox1().select(0, 2);
  key(9, 0, u"\t");
  EXPECT_EQ(code.Text(), u"\tc");
}

TEST_F(CodeView, AHostTakesAKeyAwayByItsCode) {
  show(u"");
  take_key = true;
  type(u"x");
  key(9, 0, u"\t");
  EXPECT_EQ(code.Text(), u"");
}

TEST_F(CodeView, ControlASelectsAllAndIsConsumed) {
  show(u"a\nb");
  key(u'A', control);
  EXPECT_EQ(code.TextBox1().SelStart(), 0u);
  EXPECT_EQ(code.TextBox1().SelText(), u"a\r\nb");
  EXPECT_THAT(heard, ElementsAre()) << "the box itself never saw the key";
}

TEST_F(CodeView, ControlCPutsPlainTextOnTheClipboard) {
  show(u"a\nbc");
  clipboard.items = {{"text/rtf", "{rich}"}};
  code.TextBox1().select(0, 3);
  key(u'C', control);
  EXPECT_EQ(on_clipboard(), u"a\r\nb");
  EXPECT_FALSE(clipboard.GetFormat(platform::ClipboardFormat::rich_text));
  EXPECT_EQ(code.Text(), u"a\r\nbc");
}

TEST_F(CodeView, ControlXCuts) {
  show(u"abc");
  code.TextBox1().select(1, 1);
  key(u'X', control);
  EXPECT_EQ(on_clipboard(), u"b");
  EXPECT_EQ(code.Text(), u"ac");
  EXPECT_THAT(heard, ElementsAre("Change"));
}

TEST_F(CodeView, TheClipboardsMessagesGoTheSameWay) {
  show(u"abc");
  code.TextBox1().select(0, 1);
  send(platform::WM_COPY);
  EXPECT_EQ(on_clipboard(), u"a");
  send(platform::WM_CUT);
  EXPECT_EQ(code.Text(), u"bc");
  send(platform::WM_PASTE);
  EXPECT_EQ(code.Text(), u"abc");
}

TEST_F(CodeView, RichTextIsNotPastedButItsPlainTextIsByTheKey) {
  show(u"x");
  clipboard.items = {{"text/rtf", "{rich}"}, {"text/plain", "plain"}};
  send(platform::WM_PASTE);
  EXPECT_EQ(code.Text(), u"x");
  key(u'V', control);
  EXPECT_EQ(code.Text(), u"plainx");
}

TEST_F(CodeView, AClipboardThatCannotBeOpenedLeavesAllAsItIs) {
  show(u"abc");
  clipboard.items = {{"text/plain", "kept"}};
  code.TextBox1().select(0, 1);
  set_fault(u"OpenClipboard", {{}, 0}, 10);
  send(platform::WM_COPY);
  EXPECT_EQ(clipboard.items.size(), 1u);
  EXPECT_EQ(clipboard.items[0].second, "kept");
}

TEST_F(CodeView, UndoGoesByTheBoxsOwnKeys) {
  show(u"");
  type(u"one");
  key(13, 0, u"\n");
  type(u"two");
  EXPECT_EQ(code.Text(), u"one\r\ntwo");
  key(u'Z', control);
  EXPECT_EQ(code.Text(), u"one\r\n");
  key(u'Z', control);
  key(u'Z', control);
  EXPECT_EQ(code.Text(), u"");
  key(u'Y', control);
  EXPECT_EQ(code.Text(), u"one");
}

TEST_F(CodeView, TheMessagesOfUndoAreAnswered) {
  show(u"");
  const auto answer = [&](platform::Message message) { return platform::SendMessage(code.hwnd(), message); };
  EXPECT_EQ(answer(platform::EM_CANUNDO), 0);
  EXPECT_EQ(answer(platform::EM_UNDO), 0);
  type(u"one");
  EXPECT_NE(answer(platform::EM_CANUNDO), 0);
  EXPECT_NE(answer(platform::EM_UNDO), 0);
  EXPECT_EQ(code.Text(), u"");
  EXPECT_EQ(answer(platform::EM_CANUNDO), 0);
  answer(platform::EM_REDO);
  EXPECT_EQ(code.Text(), u"one");
  code.set_Locked(true);
  answer(platform::EM_UNDO);
  EXPECT_EQ(code.Text(), u"one") << "a locked box takes no edits";
}

TEST_F(CodeView, TheMessageThatReplacesTheSelectionIsAnEdit) {
  show(u"abc");
  code.TextBox1().select(1, 1);
  const auto replace_by = [&](const char16_t* text) {
    platform::SendMessage(code.hwnd(), platform::EM_REPLACESEL, 1,
                          reinterpret_cast<platform::Parameter>(text));
  };
  replace_by(u"");
  EXPECT_EQ(code.Text(), u"ac");
  EXPECT_THAT(heard, ElementsAre("Change"));
  replace_by(u"x\r\ny");
  EXPECT_EQ(code.Text(), u"ax\r\nyc");
  replace_by(nullptr);
  EXPECT_EQ(code.Text(), u"ax\r\nyc");
  platform::SendMessage(code.hwnd(), platform::EM_UNDO);
  platform::SendMessage(code.hwnd(), platform::EM_UNDO);
  EXPECT_EQ(code.Text(), u"abc");
}

TEST_F(CodeView, TheOperationsForTheClipboardAndUndoAreEmpty) {
  show(u"");
  type(u"one");
  code.TextBox1().select(0, 3);
  code.Cut();
  code.Copy();
  code.Paste();
  code.Undo();
  code.Redo();
  EXPECT_EQ(code.Text(), u"one");
  EXPECT_TRUE(clipboard.items.empty());
}

TEST_F(CodeView, SixMessagesAreWatchedWhileItIsAttached) {
  code.attachMessages();
  code.attachMessages();
  const std::u16string h = to_text(platform::number_of(code.hwnd()));
  EXPECT_EQ(platform::GetProp(code.hwnd(), h + u"C"), 6);
  EXPECT_EQ(platform::GetProp(code.hwnd(), h + u"#" + to_text(platform::WM_PASTE) + u"C"), 1);
  EXPECT_TRUE(code.attached());
  code.DetachAllMessages();
  code.DetachAllMessages();
  EXPECT_EQ(platform::GetProp(code.hwnd(), h + u"C"), 0);
  EXPECT_FALSE(code.attached());
}

TEST_F(CodeView, ClosingItsWindowDetaches) {
  code.attachMessages();
  send(platform::WM_DESTROY);
  EXPECT_FALSE(code.attached());
}

TEST_F(CodeView, UnwatchedTheBoxHasItsOwnWays) {
  code.set_Text(u"abc");
  code.TextBox1().select(0, 1);
  key(u'C', control);
  EXPECT_EQ(on_clipboard(), u"a");
  EXPECT_THAT(heard, ElementsAre("KeyDown 67 2"));
}

TEST_F(CodeView, AMessageThatCannotBeWatchedIsPassedOver) {
  set_fault(u"SetProp", {{}, 0});
  EXPECT_NO_THROW(code.attachMessages());
  EXPECT_TRUE(code.attached());
  code.DetachAllMessages();
  EXPECT_EQ(platform::GetProp(code.hwnd(), to_text(platform::number_of(code.hwnd())) + u"C"), 0);
}

TEST_F(CodeView, TheSelectionAskedForIsStoredAndReachesNothing) {
  show(u"abcdef");
  code.TextBox1().select(1, 2);
  code.set_SelStart(4);
  code.set_SelLength(9);
  EXPECT_EQ(code.SelStart(), 4);
  EXPECT_EQ(code.SelLength(), 9);
  EXPECT_EQ(code.TextBox1().SelStart(), 1u);
  EXPECT_EQ(code.TextBox1().SelLength(), 2u);
  EXPECT_THAT(changed, ElementsAre("SelStart", "SelLength"));
}

TEST_F(CodeView, LooksAreStoredReportedAndNotApplied) {
  code.set_BackColor(0xFF);
  code.set_ForeColor(0xFF00);
  code.set_BackStyle(1);
  code.set_BorderStyle(1);
  code.set_Font({.Name = u"Arial"});
  EXPECT_EQ(code.properties().BackColor, 0xFF);
  EXPECT_EQ(code.properties().Font.Name, u"Arial");
  EXPECT_THAT(changed, ElementsAre("BackColor", "ForeColor", "BackStyle", "BorderStyle", "Font"));
}

TEST_F(CodeView, LockedTakesNoEdits) {
  show(u"abc");
  code.set_Locked(true);
  type(u"x");
  key(9, 0, u"\t");
  code.TextBox1().select(0, 1);
  key(u'X', control);
  clipboard.SetText(u"y");
  key(u'V', control);
  send(platform::WM_PASTE);
  EXPECT_EQ(code.Text(), u"abc");
  EXPECT_EQ(changed.front(), "Locked");
}

TEST_F(CodeView, DisabledTakesNoKeys) {
  show(u"abc");
  code.set_Enabled(false);
  type(u"x");
  EXPECT_EQ(code.Text(), u"abc");
  EXPECT_THAT(heard, ElementsAre());
}

TEST_F(CodeView, ColoursOfTheDesktopAreTranslated) {
  EXPECT_EQ(OrvelCV::TranslateColor(0x123456), 0x123456);
  EXPECT_EQ(OrvelCV::TranslateColor(colour_button_shadow), 0xA0A0A0);
  EXPECT_EQ(OrvelCV::TranslateColor(colour_window_text), 0);
  EXPECT_EQ(OrvelCV::TranslateColor(0x800000FF), -1);
  set_fault(u"OleTranslateColor", {{}, 1});
  EXPECT_EQ(OrvelCV::TranslateColor(0), -1);
}

TEST_F(CodeView, ItsPartsShareItsWidth) {
  code.resize(9000, 6000);
  EXPECT_EQ(code.picLines().Width, 480);
  EXPECT_EQ(code.picLines().Height, 6000);
  EXPECT_EQ(code.TextBox1_area().Left, 480);
  EXPECT_EQ(code.TextBox1_area().Width, 8520);
  code.resize(100, 10);
  EXPECT_EQ(code.TextBox1_area().Width, 0);
}

TEST_F(CodeView, PropertiesComeBackFromTheStore) {
  code.set_BackColor(7);
  code.set_SelStart(3);
  code.set_Text(u"saved");
  code.set_Locked(true);
  headless::PropertyBag bag;
  code.WriteProperties(bag);
  OrvelCV other;
  other.ReadProperties(bag);
  EXPECT_EQ(other.properties().BackColor, 7);
  EXPECT_EQ(other.SelStart(), 3);
  EXPECT_EQ(other.Text(), u"saved");
  EXPECT_TRUE(other.Locked());
  EXPECT_TRUE(other.Enabled());
  other.InitProperties({.Name = u"Ambient"});
  EXPECT_EQ(other.properties().Font.Name, u"Ambient");
  EXPECT_EQ(other.SelStart(), 0);
}

TEST_F(CodeView, AnotherBoxTakesTheTextOver) {
  show(u"one");
  type(u"x");
  {
    PlainTextBox face;
    code.use(&face);
    EXPECT_EQ(code.Text(), u"xone") << "an edited text goes over as it is";
    EXPECT_EQ(code.hwnd(), face.handle());
    EXPECT_TRUE(code.attached());
    EXPECT_EQ(code.untouched_text(), nullptr);
    face.key(u'B', 0, u"b", true);
    code.use(nullptr);
  }
  EXPECT_TRUE(contains(code.Text(), u"b"));
  EXPECT_TRUE(code.attached());
  type(u"z");
  EXPECT_TRUE(contains(code.Text(), u"z"));
}

TEST_F(CodeView, AnUntouchedTextStaysOneString) {
  const auto text = std::make_shared<const std::u16string>(u"shared");
  code.set_Text(text);
  EXPECT_EQ(code.untouched_text(), text);
  PlainTextBox face;
  code.use(&face);
  EXPECT_EQ(code.untouched_text(), text);
  EXPECT_EQ(face.Text(), u"") << "filled when somebody looks";
  EXPECT_EQ(code.LineCount(), 1);
  EXPECT_EQ(face.Text(), u"shared");
  code.use(nullptr);
}

TEST_F(CodeView, AfterAllWasUndoneTheTextIsUntouchedAgain) {
  show(u"one\ntwo");
  const auto text = code.untouched_text();
  ASSERT_NE(text, nullptr);
  type(u"x");
  EXPECT_EQ(code.untouched_text(), nullptr);
  key('Z', control);
  EXPECT_EQ(to_utf8(code.Text()), "one\r\ntwo");
  EXPECT_EQ(code.untouched_text(), text);
  key('Y', control);
  EXPECT_EQ(code.untouched_text(), nullptr);
}

// --- the box without a screen ---

TEST_F(CodeView, TheCaretMovesByCharactersWordsAndLines) {
  show(u"one two\nthree\nf");
  const auto at = [&] { return code.TextBox1().SelStart() + code.TextBox1().SelLength(); };
  key(39, control);
  EXPECT_EQ(at(), 3u);
  key(35);
  EXPECT_EQ(at(), 7u);
  key(40);
  EXPECT_EQ(at(), 13u) << "a shorter line takes its end";
  key(36);
  EXPECT_EQ(at(), 8u);
  key(35, control);
  EXPECT_EQ(at(), 15u);
  key(36, control | shift);
  EXPECT_EQ(code.TextBox1().SelLength(), 15u);
  key(39);
  EXPECT_EQ(at(), 15u);
  key(37);
  key(8);
  EXPECT_EQ(code.Text(), u"one two\r\nthreef");
  key(46);
  EXPECT_EQ(code.Text(), u"one two\r\nthree");
}

TEST_F(CodeView, AReplacedLetterIsAWholeOne) {
  show(u"\U0001F600x");
  key(46);
  EXPECT_EQ(code.Text(), u"x");
}

}  // namespace
}  // namespace tvx::source
