#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

#include "editing/editing_fixture.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/headless/shadow_tree.h"

/// The cases of cases/*.txt, each a test of its own; cases/README.md says how they are written.
namespace tvx::editing::test {
namespace {

/// What a person or a program does, as a line tells it.
struct Action {
  std::string kind, value;
};

struct Case {
  std::string file, title;
  int line = 0;
  std::string before, after;
  std::vector<Action> actions;
};

/// A clipboard that has what the case says, and keeps what the editor copies.
class CaseClipboard final : public ClipboardDoor {
 public:
  std::u16string html, text;
  bool put(const CopiedContent& content) override {
    html = content.html;
    text = content.text;
    return true;
  }
  bool paste(Editor& editor) override {
    if (!html.empty()) return paste_html(editor, u"<!--StartFragment-->" + html + u"<!--EndFragment-->");
    return paste_plain_text(editor, text);
  }
};

KeyPress key_named(std::string name) {
  KeyPress key;
  const std::map<std::string, bool KeyPress::*> modifiers{
      {"Ctrl+", &KeyPress::control}, {"Shift+", &KeyPress::shift}, {"Alt+", &KeyPress::alt}};
  for (bool found = true; found;) {
    found = false;
    for (const auto& [prefix, flag] : modifiers) {
      if (!name.starts_with(prefix)) continue;
      key.*flag = found = true;
      name.erase(0, prefix.size());
    }
  }
  key.key = from_utf8(name);
  if (key.key.size() == 1 && !key.control) key.text = key.key;
  return key;
}

class CaseTest : public EditingFixture {
 public:
  explicit CaseTest(const Case& tested) : case_(tested) { editor.set_clipboard(&clipboard_); }
  ~CaseTest() override { editor.set_clipboard(nullptr); }

  void TestBody() override {
    load(case_.before);
    std::string first = marked();
    expect_view_agrees("before");
    // A move is no step: undo leads back to where the first change was made.
    bool changed = false, undone = false;
    for (const Action& action : case_.actions) {
      act(action);
      changed = changed || document->journal().can_undo();
      undone = undone || (action.kind == "command" && action.value == "undo");
      if (!changed) first = marked();
    }
    EXPECT_EQ(marked(), case_.after) << "from " << case_.before;
    expect_view_agrees("after");
    if (undone) return;
    expect_laws(first);
    expect_view_agrees("after undo and redo");
  }

 private:
  void act(const Action& action) {
    if (action.kind == "type") {
      type_text(editor, from_utf8(action.value));
    } else if (action.kind == "press") {
      press_key(editor, key_named(action.value));
    } else if (action.kind == "paste") {
      clipboard_.html = from_utf8(action.value);
      run({"paste"});
    } else if (action.kind == "paste-text") {
      clipboard_.html.clear();
      clipboard_.text = from_utf8(action.value);
      run({"paste"});
    } else if (action.kind == "button") {
      const auto [name, value] = name_and_value(action.value);
      execute_as_writer(editor, from_utf8(name), from_utf8(value));
    } else if (action.kind == "table") {
      act_on_table(action.value);
    } else {
      const auto [name, value] = name_and_value(action.value);
      run({name, value});
    }
  }

  /// "formatBlock h2"
  static std::pair<std::string, std::string> name_and_value(const std::string& text) {
    const std::size_t space = std::min(text.find(' '), text.size());
    return {text.substr(0, space), text.substr(std::min(space + 1, text.size()))};
  }

  void act_on_table(const std::string& what) {
    static const std::map<std::string, std::u16string_view> commands{{"row above", u"insertRowAbove"},
                                                                     {"row below", u"insertRowBelow"},
                                                                     {"column left", u"insertColumnLeft"},
                                                                     {"column right", u"insertColumnRight"},
                                                                     {"delete row", u"deleteRow"},
                                                                     {"delete column", u"deleteColumn"},
                                                                     {"merge", u"mergeCells"},
                                                                     {"merge down", u"mergeCellDown"},
                                                                     {"split", u"splitCell"},
                                                                     {"header", u"headerRow"},
                                                                     {"select row", u"selectRow"},
                                                                     {"select column", u"selectColumn"},
                                                                     {"select table", u"selectTable"}};
    const auto found = commands.find(what);
    ASSERT_NE(found, commands.end()) << what;
    execute_as_writer(editor, found->second);
  }

  void expect_view_agrees(const char* when) {
    browser::Patch patch;
    patch.operations = mirror_.flush(1'000'000);
    EXPECT_TRUE(view_.apply(patch).empty()) << when;
    EXPECT_EQ(to_utf8(view_.print()), to_utf8(browser::print_mirrored(*document))) << when;
  }

  const Case& case_;
  CaseClipboard clipboard_;
  browser::Mirror mirror_{*document};
  headless::ShadowTree view_;
};

/// A file that can't be read, told when the tests run.
class BrokenFile : public ::testing::Test {
 public:
  explicit BrokenFile(std::string reason) : reason_(std::move(reason)) {}
  void TestBody() override { FAIL() << reason_; }

 private:
  std::string reason_;
};

// --- reading ---

std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    const char next = text[++i];
    result += next == 'n' ? '\n' : next == 'r' ? '\r' : next == 't' ? '\t' : next == 's' ? ' ' : next;
  }
  return result;
}

/// Line after line of one file; what it finds wrong it throws, with the line's number.
class CaseReader {
 public:
  explicit CaseReader(const std::filesystem::path& path) : path_(path) {}

  std::vector<Case> read() {
    std::ifstream in(path_);
    for (std::string line; std::getline(in, line);) {
      ++number_;
      take(line);
    }
    finish_case();
    return std::move(cases_);
  }

 private:
  [[noreturn]] void refuse(const std::string& why) const {
    throw std::runtime_error(path_.string() + ":" + std::to_string(number_) + ": " + why);
  }

  void take(const std::string& line) {
    if (line.starts_with("//")) return;
    if (line.find_first_not_of(' ') == line.npos) return;
    if (line.starts_with("# ")) {
      finish_case();
      title_ = line.substr(2);
      return;
    }
    const std::size_t word_end = std::min(line.find(' '), line.size());
    const std::string word = line.substr(0, word_end);
    const std::string rest = line.substr(std::min(line.find_first_not_of(' ', word_end), line.size()));
    if (word.empty()) {
      if (!open_) refuse("a line that goes on, but none before it");
      *open_ += unescaped(rest);
    } else if (word == "before") {
      finish_case();
      if (title_.empty()) refuse("a case without a title");
      case_ = {path_.string(), title_, number_, unescaped(rest), "", {}};
      open_ = &case_.before;
    } else if (word == "after") {
      if (case_.actions.empty()) refuse("nothing is done in this case");
      case_.after = unescaped(rest);
      open_ = &case_.after;
    } else if (word == "type" || word == "press" || word == "paste" || word == "paste-text" ||
               word == "command" || word == "button" || word == "table") {
      if (case_.before.empty()) refuse("a case starts with \"before\"");
      case_.actions.push_back({word, unescaped(rest)});
      open_ = &case_.actions.back().value;
    } else {
      refuse("unknown word \"" + word + "\"");
    }
  }

  void finish_case() {
    if (case_.before.empty()) return;
    if (case_.after.empty()) refuse("the case before this line has no \"after\"");
    cases_.push_back(std::exchange(case_, {}));
    open_ = nullptr;
  }

  std::filesystem::path path_;
  int number_ = 0;
  std::string title_;
  Case case_;
  std::string* open_ = nullptr;
  std::vector<Case> cases_;
};

/// "Blocks that meet" as the name of a test: "BlocksThatMeet".
std::string name_of(const std::string& title) {
  std::string name;
  bool start = true;
  for (const char c : title) {
    if (!std::isalnum(static_cast<unsigned char>(c))) {
      start = start || c == ' ';
      continue;
    }
    name += start ? char(std::toupper(static_cast<unsigned char>(c))) : c;
    start = false;
  }
  return name;
}

const std::filesystem::path folder = std::filesystem::path(TVX_SOURCE_DIR) / "tests/editing/cases";

void register_file(const std::filesystem::path& path) {
  const std::string suite = "Cases_" + path.stem().string();
  try {
    // The tests keep pointers to their cases to the end of the program.
    static std::vector<std::unique_ptr<std::vector<Case>>> kept;
    kept.push_back(std::make_unique<std::vector<Case>>(CaseReader(path).read()));
    if (kept.back()->empty()) throw std::runtime_error(path.string() + " has no case");
    std::map<std::string, int> count;
    for (const Case& tested : *kept.back()) {
      std::string name = name_of(tested.title);
      name += "_" + std::to_string(++count[name]);
      ::testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, tested.file.c_str(), tested.line,
                              [&tested]() -> EditingFixture* { return new CaseTest(tested); });
    }
  } catch (const std::exception& error) {
    ::testing::RegisterTest((suite + "_broken").c_str(), "CanBeRead", nullptr, nullptr, path.c_str(), 1,
                            [reason = std::string(error.what())] { return new BrokenFile(reason); });
  }
}

std::size_t register_cases() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  }
  std::ranges::sort(files);
  for (const auto& file : files) register_file(file);
  return files.size();
}

const std::size_t files_found = register_cases();

TEST(Cases, AreFound) { EXPECT_GT(files_found, 0u) << folder; }

TEST(Cases, AFileThatCannotBeUnderstoodIsRefused) {
  const auto expect_refused = [](const std::string& text) {
    const auto path = std::filesystem::temp_directory_path() / ("tvx-case-" + std::to_string(getpid()));
    std::ofstream(path) << text;
    EXPECT_THROW(CaseReader(path).read(), std::runtime_error) << text;
    std::filesystem::remove(path);
  };
  expect_refused("# t\nbefor <p>a[]</p>\n");
  expect_refused("# t\nbefore <p>a[]</p>\nafter <P>a[]</P>\n");
  expect_refused("# t\nbefore <p>a[]</p>\ntype x\n");
  expect_refused("before <p>a[]</p>\ntype x\nafter <P>ax[]</P>\n");
}

}  // namespace
}  // namespace tvx::editing::test
