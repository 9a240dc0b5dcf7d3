#include "tvx/core/chrome/menus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::core {
namespace {

using platform::Menu;
using testing::ElementsAre;

std::vector<std::u16string> names(const Menu& menu) {
  std::vector<std::u16string> result;
  for (const auto& item : menu.items()) result.push_back(item->Name());
  return result;
}

class Contexts : public testing::Test {
 protected:
  bool visible(std::u16string_view name) { return menus.item(name).Visible(); }
  bool paste(Menu& menu, std::u16string_view item, std::set<int> formats) {
    menus.refresh_paste(menu,
                        [&](platform::ClipboardFormat format) { return formats.contains(int(format)); });
    return menus.item(item).Enabled();
  }
  ContextMenus menus;
};

TEST_F(Contexts, ItemsStandInTheirOrder) {
  EXPECT_THAT(names(menus.mnuT), ElementsAre(u"mnuTInsRow", u"mnuTDelRow", u"mnuS1", u"mnuTInsCol",
                                             u"mnuTDelCol", u"mnuS2", u"mnuTProp"));
  EXPECT_THAT(
      names(menus.mnuLinks),
      ElementsAre(u"mnuLinkSpelling", u"mnuLinkSpellingAdd", u"mnuLinkSpellingIgnore", u"mnuLinkSpellingSep",
                  u"mnuLinkCut", u"mnuLinkCopy", u"mnuLinkPaste", u"mnuLinkPasteText", u"mnuLinksSep1",
                  u"mnuLinkEdit", u"mnuLinkRemove", u"mnuLinkTableSep", u"mnuLinkTable"));
  EXPECT_THAT(
      names(menus.mnuMisc),
      ElementsAre(u"mnuSpelling", u"mnuSpellingAdd", u"mnuSpellingIgnore", u"mnuSpellingSep", u"mnuMiscCut",
                  u"mnuMiscCopy", u"mnuMiscPaste", u"mnuMiscPasteText", u"mnuMiscStyle", u"mnuMiscSep4",
                  u"mnuInsertLink", u"mnuSepM2", u"mnuMiscSource", u"mnuS4", u"mnuMiscRevert",
                  u"mnuMiscFieldSep", u"mnuMiscField", u"mnuMiscForm", u"mnuMiscTableSep", u"mnuMiscTable"));
  EXPECT_THAT(names(menus.mnuImg), ElementsAre(u"mnuImgCut", u"mnuImgCopy", u"mnuImgPaste", u"mnuImgSep3",
                                               u"mnuImgNewLink", u"mnuImgLink", u"mnuImgLinkRemove",
                                               u"mnuImgProperties", u"mnuImgTableSep", u"mnuImgTable"));
  EXPECT_THAT(names(menus.mnuToolProp),
              ElementsAre(u"mnuToolProperties", u"sep457634", u"MnuCellRowActions", u"mnuPropCellRowSep",
                          u"mnuToolEditTag", u"mnuToolSetClass", u"mnuToolFieldSep", u"mnuToolField",
                          u"mnuToolForm"));
  EXPECT_THAT(names(menus.item(u"MnuCellRowActions")),
              ElementsAre(u"MnuCellRowActionsDelete", u"MnuCellRowActionsInsertRowAbove",
                          u"MnuCellRowActionsInsertRowBelow", u"MnuCellRowActionsMergeCellLeft",
                          u"MnuCellRowActionsMergeCellRight", u"MnuCellRowActionsInsertCellBefore",
                          u"MnuCellRowActionsInsertCellAfter"));
}

TEST_F(Contexts, CaptionsOfTopsAndArrays) {
  EXPECT_EQ(menus.mnuT.Caption(), u"Table");
  EXPECT_EQ(menus.mnuImg.Caption(), u"IMG");
  EXPECT_EQ(menus.mnuToolProp.Caption(), u"none");
  EXPECT_EQ(menus.find(u"mnuMiscClass", 0)->Caption(), u"(none)");
  EXPECT_EQ(menus.find(u"mnuClass", 0)->Caption(), u"(none)");
  EXPECT_EQ(menus.item(u"mnuInsertLink").Caption(), u"Insert / Edit Link");
  EXPECT_EQ(menus.find(u"mnuNothing"), nullptr);
  EXPECT_THROW(menus.item(u"mnuNothing"), RuntimeError);
}

TEST_F(Contexts, EveryItemThatActsHasItsKey) {
  std::set<std::u16string_view> keys;
  for (Menu* top : menus.tops())
    for (Menu* item : platform::all_items(*top)) {
      if (item->is_separator() || !item->items().empty() || item->Name() == u"mnuCSSStyle") continue;
      const auto key = ContextMenus::key_of(*item);
      EXPECT_FALSE(key.empty()) << to_utf8(item->Name());
      // Links and images in a table have the items that all else has.
      if (item->Name() == u"mnuLinkCell" || item->Name() == u"mnuImgCell") continue;
      EXPECT_TRUE(keys.insert(key).second) << to_utf8(key);
    }
  EXPECT_EQ(keys.size(), 61u);
  EXPECT_EQ(ContextMenus::key_of(menus.item(u"mnuMiscRevert")), u"ContextMISCRevert");
  EXPECT_EQ(ContextMenus::key_of(menus.item(u"mnuMiscCut")), u"ContextMiscCut");
}

TEST_F(Contexts, WhatAWrongWordCouldBeStandsAtTheTop) {
  const std::vector<std::u16string> offered{u"world", u"R&D"};
  menus.show_spelling(menus.mnuMisc, &offered, u"");
  EXPECT_FALSE(visible(u"mnuSpelling")) << "there are suggestions";
  EXPECT_EQ(menus.find(u"mnuSpelling", 1)->Caption(), u"world");
  EXPECT_EQ(menus.find(u"mnuSpelling", 2)->Caption(), u"R&&D");
  EXPECT_TRUE(visible(u"mnuSpellingAdd") && visible(u"mnuSpellingIgnore") && visible(u"mnuSpellingSep"));
  const std::vector<std::u16string> none;
  menus.show_spelling(menus.mnuMisc, &none, u"spellingadd");
  EXPECT_TRUE(visible(u"mnuSpelling"));
  EXPECT_FALSE(menus.item(u"mnuSpelling").Enabled());
  EXPECT_EQ(menus.find(u"mnuSpelling", 1), nullptr);
  EXPECT_FALSE(visible(u"mnuSpellingAdd")) << "a host hides it";
  menus.show_spelling(menus.mnuMisc, nullptr, u"");
  menus.apply_hidden(u"x");
  for (const char16_t* name : {u"mnuSpelling", u"mnuSpellingAdd", u"mnuSpellingIgnore", u"mnuSpellingSep"})
    EXPECT_FALSE(visible(name));
}

// --- HiddenContextMenus ---

TEST_F(Contexts, AHiddenItemTakesItsSeparatorAlong) {
  menus.apply_hidden(u"MiscRevert");
  EXPECT_FALSE(visible(u"mnuMiscRevert"));
  EXPECT_FALSE(visible(u"mnuS4"));
  EXPECT_TRUE(visible(u"mnuSepM2"));
}

TEST_F(Contexts, ASeparatorStaysWhileOneOfItsGroupDoes) {
  menus.apply_hidden(u"TInsCol;LinkEdit");
  EXPECT_TRUE(visible(u"mnuS1"));
  EXPECT_TRUE(visible(u"mnuLinksSep1"));
  menus.apply_hidden(u"TInsCol;TDelCol;LinkEdit;LinkRemove;TProp;InsertLink;MiscSource");
  for (const char16_t* line : {u"mnuS1", u"mnuS2", u"mnuLinksSep1", u"mnuMiscSep4", u"mnuSepM2"})
    EXPECT_FALSE(visible(line)) << to_utf8(line);
}

TEST_F(Contexts, EntriesAreNamesWithoutTheirPrefixInAnyLetters) {
  menus.apply_hidden(u"imgcopy;TINSROW;CellRowActionsDelete; MiscCut;mnuMiscCopy");
  EXPECT_FALSE(visible(u"mnuImgCopy"));
  EXPECT_FALSE(visible(u"mnuTInsRow"));
  EXPECT_FALSE(visible(u"MnuCellRowActionsDelete"));
  EXPECT_TRUE(visible(u"mnuMiscCut")) << "entries are not trimmed";
  EXPECT_TRUE(visible(u"mnuMiscCopy"));
}

TEST_F(Contexts, ATopMenuCanBeNamedAndStillPopsUp) {
  menus.apply_hidden(u"Misc");
  EXPECT_FALSE(menus.mnuMisc.Visible());
  EXPECT_TRUE(visible(u"mnuMiscCut"));
  EXPECT_TRUE(menus.mnuMisc.has_visible_item());
}

TEST_F(Contexts, AMenuArrayIsHiddenAsAWhole) {
  Menu& styles = menus.item(u"mnuMiscStyle");
  styles.Load(u"mnuMiscClass", 1).set_Visible(true);
  menus.apply_hidden(u"MiscClass");
  EXPECT_FALSE(menus.find(u"mnuMiscClass", 0)->Visible());
  EXPECT_FALSE(menus.find(u"mnuMiscClass", 1)->Visible());
  EXPECT_TRUE(menus.find(u"mnuClass", 0)->Visible());
}

TEST_F(Contexts, AnotherListShowsWhatTheOneBeforeHidAndAnEmptyOneDoesNot) {
  menus.apply_hidden(u"MiscRevert");
  menus.apply_hidden(u"MiscSource");
  EXPECT_TRUE(visible(u"mnuMiscRevert"));
  menus.apply_hidden(u"");
  EXPECT_FALSE(visible(u"mnuMiscSource"));
}

// --- paste ---

TEST_F(Contexts, PasteOfImagesWantsText) {
  EXPECT_FALSE(paste(menus.mnuImg, u"mnuImgPaste", {}));
  EXPECT_TRUE(paste(menus.mnuImg, u"mnuImgPaste", {1}));
  EXPECT_TRUE(paste(menus.mnuImg, u"mnuImgPaste", {-16639}));
  EXPECT_FALSE(paste(menus.mnuImg, u"mnuImgPaste", {-16640}));
  EXPECT_FALSE(paste(menus.mnuImg, u"mnuImgPaste", {2, 8}));
}

TEST_F(Contexts, PasteOfLinksTakesLinksToo) {
  EXPECT_FALSE(paste(menus.mnuLinks, u"mnuLinkPaste", {}));
  EXPECT_TRUE(paste(menus.mnuLinks, u"mnuLinkPaste", {-16640}));
  EXPECT_FALSE(paste(menus.mnuLinks, u"mnuLinkPaste", {15}));
}

TEST_F(Contexts, PasteElsewhereIsRefusedForBinaryContentAlone) {
  EXPECT_TRUE(paste(menus.mnuMisc, u"mnuMiscPaste", {})) << "an empty clipboard";
  EXPECT_TRUE(paste(menus.mnuMisc, u"mnuMiscPaste", {13})) << "a format that no rule names";
  for (const int format : {2, 3, 8, 9, 15}) {
    EXPECT_FALSE(paste(menus.mnuMisc, u"mnuMiscPaste", {format})) << format;
    EXPECT_TRUE(paste(menus.mnuMisc, u"mnuMiscPaste", {format, 1})) << format;
  }
}

// --- classes ---

TEST_F(Contexts, ClassesStandBehindNoneUnderTheirIndexes) {
  const StyleClass classes[] = {{2, u"a"}, {3, u"b"}};
  menus.show_classes(classes);
  for (const auto& [head, array] :
       {std::pair{u"mnuToolSetClass", u"mnuClass"}, {u"mnuMiscStyle", u"mnuMiscClass"}}) {
    Menu& menu = menus.item(head);
    ASSERT_EQ(menu.items().size(), 3u);
    EXPECT_EQ(menu.Item(array, 0).Caption(), u"(none)");
    EXPECT_EQ(menu.Item(array, 2).Caption(), u"a");
    EXPECT_TRUE(menu.Item(array, 2).Visible());
    EXPECT_EQ(menu.Item(array, 3).Caption(), u"b");
  }
  menus.show_classes({});
  EXPECT_EQ(menus.item(u"mnuMiscStyle").items().size(), 1u);
  EXPECT_EQ(menus.item(u"mnuToolSetClass").items().size(), 1u);
}

// --- the submenu of cells and rows ---

TEST_F(Contexts, ACellHasItsSubmenu) {
  menus.prepare_cell_row_actions(u"td", {u"Cell", u"Row", u"Delete Row", u"Delete Cell"});
  EXPECT_EQ(menus.item(u"MnuCellRowActions").Caption(), u"Cell");
  EXPECT_EQ(menus.item(u"MnuCellRowActionsDelete").Caption(), u"Delete Cell");
  EXPECT_TRUE(visible(u"MnuCellRowActions"));
  EXPECT_TRUE(visible(u"mnuPropCellRowSep"));
  EXPECT_TRUE(visible(u"MnuCellRowActionsMergeCellLeft"));
  EXPECT_TRUE(visible(u"MnuCellRowActionsInsertCellAfter"));
  EXPECT_FALSE(visible(u"MnuCellRowActionsInsertRowAbove"));
}

TEST_F(Contexts, ARowHasItsOwn) {
  menus.prepare_cell_row_actions(u"tr", {u"Cell", u"Row", u"Delete Row", u"Delete Cell"});
  EXPECT_EQ(menus.item(u"MnuCellRowActions").Caption(), u"Row");
  EXPECT_EQ(menus.item(u"MnuCellRowActionsDelete").Caption(), u"Delete Row");
  EXPECT_FALSE(visible(u"MnuCellRowActionsMergeCellRight"));
  EXPECT_FALSE(visible(u"MnuCellRowActionsInsertCellBefore"));
  EXPECT_TRUE(visible(u"MnuCellRowActionsInsertRowBelow"));
}

TEST_F(Contexts, HeadingsAndAllElseHaveNone) {
  for (const char16_t* tag : {u"th", u"table", u"p"}) {
    menus.prepare_cell_row_actions(tag, {});
    EXPECT_FALSE(visible(u"MnuCellRowActions"));
    EXPECT_FALSE(visible(u"mnuPropCellRowSep"));
    EXPECT_EQ(menus.item(u"MnuCellRowActions").Caption(), u"Cell/Row Actions");
  }
}

}  // namespace
}  // namespace tvx::core
