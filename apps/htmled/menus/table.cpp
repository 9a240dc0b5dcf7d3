#include <QAction>
#include <QMenu>

#include "htmled/document/document_page.h"
#include "htmled/find_bar.h"
#include "htmled/format/format_bar.h"
#include "htmled/format/table_grid.h"
#include "htmled/help/handbook.h"
#include "htmled/help/tour.h"
#include "htmled/menus/about.h"
#include "htmled/menus/class_menu.h"
#include "htmled/menus/commands.h"
#include "htmled/menus/keys_dialog.h"
#include "htmled/menus/special_characters.h"
#include "htmled/menus/view_choices.h"
#include "htmled/preferences/preferences_dialog.h"
#include "htmled/print/pdf_export.h"
#include "htmled/print/preview_dialog.h"
#include "htmled/recent_files.h"
#include "htmled/source_tools.h"
#include "htmled/window.h"
#include "htmled/writing_choices.h"
#include "tvx/core/actions.h"
#include "tvx/core/htmled.h"

/// The one table of the window's menus.
namespace tvx::htmled {
namespace {

using Kind = Command::Kind;

constexpr Command menu(const char* text, const char* name = nullptr) {
  return {.kind = Kind::Menu, .text = text, .name = name};
}
constexpr Command filled(const char* text, const char* name, void (*fill)(Window&, QMenu&),
                         const char* (*obstacle)(Window&) = nullptr) {
  return {.kind = Kind::Filled, .text = text, .name = name, .obstacle = obstacle, .fill = fill};
}
constexpr Command end() { return {.kind = Kind::End}; }
constexpr Command line() { return {.kind = Kind::Line}; }
using view_choices::Choice;
template <Choice which>
constexpr Command choice(const char* text, const char* name) {
  return {.kind = Kind::Own,
          .text = text,
          .name = name,
          .act =
              [](Window& window) {
                view_choices::turn(which);
                window.for_each_editor(view_choices::apply);
              },
          .is_on = [](Window&) { return view_choices::is_on(which); }};
}
using writing_choices::Writing;
template <Writing which>
constexpr Command writing(const char* text, const char* name) {
  return {.kind = Kind::Own,
          .text = text,
          .name = name,
          .act =
              [](Window& window) {
                writing_choices::turn(which);
                window.for_each_editor(writing_choices::apply);
              },
          .is_on = [](Window&) { return writing_choices::is_on(which); }};
}
/// An operation of the editor in front.
constexpr Command editors(const char* name) { return {.kind = Kind::Editor, .name = name}; }

void turn_wrapping(Window& window) {
  SourceTools::remember_wrapping(!SourceTools::wraps());
  for (SourceTools* tools : window.findChildren<SourceTools*>()) tools->follow_settings();
}

void ask_for_line(Window& window) {
  if (auto* tools = window.editor().findChild<SourceTools*>()) tools->ask_for_line(&window);
}

/// Who asks for both while the source alone shows wants to see both.
void turn_split_view(Window& window) {
  const bool both = view_choices::is_on(Choice::SplitView), in_code = window.editor().InCodeView();
  if (!both || !in_code) view_choices::turn(Choice::SplitView);
  window.for_each_editor(view_choices::apply);
  if (in_code) window.editor().control().show_Code();
}

const char* obstacle_of_frames(Window& window) {
  return window.front().consists_of_frames()
             ? QT_TR_NOOP("This page consists of frames. Its source can be edited.")
             : nullptr;
}

/// Why there is no text to look through.
const char* obstacle_to_finding(Window& window) {
  const bool source_shows = window.editor().code_line_count() > 0;
  return source_shows ? nullptr : obstacle_of_frames(window);
}

/// Why nothing can be done with what the caret is in.
const char* obstacle_on_page(Window& window) {
  return window.editor().InCodeView() ? QT_TR_NOOP("This works on the page, not on its code")
                                      : obstacle_of_frames(window);
}

const char* obstacle_to_spelling(Window& window) {
  const char* obstacle = writing_choices::obstacle_to_spelling();
  return obstacle ? obstacle : obstacle_of_frames(window);
}

const char* obstacle_to_tables(Window& window) {
  if (const char* obstacle = obstacle_on_page(window)) return obstacle;
  const QAction* select = window.editor().action(QStringLiteral("SelectTable"));
  return select && select->isEnabled() ? nullptr : QT_TR_NOOP("The caret is in no table");
}

constexpr Command rows[] = {
    menu(QT_TR_NOOP("&File"), "file"),
    {Kind::Own, QT_TR_NOOP("&New"), "new", "Ctrl+N", "document-new", [](Window& w) { w.new_document(); }},
    {Kind::Own, QT_TR_NOOP("New fro&m template…"), "new-from-template", "Ctrl+Shift+N", nullptr,
     [](Window& w) { w.new_from_template(); }},
    {Kind::Own, QT_TR_NOOP("&Open…"), "open", "Ctrl+O", "document-open", [](Window& w) { w.ask_and_open(); }},
    filled(QT_TR_NOOP("Open &recent"), "recent", [](Window& w, QMenu& menu) { w.recent_files().fill(menu); }),
    {Kind::Own, QT_TR_NOOP("Reopen closed &document"), "reopen", "Ctrl+Shift+T", nullptr,
     [](Window& w) { w.reopen_closed(); },
     [](Window& w) { return !w.can_reopen() ? QT_TR_NOOP("Nothing has been closed") : nullptr; }},
    line(),
    {Kind::Own, QT_TR_NOOP("&Save"), "save", "Ctrl+S", "document-save", [](Window& w) { w.front().save(); }},
    {Kind::Own, QT_TR_NOOP("Save &as…"), "save-as", "Ctrl+Shift+S", "document-save-as",
     [](Window& w) { w.front().save_as(); }},
    {Kind::Own, QT_TR_NOOP("Save a cop&y…"), "save-copy", nullptr, nullptr,
     [](Window& w) { w.ask_and_save_copy(); }},
    {Kind::Own, QT_TR_NOOP("Save as temp&late…"), "save-template", nullptr, nullptr,
     [](Window& w) { w.ask_and_save_template(); }},
    {Kind::Own, QT_TR_NOOP("Re&vert"), "revert", nullptr, "document-revert",
     [](Window& w) { w.front().ask_and_revert(); },
     [](Window& w) { return w.front().is_modified() ? nullptr : QT_TR_NOOP("Nothing has been changed"); }},
    line(),
    {Kind::Own, QT_TR_NOOP("&Export as PDF…"), "export-pdf", nullptr, "document-export",
     [](Window& w) { ask_and_export_pdf(w, &w); }},
    {Kind::Own, QT_TR_NOOP("Pa&ge setup…"), "page-setup", nullptr, "document-page-setup",
     [](Window& w) { ask_page_setup(w, &w); }},
    {Kind::Own, QT_TR_NOOP("Print previe&w…"), "print-preview", "Ctrl+Shift+P", "document-print-preview",
     [](Window& w) { open_preview(w); }},
    editors("Print"),
    line(),
    {Kind::Own, QT_TR_NOOP("Page proper&ties…"), "page-properties", "Alt+Return", "document-properties",
     [](Window& w) { w.front().ask_properties(); }},
    {Kind::Own, QT_TR_NOOP("&Publish settings…"), "publish", nullptr, nullptr,
     [](Window& w) { w.ask_for_account(); }},
    {Kind::Own, QT_TR_NOOP("&Upload images"), "upload", nullptr, nullptr,
     [](Window& w) { w.upload_images(); }},
    line(),
    {Kind::Own, QT_TR_NOOP("&Close"), "close", "Ctrl+W", "window-close",
     [](Window& w) { w.close_page(w.front()); }},
    {Kind::Own, QT_TR_NOOP("&Quit"), "quit", "Ctrl+Q", "application-exit", [](Window& w) { w.close(); }},
    end(),

    menu(QT_TR_NOOP("&Edit"), "edit"),
    editors("Undo"),
    editors("Redo"),
    line(),
    editors("Cut"),
    editors("Copy"),
    editors("Paste"),
    editors("PasteText"),
    editors("SelectAll"),
    line(),
    {Kind::Own, QT_TR_NOOP("&Find…"), "find", "Ctrl+F", "edit-find",
     [](Window& w) { w.find_bar().open(false); }, obstacle_to_finding},
    {Kind::Own, QT_TR_NOOP("R&eplace…"), "replace", "Ctrl+H", "edit-find-replace",
     [](Window& w) { w.find_bar().open(true); }, obstacle_to_finding},
    {Kind::Own, QT_TR_NOOP("Find ne&xt"), "find-next", "F3", nullptr,
     [](Window& w) { w.find_bar().step(true); }, obstacle_to_finding},
    {Kind::Own, QT_TR_NOOP("Find pre&vious"), "find-previous", "Shift+F3", nullptr,
     [](Window& w) { w.find_bar().step(false); }, obstacle_to_finding},
    line(),
    {Kind::Own, QT_TR_NOOP("Prefere&nces…"), "preferences", "Ctrl+,", "configure",
     [](Window& w) { PreferencesDialog(w).exec(); }},
    end(),

    menu(QT_TR_NOOP("&View"), "view"),
    editors("Source"),
    {Kind::Own, QT_TR_NOOP("&Page and source side by side"), "split-view", "Shift+F9",
     "view-split-left-right", [](Window& w) { turn_split_view(w); }, nullptr,
     [](Window&) { return view_choices::is_on(view_choices::Choice::SplitView); }},
    {Kind::Own, QT_TR_NOOP("&Wrap lines of the source"), "wrap-source", nullptr, nullptr,
     [](Window& w) { turn_wrapping(w); }, nullptr, [](Window&) { return SourceTools::wraps(); }},
    {Kind::Own, QT_TR_NOOP("&Go to line…"), "go-to-line", "Ctrl+G", "go-jump",
     [](Window& w) { ask_for_line(w); },
     [](Window& w) {
       return w.editor().code_line_count() > 0 ? nullptr : QT_TR_NOOP("The page has no lines with numbers");
     }},
    line(),
    {Kind::Own, QT_TR_NOOP("&Format bar"), "format-bar", nullptr, nullptr,
     [](Window& w) { w.format_bar().setVisible(w.format_bar().isHidden()); }, nullptr,
     [](Window& w) { return !w.format_bar().isHidden(); }},
    choice<Choice::FormattingTools>(QT_TR_NOOP("Formatting &tools"), "formatting-tools"),
    choice<Choice::InsertionTools>(QT_TR_NOOP("I&nsertion tools"), "insertion-tools"),
    choice<Choice::FormTools>(QT_TR_NOOP("Fo&rm tools"), "form-tools"),
    choice<Choice::ElementPath>(QT_TR_NOOP("&Element path"), "element-path"),
    {Kind::Own, QT_TR_NOOP("Go to the format &bar"), "go-to-format-bar", "Alt+F6", nullptr,
     [](Window& w) { w.format_bar().take_focus(); }},
    line(),
    editors("ZoomIn"),
    editors("ZoomOut"),
    editors("ZoomReset"),
    line(),
    choice<Choice::DarkPage>(QT_TR_NOOP("&Dark page"), "dark-page"),
    {Kind::Own, QT_TR_NOOP("F&ull screen"), "full-screen", "F11", "view-fullscreen",
     [](Window& w) { w.setWindowState(w.windowState() ^ Qt::WindowFullScreen); }, nullptr,
     [](Window& w) { return w.isFullScreen(); }},
    line(),
    filled(QT_TR_NOOP("&Language"), "language", [](Window& w, QMenu& menu) { w.fill_language_menu(menu); }),
    end(),

    menu(QT_TR_NOOP("&Insert"), "insert"),
    editors("Link"),
    editors("Unlink"),
    {Kind::Own, QT_TR_NOOP("Book&mark…"), "bookmark", nullptr, "bookmark-new",
     [](Window& w) { w.front().ask_bookmark(); }, obstacle_on_page},
    line(),
    editors("Image"),
    editors("RemoteImage"),
    line(),
    filled(QT_TR_NOOP("Ta&ble"), "new-table", fill_table_menu, obstacle_on_page),
    editors("Rule"),
    {Kind::Own, QT_TR_NOOP("&Special character…"), "special-character", nullptr, nullptr,
     [](Window& w) { open_special_characters(w); }, obstacle_on_page},
    menu(QT_TR_NOOP("F&orm"), "form"),
    editors("Form"),
    line(),
    editors("TextField"),
    editors("TextArea"),
    editors("CheckBox"),
    editors("RadioButton"),
    editors("DropDownList"),
    editors("FileField"),
    editors("HiddenField"),
    line(),
    editors("PushButton"),
    editors("SubmitButton"),
    editors("ResetButton"),
    editors("ImageField"),
    end(),
    end(),

    menu(QT_TR_NOOP("F&ormat"), "format-menu"),
    editors("Bold"),
    editors("Italic"),
    editors("Underline"),
    editors("Strike"),
    editors("Subscript"),
    editors("Superscript"),
    line(),
    menu(QT_TR_NOOP("Paragraph st&yle"), "paragraph-style"),
    editors("Paragraph"),
    editors("Heading1"),
    editors("Heading2"),
    editors("Heading3"),
    editors("Heading4"),
    editors("Heading5"),
    editors("Heading6"),
    editors("Preformatted"),
    editors("Quotation"),
    end(),
    menu(QT_TR_NOOP("Ali&gnment"), "alignment"),
    editors("AlignLeft"),
    editors("AlignCenter"),
    editors("AlignRight"),
    editors("Justify"),
    end(),
    filled(QT_TR_NOOP("&Class"), "class", fill_class_menu, obstacle_on_page),
    line(),
    editors("BulletedList"),
    editors("NumberedList"),
    editors("Indent"),
    editors("Outdent"),
    line(),
    editors("Font"),
    editors("ClearFormatting"),
    end(),

    menu(QT_TR_NOOP("T&able"), "table"),
    editors("Table"),
    line(),
    editors("RowAbove"),
    editors("RowBelow"),
    editors("ColumnLeft"),
    editors("ColumnRight"),
    line(),
    editors("DeleteRow"),
    editors("DeleteColumn"),
    {Kind::Own, QT_TR_NOOP("Delete th&is table"), "delete-table", nullptr, nullptr,
     [](Window& w) { w.front().delete_table(); }, obstacle_to_tables},
    line(),
    editors("MergeCells"),
    editors("MergeDown"),
    editors("SplitCell"),
    line(),
    editors("HeaderRow"),
    line(),
    editors("SelectRow"),
    editors("SelectColumn"),
    editors("SelectTable"),
    line(),
    editors("CellProperties"),
    editors("TableProperties"),
    end(),

    menu(QT_TR_NOOP("&Tools"), "tools"),
    {Kind::Own, QT_TR_NOOP("&Spelling…"), "spelling", "F7", "tools-check-spelling",
     [](Window& w) { w.check_spelling(); }, obstacle_to_spelling},
    writing<Writing::Waves>(QT_TR_NOOP("Mark &wrong words while typing"), "waves"),
    writing<Writing::AutoFormat>(QT_TR_NOOP("&Format while typing"), "auto-format"),
    filled(QT_TR_NOOP("Spelling &language"), "spelling-language",
           [](Window& w, QMenu& menu) { w.fill_spelling_languages(menu); }),
    end(),

    menu(QT_TR_NOOP("&Help"), "help"),
    {Kind::Own, QT_TR_NOOP("Hand&book"), "handbook", "F1", nullptr, [](Window& w) { open_handbook(w); }},
    {Kind::Own, QT_TR_NOOP("&Tour"), "tour", nullptr, nullptr, [](Window& w) { open_tour(w); }},
    line(),
    {Kind::Own, QT_TR_NOOP("&Keys"), "keys", "Shift+F1", "help-contents",
     [](Window& w) { KeysDialog(w.commands(), &w).exec(); }},
    {Kind::Own, QT_TR_NOOP("&About HTMLed"), "about", nullptr, "help-about",
     [](Window& w) { show_about(w); }},
    end(),
};

}  // namespace

const std::vector<Command>& Commands::table() {
  static const std::vector<Command> all(std::begin(rows), std::end(rows));
  return all;
}

}  // namespace tvx::htmled
