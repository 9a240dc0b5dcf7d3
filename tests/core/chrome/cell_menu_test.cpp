#include "tvx/core/chrome/cell_menu.h"

#include "core/control_fixture.h"
#include "tvx/dom/journal.h"
#include "tvx/platform/menu.h"

/// The submenu of tables in the menus that a right press in a cell opens.
namespace tvx::core {
namespace {

using browser::MouseButton;
using dom::Tag;

class CellMenu : public Control {
 protected:
  void start_with_table() {
    start_with(
        u"<P>text</P><TABLE><TBODY><TR><TD>a</TD><TD><A href=\"x\">b</A></TD></TR><TR><TD>c</TD>"
        u"<TD><IMG src=\"i.gif\"></TD></TR></TBODY></TABLE>");
  }
  /// A right press on the text of an element, or on an image.
  void right_press(Tag tag, const std::u16string& choose, const std::function<void()>& look = {}) {
    const char16_t* top = tag == Tag::A ? u"mnuLinks" : tag == Tag::Img ? u"mnuImg" : u"mnuMisc";
    menus.expect({.menu = top, .choose = choose, .while_open = [&](platform::Menu&) {
                    if (look) look();
                  }});
    browser::MouseInput mouse = at(element(tag), MouseButton::Right);
    if (tag != Tag::Img) mouse.place = dom::Boundary{element(tag)->first_child(), 0};
    control->DOM()->mouse_press(mouse);
  }
  bool visible(std::u16string_view name) { return control->menu(name)->Visible(); }
  std::u16string obstacle(std::u16string_view name) { return control->menu(name)->Obstacle(); }
  void select_cells_from(Tag first, Tag last) {
    control->DOM()->select([&](editing::Selection& selection) {
      selection.set({element(first)->first_child(), 0}, {element(last)->first_child(), 1});
    });
  }
};

TEST_F(CellMenu, IsThereInCellsOnly) {
  start_with_table();
  right_press(Tag::P, u"", [&] { EXPECT_FALSE(visible(u"mnuMiscTable")); });
  right_press(Tag::Td, u"", [&] {
    EXPECT_TRUE(visible(u"mnuMiscTable"));
    EXPECT_TRUE(visible(u"mnuMiscTableSep"));
  });
  right_press(Tag::A, u"", [&] { EXPECT_TRUE(visible(u"mnuLinkTable")); });
  right_press(Tag::Img, u"", [&] { EXPECT_TRUE(visible(u"mnuImgTable")); });
  control->set_HiddenContextMenus(u"MiscTable");
  right_press(Tag::Td, u"", [&] {
    EXPECT_FALSE(visible(u"mnuMiscTable"));
    EXPECT_FALSE(visible(u"mnuMiscTableSep"));
  });
}

TEST_F(CellMenu, EachItemIsOneUndoStep) {
  start_with_table();
  std::vector<std::u16string> names;
  for (const platform::Menu* item : platform::all_items(*control->menu(u"mnuMiscTable")))
    if (!item->is_separator() && item->Name() != u"mnuCellMerge" &&
        item->Name().find(u"Properties") == std::u16string::npos)
      names.push_back(item->Name());
  EXPECT_EQ(names.size(), 12u);
  for (const std::u16string& name : names) {
    start_with_table();
    const std::u16string before = body();
    dom::Journal& journal = control->DOM()->tree().journal();
    const std::size_t depth = journal.depth();
    const bool selects = name.find(u"Select") != name.npos;
    right_press(Tag::Td, name);
    EXPECT_EQ(journal.depth(), depth + (selects ? 0 : 1)) << to_utf8(name);
    EXPECT_EQ(control->IsDirty(), !selects) << to_utf8(name);
    if (selects) continue;
    EXPECT_NE(body(), before) << to_utf8(name);
    journal.undo();
    EXPECT_EQ(body(), before) << to_utf8(name);
  }
}

TEST_F(CellMenu, WhatIsChangedInTheDialogOfCellsGoesToAllThatAreSelected) {
  start_with(
      u"<TABLE><TBODY><TR><TD align=\"left\">a</TD><TH width=\"20\" "
      u"align=\"right\">b</TH><TD>c</TD></TR></TBODY>"
      u"</TABLE>");
  const std::u16string before = body();
  select_cells_from(Tag::Td, Tag::Th);
  forms.expect({.form = u"frmCellProp",
                .while_open = [](platform::Form& form) { form.Controls(u"txtBgcolor").set_Text(u"yellow"); },
                .press = u"OKButton"});
  right_press(Tag::Td, u"mnuCellProperties");
  EXPECT_EQ(host.heard.front(), "MenuClick: ContextCELLProperties");
  EXPECT_EQ(body(),
            u"<TABLE><TBODY><TR><TD align=\"left\" bgcolor=\"yellow\">a</TD>"
            u"<TH width=\"20\" align=\"right\" bgcolor=\"yellow\">b</TH><TD>c</TD></TR></TBODY></TABLE>");
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(body(), before);
}

TEST_F(CellMenu, TheDialogOfTheTableLeavesCellsTheirColours) {
  const std::u16string cells = u"<TBODY><TR><TD bgcolor=\"red\">a</TD></TR></TBODY></TABLE>";
  start_with(u"<TABLE border=\"1\">" + cells);
  const auto set = [&](const char16_t* field, const char16_t* text) {
    forms.expect({.form = u"Frminserttable",
                  .while_open = [=](platform::Form& form) { form.Controls(field).set_Text(text); },
                  .press = u"cmdApply"});
    right_press(Tag::Td, u"mnuCellTableProperties");
  };
  set(u"txtBorderwidth", u"3");
  EXPECT_EQ(body(), u"<TABLE border=\"3\">" + cells);
  set(u"txtBackColour", u"blue");
  EXPECT_EQ(
      body(),
      u"<TABLE border=\"3\" bgcolor=\"blue\"><TBODY><TR><TD bgcolor=\"blue\">a</TD></TR></TBODY></TABLE>");
}

TEST_F(CellMenu, ACancelledDialogLeavesTheDocumentUnchanged) {
  start_with_table();
  const std::u16string before = body();
  forms.expect({.form = u"frmCellProp",
                .while_open = [](platform::Form& form) { form.Controls(u"txtBgcolor").set_Text(u"yellow"); },
                .press = u"CancelButton"});
  right_press(Tag::Td, u"mnuCellProperties");
  EXPECT_EQ(body(), before);
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(CellMenu, LinksAndImagesHaveTheSameItems) {
  start_with_table();
  right_press(Tag::A, u"mnuLinkCell(0)");
  EXPECT_EQ(host.heard.back(), "MenuClick: ContextCELLInsertRowAbove");
  EXPECT_TRUE(
      body().starts_with(u"<P>text</P><TABLE><TBODY><TR><TD><BR></TD><TD><BR></TD></TR><TR><TD>a</TD>"));
  right_press(Tag::Img, u"mnuImgCell(5)");
  EXPECT_EQ(body(),
            u"<P>text</P><TABLE><TBODY><TR><TD><BR></TD><TD><BR></TD></TR><TR><TD>a</TD>"
            u"<TD><A href=\"x\">b</A></TD></TR></TBODY></TABLE>");
}

TEST_F(CellMenu, WhatCannotBeDoneSaysWhy) {
  start_with_table();
  right_press(Tag::Td, u"", [&] {
    EXPECT_EQ(obstacle(u"mnuCellRowAbove"), u"");
    EXPECT_EQ(obstacle(u"mnuCellMerge"), u"Select the cells that are to be one");
    EXPECT_EQ(obstacle(u"mnuCellMergeDown"), u"");
    EXPECT_EQ(obstacle(u"mnuCellSplit"), u"");
  });
  right_press(Tag::Img, u"", [&] { EXPECT_EQ(obstacle(u"mnuImgCell"), u""); });
  select_cells_from(Tag::Td, Tag::A);
  right_press(Tag::Td, u"", [&] {
    EXPECT_EQ(obstacle(u"mnuCellMerge"), u"");
    EXPECT_EQ(obstacle(u"mnuCellSplit"), u"Several cells are selected");
  });
}

TEST_F(CellMenu, AHostCanRefuseAnItem) {
  start_with_table();
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  const std::u16string before = body();
  right_press(Tag::Td, u"mnuCellDeleteRow");
  EXPECT_EQ(host.heard.back(), "MenuClick: ContextCELLDeleteRow");
  EXPECT_EQ(body(), before);
}

// --- buttons on cells ---

TEST_F(CellMenu, ButtonsActInEachSelectedCell) {
  start_with(u"<TABLE><TBODY><TR><TD>a</TD><TH>b</TH></TR></TBODY></TABLE>");
  for (const std::u16string_view key : {u"Bold", u"Center", u"orderedlist"}) {
    select_cells_from(Tag::Td, Tag::Th);
    control->press(control->Toolbar1(), key);
  }
  EXPECT_EQ(body(),
            u"<TABLE><TBODY><TR><TD style=\"text-align: center\"><OL><LI><B>a</B></LI></OL></TD>"
            u"<TH><OL><LI>b</LI></OL></TH></TR></TBODY></TABLE>");
}

// A host that calls the operation gets what the command says of a text.
TEST_F(CellMenu, CallsOfAHostStayCommands) {
  start_with(u"<P>one</P>\n<P>two</P>");
  control->DOM()->select([&](editing::Selection& selection) {
    selection.set({control->DOM()->body(), 0}, {control->DOM()->body(), 3});
  });
  control->press(control->Toolbar1(), u"unorderedlist");
  EXPECT_EQ(body(), u"<UL>\n<LI>one</LI>\n<LI>two</LI>\n</UL>");
  control->undo_document();
  control->unnumbered_list();
  EXPECT_EQ(body(), u"<UL><LI>one</LI>\n<LI>two</LI></UL>");
}

// --- pasting as text ---

TEST_F(CellMenu, PasteAsPlainTextIsThereWithATextAndTakesThatAlone) {
  start_with(u"<P>x</P>");
  clipboard.publish({{"image/png", "bytes"}});
  right_press(Tag::P, u"", [&] { EXPECT_FALSE(visible(u"mnuMiscPasteText")); });
  clipboard.publish({{"text/html", "<b>bold</b>"}, {"text/plain", "plain"}});
  right_press(Tag::P, u"mnuMiscPasteText");
  EXPECT_EQ(host.heard.back(), "MenuClick: ContextMiscPasteText");
  EXPECT_EQ(body(), u"<P>plainx</P>");
}

}  // namespace
}  // namespace tvx::core
