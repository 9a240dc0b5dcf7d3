#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "tvx/browser/browser.h"
#include "tvx/core/content/style_classes.h"
#include "tvx/core/context.h"
#include "tvx/core/events.h"
#include "tvx/core/observer.h"
#include "tvx/core/property_face.h"
#include "tvx/core/views/layout.h"
#include "tvx/platform/menu.h"
#include "tvx/platform/toolbar.h"
#include "tvx/source/code_view.h"

namespace tvx::platform {
class PropertyBag;
}

namespace tvx::transfer {
class clsDirectoryList;
}

namespace tvx::core {

class ContextMenus;
class ControlActions;
class SelectionFormats;
class SideSource;
struct Parts;

/// The visual HTML editor: properties (see PropertyFace), operations and events of one instance. What it does
/// is done by its parts, which stand in parts.h.
///
/// A container calls UserControl_Initialize, then UserControl_ReadProperties or UserControl_InitProperties,
/// UserControl_Resize and UserControl_Show; the editor starts once, at the end of reading or in the first
/// show, and only at run time. Strings are 16-bit. Lengths are twips. One thread.
///
/// Many operations wait for the document with the message loop running: events, timers and calls of the host
/// nest in them. A host may drop its last reference from within an event: the instance then dies in a later
/// turn of the loop.
class HTMLed final : public std::enable_shared_from_this<HTMLed>,
                     public PropertyFace,
                     private Context,
                     private browser::BrowserObserver {
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

  // --- properties with content of their own; the others are PropertyFace's ---
  /// The document, null before the start. Setting raises.
  const std::shared_ptr<browser::HTMLDocument>& DOM() const override { return docHTML_; }
  [[noreturn]] void set_DOM();
  std::int32_t hwnd() const { return platform::number_of(surroundings_.hwnd); }
  std::u16string DocumentHTML();
  void set_DocumentHTML(std::u16string_view html);
  std::u16string allHTML();
  [[noreturn]] void set_allHTML(std::u16string_view) { refuse_read_only(); }
  std::u16string DocumentText();
  [[noreturn]] void set_DocumentText(std::u16string_view) { refuse_read_only(); }
  void set_BaseURL(std::u16string_view url);

  // --- operations ---
  /// Opens a file; "" asks the user, and the choice is written back.
  void Open_document(std::u16string& strURL, bool openEntireDoc);
  /// Saves into a file; "" asks the user.
  void Save_document(const std::u16string& strFilename, bool bEntireDocument);
  void print_Document(bool DontShowDialog);
  void RevertToOriginal();
  /// What the document holds now is what a revert goes back to: for programs that open a file and whose users
  /// take that for the original.
  void make_original();
  /// Whether the document wants something from elsewhere that RemoteContent doesn't let it have.
  bool RemoteContentWithheld() const;
  /// The present document gets the images and style sheets that it wants, whatever RemoteContent says.
  void ShowRemoteContent();
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
  /// Asks for the font, its size and the colours of the selection.
  void change_Font();
  /// Asks for the settings of the document's first form; the whole body becomes one where there is none.
  void insert_Form();
  /// Asks for a table's measures and puts it in the place of the selection.
  void Table_Document();
  /// Puts the selection, or the word at the caret, between two pieces of HTML.
  void FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag);
  /// Uploads a picture and inserts its address; without a path the user chooses one.
  void Insert_Image(const std::optional<std::u16string>& localImagePath);
  /// Inserts a picture as a local file; without a path the user chooses one.
  void Insert_Image_NoFTP(const std::optional<std::u16string>& localImagePath);
  /// The picture at an address; an empty one opens the library of remote pictures.
  void insertImageFromURL(std::u16string_view ImageURL);
  /// How many of the document's pictures are local files.
  std::int32_t CountLocalImages();
  void InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere);
  /// As HTML or as text; nothing if it can't be had, which the host has then heard of.
  std::optional<std::u16string> GetCurrentSelection(bool HTMLText);
  /// Selects by character position; the HTML of what was selected.
  std::u16string selectText(std::int32_t SelStartPos, std::int32_t SelLength);
  void show_Code();
  bool InCodeView() const;
  /// Finding and replacing in the view in front; see Finder. Options are a sum of FindOption.
  std::int32_t FindText(std::u16string_view text, std::int32_t options);
  std::int32_t FindNext();
  std::int32_t FindPrevious();
  std::int32_t FindCount();
  std::int32_t FindPosition();
  std::int32_t FindLocked();
  bool ReplaceText(std::u16string_view replacement);
  std::int32_t ReplaceAllText(std::u16string_view replacement);
  void FindEnd();
  /// Files of the server that the properties name; what fails is told by FTPError. A second transfer within
  /// one is refused so.
  bool PutFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  bool GetFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  bool DeleteFileFTP(std::u16string_view RemoteFile);
  /// Null where there is no connection.
  std::shared_ptr<transfer::clsDirectoryList> ListFilesFTP(std::u16string_view RemoteDirectory,
                                                           std::u16string_view Filter);
  void FTPCancelTransfer();
  /// Uploads the document's local images, gives them their new addresses, and says how many.
  std::int32_t UploadAllImages();
  /// Goes through the words, asking the host, the speller and the user; returns when the run is over.
  void SpellCheck();
  /// The run ends after the word in hand.
  void SpellingCancel();
  /// The class menus' items: 0 takes a class away, the others are those of style_classes(). The first is for
  /// the current element, the second for the selection.
  const std::vector<StyleClass>& style_classes() const;
  void mnuClass_Click(std::int16_t Index);
  void mnuMiscClass_Click(std::int16_t Index);

  // --- for hosts' own bars ---
  ControlActions& actions();
  SelectionFormats& selection_formats();
  /// The source beside the page, for programs that show both.
  SideSource& side_source();
  /// A table of that size in the place of the selection.
  void insert_table(std::int32_t rows, std::int32_t columns);

  // --- inside: what views, scripts and tests reach by name ---
  browser::Browser& WBrowser() { return *browser_; }
  source::OrvelCV& txtCode();
  platform::Toolbar& Toolbar1();
  platform::Toolbar& Toolbar2();
  platform::Toolbar& tlbDOM();
  /// Throws RuntimeError(91) where the control has none.
  platform::Clipboard& clipboard() const;
  /// A menu or an item of one by its name, of a menu array the one with that index; null if there is none.
  platform::Menu* menu(std::u16string_view name, std::optional<int> index = {});
  ContextMenus& menus();
  const Layout& layout() const;
  dom::Element* highlightElement() const;
  /// The event that the last key or selection handler fetched; null before.
  const browser::Event* lastEvent() const;
  const std::u16string& originalHTML() const;
  const std::u16string& styleSheetPath() const;
  const std::u16string& appPath() const;
  bool openingDocument() const;
  const TableLabels& table_labels() const;
  bool started() const { return docHTML_ != nullptr; }
  /// As the user's press on a toolbar's button. False: the button doesn't answer.
  bool press(platform::Toolbar& toolbar, std::u16string_view key);

 private:
  friend struct Inside;  // the parts, for scripts and tests
  struct PropertyEffects;
  explicit HTMLed(const Surroundings& surroundings);

  void StartEditor();
  void drop_references();
  void connect_clipboard(browser::HTMLDocument& document);
  std::optional<std::u16string> ask_link(const std::u16string& address);
  /// The one place where code of the host and its container is called: its exceptions end here.
  void call_outside(const std::function<void()>& call);

  // --- PropertyFace ---
  void property_set(std::u16string_view key) override;

  // --- what the parts see ---
  Properties& properties() override { return properties_; }
  const Surroundings& surroundings() const override { return surroundings_; }
  bool run_time() const override;
  bool terminated() const override { return terminated_; }
  void set_DOM(std::shared_ptr<browser::HTMLDocument> document) override;
  browser::Browser& browser() const override { return *browser_; }
  void raise(const std::function<void(HTMLedEvents&)>& event) override;
  void tell(const std::function<void(HTMLedObserver&)>& news) override;
  void PropertyChanged(std::u16string_view key) override;
  void Wait() override;
  void show_dialog(platform::Form& dialog, std::u16string_view section) override;
  void state_changed() override;
  std::shared_ptr<const void> hold() override { return weak_from_this().lock(); }

  // --- the browser ---
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override;

  const Surroundings surroundings_;
  HTMLedEvents* host_ = nullptr;
  std::vector<HTMLedObserver*> observers_;
  std::unique_ptr<browser::Browser> browser_;
  std::shared_ptr<browser::HTMLDocument> docHTML_;
  std::unique_ptr<Parts> parts_;
  bool terminated_ = false;
};

}  // namespace tvx::core
