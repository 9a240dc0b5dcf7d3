#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

#include "editing/case_file.h"
#include "editing/clipboard_of_one_editor.h"
#include "editing/editing_fixture.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/gestures/autoformat.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/headless/shadow_tree.h"

/// The cases of cases/*.txt, each a test of its own; cases/README.md says how they are written.
namespace tvx::editing::test {
namespace {

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
    } else if (action.kind == "type-formatting") {
      for (const char c : action.value) {
        if (c == '\n') link_what_was_typed(editor);
        type_text(editor, std::u16string(1, char16_t(c)));
        format_what_was_typed(editor);
      }
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
  ClipboardOfOneEditor clipboard_;
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

void register_file(const std::filesystem::path& path) {
  const std::string suite = "Cases_" + path.stem().string();
  try {
    // The tests keep pointers to their cases to the end of the program.
    static std::vector<std::unique_ptr<std::vector<Case>>> kept;
    kept.push_back(std::make_unique<std::vector<Case>>(read_cases(path)));
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
  const auto files = case_files();
  for (const auto& file : files) register_file(file);
  return files.size();
}

const std::size_t files_found = register_cases();

TEST(Cases, AreFound) { EXPECT_GT(files_found, 0u); }

TEST(Cases, AFileThatCannotBeUnderstoodIsRefused) {
  const auto expect_refused = [](const std::string& text) {
    const auto path = std::filesystem::temp_directory_path() / ("tvx-case-" + std::to_string(getpid()));
    std::ofstream(path) << text;
    EXPECT_THROW(read_cases(path), std::runtime_error) << text;
    std::filesystem::remove(path);
  };
  expect_refused("# t\nbefor <p>a[]</p>\n");
  expect_refused("# t\nbefore <p>a[]</p>\nafter <P>a[]</P>\n");
  expect_refused("# t\nbefore <p>a[]</p>\ntype x\n");
  expect_refused("before <p>a[]</p>\ntype x\nafter <P>ax[]</P>\n");
}

}  // namespace
}  // namespace tvx::editing::test
