#include "tvx/localise/localizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/strings.h"
#include "tvx/platform/form.h"

namespace tvx::localise {
namespace {

using platform::Form;
using testing::ElementsAre;
using testing::IsEmpty;

class Localizer : public testing::Test {
 protected:
  Localizer() {
    form.add_label(u"lblName", u"Name");
    form.add_text_box(u"txtName");
    form.add_label(u"lblAge", u"Age");
    form.add_closing_button(u"cmdOK", u"OK");
    localizer.set_Error([this](std::int32_t number, const std::u16string& text) {
      heard.push_back(std::to_string(number) + " " + to_utf8(text));
    });
    localizer.set_TheForm(&form);
  }
  ~Localizer() override { std::filesystem::remove(path); }

  /// Applies the section "Person" of a file with these entries.
  void localise(const std::string& entries) {
    localise_file("<languageUI><Person>" + entries + "</Person></languageUI>");
  }
  void localise_file(const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
    localizer.set_LocalizationFile(name());
    localizer.Localise(u"Person");
  }
  std::u16string name() const { return from_utf8(path.string()); }
  /// The dialog's caption and those of its controls.
  std::vector<std::u16string> captions() const {
    std::vector<std::u16string> all{form.Caption()};
    for (const auto& control : form.controls())
      if (control->has_caption()) all.push_back(control->Caption());
    return all;
  }

  std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("tvx-language-" + std::to_string(getpid()) + ".xml");
  Form form{u"frmPerson", u"Person"};
  clsLocalize localizer;
  std::vector<std::string> heard;
};

const std::string untouched_entry = "<e><k>lblAge</k><t>Alter</t></e>";

TEST_F(Localizer, GivesTheFormAndItsControlsTheirCaptions) {
  localise("<a><b special='form'>Mensch</b></a><c><d>lblName</d><e>Vorname</e></c>" + untouched_entry);
  EXPECT_THAT(captions(), ElementsAre(u"Mensch", u"Vorname", u"Alter", u"OK"));
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Localizer, WithNoFileSetNothingIsRead) {
  localizer.Localise(u"Person");
  EXPECT_THAT(captions(), ElementsAre(u"Person", u"Name", u"Age", u"OK"));
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Localizer, AMissingFileIsToldWithItsPath) {
  localizer.set_LocalizationFile(u"/no/such/file.xml");
  EXPECT_EQ(localizer.LocalizationFile(), u"/no/such/file.xml");
  localizer.Localise(u"Person");
  EXPECT_THAT(heard, ElementsAre("11000 Can not find UI language file at /no/such/file.xml"));
  localizer.set_LocalizationFile(u"/tmp");
  localizer.Localise(u"Person");
  EXPECT_EQ(heard.back(), "11000 Can not find UI language file at /tmp");
}

TEST_F(Localizer, AMalformedFileIsToldWithReasonLineAndCharacter) {
  localise_file("<languageUI>\n <Person>\n</languageUI>");
  EXPECT_THAT(heard,
              ElementsAre("11011 Cannot parse UI language file. Error - mismatched tag at line: 3, char: 3"));
}

TEST_F(Localizer, NamesOfControlsHaveNoCase) {
  localise("<e><k>LBLNAME</k><t>Vorname</t></e>");
  EXPECT_EQ(form.Controls(u"lblName").Caption(), u"Vorname");
}

TEST_F(Localizer, AnUnknownControlEndsItAndWhatCameBeforeStays) {
  localise("<e><k>lblName</k><t>Vorname</t></e><e><k>lblNone</k><t>x</t></e>" + untouched_entry);
  EXPECT_THAT(captions(), ElementsAre(u"Person", u"Vorname", u"Age", u"OK"));
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : Control 'lblNone' not found"));
}

TEST_F(Localizer, AControlWithoutACaptionEndsIt) {
  localise("<e><k>txtName</k><t>x</t></e>" + untouched_entry);
  EXPECT_EQ(form.Controls(u"lblAge").Caption(), u"Age");
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : Object doesn't support this property or method: "
                                 "txtName.Caption"));
}

TEST_F(Localizer, AMissingSectionIsAFailure) {
  localizer.set_TheForm(&form);
  localise_file("<languageUI><person/><Other/></languageUI>");
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : There is no section Person"));
}

TEST_F(Localizer, TheRootsNameIsPartOfThePath) {
  localise_file("<language><Person>" + untouched_entry + "</Person></language>");
  EXPECT_EQ(form.Controls(u"lblAge").Caption(), u"Age");
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : There is no section Person"));
}

TEST_F(Localizer, AnEmptySectionIsNoFailure) {
  localise("");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Localizer, AMissingSecondChildEndsIt) {
  localise("<e><k>lblName</k></e>" + untouched_entry);
  EXPECT_THAT(captions(), ElementsAre(u"Person", u"Name", u"Age", u"OK"));
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : There is no text for lblName"));
}

TEST_F(Localizer, AnEmptyEntryEndsIt) {
  localise("<e/>" + untouched_entry);
  EXPECT_EQ(form.Controls(u"lblAge").Caption(), u"Age");
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : An entry is empty"));
}

TEST_F(Localizer, AnEmptyTextIsACaption) {
  localise("<e><k>lblName</k><t/></e>");
  EXPECT_EQ(form.Controls(u"lblName").Caption(), u"");
}

TEST_F(Localizer, TheFormsOwnEntryNeedsNoSecondChildAndUsesNone) {
  localise("<e><k special='FoRM'>Mensch</k><t>not this</t></e>");
  EXPECT_EQ(form.Caption(), u"Mensch");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Localizer, AnotherSpecialValueIsToldAndTheNextEntryGoesOn) {
  localise("<e><k special='tab'>lblName</k><t>Vorname</t></e>" + untouched_entry);
  EXPECT_THAT(captions(), ElementsAre(u"Person", u"Name", u"Alter", u"OK"));
  EXPECT_THAT(heard, ElementsAre("11000 Attribute invalid : special"));
}

TEST_F(Localizer, AnEntryWithAnotherAttributeIsPassedOver) {
  localise("<e><k lang='de' special='form'>lblName</k><t>Vorname</t></e><e><k Special='form'>x</k></e>" +
           untouched_entry);
  EXPECT_THAT(captions(), ElementsAre(u"Person", u"Name", u"Alter", u"OK"));
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Localizer, AttributesElsewhereMeanNothing) {
  localise("<e note='1'><k>lblName</k><t special='form'>Vorname</t></e>");
  EXPECT_EQ(form.Controls(u"lblName").Caption(), u"Vorname");
}

TEST_F(Localizer, CommentsAndIndentationBreakNothing) {
  localise(
      "\n  <!-- the name -->\n  <e>\n    <!-- key -->\n    <k>\n lblName </k>\n    <t>\n Vorname\n </t>\n  "
      "</e>\n");
  EXPECT_EQ(form.Controls(u"lblName").Caption(), u"Vorname");
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Localizer, OfTwoSectionsOfANameTheFirstCounts) {
  localise_file("<languageUI><Person>" + untouched_entry +
                "</Person><Person><e><k>lblAge</k><t>x</t></e></Person></languageUI>");
  EXPECT_EQ(form.Controls(u"lblAge").Caption(), u"Alter");
}

TEST_F(Localizer, WithoutADialogItIsAFailure) {
  localizer.set_TheForm(nullptr);
  localise(untouched_entry);
  EXPECT_THAT(heard, ElementsAre("11000 Language UI error : There is no dialog"));
}

TEST_F(Localizer, NobodyHasToListen) {
  localizer.set_Error({});
  localise("<e/>");
  EXPECT_EQ(form.Caption(), u"Person");
}

}  // namespace
}  // namespace tvx::localise
