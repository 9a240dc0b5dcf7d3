#include "core/control_fixture.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST_F(Control, ReadOnlyPropertiesRefuseAndStayAsTheyAre) {
  start_with(u"<P>x</P>");
  EXPECT_EQ(error_of([&] { control->set_IsDirty(true); }), 382);
  EXPECT_EQ(error_of([&] { control->set_allHTML(u"y"); }), 382);
  EXPECT_EQ(error_of([&] { control->set_DocumentText(u"y"); }), 382);
  EXPECT_EQ(error_of([&] { control->set_FTPActionInProgress(true); }), 382);
  EXPECT_EQ(error_of([&] { control->set_DOM(); }), 382);
  EXPECT_FALSE(control->IsDirty());
  EXPECT_FALSE(control->FTPActionInProgress());
  EXPECT_EQ(control->DocumentText(), u"x");
  EXPECT_THAT(container.changed(), ElementsAre());
  EXPECT_EQ(host.heard.size(), 0u) << "refusals go to the caller, not through the event";
}

TEST_F(Control, ReadOnlyPropertiesRefuseAtDesignTimeByOtherNumbers) {
  start_at_design_time();
  EXPECT_EQ(error_of([&] { control->set_IsDirty(true); }), 387);
  EXPECT_EQ(error_of([&] { control->set_allHTML(u""); }), 387);
  EXPECT_EQ(error_of([&] { control->set_DOM(); }), 383);
}

TEST_F(Control, SelectionBorderStyleKeepsATextThatItsDefaultIsNotIn) {
  create();
  EXPECT_EQ(control->SelectionBorderStyle(), EdHighLightStyle::edNone);
  control->set_SelectionBorderStyle(EdHighLightStyle::edRidge);
  EXPECT_EQ(control->SelectionBorderStyle(), EdHighLightStyle::edRidge);
  for (int i = 0; i <= 8; ++i) {
    control->set_SelectionBorderStyle(EdHighLightStyle(i));
    EXPECT_EQ(int(control->SelectionBorderStyle()), i);
  }
  control->set_SelectionBorderStyle(EdHighLightStyle(17));
  EXPECT_EQ(control->SelectionBorderStyle(), EdHighLightStyle::edNone);
  EXPECT_EQ(text_of(EdHighLightStyle::edRidge), u"Ridge");
  EXPECT_EQ(highlight_style_of(u"ridge"), EdHighLightStyle::edNone);
}

TEST_F(Control, FTPSaveToURLEndsInASlashUnlessItIsEmpty) {
  create();
  control->set_FTPSaveToURL(u"");
  EXPECT_EQ(control->FTPSaveToURL(), u"");
  control->set_FTPSaveToURL(u"http://a/b/");
  EXPECT_EQ(control->FTPSaveToURL(), u"http://a/b/");
  control->set_FTPSaveToURL(u"http://a/b");
  EXPECT_EQ(control->FTPSaveToURL(), u"http://a/b/");
}

TEST_F(Control, LocalImageStoreEndsInABackslashUnlessItIsEmpty) {
  create();
  control->set_LocalImageStore(u"");
  EXPECT_EQ(control->LocalImageStore(), u"");
  control->set_LocalImageStore(u"c:\\images");
  EXPECT_EQ(control->LocalImageStore(), u"c:\\images\\");
  control->set_LocalImageStore(u"c:\\images\\");
  EXPECT_EQ(control->LocalImageStore(), u"c:\\images\\");
}

TEST_F(Control, WhatOnlyTheDesignerMaySetIsRefusedAtRunTime) {
  create();
  EXPECT_EQ(error_of([&] { control->set_HighlightDOMSelection(false); }), 382);
  EXPECT_EQ(error_of([&] { control->set_showDocumentBackgroundImage(false); }), 382);
  EXPECT_TRUE(control->HighlightDOMSelection());
  EXPECT_TRUE(control->showDocumentBackgroundImage());
  start_at_design_time();
  control->set_HighlightDOMSelection(false);
  control->set_showDocumentBackgroundImage(false);
  EXPECT_FALSE(control->HighlightDOMSelection());
  EXPECT_FALSE(control->showDocumentBackgroundImage());
  EXPECT_THAT(designer.changed(), ElementsAre(u"HighlightDOMSelection", u"showDocumentBackgroundImage"));
}

TEST_F(Control, BorderStyleTakesEffectAtOnce) {
  struct Frame : HTMLedObserver {
    EdBorderStyle style = EdBorderStyle::Solid;
    void border_changed(EdBorderStyle now) override { style = now; }
  } frame;
  start();
  control->add_observer(frame);
  control->set_BorderStyle(EdBorderStyle::None);
  EXPECT_EQ(frame.style, EdBorderStyle::None);
  EXPECT_EQ(control->BorderStyle(), EdBorderStyle::None);
  EXPECT_THAT(container.changed(), ElementsAre(u"BorderStyle"));
}

TEST_F(Control, EverySimpleSetterTellsTheContainerItsKey) {
  create();
  container.clear_changed();
  control->set_relativeURLs(true);
  control->set_FTPPort(2121);
  control->set_FTPTransferType(ed_FTPTransferType::ov_ASCII);
  control->set_ShowFTPDialog(false);
  control->set_HiddenButtons(u"Bold");
  control->set_DocumentTitle(u"Title");
  EXPECT_THAT(container.changed(), ElementsAre(u"relativeURLs", u"FTPPort", u"FTPTransferType",
                                               u"ShowFTPDialog", u"HiddenButtons", u"DocumentTitle"));
  EXPECT_EQ(control->FTPPort(), 2121);
}

TEST_F(Control, ADefaultControlStoresTheSevenBooleansWhoseDefaultIsOne) {
  create();
  headless::PropertyBag bag;
  control->UserControl_WriteProperties(bag);
  std::vector<std::u16string> keys;
  for (const auto& [key, value] : bag.entries()) keys.push_back(key);
  EXPECT_THAT(keys, UnorderedElementsAre(u"showFormattingToolbar1", u"showFormattingToolbar2",
                                         u"showDocumentBackgroundImage", u"EditorEnabled", u"CSShttp",
                                         u"showDOMToolbar", u"HighlightDOMSelection"));
  auto again = make(container);
  again->UserControl_ReadProperties(bag);
  EXPECT_TRUE(again->EditorEnabled());
  EXPECT_TRUE(again->CSShttp());
  EXPECT_TRUE(again->ShowFTPDialog());
  EXPECT_EQ(again->FTPPort(), 21);
  EXPECT_EQ(again->FTPBlockSize(), 100);
}

constexpr std::u16string_view writing_order[] = {u"DocumentHTML",
                                                 u"FullToolBar",
                                                 u"FTPHost",
                                                 u"FTPUser",
                                                 u"FTPPassword",
                                                 u"FTPInitDir",
                                                 u"FTPSaveToURL",
                                                 u"FTPPassive",
                                                 u"BaseURL",
                                                 u"showFormToolbar",
                                                 u"showFormattingToolbar1",
                                                 u"showFormattingToolbar2",
                                                 u"CSSText",
                                                 u"showCSSDropDown",
                                                 u"isAccessContained",
                                                 u"showDocumentBackgroundImage",
                                                 u"FTPActionInProgress",
                                                 u"EditorEnabled",
                                                 u"CSShttp",
                                                 u"BorderStyle",
                                                 u"showDOMToolbar",
                                                 u"useEnterAsBR",
                                                 u"SelectionBorderStyle",
                                                 u"SelectionBorderColor",
                                                 u"SelectionBorderWidth",
                                                 u"HighlightDOMSelection",
                                                 u"HighlightDOMSelectionOnClick",
                                                 u"UploadImages",
                                                 u"LocalizationFile",
                                                 u"HiddenButtons",
                                                 u"HiddenContextMenus",
                                                 u"LocalImageStore",
                                                 u"DocumentText",
                                                 u"DocumentTitle",
                                                 u"ShowFTPDialog",
                                                 u"FTPPort",
                                                 u"FTPTransferType",
                                                 u"FTPProxyServer",
                                                 u"FTPProxyBypassList",
                                                 u"allHTML",
                                                 u"FTPDirectoryItem",
                                                 u"IsDirty",
                                                 u"relativeURLs",
                                                 u"CustomDictionaryFilename",
                                                 u"AlwaysConvertUnicodeCharacters",
                                                 u"FTPBlockSize",
                                                 u"SpellingLanguage",
                                                 u"CheckSpellingAsYouType"};

TEST_F(Control, KeysAreWrittenInTheOrderThatContainersKnow) {
  create();
  headless::PropertyBag bag;
  control->UserControl_WriteProperties(bag);
  const auto& written = bag.written();
  EXPECT_THAT(written, testing::ElementsAreArray(writing_order));
}

TEST_F(Control, AutoFormatIsStoredWhereItIsOn) {
  create();
  headless::PropertyBag bag;
  control->set_AutoFormat(true);
  control->UserControl_WriteProperties(bag);
  auto again = make(container);
  again->UserControl_ReadProperties(bag);
  EXPECT_TRUE(again->AutoFormat());
}

constexpr std::u16string_view reading_order[] = {u"DocumentHTML",
                                                 u"FullToolBar",
                                                 u"FTPHost",
                                                 u"FTPUser",
                                                 u"FTPPassword",
                                                 u"FTPInitDir",
                                                 u"FTPSaveToURL",
                                                 u"FTPPassive",
                                                 u"CustomDictionaryFilename",
                                                 u"BaseURL",
                                                 u"CSSText",
                                                 u"CSShttp",
                                                 u"showFormToolbar",
                                                 u"showFormattingToolbar1",
                                                 u"showFormattingToolbar2",
                                                 u"showCSSDropDown",
                                                 u"isAccessContained",
                                                 u"showDocumentBackgroundImage",
                                                 u"FTPActionInProgress",
                                                 u"EditorEnabled",
                                                 u"showDOMToolbar",
                                                 u"BorderStyle",
                                                 u"useEnterAsBR",
                                                 u"SelectionBorderStyle",
                                                 u"SelectionBorderColor",
                                                 u"SelectionBorderWidth",
                                                 u"HighlightDOMSelection",
                                                 u"HighlightDOMSelectionOnClick",
                                                 u"UploadImages",
                                                 u"LocalizationFile",
                                                 u"HiddenButtons",
                                                 u"HiddenContextMenus",
                                                 u"LocalImageStore",
                                                 u"DocumentText",
                                                 u"DocumentTitle",
                                                 u"ShowFTPDialog",
                                                 u"FTPPort",
                                                 u"FTPTransferType",
                                                 u"FTPProxyServer",
                                                 u"FTPProxyBypassList",
                                                 u"allHTML",
                                                 u"FTPDirectoryItem",
                                                 u"IsDirty",
                                                 u"relativeURLs",
                                                 u"AlwaysConvertUnicodeCharacters",
                                                 u"FTPBlockSize",
                                                 u"SpellingLanguage",
                                                 u"CheckSpellingAsYouType",
                                                 u"RemoteContent",
                                                 u"AutoFormat"};

struct OrderBag : platform::PropertyBag {
  mutable std::vector<std::u16string> read;
  std::u16string failing;
  platform::PropertyValue ReadProperty(std::u16string_view key,
                                       const platform::PropertyValue& otherwise) const override {
    read.emplace_back(key);
    if (key == failing) throw RuntimeError(errors::type_mismatch, u"broken");
    if (key == u"FTPHost") return std::u16string(u"host");
    if (key == u"FTPPort") return std::u16string(u"no number");
    return otherwise;
  }
  void WriteProperty(std::u16string_view, const platform::PropertyValue&,
                     const platform::PropertyValue&) override {}
};

TEST_F(Control, KeysAreReadInTheirOrderAndAKeyThatFailsKeepsItsValue) {
  OrderBag bag;
  bag.failing = u"FTPUser";
  Properties properties;
  properties.FTPUser = u"kept";
  TableLabels labels;
  read_properties(properties, labels, bag);
  EXPECT_THAT(bag.read, testing::ElementsAreArray(reading_order));
  EXPECT_EQ(properties.FTPUser, u"kept");
  EXPECT_EQ(properties.FTPHost, u"host");
  EXPECT_EQ(properties.FTPPort, 21);
  EXPECT_EQ(labels.delete_row, u"Delete Row");
}

TEST_F(Control, OnlyReadingGivesTheTableLabels) {
  create();
  EXPECT_EQ(control->table_labels().cell, u"");
  control = make(container);
  control->UserControl_ReadProperties(headless::PropertyBag());
  EXPECT_EQ(control->table_labels().cell, u"Cell");
  EXPECT_EQ(control->table_labels().delete_cell, u"Delete Cell");
}

TEST_F(Control, TheStoredTextIsWhatTheHostGaveNotWhatTheUserTyped) {
  start_with(u"<P>given</P>");
  load(u"<P>given and typed[]</P>");
  headless::PropertyBag bag;
  control->UserControl_WriteProperties(bag);
  EXPECT_EQ(std::get<std::u16string>(bag.ReadProperty(u"DocumentHTML", std::u16string())), u"<P>given</P>");
}

TEST_F(Control, ReadOnlyValuesComeBackFromTheStoreIntoTheirMembers) {
  headless::PropertyBag bag;
  bag.put(u"IsDirty", true);
  bag.put(u"BaseURL", std::u16string(u"c:\\no setter runs"));
  control = make(designer);
  control->UserControl_ReadProperties(bag);
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(control->BaseURL(), u"c:\\no setter runs");
}

}  // namespace
}  // namespace tvx::core
