#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/browser/browser.h"
#include "tvx/browser/events.h"
#include "tvx/clipboard/clip.h"
#include "tvx/core/content/style_classes.h"
#include "tvx/core/enumerations.h"
#include "tvx/core/events.h"
#include "tvx/core/properties.h"
#include "tvx/core/views/layout.h"
#include "tvx/platform/menu.h"
#include "tvx/platform/toolbar.h"
#include "tvx/platform/window.h"
#include "tvx/source/code_view.h"

namespace tvx::platform {
class Clipboard;
class CommonDialogs;
class Container;
class Form;
class Forms;
class MessageLoop;
class PropertyBag;
}  // namespace tvx::platform

namespace tvx::core {
class ContextMenus;
class SelectionHighlight;
class Toolbars;
}  // namespace tvx::core

namespace tvx::dom::style {
class StyleSheet;
}

namespace tvx::localise {
class XmlElement;
}

namespace tvx::core {

/// What surrounds a control. All of it outlives the control.
struct Surroundings {
  platform::MessageLoop& loop;
  platform::Container& container;
  platform::CommonDialogs& dialogs;
  platform::WindowHandle hwnd = platform::WindowHandle::none;  // none: the control takes the next free one
  const browser::HTMLDocument::Geometry* geometry = nullptr;
  browser::BrowserWindow* window = nullptr;
  platform::Clipboard* clipboard = nullptr;  // null: there is none to copy to
  platform::PopupMenus* popups = nullptr;    // null: every popup counts as dismissed
  platform::Forms* forms = nullptr;          // null: every dialog of the control counts as cancelled
};

/// Who shows the control: told when there is something else to show.
class HTMLedObserver {
 public:
  virtual ~HTMLedObserver() = default;
  /// The browser shows another document.
  virtual void document_replaced(const std::shared_ptr<browser::HTMLDocument>&) {}
  virtual void layout_changed(const Layout&) {}
  /// Whether the document may be edited; a view that may not begins no selection.
  virtual void editor_enabled_changed(bool) {}
  virtual void border_changed(EdBorderStyle) {}
  /// The code view has come to the front, or gone.
  virtual void view_switched(bool /*in_code_view*/) {}
};

/// The visual HTML editor: properties, operations and events of one instance.
///
/// A container calls UserControl_Initialize, then UserControl_ReadProperties or UserControl_InitProperties,
/// UserControl_Resize and UserControl_Show; the editor starts once, at the end of reading or in the first
/// show, and only at run time. Strings are 16-bit. Lengths are twips. One thread.
///
/// Many operations wait for the document with the message loop running: events, timers and calls of the host
/// nest in them. A host may drop its last reference from within an event: the instance then dies in a later
/// turn of the loop.
class HTMLed final : public std::enable_shared_from_this<HTMLed>,
                     private browser::BrowserEvents,
                     private browser::BrowserObserver,
                     private browser::DocumentHandler,
                     private platform::ToolbarHandler,
                     private platform::MenuHandler {
 public:
  static std::shared_ptr<HTMLed> create(const Surroundings& surroundings);
  ~HTMLed() override;
  HTMLed(const HTMLed&) = delete;
  HTMLed& operator=(const HTMLed&) = delete;

  /// Null: nobody listens.
  void set_events(HTMLedEvents* events) { host_ = events; }
  void add_observer(HTMLedObserver& observer);
  void remove_observer(HTMLedObserver& observer);

  // --- the container's calls ---
  void UserControl_Initialize();
  void UserControl_InitProperties();
  void UserControl_ReadProperties(const platform::PropertyBag& bag);
  void UserControl_WriteProperties(platform::PropertyBag& bag);
  /// The control's area, in twips.
  void set_size(float width, float height);
  void UserControl_Resize();
  void UserControl_Show();
  void UserControl_EnterFocus();
  void UserControl_ExitFocus();
  void UserControl_Terminate();
  /// The focus came to the browser, or left it for another part of the control (named as its widget).
  void WBrowser_GotFocus();
  void WBrowser_LostFocus(std::u16string_view active_control);

  // --- properties of the document; setters end with the container's PropertyChanged ---
  /// The document, null before the start. Setting raises.
  const std::shared_ptr<browser::HTMLDocument>& DOM() const { return docHTML_; }
  [[noreturn]] void set_DOM();
  std::int32_t hwnd() const { return platform::number_of(hwnd_); }
  std::u16string DocumentHTML();
  void set_DocumentHTML(std::u16string_view html);
  std::u16string allHTML();
  [[noreturn]] void set_allHTML(std::u16string_view);
  std::u16string DocumentText();
  [[noreturn]] void set_DocumentText(std::u16string_view);
  const std::u16string& DocumentTitle() const { return properties_.DocumentTitle; }
  void set_DocumentTitle(std::u16string_view title);
  bool IsDirty() const { return properties_.IsDirty; }
  [[noreturn]] void set_IsDirty(bool);
  const std::u16string& BaseURL() const { return properties_.BaseURL; }
  void set_BaseURL(std::u16string_view url);
  bool relativeURLs() const { return properties_.relativeURLs; }
  void set_relativeURLs(bool on);
  bool AlwaysConvertUnicodeCharacters() const { return properties_.AlwaysConvertUnicodeCharacters; }
  void set_AlwaysConvertUnicodeCharacters(bool on);
  const std::u16string& CSSText() const { return properties_.CSSText; }
  void set_CSSText(std::u16string_view text);
  bool CSShttp() const { return properties_.CSShttp; }
  void set_CSShttp(bool on);
  bool showDocumentBackgroundImage() const { return properties_.showDocumentBackgroundImage; }
  /// Raises 382 at run time.
  void set_showDocumentBackgroundImage(bool on);
  bool EditorEnabled() const { return properties_.EditorEnabled; }
  void set_EditorEnabled(bool enabled);
  bool useEnterAsBR() const { return properties_.useEnterAsBR; }
  void set_useEnterAsBR(bool on);
  bool isAccessContained() const { return properties_.isAccessContained; }
  void set_isAccessContained(bool on);

  // --- properties of the look ---
  EdBorderStyle BorderStyle() const { return properties_.BorderStyle; }
  void set_BorderStyle(EdBorderStyle style);
  bool showFormToolbar() const { return properties_.showFormToolbar; }
  void set_showFormToolbar(bool on);
  bool showFormattingToolbar1() const { return properties_.showFormattingToolbar1; }
  void set_showFormattingToolbar1(bool on);
  bool showFormattingToolbar2() const { return properties_.showFormattingToolbar2; }
  void set_showFormattingToolbar2(bool on);
  bool showDOMToolbar() const { return properties_.showDOMToolbar; }
  void set_showDOMToolbar(bool on);
  bool showCSSDropDown() const { return properties_.showCSSDropDown; }
  void set_showCSSDropDown(bool on);
  const std::u16string& HiddenButtons() const { return properties_.HiddenButtons; }
  void set_HiddenButtons(std::u16string_view keys);
  const std::u16string& HiddenContextMenus() const { return properties_.HiddenContextMenus; }
  void set_HiddenContextMenus(std::u16string_view keys);
  const std::u16string& LocalizationFile() const { return properties_.LocalizationFile; }
  void set_LocalizationFile(std::u16string_view path);
  EdHighLightStyle SelectionBorderStyle() const;
  void set_SelectionBorderStyle(EdHighLightStyle style);
  const std::u16string& SelectionBorderColor() const { return properties_.SelectionBorderColor; }
  void set_SelectionBorderColor(std::u16string_view colour);
  const std::u16string& SelectionBorderWidth() const { return properties_.SelectionBorderWidth; }
  void set_SelectionBorderWidth(std::u16string_view width);
  bool HighlightDOMSelection() const { return properties_.HighlightDOMSelection; }
  /// Raises 382 at run time.
  void set_HighlightDOMSelection(bool on);
  bool HighlightDOMSelectionOnClick() const { return properties_.HighlightDOMSelectionOnClick; }
  void set_HighlightDOMSelectionOnClick(bool on);

  // --- properties of images, spelling and transfer ---
  bool UploadImages() const { return properties_.UploadImages; }
  void set_UploadImages(bool on);
  const std::u16string& LocalImageStore() const { return properties_.LocalImageStore; }
  void set_LocalImageStore(std::u16string_view folder);
  const std::u16string& CustomDictionaryFilename() const { return properties_.CustomDictionaryFilename; }
  void set_CustomDictionaryFilename(std::u16string_view path);
  const std::u16string& FTPHost() const { return properties_.FTPHost; }
  void set_FTPHost(std::u16string_view text);
  const std::u16string& FTPUser() const { return properties_.FTPUser; }
  void set_FTPUser(std::u16string_view text);
  const std::u16string& FTPPassword() const { return properties_.FTPPassword; }
  void set_FTPPassword(std::u16string_view text);
  const std::u16string& FTPInitDir() const { return properties_.FTPInitDir; }
  void set_FTPInitDir(std::u16string_view text);
  const std::u16string& FTPSaveToURL() const { return properties_.FTPSaveToURL; }
  void set_FTPSaveToURL(std::u16string_view url);
  bool FTPPassive() const { return properties_.FTPPassive; }
  void set_FTPPassive(bool on);
  std::int32_t FTPPort() const { return properties_.FTPPort; }
  void set_FTPPort(std::int32_t port);
  ed_FTPTransferType FTPTransferType() const { return properties_.FTPTransferType; }
  void set_FTPTransferType(ed_FTPTransferType type);
  const std::u16string& FTPProxyServer() const { return properties_.FTPProxyServer; }
  void set_FTPProxyServer(std::u16string_view text);
  const std::u16string& FTPProxyBypassList() const { return properties_.FTPProxyBypassList; }
  void set_FTPProxyBypassList(std::u16string_view text);
  bool FTPActionInProgress() const { return properties_.FTPActionInProgress; }
  [[noreturn]] void set_FTPActionInProgress(bool);
  bool ShowFTPDialog() const { return properties_.ShowFTPDialog; }
  void set_ShowFTPDialog(bool on);

  // --- operations ---
  /// Opens a file; "" asks the user, and the choice is written back.
  void Open_document(std::u16string& strURL, bool openEntireDoc);
  /// Saves into a file; "" asks the user.
  void Save_document(const std::u16string& strFilename, bool bEntireDocument);
  void print_Document(bool DontShowDialog);
  void RevertToOriginal();
  /// For hosts that call it; does nothing.
  void CleanUp() {}
  void sendCR(bool bBR);
  void scrollToTop();
  void scrollToBottom();
  void bold_document();
  void italic_document();
  void underline_document();
  void strike_document();
  void indent_document();
  void unindent_document();
  void Left_Justify();
  void Center_justify();
  void Right_justify();
  void numbered_list();
  void unnumbered_list();
  void undo_document();
  void redo_document();
  void cut_document();
  void copy_document();
  void paste_document();
  void insert_HR();
  /// Asks for an address and makes the selection a link.
  void insert_Link();
  /// Asks for a table's measures and puts it in the place of the selection.
  void Table_Document();
  /// Puts the selection, or the word at the caret, between two pieces of HTML.
  void FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag);
  void InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere);
  /// As HTML or as text; nothing if it can't be had, which the host has then heard of.
  std::optional<std::u16string> GetCurrentSelection(bool HTMLText);
  /// Selects by character position; the HTML of what was selected.
  std::u16string selectText(std::int32_t SelStartPos, std::int32_t SelLength);
  void show_Code();
  bool InCodeView() const { return inCodeView_; }

  // --- the class menus' items: 0 takes a class away, the others are those of style_classes() ---
  const std::vector<StyleClass>& style_classes() const { return style_classes_; }
  /// The class of the current element.
  void mnuClass_Click(std::int16_t Index);
  /// The class of the selection.
  void mnuMiscClass_Click(std::int16_t Index);

  // --- inside: what views, scripts and tests reach by name ---
  browser::Browser& WBrowser() { return *browser_; }
  source::OrvelCV& txtCode() { return txtCode_; }
  platform::Toolbar& Toolbar1();
  platform::Toolbar& Toolbar2();
  platform::Toolbar& tlbDOM();
  /// Throws RuntimeError(91) where the control has none.
  platform::Clipboard& clipboard() const;
  /// A menu or an item of one by its name, of a menu array the one with that index; null if there is none.
  platform::Menu* menu(std::u16string_view name, std::optional<int> index = {});
  ContextMenus& menus() { return *menus_; }
  const Layout& layout() const { return layout_; }
  dom::Element* highlightElement() const;
  /// The event that the last key or selection handler fetched; null before.
  const browser::Event* lastEvent() const { return last_event_.get(); }
  const std::u16string& originalHTML() const { return *original_html_; }
  const std::u16string& styleSheetPath() const { return style_sheet_path_; }
  const std::u16string& appPath() const { return app_path_; }
  bool openingDocument() const { return opening_document_; }
  const TableLabels& table_labels() const { return labels_; }
  bool started() const { return docHTML_ != nullptr; }
  /// As the user's press on a toolbar's button. False: the button doesn't answer.
  bool press(platform::Toolbar& toolbar, std::u16string_view key);

 private:
  /// Private members and internal routines by their names, for scripts and tests.
  friend struct Inside;
  explicit HTMLed(const Surroundings& surroundings);
  struct KeepAlive;
  static constexpr std::u16string_view document_file = u"msHTMLEdit.html";
  static constexpr std::u16string_view style_sheet_file = u"tvxStyle.css";

  // --- small tools (htmled.cpp) ---
  bool run_time() const;
  /// The one place where code of the host and its container is called: its exceptions end here.
  void call_outside(const std::function<void()>& call);
  void raise(const std::function<void(HTMLedEvents&)>& event);
  void raise_error(std::int32_t number, std::u16string text);
  void PropertyChanged(std::u16string_view key);
  void mark_changed();
  browser::HTMLDocument& document() const;          // throws RuntimeError(91) before the start
  browser::HTMLDocument& browser_document() const;  // that of WBrowser.object
  dom::Element& body_of(browser::HTMLDocument& document) const;
  void set_docHTML(std::shared_ptr<browser::HTMLDocument> document);
  void connect_clipboard(browser::HTMLDocument& document);
  void Wait();
  void wait_for_browser();
  void wait_for_document();
  void wait_until_complete();
  void write_body(std::u16string_view html);
  void set_design_mode_of_browser();
  void set_toolbar_property(bool Properties::*member, bool on, std::u16string_view key);
  template <class T, class V>
  void store(T Properties::*member, V&& value, std::u16string_view key);
  [[noreturn]] void refuse_read_only() const;
  void refuse_at_run_time() const;

  // --- start and end (lifecycle.cpp, bootstrap.cpp) ---
  void StartEditor();
  void BootstrapDocument();
  std::u16string WriteTemplateDocument(const std::u16string& path, int resource);
  void LoadStoredDocumentHTML();
  std::u16string temporary_folder() const;
  std::u16string temporary_file(std::u16string_view name) const;
  void apply_base_url(browser::HTMLDocument& document);
  void ApplyToolbarState(bool enabled);
  void drop_references();

  // --- content (content.cpp, style_sheet.cpp) ---
  std::u16string ConvertUnicodeCharacters(std::u16string_view text) const;
  std::u16string RelativeDocumentHTML(std::u16string_view base);
  std::u16string text_of_body();
  void switch_editing(bool enabled);
  void ApplyStyleSheet();
  std::shared_ptr<dom::style::StyleSheet> first_sheet() const;
  void set_sheet_address(std::u16string_view address);
  void set_sheet_file(std::u16string_view address, std::u16string_view text);
  void apply_remote_style_sheet();
  void apply_local_style_sheet();
  void apply_style_text();
  void LoadStyleClasses();

  // --- the browser's events (browser_events.cpp) ---
  void BeforeNavigate2(const browser::Navigation& navigation, bool& cancel) override;
  void NavigateComplete2(bool top, const std::u16string& url) override;
  void DocumentComplete(bool top, const std::u16string& url) override;
  void DownloadBegin() override;
  void DownloadComplete() override;
  void NavigateError(const browser::Navigation& navigation, std::int32_t status) override;
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override;
  std::optional<std::u16string> ask_link(const std::u16string& address);
  void FindEditWindow();
  void ShowEditCaret();

  // --- the document's events (document_events.cpp) ---
  void onkeydown() override;
  void onkeyup() override;
  void onuserchange() override;
  bool onclick() override;
  bool ondblclick() override;
  void onmousedown() override;
  bool oncontextmenu() override;
  bool oncontrolselect() override;
  bool onselectstart() override;
  bool ondragstart() override;
  void onselectionchange() override;
  void fetch_last_event();
  void act_on_key(int key_code, bool shift, bool control);
  void raise_document_click();
  void follow_selection();

  // --- commands (formatting.cpp, selection_interface.cpp, class_menus.cpp, toolbar_dispatch.cpp) ---
  void run_command(std::u16string_view command);
  void run_toggle(std::u16string_view command, bool guarded, int button, std::u16string_view query);
  void show_pressed(int button, std::u16string_view query);
  void make_link_under_mouse_relative();
  bool host_allows_item(std::u16string_view item);
  std::u16string style_class_at(std::int16_t index) const;
  void ButtonClick(platform::Toolbar& toolbar, platform::Button& button) override;
  void Toolbar1_ButtonClick(platform::Button& button);
  void Toolbar2_ButtonClick(platform::Button& button);
  bool host_allows(std::u16string_view toolbar, const platform::Button& button);

  // --- menus and the element path (context_menus.cpp, branch_toolbar.cpp) ---
  struct MenuActions;
  void MenuItemClick(platform::Menu& item) override;
  void ApplyContextMenuState();
  void popup(platform::Menu& menu, const std::optional<platform::PopupPlace>& place = {});
  void ShowContextMenu(platform::Menu& menu);
  void open_context_menu(const dom::Element& element);
  void act_after_image_menu();
  void act_after_table_menu();
  void act_after_other_menus();
  void ask_and_revert();
  void BuildBranchToolbar();
  void tlbDOM_ButtonClick(const platform::Button& button);
  void draw_selection_border();
  void edit_tag();
  void edit_properties();
  class TableTools;

  // --- dialogs (dialogs.cpp) ---
  /// Shows a dialog of the control, modal over it, and returns when it is hidden. `section` is that of its
  /// words in the language file. Where nobody shows dialogs, or the control ends meanwhile, it counts as
  /// cancelled.
  void show_dialog(platform::Form& dialog, std::u16string_view section);
  void cancel_open_dialogs();

  // --- the words of the language file (localisation.cpp) ---
  /// Of toolbars and menus; does nothing where no file is set. The host hears of a file that can't be read.
  void apply_language_file();
  void translate_chrome(const localise::XmlElement& root);
  void translate_menu_item(std::u16string_view name, const std::u16string& text);
  void localise(platform::Form& dialog, std::u16string_view section) const;

  // --- the clipboard (clipboard_commands.cpp) ---
  std::u16string_view selection_type() const;
  void copy_by_hand(std::u16string_view type);
  void paste_by_hand();

  // --- views and layout (view_switch.cpp, layout.cpp) ---
  void connect_code_view();
  void capture_selected_html();
  void enter_code_view();
  void leave_code_view();
  void write_code_to_body();
  /// What the code view shows of a text of the document, as if it had been entered with it.
  void show_as_entered(SharedText original, SharedText code);
  void lay_out_at_design_time();
  void tell_layout(const Layout& before);

  // --- files (document_files.cpp) ---
  void open_entire_document(const std::u16string& url);
  void open_body(const std::u16string& url);
  void adopt_style_settings();
  std::u16string text_to_save(bool entire);

  platform::MessageLoop& loop_;
  platform::Container& container_;
  platform::CommonDialogs& dialogs_;
  platform::Clipboard* const clipboard_;
  const clipboard::clsClip clip_;
  platform::PopupMenus* popups_;
  platform::Forms* forms_;
  std::vector<platform::Form*> open_dialogs_;  // the one in front last
  const platform::WindowHandle hwnd_;
  const browser::HTMLDocument::Geometry* geometry_;
  HTMLedEvents* host_ = nullptr;
  std::vector<HTMLedObserver*> observers_;

  Properties properties_;
  TableLabels labels_;
  float width_ = 0, height_ = 0;
  Layout layout_;

  std::unique_ptr<browser::Browser> browser_;
  std::shared_ptr<browser::HTMLDocument> docHTML_;
  struct CodeViewHandler;
  std::unique_ptr<source::CodeViewEvents> code_view_handler_;
  source::OrvelCV txtCode_;
  std::unique_ptr<Toolbars> toolbars_;
  std::unique_ptr<ContextMenus> menus_;
  std::unique_ptr<SelectionHighlight> highlight_;
  std::u16string pending_context_command_;  // left by an item, for when its popup has closed

  std::u16string app_path_, style_sheet_path_;
  SharedText original_html_ = share(u"");
  std::u16string selected_html_;
  std::int32_t selected_source_index_ = -1;
  std::int32_t code_selection_start_ = 0;
  // The document's text and the code made of it, as the code view was entered with them; null in the design
  // view.
  SharedText entered_text_, entered_code_;
  dom::Ref<dom::Element> base_element_;
  std::shared_ptr<dom::style::StyleSheet> active_style_sheet_;
  std::vector<StyleClass> style_classes_;
  std::unique_ptr<browser::Event> last_event_;
  bool edit_window_found_ = false;
  bool inCodeView_ = false;
  bool browser_tab_stop_ = true;
  bool download_done_ = false, watch_download_ = false;
  bool base_href_set_ = false;
  bool opening_document_ = false;
  bool terminated_ = false;
};

}  // namespace tvx::core
