#include <functional>
#include <map>
#include <regex>
#include <set>

#include "core/control_fixture.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/localise/language_file.h"
#include "tvx/platform/form.h"

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
    {"de", {"OK", "Name"}}, {"fr", {"OK", "Style"}}, {"es", {}}, {"ja", {"OK"}}, {"ar", {}}};

/// Captions that are no words.
const std::set<std::u16string> equal_everywhere = {u"", u"...", u"px", u"AaBbGgYyZz 0123"};

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

  // --- dialogs ---

  /// The dialogs of the control, by the names of their sections, each opened as the user opens it.
  void open_dialogs(const std::function<void(const std::string& section, platform::Form&)>& opened) {
    std::string section;
    int count = 0;
    forms.on_opened([&](platform::Form& form) {
      // A machine with much to do shows it while it reads the dictionary.
      if (form.Name() == u"frmSpellingProgress") return;
      ++count;
      opened(section, form);
    });
    const auto open = [&](const char* name, const auto& act) {
      section = name;
      count = 0;
      act();
      EXPECT_EQ(count, 1) << name;
    };
    control->set_DocumentHTML(u"<IMG src=\"file:///none.gif\">");
    open("WaitSettings", [&] { control->UploadAllImages(); });  // to no server at all
    control->set_DocumentHTML(u"<TABLE><TBODY><TR><TD>cell</TD></TR></TBODY></TABLE><P>text</P>");
    open("TableSettings", [&] { control->Table_Document(); });
    open("TableCellSettings", [&] { choose_in_path(dom::Tag::Td, u"mnuToolProperties"); });
    open("TableRowSettings", [&] { choose_in_path(dom::Tag::Tr, u"mnuToolProperties"); });
    open("ElementTagEdit", [&] { choose_in_path(dom::Tag::P, u"mnuToolEditTag"); });
    open("FontSettings", [&] { control->change_Font(); });
    control->set_DocumentHTML(u"<FORM><INPUT type=text></FORM><P><IMG src=a.png></P>");
    open("FormSettings", [&] { control->insert_Form(); });
    open("ImageSettings", [&] { choose_in_path(dom::Tag::Img, u"mnuToolProperties"); });
    open("FieldSettings", [&] { control->DOM()->double_click(at(element(dom::Tag::Input))); });
    open("SpellingSettings", [&] {
      control->set_DocumentHTML(u"<P>qqxqqx</P>");
      control->set_SpellingLanguage(u"en-US");
      control->SpellCheck();
    });
    open("LibraryImageSettings", [&] { control->insertImageFromURL(u""); });
    forms.on_opened({});
  }
  void choose_in_path(dom::Tag tag, std::u16string item) {
    control->DOM()->mouse_press(at(element(tag)));
    menus.expect({.menu = u"mnuToolProp", .choose = std::move(item)});
    const auto place = std::int64_t(control->DOM()->tree().source_index(*element(tag)));
    EXPECT_TRUE(control->press(control->tlbDOM(), u"KEY" + to_text(place)));
  }

  /// Names and figures need no words, and the line that hosts compare is the same in every language.
  static bool has_words(const platform::FormControl& control) {
    return control.has_caption() && !equal_everywhere.contains(control.Caption()) &&
           control.Name() != u"lblMessage";
  }

  /// The captions of all dialogs, as they open now.
  Words shown_in_dialogs() {
    Words words;
    open_dialogs([&](const std::string& section, const platform::Form& form) {
      // That of an image goes on with its address.
      add(words, section, u"form", form.Caption().substr(0, form.Caption().find(u'(')));
      for (const auto& each : form.controls())
        if (has_words(*each)) add(words, section, each->Name(), each->Caption());
    });
    return words;
  }

  static Words written_for_dialogs(const std::string& language) {
    const localise::XmlDocument document =
        localise::read_language_file(from_utf8((languages / (language + ".xml")).string()));
    Words words;
    for (const XmlElement* section : document.documentElement()->children())
      if (section->attributes().empty() && section->name() != u"Application")
        for (const XmlElement* entry : section->children()) {
          const XmlElement& first = *entry->child(0);
          const bool own = !first.attributes().empty();
          add(words, to_utf8(section->name()), own ? u"form" : first.text(),
              (own ? first : *entry->child(1)).text());
        }
    return words;
  }

  static std::vector<std::string> english_left(const Words& before, const Words& after,
                                               const std::string& language) {
    std::vector<std::string> left;
    for (const auto& [name, text] : after)
      if (text.empty() || (text == before.at(name) && !equal_words.at(language).contains(text)))
        left.push_back(name + ": " + text);
    return left;
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
    control->set_size(9000, 6000);
    control->UserControl_Show();
    host.heard.clear();
  }
};

TEST_P(LanguageFile, NamesAllThatTheControlShowsAndNothingElse) {
  EXPECT_EQ(names_of(written(GetParam())), names_of(shown()));
}

TEST_P(LanguageFile, LeavesNoEnglishWord) {
  const Words before = shown();
  apply(GetParam());
  EXPECT_THAT(english_left(before, shown(), GetParam()), IsEmpty());
}

TEST_P(LanguageFile, NamesAllOfTheDialogsAndNothingElse) {
  EXPECT_EQ(names_of(written_for_dialogs(GetParam())), names_of(shown_in_dialogs()));
}

TEST_P(LanguageFile, LeavesNoEnglishWordInDialogs) {
  const Words before = shown_in_dialogs();
  apply(GetParam());
  EXPECT_THAT(english_left(before, shown_in_dialogs(), GetParam()), IsEmpty());
}

TEST_P(LanguageFile, HasNoStrayCharacters) {
  std::vector<std::string> odd;
  Words words = written(GetParam());
  words.merge(written_for_dialogs(GetParam()));
  for (const auto& [name, text] : words) {
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

TEST_F(EnglishFile, IsWhatTheDialogsSayByThemselves) {
  EXPECT_EQ(written_for_dialogs("en"), shown_in_dialogs());
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

// A new dialog has no words before it is opened here.
TEST_F(EnglishFile, AllDialogsAreOpenedHere) {
  std::set<std::string> opened, declared;
  open_dialogs([&](const std::string&, const platform::Form& form) { opened.insert(to_utf8(form.Name())); });
  const std::regex declaration("Form\\s+\\w+\\s*[({]u\"(\\w+)\"");
  for (const auto& file :
       std::filesystem::recursive_directory_iterator(std::filesystem::path(TVX_SOURCE_DIR) / "src"))
    if (file.is_regular_file()) {
      const std::string text = bytes_of(file.path());
      for (std::sregex_iterator found(text.begin(), text.end(), declaration), end; found != end; ++found)
        declared.insert((*found)[1]);
    }
  // Comes by itself while a run lasts long, with words that the spelling dialog has.
  opened.insert("frmSpellingProgress");
  EXPECT_EQ(opened, declared);
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
