#include "core/control_fixture.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string entry(const std::string& key, const std::string& text) {
  return "<entry><key>" + key + "</key><text>" + text + "</text></entry>";
}
std::string group(const std::string& target, const std::string& entries) {
  return "<group name='" + target + "'>" + entries + "</group>";
}
std::string file(const std::string& groups) { return "<languageUI>" + groups + "</languageUI>"; }

class Localisation : public Control {
 protected:
  void apply(const std::string& bytes) { control->set_LocalizationFile(write_file("language.xml", bytes)); }
  std::u16string tip(std::u16string_view key) { return control->Toolbar1().Item(key).ToolTipText(); }
  std::u16string form_tip(std::u16string_view key) { return control->Toolbar2().Item(key).ToolTipText(); }
  std::u16string caption(std::u16string_view name) { return control->menu(name)->Caption(); }
  /// Opens the table dialog; the captions that are asked for as it shows them, the form's own first.
  std::vector<std::u16string> table_dialog(std::initializer_list<std::u16string_view> controls) {
    std::vector<std::u16string> captions;
    forms.expect({.form = u"Frminserttable", .while_open = [&](platform::Form& form) {
                    captions.push_back(form.Caption());
                    for (const std::u16string_view name : controls)
                      captions.push_back(form.Controls(name).Caption());
                  }});
    control->Table_Document();
    return captions;
  }
};

TEST_F(Localisation, ToolTipsAndMenuItemsTakeTheFilesWords) {
  start();
  apply(file(group("Toolbar1", entry("Bold", "Fett")) + group("Toolbar3", entry("Radio", "Optionsfeld")) +
             group("ContextMenus", entry("mnuImgCut", "Ausschneiden"))));
  EXPECT_EQ(tip(u"Bold"), u"Fett");
  EXPECT_EQ(form_tip(u"Radio"), u"Optionsfeld");
  EXPECT_EQ(caption(u"mnuImgCut"), u"Ausschneiden");
  EXPECT_EQ(tip(u"Italic"), u"Italic");
  EXPECT_EQ(caption(u"mnuLinkCut"), u"Cut");
  EXPECT_THAT(host.heard, IsEmpty());
  EXPECT_EQ(container.changed(), std::vector<std::u16string>{u"LocalizationFile"});
}

TEST_F(Localisation, AnEmptyPathReadsNothing) {
  start();
  control->set_LocalizationFile(u"");
  EXPECT_EQ(tip(u"Bold"), u"Bold");
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Localisation, APathToNoFileIsOneErrorAndTheEditorGoesOnInEnglish) {
  create();
  control->set_LocalizationFile(path("none.xml"));
  EXPECT_THAT(host.heard, ElementsAre("Error: 11000 Can not find UI language file"));
  EXPECT_EQ(control->LocalizationFile(), path("none.xml"));
  host.heard.clear();
  control->UserControl_Show();
  EXPECT_EQ(host.count("Error"), 1u);
  EXPECT_TRUE(control->started());
  EXPECT_EQ(tip(u"Bold"), u"Bold");
}

TEST_F(Localisation, AMalformedFileIsAnErrorWithItsPlace) {
  start();
  apply("<languageUI>\n<group name='Toolbar1'>" + entry("Bold", "Fett") + "</languageUI>");
  EXPECT_EQ(host.heard.size(), 1u);
  EXPECT_THAT(
      host.heard.front(),
      testing::MatchesRegex(
          "Error: 11011 Cannot parse UI language file. Error - mismatched tag at line: 2, char: [0-9]+"));
  EXPECT_EQ(tip(u"Bold"), u"Bold");  // nothing of half a file
}

TEST_F(Localisation, EntitiesAndHugeFilesAreUnparsable) {
  start();
  apply("<!DOCTYPE languageUI [<!ENTITY b 'Fett'>]>" + file(group("Toolbar1", entry("Bold", "&b;"))));
  EXPECT_THAT(host.heard.back(),
              testing::StartsWith("Error: 11011 Cannot parse UI language file. Error - entities"));
  apply(file(std::string(std::size_t{3} << 20, ' ')));
  EXPECT_EQ(host.heard.back(),
            "Error: 11011 Cannot parse UI language file. Error - the file is too large at line: 0, char: 0");
  EXPECT_EQ(tip(u"Bold"), u"Bold");
}

// --- when it is read ---

TEST_F(Localisation, AtDesignTimeThePathIsOnlyStored) {
  start_at_design_time();
  control->set_LocalizationFile(path("none.xml"));
  EXPECT_EQ(control->LocalizationFile(), path("none.xml"));
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Localisation, ASavedControlStartsInItsLanguage) {
  headless::PropertyBag bag;
  bag.WriteProperty(u"LocalizationFile",
                    write_file("language.xml", file(group("Toolbar1", entry("Bold", "Fett")) +
                                                    group("ContextMenus", entry("mnuCellAction", "Zelle")))),
                    std::u16string());
  control = make(container);
  control->UserControl_ReadProperties(bag);
  EXPECT_EQ(tip(u"Bold"), u"Fett");
  EXPECT_EQ(control->table_labels().cell, u"Zelle");
  EXPECT_EQ(control->table_labels().row, u"Row");
  EXPECT_THAT(host.heard, testing::Not(testing::Contains(testing::HasSubstr("Error"))));
}

TEST_F(Localisation, AHostMayEndTheControlWhenItHearsOfAMissingFile) {
  create();
  control->set_LocalizationFile(path("none.xml"));
  host.inside = [this](const std::string& name) {
    if (name == "Error") control->UserControl_Terminate();
  };
  control->UserControl_Show();
  EXPECT_FALSE(control->started());
}

// --- groups ---

TEST_F(Localisation, GroupsAreNumberedInTheirOwnWay) {
  start();
  apply(file(group("Toolbar2", entry("Bold", "two")) + group("Toolbar3", entry("Form", "three"))));
  EXPECT_EQ(tip(u"Bold"), u"two");
  EXPECT_EQ(form_tip(u"Form"), u"three");
}

TEST_F(Localisation, AnUnknownGroupGoesOnWithTheTargetBefore) {
  start();
  apply(file(group("Toolbar3", "") + group("Toolbar4", entry("Form", "four")) + "<group>" +
             entry("Radio", "none") + "</group>" + group("toolbar1", entry("Reset", "lower"))));
  EXPECT_EQ(form_tip(u"Form"), u"four");
  EXPECT_EQ(form_tip(u"Radio"), u"none");
  EXPECT_EQ(form_tip(u"Reset"), u"lower");
}

TEST_F(Localisation, BeforeAnyTargetEntriesAreMenuItems) {
  start();
  apply(file(group("Toolbar4", entry("mnuTProp", "Eigenschaften"))));
  EXPECT_EQ(caption(u"mnuTProp"), u"Eigenschaften");
}

TEST_F(Localisation, ContextMenusTakeTheToolbarAway) {
  start();
  apply(file(group("Toolbar1", "") + group("ContextMenus", entry("Bold", "no") + entry("mnuTProp", "yes"))));
  EXPECT_EQ(tip(u"Bold"), u"Bold");
  EXPECT_EQ(caption(u"mnuTProp"), u"yes");
}

TEST_F(Localisation, TheFirstAttributeCountsWhateverItsName) {
  start();
  apply(file("<x for='Toolbar1' name='Toolbar3'>" + entry("Bold", "Fett") + "</x>"));
  EXPECT_EQ(tip(u"Bold"), u"Fett");
}

TEST_F(Localisation, TheRootMayHaveAnyName) {
  start();
  apply("<words>" + group("Toolbar1", entry("Bold", "Fett")) + "</words>");
  EXPECT_EQ(tip(u"Bold"), u"Fett");
}

// The sections of dialogs are walked as well: their names are no buttons and no menu items.
TEST_F(Localisation, SectionsOfDialogsChangeNothingHere) {
  start();
  apply(file(group("Toolbar1", entry("Bold", "Fett")) +
             "<TableSettings><e><k special='form'>Tabelle</k></e>" + entry("lblrows", "Zeilen") +
             "</TableSettings>" + group("ContextMenus", entry("mnuTProp", "Eigenschaften"))));
  EXPECT_EQ(tip(u"Bold"), u"Fett");
  EXPECT_EQ(caption(u"mnuTProp"), u"Eigenschaften");
  EXPECT_THAT(host.heard, IsEmpty());
}

// --- entries ---

TEST_F(Localisation, KeysAndNamesHaveNoCase) {
  start();
  apply(file(group("Toolbar1", entry("bOLD", "Fett")) +
             group("ContextMenus", entry("MNUIMGCUT", "Ausschneiden"))));
  EXPECT_EQ(tip(u"Bold"), u"Fett");
  EXPECT_EQ(caption(u"mnuImgCut"), u"Ausschneiden");
}

TEST_F(Localisation, EveryButtonOfTheKeyIsMeant) {
  start();
  platform::Button& second = control->Toolbar1().Add({u"BOLD", u"", u"again", u"bold"});
  apply(file(group("Toolbar1", entry("Bold", "Fett"))));
  EXPECT_EQ(tip(u"Bold"), u"Fett");
  EXPECT_EQ(second.ToolTipText(), u"Fett");
}

TEST_F(Localisation, UnknownNamesAndHalfEntriesChangeNothing) {
  start();
  apply(file(group("Toolbar1", entry("Nothing", "x") + "<e><k>Italic</k></e><e/>" + entry("Bold", "Fett")) +
             group("ContextMenus",
                   entry("mnuNothing", "x") + "<e><k>mnuImgCopy</k></e>" + entry("mnuImgCut", "y"))));
  EXPECT_EQ(tip(u"Italic"), u"Italic");
  EXPECT_EQ(tip(u"Bold"), u"Fett");
  EXPECT_EQ(caption(u"mnuImgCopy"), u"Copy");
  EXPECT_EQ(caption(u"mnuImgCut"), u"y");
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Localisation, TheFourCaptionsOfTheCellAndRowMenuAreKept) {
  start();
  EXPECT_EQ(control->table_labels().cell, u"");
  apply(file(group("ContextMenus", entry("mnuCellAction", "Zelle") + entry("MNUROWACTION", "Zeile") +
                                       entry("mnurowactiondelete", "Zeile weg") +
                                       entry("mnucellactiondelete", "Zelle weg"))));
  EXPECT_EQ(control->table_labels().cell, u"Zelle");
  EXPECT_EQ(control->table_labels().row, u"Zeile");
  EXPECT_EQ(control->table_labels().delete_row, u"Zeile weg");
  EXPECT_EQ(control->table_labels().delete_cell, u"Zelle weg");
}

TEST_F(Localisation, TheElementMenuShowsThem) {
  start_with(u"<TABLE><TBODY><TR><TD>a</TD></TR></TBODY></TABLE>");
  apply(file(
      group("ContextMenus", entry("mnuCellAction", "Zelle") + entry("mnuCellActionDelete", "Zelle weg"))));
  control->DOM()->mouse_press(at(element(dom::Tag::Td)));
  control->press(control->tlbDOM(), control->tlbDOM().Item(control->tlbDOM().Count()).Key());
  EXPECT_EQ(caption(u"MnuCellRowActions"), u"Zelle");
  EXPECT_EQ(caption(u"MnuCellRowActionsDelete"), u"Zelle weg");
}

TEST_F(Localisation, ANameOfAMenuArrayMeansItsItemWithoutAClass) {
  start();
  apply(file(group("ContextMenus", entry("mnuClass", "(ohne)") + entry("mnuMiscClass", "(ohne)"))));
  EXPECT_EQ(control->menu(u"mnuClass", 0)->Caption(), u"(ohne)");
  EXPECT_EQ(control->menu(u"mnuMiscClass", 0)->Caption(), u"(ohne)");
}

TEST_F(Localisation, ASecondFileLeavesWhatItDoesNotName) {
  start();
  apply(file(group("Toolbar1", entry("Bold", "Fett") + entry("Italic", "Kursiv"))));
  apply(file(group("Toolbar1", entry("Bold", "Gras"))));
  EXPECT_EQ(tip(u"Bold"), u"Gras");
  EXPECT_EQ(tip(u"Italic"), u"Kursiv");
}

// --- dialogs ---

TEST_F(Localisation, ADialogOpensWithTheWordsOfItsSection) {
  start();
  apply(file("<TableSettings><e><t special='form'>Tabelle</t></e>" + entry("lblrows", "Zeilen") +
             "</TableSettings>"));
  EXPECT_THAT(table_dialog({u"lblrows", u"lblcolumns"}),
              ElementsAre(u"Tabelle", u"Zeilen", u"Number of Columns"));
}

TEST_F(Localisation, AnUnknownControlEndsTheSectionAndTheHostHearsNothing) {
  start();
  apply(file("<TableSettings>" + entry("lblrows", "Zeilen") + entry("lblNone", "x") +
             entry("lblcolumns", "Spalten") + "</TableSettings>"));
  EXPECT_THAT(table_dialog({u"lblrows", u"lblcolumns"}),
              ElementsAre(u"Table Properties", u"Zeilen", u"Number of Columns"));
  EXPECT_THAT(host.heard, IsEmpty());
}

TEST_F(Localisation, ADialogWhoseFileHasGoneOpensInItsOwnWordsAndTheHostHearsNothing) {
  start();
  apply(file("<TableSettings>" + entry("lblrows", "Zeilen") + "</TableSettings>"));
  std::filesystem::remove(folder / "language.xml");
  EXPECT_THAT(table_dialog({u"lblrows"}), ElementsAre(u"Table Properties", u"Number of Rows"));
  write_file("language.xml", "<languageUI");
  EXPECT_THAT(table_dialog({u"lblrows"}), ElementsAre(u"Table Properties", u"Number of Rows"));
  EXPECT_THAT(host.heard, IsEmpty());
}

// The caption that the item shows tells cell from row, and both come from the file.
TEST_F(Localisation, DeletingStillTellsCellFromRow) {
  start_with(u"<TABLE><TBODY><TR><TD>a</TD><TD>b</TD></TR></TBODY></TABLE>");
  apply(
      file(group("ContextMenus", entry("mnuCellActionDelete", "Weg") + entry("mnuRowActionDelete", "Fort"))));
  const auto remove = [&](dom::Tag tag) {
    control->DOM()->mouse_press(at(element(tag)));
    menus.expect({.menu = u"mnuToolProp", .choose = u"MnuCellRowActionsDelete"});
    const auto place = std::int64_t(control->DOM()->tree().source_index(*element(tag)));
    control->press(control->tlbDOM(), u"KEY" + to_text(place));
    return control->DocumentHTML();
  };
  EXPECT_EQ(remove(dom::Tag::Td), u"<TABLE><TBODY><TR><TD>b</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(remove(dom::Tag::Tr), u"<TABLE><TBODY></TBODY></TABLE>");
}

}  // namespace
}  // namespace tvx::core
