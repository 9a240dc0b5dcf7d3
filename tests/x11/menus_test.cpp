#include <QClipboard>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QSettings>
#include <QStatusBar>
#include <QToolButton>
#include <algorithm>
#include <set>

#include "htmled/document/document_page.h"
#include "htmled/menus/commands.h"
#include "htmled/menus/keys_dialog.h"
#include "htmled/source_tools.h"
#include "htmled/tabs.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Every item of the window's menus, chosen with the real mouse on content that suits it: none is without
/// effect.
namespace tvx::x11 {
namespace {

using htmled::Command;
using htmled::Commands;

constexpr std::u16string_view
    two_words = u"<P id=a>one two</P>",
    in_cell =
        u"<TABLE border=1><TBODY><TR><TD id=a>one two</TD><TD>b</TD></TR><TR><TD>c</TD>"
        u"<TD>d</TD></TR></TBODY></TABLE>";

/// What is to be seen of it.
enum class Effect : std::uint8_t { Document, Dialog, Clipboard, View, Window, Selection };

struct Row {
  const char* name;
  Effect effect;
  std::u16string_view content = two_words;
};

constexpr Row rows[] = {
    {"open", Effect::Dialog},
    {"save-as", Effect::Dialog},
    {"save-copy", Effect::Dialog},
    {"new-from-template", Effect::Dialog},
    {"save-template", Effect::Dialog},
    {"preferences", Effect::Dialog},
    {"export-pdf", Effect::Dialog},
    {"page-setup", Effect::Dialog},
    {"print-preview", Effect::Dialog},
    {"Print", Effect::Dialog},
    {"publish", Effect::Dialog},
    {"Cut", Effect::Document},
    {"Copy", Effect::Clipboard},
    {"Paste", Effect::Document, u"<P id=a>another</P>"},
    {"PasteText", Effect::Document, u"<P id=a>another</P>"},
    {"SelectAll", Effect::Selection},
    {"find", Effect::View},
    {"replace", Effect::View},
    {"find-next", Effect::Selection, u"<P id=a>one two</P><P>one two</P>"},
    {"find-previous", Effect::Selection, u"<P id=a>one two</P><P>one two</P>"},
    {"Source", Effect::View},
    {"wrap-source", Effect::View},
    {"format-bar", Effect::View},
    {"formatting-tools", Effect::View},
    {"insertion-tools", Effect::View},
    {"form-tools", Effect::View},
    {"element-path", Effect::View},
    {"go-to-format-bar", Effect::View},
    {"ZoomIn", Effect::View},
    {"ZoomReset", Effect::View},
    {"ZoomOut", Effect::View},
    {"dark-page", Effect::View},
    {"full-screen", Effect::View},
    {"Link", Effect::Dialog},
    {"Unlink", Effect::Document, u"<P><A id=a href=x>one two</A></P>"},
    {"bookmark", Effect::Dialog},
    {"Image", Effect::Dialog},
    {"RemoteImage", Effect::Dialog},
    {"Rule", Effect::Document},
    {"special-character", Effect::Window},
    {"Form", Effect::Dialog},
    {"TextField", Effect::Document},
    {"TextArea", Effect::Document},
    {"CheckBox", Effect::Document},
    {"RadioButton", Effect::Document},
    {"DropDownList", Effect::Document},
    {"FileField", Effect::Document},
    {"HiddenField", Effect::Document},
    {"PushButton", Effect::Document},
    {"SubmitButton", Effect::Document},
    {"ResetButton", Effect::Document},
    {"ImageField", Effect::Document},
    {"Bold", Effect::Document},
    {"Italic", Effect::Document},
    {"Underline", Effect::Document},
    {"Strike", Effect::Document},
    {"Subscript", Effect::Document},
    {"Superscript", Effect::Document},
    {"Paragraph", Effect::Document, u"<H1 id=a>one two</H1>"},
    {"Heading1", Effect::Document},
    {"Heading2", Effect::Document},
    {"Heading3", Effect::Document},
    {"Heading4", Effect::Document},
    {"Heading5", Effect::Document},
    {"Heading6", Effect::Document},
    {"Preformatted", Effect::Document},
    {"Quotation", Effect::Document},
    {"AlignLeft", Effect::Document, u"<P id=a align=right>one two</P>"},
    {"AlignCenter", Effect::Document},
    {"AlignRight", Effect::Document},
    {"Justify", Effect::Document},
    {"BulletedList", Effect::Document},
    {"NumberedList", Effect::Document},
    {"Indent", Effect::Document},
    {"Outdent", Effect::Document, u"<BLOCKQUOTE id=a>one two</BLOCKQUOTE>"},
    {"Font", Effect::Dialog},
    {"ClearFormatting", Effect::Document, u"<P><B id=a>one two</B></P>"},
    {"Table", Effect::Dialog},
    {"RowAbove", Effect::Document, in_cell},
    {"RowBelow", Effect::Document, in_cell},
    {"ColumnLeft", Effect::Document, in_cell},
    {"ColumnRight", Effect::Document, in_cell},
    {"DeleteRow", Effect::Document, in_cell},
    {"DeleteColumn", Effect::Document, in_cell},
    {"delete-table", Effect::Document, in_cell},
    {"MergeCells", Effect::Document, in_cell},
    {"MergeDown", Effect::Document, in_cell},
    {"SplitCell", Effect::Document, in_cell},
    {"HeaderRow", Effect::Document, in_cell},
    {"SelectRow", Effect::Selection, in_cell},
    {"SelectColumn", Effect::Selection, in_cell},
    {"SelectTable", Effect::Selection, in_cell},
    {"CellProperties", Effect::Dialog, in_cell},
    {"TableProperties", Effect::Dialog, in_cell},
    {"spelling", Effect::Dialog, u"<P id=a lang=en>onne two</P>"},
    {"waves", Effect::View},
    {"auto-format", Effect::View},
    {"page-properties", Effect::Dialog},
    {"handbook", Effect::Window},
    {"keys", Effect::Dialog},
    {"about", Effect::Dialog},
};

/// Those that tests of their own press, and the menus that are filled anew each time.
const std::set<std::string> pressed_elsewhere = {
    "go-to-line", "split-view", "new",  "recent", "reopen",   "save",  "revert",    "upload",
    "close",      "quit",       "Undo", "Redo",   "language", "class", "new-table", "spelling-language",
    "tour"};

class MenusOnScreen : public EditorOnScreen {
 protected:
  void SetUp() override {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path());
    EditorOnScreen::SetUp();
  }

  void show(const Row& row) {
    control().set_DocumentHTML(row.content);
    ASSERT_TRUE(settle());
    const bool cells = std::string_view(row.name) == "MergeCells";
    document().select([&](editing::Selection& selection) {
      dom::Element* a = marked();
      dom::Node* text = a->first_child();
      selection.set({text, 0}, {text, dom::length_of(*text)});
      if (cells) selection.set({a, 0}, {a->next_sibling(), 1});
    });
    ASSERT_TRUE(settle());
  }

  /// The element with the id.
  dom::Element* marked() {
    for (dom::Node* node = document().body(); node; node = dom::next_in_order(*node))
      if (auto* element = dom::as<dom::Element>(node);
          element && element->attribute_or_empty(dom::Name(u"id")) == u"a")
        return element;
    return nullptr;
  }

  /// All that can be seen of the window that is not the document's.
  std::string seen() {
    QStringList all;
    for (const QWidget* widget : window_->findChildren<QWidget*>())
      if (!widget->objectName().isEmpty() && widget->isVisible() && !widget->isWindow())
        all << QStringLiteral("%1 %2 %3")
                   .arg(widget->objectName())
                   .arg(widget->width())
                   .arg(widget->height());
    const auto buttons = window_->editor().findChildren<QToolButton*>();
    all << QString::number(
        std::ranges::count_if(buttons, [](const auto* each) { return each->isVisible(); }));
    const qt::HTMLedWidget& editor = window_->editor();
    all << QString::number(htmled::SourceTools::wraps());
    all << QString::number(editor.zoom()) << QString::number(editor.dark_page())
        << QString::number(editor.CheckSpellingAsYouType()) << QString::number(editor.AutoFormat())
        << QString::number(window_->isFullScreen())
        << (QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString());
    return all.join(u'\n').toStdString();
  }
  std::string selection() {
    const editing::Selection& now = document().editor().selection();
    return std::to_string(std::uintptr_t(now.anchor().node)) + " " + std::to_string(now.anchor().offset) +
           " " + std::to_string(std::uintptr_t(now.focus().node)) + " " + std::to_string(now.focus().offset) +
           " " + std::to_string(std::uintptr_t(now.control()));
  }

  void expect_effect(const Row& row) {
    show(row);
    const std::string html_before = html(), seen_before = seen(), selection_before = selection();
    bool copied = false, dialog_came = false;
    if (row.effect == Effect::Dialog)
      answer_dialog([&](QDialog& dialog) {
        dialog_came = true;
        hands::press(QStringLiteral("Escape"));
        EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); })) << row.name;
      });
    const auto listening =
        QObject::connect(QApplication::clipboard(), &QClipboard::dataChanged, [&copied] { copied = true; });
    choose(row.name);
    EXPECT_TRUE(wait_for([&] {
      switch (row.effect) {
        case Effect::Document: return html() != html_before;
        case Effect::Dialog: return dialog_came;
        case Effect::Clipboard: return copied;
        case Effect::View: return seen() != seen_before;
        case Effect::Selection: return selection() != selection_before;
        case Effect::Window: return other_window() != nullptr;
      }
      return false;
    })) << row.name
        << ": " << html();
    QObject::disconnect(listening);
    put_back(row);
  }
  void put_back(const Row& row) {
    const std::string name = row.name;
    ASSERT_TRUE(wait_for([] {
      return !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
    })) << name;
    if (QWidget* other = other_window()) other->close();
    if (control().InCodeView()) control().show_Code();
    // What was switched is switched back, by its other press.
    if (const Command* command = switch_of(name)) command->act(*window_);
    hands::give_focus(*window_);
    window_->editor().setFocus();
    ASSERT_TRUE(settle()) << name;
  }
  QWidget* other_window() {
    for (QWidget* each : QApplication::topLevelWidgets())
      if (each != window_.get() && each->isVisible() && each->windowType() == Qt::Dialog) return each;
    return nullptr;
  }
  static const Command* switch_of(const std::string& name) {
    for (const Command& command : Commands::table())
      if (command.is_on && name == command.name) return &command;
    return nullptr;
  }

  QTemporaryDir settings_;
};

TEST_F(MenusOnScreen, EachItemDoesSomething) {
  start("<body style='margin:20px'><p>x</p>");
  QApplication::clipboard()->setText(QStringLiteral("pasted"));
  for (const Row& row : rows) {
    expect_effect(row);
    if (HasFatalFailure()) return;
  }
}

TEST_F(MenusOnScreen, NoneIsForgottenHere) {
  std::set<std::string> known = pressed_elsewhere;
  for (const Row& row : rows) EXPECT_TRUE(known.insert(row.name).second) << row.name;
  for (const Command& command : Commands::table())
    if (command.kind != Command::Kind::Menu && command.name) {
      EXPECT_TRUE(known.contains(command.name)) << command.name;
    }
}

TEST_F(MenusOnScreen, UndoRedoNewCloseAndReopenAct) {
  start("<body><p>x</p>");
  hands::type(QStringLiteral("abc"));
  ASSERT_TRUE(wait_for([&] { return text().find("abc") != std::string::npos; }));
  choose("Undo");
  ASSERT_TRUE(wait_for([&] { return text().find("abc") == std::string::npos; })) << text();
  choose("Redo");
  ASSERT_TRUE(wait_for([&] { return text().find("abc") != std::string::npos; })) << text();
  choose("save");
  ASSERT_TRUE(wait_for([&] { return file().contains("abc"); }));
  choose("new");
  ASSERT_TRUE(wait_for([&] { return window_->tabs().count() == 2 && window_->editor().started(); }));
  choose("close");
  ASSERT_TRUE(wait_for([&] { return window_->tabs().count() == 1; }));
}

TEST_F(MenusOnScreen, RevertIsGreyUntilSomethingHasChanged) {
  start("<body><p>x</p>");
  QMenu& menu = *way_to("revert").front();
  QMenuBar& bar = *window_->menuBar();
  const auto open = [&] { hands::click(bar.mapToGlobal(bar.actionGeometry(menu.menuAction()).center())); };
  open();
  ASSERT_TRUE(wait_for([&] { return menu.isVisible(); }));
  EXPECT_FALSE(item("revert")->isEnabled());
  EXPECT_TRUE(item("revert")->toolTip().contains(QStringLiteral("Nothing has been changed")));
  hands::press(QStringLiteral("Escape"));
  ASSERT_TRUE(wait_for([&] { return !menu.isVisible(); }));
  hands::press(QStringLiteral("Escape"));
  window_->editor().setFocus();
  hands::type(QStringLiteral("abc"));
  ASSERT_TRUE(wait_for([&] { return window_->front().is_modified(); }));
  answer_dialog([](QDialog& dialog) {
    hands::click(middle_of(*static_cast<QMessageBox&>(dialog).button(QMessageBox::Discard)));
  });
  choose("revert");
  ASSERT_TRUE(wait_for([&] { return text().find("abc") == std::string::npos; })) << text();
}

TEST_F(MenusOnScreen, APdfHasTheWordsOfThePage) {
  start("<body><h1>Heading</h1><p>selectable words</p>");
  const QString path = path_of(QStringLiteral("page.pdf"));
  answer_dialog([&](QDialog& dialog) {
    hands::type(path);
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !dialog.isVisible(); }));
  });
  choose("export-pdf");
  ASSERT_TRUE(wait_for(
      [&] { return window_->statusBar()->currentMessage().startsWith(QStringLiteral("Exported")); }));
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
  ASSERT_TRUE(reader.waitForFinished());
  const QByteArray words = reader.readAllStandardOutput();
  EXPECT_TRUE(words.contains("Heading") && words.contains("selectable words")) << words.toStdString();
  EXPECT_LT(QFile(path).size(), 200'000);
}

TEST_F(MenusOnScreen, F10LeadsFromThePageToTheMenusAndEscapeBack) {
  start("<body><p>x</p>");
  const auto& menus = window_->commands().menus();
  hands::press(QStringLiteral("F10"));
  ASSERT_TRUE(wait_for([&] { return QApplication::activePopupWidget() == menus.front(); }));
  hands::press(QStringLiteral("Right"));
  ASSERT_TRUE(wait_for([&] { return QApplication::activePopupWidget() == menus[1]; }));
  hands::press(QStringLiteral("Escape"));
  ASSERT_TRUE(wait_for([&] { return !QApplication::activePopupWidget(); }));
  hands::press(QStringLiteral("Escape"));
  hands::type(QStringLiteral("abc"));
  EXPECT_TRUE(wait_for([&] { return text().find("abc") != std::string::npos; })) << text();
}

TEST_F(MenusOnScreen, TheKeysOfTheMenusAreListed) {
  start("<body><p>x</p>");
  const auto lines = htmled::KeysDialog::lines(window_->commands());
  std::set<QString> commands;
  for (const auto& line : lines) {
    EXPECT_FALSE(line.keys.isEmpty());
    commands.insert(line.command);
  }
  for (const char* command : {"Save", "Bold", "Heading 1", "Find next", "New paragraph", "Zoom in"})
    EXPECT_TRUE(commands.contains(QString::fromLatin1(command))) << command;
}

/// A grid below Insert, Table: the mouse draws the size.
TEST_F(MenusOnScreen, ATableIsDrawnInTheGrid) {
  start("<body><p>x</p>");
  const QPoint cell = place_in_table_grid(2, 3);
  hands::move(cell);
  hands::click(cell);
  ASSERT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("document.querySelectorAll('tr').length + ' ' + "
                                  "document.querySelectorAll('td').length")) == "2 6";
  })) << html();
  // The letters are those of other items of the menu: none is open any more.
  hands::type(QStringLiteral("High"));
  EXPECT_TRUE(wait_for([&] { return html().find("<TD>High</TD>") != std::string::npos; })) << html();
}

}  // namespace
}  // namespace tvx::x11
