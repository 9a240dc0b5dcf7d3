#include <QClipboard>
#include <QMenu>

#include "tvx/core/chrome/toolbars.h"
#include "tvx/qt/bars/branch_face.h"
#include "tvx/qt/bars/toolbar_face.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Every button of the toolbars and every item of the mouse's menus, pressed with the real mouse on content
/// that suits it: none is without effect.
namespace tvx::x11 {
namespace {

/// What is to be seen of it.
enum class Effect : std::uint8_t { Document, Dialog, Clipboard, CodeView };

class CommandsOnScreen : public EditorOnScreen {
 protected:
  /// Does it, and waits for the effect. A dialog is cancelled.
  void expect_effect(Effect effect, const std::string& what, const std::function<void()>& act) {
    const std::string before = html();
    bool copied = false;
    dialog_came_ = false;
    cancel_next_dialog();
    const auto listening =
        QObject::connect(QApplication::clipboard(), &QClipboard::dataChanged, [&copied] { copied = true; });
    act();
    const auto seen = [&] {
      switch (effect) {
        case Effect::Document: return html() != before;
        case Effect::Dialog: return dialog_came_;
        case Effect::Clipboard: return copied;
        case Effect::CodeView: return control().InCodeView();
      }
      return false;
    };
    EXPECT_TRUE(wait_for(seen)) << what << ": " << html();
    QObject::disconnect(listening);
    ASSERT_TRUE(
        wait_for([] { return !QApplication::activeModalWidget() && !QApplication::activePopupWidget(); }));
    if (effect == Effect::CodeView) control().show_Code();
    hands::give_focus(*window_);
    ASSERT_TRUE(settle()) << what;
  }
  void cancel_next_dialog() {
    answer_dialog([this](QDialog& dialog) {
      dialog_came_ = true;
      hands::press(QStringLiteral("Escape"));
      EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
    });
  }
  void show(std::u16string_view content) {
    control().set_DocumentHTML(content);
    ASSERT_TRUE(settle());
  }
  void select_all() {
    document().select([&](editing::Selection& selection) {
      dom::Node* text = document().body()->first_child()->first_child();
      selection.set({text, 0}, {text, dom::length_of(*text)});
    });
    ASSERT_TRUE(settle());
  }
  void press_button(const char* bar_name, int index) {
    const auto* bar = window_->editor().findChild<qt::ToolbarFace*>(QLatin1String(bar_name));
    ASSERT_NE(bar, nullptr);
    QWidget* button = bar->button_widget(index);
    ASSERT_NE(button, nullptr) << index;
    ASSERT_TRUE(button->isVisible() && button->isEnabled()) << index;
    hands::click(middle_of(*button));
  }
  /// Takes the item in the menu that opens, going through the menu above it.
  void expect_item(std::string name, Effect effect, const std::function<void()>& open,
                   const std::string& above = {}) {
    expect_effect(effect, name, [&] {
      answer_menu([this, name, above](QWidget& popup) {
        cancel_next_dialog();
        click_item(static_cast<QMenu&>(popup), above.empty() ? name : above);
        if (above.empty()) return;
        wait_for([&] { return QApplication::activePopupWidget() != &popup; });
        click_item(*static_cast<QMenu*>(QApplication::activePopupWidget()), name);
      });
      open();
    });
  }
  void click_item(QMenu& menu, const std::string& name) {
    auto* item = menu.findChild<QAction*>(QString::fromStdString(name));
    ASSERT_NE(item, nullptr) << name;
    ASSERT_TRUE(item->isVisible() && item->isEnabled()) << name;
    hands::click(menu.mapToGlobal(menu.actionGeometry(item).center()));
  }
  void right_click(const QString& selector, double x = 0.5, double y = 0.5) {
    hands::click(place_of(selector, x, y), 3);
  }
  /// The button of an element in the element path.
  void press_in_path(int up) {
    const auto* bar = window_->editor().findChild<qt::BranchFace*>(QStringLiteral("tlbDOM"));
    hands::click(middle_of(*bar->button_widget(control().tlbDOM().Count() - up)));
  }

  bool dialog_came_ = false;
};

struct ButtonRow {
  std::u16string_view key;
  Effect effect;
  std::u16string_view content = u"<P id=a>one two</P>";
};

constexpr ButtonRow formatting_buttons[] = {
    {u"toggle", Effect::CodeView},
    {u"Print", Effect::Dialog},
    {u"Copy", Effect::Clipboard},
    {u"Cut", Effect::Document},
    {u"Paste", Effect::Document, u"<P id=a>another</P>"},
    {u"Align Left", Effect::Document, u"<P id=a align=right>one two</P>"},
    {u"Center", Effect::Document},
    {u"Align Right", Effect::Document},
    {u"Bold", Effect::Document},
    {u"Italic", Effect::Document},
    {u"Underline", Effect::Document},
    {u"Strike Through", Effect::Document},
    {u"indent", Effect::Document},
    {u"unindent", Effect::Document, u"<BLOCKQUOTE id=a>one two</BLOCKQUOTE>"},
    {u"Text", Effect::Dialog},
    {u"Spell Check", Effect::Dialog, u"<P id=a lang=en>onne</P>"},
    {u"link", Effect::Dialog},
    {u"Image", Effect::Dialog},
    {u"RemoteImage", Effect::Dialog},
    {u"orderedlist", Effect::Document},
    {u"unorderedlist", Effect::Document},
    {u"table", Effect::Dialog},
    {u"HR", Effect::Document},
};

TEST_F(CommandsOnScreen, EachButtonForFormattingActs) {
  start("<body style='margin:20px'><p>x</p>");
  for (const ButtonRow& row : formatting_buttons) {
    show(row.content);
    select_all();
    expect_effect(row.effect, to_utf8(row.key),
                  [&] { press_button("Toolbar1", control().Toolbar1().Item(row.key).Index()); });
  }
  show(u"<P>one</P>");
  select_all();
  expect_effect(Effect::Document, "a change", [&] { hands::press(QStringLiteral("ctrl+b")); });
  for (const std::u16string_view key : {u"Undo", u"Redo"})
    expect_effect(Effect::Document, to_utf8(key),
                  [&] { press_button("Toolbar1", control().Toolbar1().Item(key).Index()); });
}

TEST_F(CommandsOnScreen, EachButtonForFormsActs) {
  start("<body style='margin:20px'><p>x</p>");
  control().set_showFormToolbar(true);
  ASSERT_TRUE(settle());
  const int count = control().Toolbar2().Count();
  ASSERT_EQ(count, 12);
  for (int index = 1; index <= count; ++index) {
    const std::u16string key = control().Toolbar2().Item(index).Key();
    show(u"<FORM name=f><P>one</P></FORM>");
    document().select([&](editing::Selection& selection) {
      selection.collapse({document().first(dom::Tag::P)->first_child(), 1});
    });
    ASSERT_TRUE(settle());
    expect_effect(key == u"Form" ? Effect::Dialog : Effect::Document, to_utf8(key),
                  [&] { press_button("Toolbar2", index); });
  }
}

TEST_F(CommandsOnScreen, EachItemOfTheMouseMenusOnTextAndLinksActs) {
  start("<body style='margin:20px'><p>x</p>");
  const auto on = [this](const char* selector) {
    return [this, selector] { right_click(QLatin1String(selector), 0.02); };
  };
  for (const auto& [name, effect] : {std::pair{"mnuMiscCopy", Effect::Clipboard},
                                     {"mnuMiscCut", Effect::Document},
                                     {"mnuInsertLink", Effect::Dialog},
                                     {"mnuMiscSource", Effect::CodeView},
                                     {"mnuMiscRevert", Effect::Dialog}}) {
    show(u"<P id=a>one two</P>");
    select_all();
    expect_item(name, effect, on("#a"));
  }
  show(u"<P id=a>another</P>");
  expect_item("mnuMiscPaste", Effect::Document, on("#a"));
  show(u"<FORM id=f><P id=a>text <INPUT id=i></P></FORM>");
  expect_item("mnuMiscField", Effect::Dialog, [this] { right_click(QStringLiteral("#i")); });
  expect_item("mnuMiscForm", Effect::Dialog, on("#a"));
  for (const auto& [name, effect] : {std::pair{"mnuLinkCopy", Effect::Clipboard},
                                     {"mnuLinkCut", Effect::Document},
                                     {"mnuLinkEdit", Effect::Dialog},
                                     {"mnuLinkRemove", Effect::Document}}) {
    show(u"<P><A id=a href=\"x.html\">one two</A></P>");
    document().select([&](editing::Selection& selection) {
      dom::Node* text = document().first(dom::Tag::A)->first_child();
      selection.set({text, 0}, {text, 7});
    });
    ASSERT_TRUE(settle());
    expect_item(name, effect, on("#a"));
  }
  show(u"<P><A id=a href=\"x.html\">another</A></P>");
  expect_item("mnuLinkPaste", Effect::Document, on("#a"));
}

constexpr char16_t picture[] =
    u"<IMG id=i width=80 height=60 "
    u"src=\"data:image/gif;base64,R0lGODlhAQABAIAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICR"
    u"AEAOw==\">";

TEST_F(CommandsOnScreen, EachItemOfTheMouseMenusOnImagesAndTablesActs) {
  start("<body style='margin:20px'><p>x</p>");
  const auto on_image = [this] { right_click(QStringLiteral("#i")); };
  const std::u16string plain = u"<P>" + std::u16string(picture) + u"</P>",
                       linked = u"<P><A href=\"x.html\">" + std::u16string(picture) + u"</A></P>";
  for (const auto& [name, effect, is_linked] : {std::tuple{"mnuImgCopy", Effect::Clipboard, false},
                                                {"mnuImgCut", Effect::Document, false},
                                                {"mnuImgNewLink", Effect::Dialog, false},
                                                {"mnuImgLink", Effect::Dialog, true},
                                                {"mnuImgLinkRemove", Effect::Document, true},
                                                {"mnuImgProperties", Effect::Dialog, false}}) {
    show(is_linked ? linked : plain);
    expect_item(name, effect, on_image);
  }
  QApplication::clipboard()->setText(QStringLiteral("words"));
  show(plain);
  expect_item("mnuImgPaste", Effect::Document, on_image);
  for (const auto& [name, effect] : {std::pair{"mnuTInsRow", Effect::Document},
                                     {"mnuTDelRow", Effect::Document},
                                     {"mnuTInsCol", Effect::Document},
                                     {"mnuTDelCol", Effect::Document},
                                     {"mnuTProp", Effect::Dialog}}) {
    show(
        u"<TABLE id=t border=5 width=200><TR><TD>1</TD><TD>2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TABLE>");
    expect_item(name, effect, [this] { right_click(QStringLiteral("#t"), 0.01, 0.5); });
  }
}

TEST_F(CommandsOnScreen, EachItemOfTheElementPathActs) {
  start("<style>.loud { color: red }</style><body style='margin:20px'><p>x</p>");
  const auto in_path = [this](int up) { return [this, up] { press_in_path(up); }; };
  const auto click_middle = [this](const QString& selector) {
    hands::click(place_of(selector, 0.5, 0.5));
    ASSERT_TRUE(settle());
  };
  constexpr char16_t table[] =
      u"<TABLE border=1 width=300><TBODY><TR><TD>1</TD><TD id=c>2</TD><TD>3</TD></TR></TBODY></TABLE>";
  for (const char* name :
       {"MnuCellRowActionsDelete", "MnuCellRowActionsMergeCellLeft", "MnuCellRowActionsMergeCellRight",
        "MnuCellRowActionsInsertCellBefore", "MnuCellRowActionsInsertCellAfter"}) {
    show(table);
    click_middle(QStringLiteral("#c"));
    expect_item(name, Effect::Document, in_path(0), "MnuCellRowActions");
  }
  for (const char* name :
       {"MnuCellRowActionsDelete", "MnuCellRowActionsInsertRowAbove", "MnuCellRowActionsInsertRowBelow"}) {
    show(table);
    click_middle(QStringLiteral("#c"));
    expect_item(name, Effect::Document, in_path(1), "MnuCellRowActions");
  }
  show(table);
  click_middle(QStringLiteral("#c"));
  for (const int up : {0, 1, 3}) expect_item("mnuToolProperties", Effect::Dialog, in_path(up));
  expect_item("mnuToolEditTag", Effect::Dialog, in_path(3));
  show(u"<FORM id=f><P>text <INPUT id=i></P></FORM>");
  click_middle(QStringLiteral("#i"));
  expect_item("mnuToolField", Effect::Dialog, in_path(0));
  expect_item("mnuToolForm", Effect::Dialog, in_path(2));
}

}  // namespace
}  // namespace tvx::x11
