#include <map>
#include <set>

#include "commands/context_menus.h"
#include "control_fixture.h"
#include "localise/language_file.h"

/// The language files that come with the editor: each has a word for all that the running control shows, for
/// nothing else, and none of the English ones is left over. Whoever adds a button adds its words.
namespace tvx::core {
namespace {

using localise::XmlElement;
using testing::IsEmpty;

const std::filesystem::path languages = std::filesystem::path(TVX_SOURCE_DIR) / "languages";

/// What the control shows, by the group and the name that a language file knows it by.
using Words = std::map<std::string, std::string>;

/// Words that are the same in another language.
const std::map<std::string, std::set<std::string>> equal_words = {
    {"de", {"OK"}}, {"fr", {"OK", "Style"}}, {"es", {}}, {"ja", {"OK"}}, {"ar", {}}};

class LanguageFile : public Control, public testing::WithParamInterface<std::string> {
 protected:
  void apply(const std::string& language) {
    control->set_LocalizationFile(from_utf8((languages / (language + ".xml")).string()));
    EXPECT_EQ(host.count("Error"), 0u);
  }

  /// All that has words; what has none yet, as a button without a tool tip, has the empty text.
  Words shown() {
    Words words;
    for (auto [group, toolbar] :
         {std::pair{"Toolbar1", &control->Toolbar1()}, {"Toolbar3", &control->Toolbar2()}})
      for (int i = 1; i <= toolbar->Count(); ++i)
        if (const platform::Button& button = toolbar->Item(i);
            button.Style() != platform::ButtonStyle::Separator)
          add(words, group, button.Key(), button.ToolTipText());
    for (platform::Menu* top : control->menus().tops())
      for (const platform::Menu* item : platform::all_items(*top))
        if (!item->is_separator() && top != &control->menus().mnuCSS)  // that one is never opened
          add(words, "ContextMenus", item->Name(), item->Caption());
    const TableLabels& labels = control->table_labels();
    add(words, "ContextMenus", u"mnuCellAction", labels.cell);
    add(words, "ContextMenus", u"mnuRowAction", labels.row);
    add(words, "ContextMenus", u"mnuRowActionDelete", labels.delete_row);
    add(words, "ContextMenus", u"mnuCellActionDelete", labels.delete_cell);
    return words;
  }

  /// What the file says of toolbars and menus. A name that stands there twice is a failure.
  static Words written(const std::string& language) {
    const localise::XmlDocument document =
        localise::read_language_file(from_utf8((languages / (language + ".xml")).string()));
    Words words;
    for (const XmlElement* group : document.documentElement()->children())
      if (!group->attributes().empty())
        for (const XmlElement* entry : group->children())
          add(words, to_utf8(group->attributes().front().value), entry->child(0)->text(),
              entry->child(1)->text());
    return words;
  }

  static void add(Words& words, const std::string& group, std::u16string_view name,
                  std::u16string_view text) {
    EXPECT_TRUE(words.emplace(group + " " + to_utf8(name), to_utf8(text)).second) << group << to_utf8(name);
  }
  static std::set<std::string> names_of(const Words& words) {
    std::set<std::string> names;
    for (const auto& [name, text] : words) names.insert(name);
    return names;
  }

  void SetUp() override {
    // As a host with a saved control has it: the four captions stand in English.
    control = make(container);
    control->UserControl_ReadProperties(headless::PropertyBag());
    host.heard.clear();
  }
};

TEST_P(LanguageFile, NamesAllThatTheControlShowsAndNothingElse) {
  EXPECT_EQ(names_of(written(GetParam())), names_of(shown()));
}

TEST_P(LanguageFile, LeavesNoEnglishWord) {
  const Words before = shown();
  apply(GetParam());
  std::vector<std::string> left;
  for (const auto& [name, text] : shown())
    if (text.empty() || (text == before.at(name) && !equal_words.at(GetParam()).contains(text)))
      left.push_back(name + ": " + text);
  EXPECT_THAT(left, IsEmpty());
}

TEST_P(LanguageFile, HasNoStrayCharacters) {
  std::vector<std::string> odd;
  for (const auto& [name, text] : written(GetParam())) {
    // No access keys, no typewriter's quotation marks; Japanese has no blanks between words.
    if (text.find_first_of(GetParam() == "ja" ? "&'\" \t\n" : "&'\"\t\n") != std::string::npos ||
        text.find("  ") != std::string::npos)
      odd.push_back(name + ": " + text);
  }
  EXPECT_THAT(odd, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, LanguageFile, testing::Values("de", "fr", "es", "ja", "ar"),
                         [](const auto& language) { return language.param; });

/// The file that translators begin with, and that a host goes back to English by.
class EnglishFile : public LanguageFile {};

TEST_F(EnglishFile, IsWhatTheControlSaysByItself) {
  const Words words = written("en");
  const Words defaults = shown();
  EXPECT_EQ(names_of(words), names_of(defaults));
  for (const auto& [name, text] : defaults) {
    if (!text.empty()) {
      EXPECT_EQ(words.at(name), text) << name;
    }
  }
}

TEST_F(EnglishFile, BringsEnglishBack) {
  const Words before = shown();
  apply("ar");
  apply("en");
  for (const auto& [name, text] : shown()) {
    if (!before.at(name).empty()) {
      EXPECT_EQ(text, before.at(name)) << name;
    }
  }
}

// A folder that a program offers its user the languages of has no others than those that are looked at here.
TEST(LanguageFiles, AreAllLookedAt) {
  std::set<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(languages)) files.insert(entry.path().stem());
  std::set<std::string> known{"en"};
  for (const auto& [language, words] : equal_words) known.insert(language);
  EXPECT_EQ(files, known);
}

}  // namespace
}  // namespace tvx::core
