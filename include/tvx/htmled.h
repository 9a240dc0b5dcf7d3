#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/enumerations.h"
#include "tvx/error.h"
#include "tvx/events.h"
#include "tvx/message_loop.h"
#include "tvx/object.h"
#include "tvx/property_bag.h"

namespace tvx::core {
class HTMLed;
}
namespace tvx::library {
class Value;
}

namespace tvx {

/// The visual HTML editor for programs without a window: the same document, commands, undo, files and source
/// as in HTMLedWidget, and nobody to look at them. What would ask a user counts as cancelled; the clipboard
/// is the program's own.
///
/// Properties, operations and events have the names that docs/reference.md lists. Texts are UTF-16, also
/// paths. What fails throws RuntimeError: 382 for what can't be set any more, 445 for an operation that this
/// build doesn't have, and what docs/reference.md says of a member. One thread. Many operations wait for the
/// document with the message loop running: tasks and events of the host nest in them.
class HTMLed {
 public:
  /// With a message loop of its own: pump() runs it.
  HTMLed();
  /// With the host's loop, which outlives this.
  explicit HTMLed(platform::MessageLoop& loop);
  /// Not within an event of its own.
  ~HTMLed();
  HTMLed(const HTMLed&) = delete;
  HTMLed& operator=(const HTMLed&) = delete;

  /// Who hears of events; null: nobody. Outlives this, or takes itself out before.
  void set_events(HTMLedEvents* events);
  /// The control's area in twips, of which a pixel has 15; 640 by 480 pixels at first.
  void set_size(float width, float height);
  /// Starts the editor, unless it has been started, and waits until there is a document. What is set before
  /// is what it starts with.
  void start();
  bool started() const;
  /// Lets the message loop run for that many milliseconds; 0: what is to be done now.
  void pump(std::int64_t milliseconds = 0);
  /// The properties, from a store and into one. Reading is for before the start.
  void read_properties(const platform::PropertyBag& store);
  void write_properties(platform::PropertyBag& store) const;

  // --- parts of the face ---
  /// A button as it stands.
  struct ButtonState {
    /// False: the toolbar has no such button, and all else says nothing.
    bool exists = false;
    bool enabled = false, visible = false, pressed = false;
    std::u16string caption, tool_tip;
  };
  /// Of a toolbar, "Toolbar1", "Toolbar2" or "tlbDOM", by the button's key as ToolButtonClick tells it:
  /// "Bold".
  ButtonState button_state(std::u16string_view toolbar, std::u16string_view button) const;
  /// Does what the user's press on it does, ToolButtonClick included. False: the button doesn't answer.
  bool press_button(std::u16string_view toolbar, std::u16string_view button);
  /// A part by its path: "Toolbar1.Buttons(18).Visible", "mnuMiscSource.Enabled", "mnuMiscClass(0).Caption".
  /// Nothing for what is an object or nothing. Throws RuntimeError: 438 for a name that is none.
  Value part(std::u16string_view path) const;
  /// Throws RuntimeError: 438 for a name that is none, 383 for what can only be read.
  void set_part(std::u16string_view path, const Value& value);
  /// The document by names; nothing before the start.
  Object DOM() const;

  // --- properties ---
  /// The HTML in the body: set to edit it, read to have what it has become. Reading raises
  /// BeforeGetDocumentHTML.
  std::u16string DocumentHTML() const;
  void set_DocumentHTML(std::u16string_view value);
  /// The HTML of the whole document, its head included, as it stands.
  std::u16string allHTML() const;
  /// The text of the body, without markup.
  std::u16string DocumentText() const;
  /// The document's title; every document loaded later gets it.
  std::u16string DocumentTitle() const;
  void set_DocumentTitle(std::u16string_view value);
  /// Whether the user has touched the document since it was set.
  bool IsDirty() const;
  /// The address against which the document's addresses are read. An absolute URL.
  std::u16string BaseURL() const;
  void set_BaseURL(std::u16string_view value);
  /// Whether reading the HTML takes BaseURL off the addresses of links, images and scripts.
  bool relativeURLs() const;
  void set_relativeURLs(bool value);
  /// Whether characters outside ASCII leave the control as numeric references.
  bool AlwaysConvertUnicodeCharacters() const;
  void set_AlwaysConvertUnicodeCharacters(bool value);
  /// The style sheet: its address while CSShttp is true, else its text.
  std::u16string CSSText() const;
  void set_CSSText(std::u16string_view value);
  /// Whether CSSText is an address.
  bool CSShttp() const;
  void set_CSShttp(bool value);
  /// Whether the document may show a background image; can be set at design time only.
  bool showDocumentBackgroundImage() const;
  /// Raises 382 after the start.
  void set_showDocumentBackgroundImage(bool value);
  /// Whether the document can be edited, or read only.
  bool EditorEnabled() const;
  void set_EditorEnabled(bool value);
  /// Whether Enter makes a line break, not a paragraph.
  bool useEnterAsBR() const;
  void set_useEnterAsBR(bool value);
  /// Whether the control lives in a host that keeps Enter and the focus for itself.
  bool isAccessContained() const;
  void set_isAccessContained(bool value);
  /// Whether short forms that are typed become what they stand for: "- " a list, "1. " a numbered one, "# " a
  /// heading, "> " a quotation, an address a link. Each is an undo step of its own.
  bool AutoFormat() const;
  void set_AutoFormat(bool value);
  /// What documents bring in from other machines: nothing (0), images and style sheets (1), nothing until
  /// ShowRemoteContent (2), frames, fonts and media too (3).
  std::int32_t RemoteContent() const;
  void set_RemoteContent(std::int32_t value);
  /// Whether the document wants images or style sheets that RemoteContent doesn't let it have.
  bool RemoteContentWithheld() const;
  /// The control's own frame: None (0) or Solid (1).
  EdBorderStyle BorderStyle() const;
  void set_BorderStyle(EdBorderStyle value);
  /// Whether the toolbar of form fields shows.
  bool showFormToolbar() const;
  void set_showFormToolbar(bool value);
  /// Whether the first group of formatting buttons shows.
  bool showFormattingToolbar1() const;
  void set_showFormattingToolbar1(bool value);
  /// Whether the second group of formatting buttons shows.
  bool showFormattingToolbar2() const;
  void set_showFormattingToolbar2(bool value);
  /// Whether the bar with the path to the current element shows.
  bool showDOMToolbar() const;
  void set_showDOMToolbar(bool value);
  /// Stored for hosts that know it; nothing reads it.
  bool showCSSDropDown() const;
  void set_showCSSDropDown(bool value);
  /// The keys of the toolbar buttons that don't show. Separated by commas.
  std::u16string HiddenButtons() const;
  void set_HiddenButtons(std::u16string_view value);
  /// The keys of the context menu items that don't show. Separated by commas.
  std::u16string HiddenContextMenus() const;
  void set_HiddenContextMenus(std::u16string_view value);
  /// The file that translates the control's texts. A path; the file is XML (docs/localisation.md).
  std::u16string LocalizationFile() const;
  void set_LocalizationFile(std::u16string_view value);
  /// The border's style around the current element.
  EdHighLightStyle SelectionBorderStyle() const;
  void set_SelectionBorderStyle(EdHighLightStyle value);
  /// The border's colour around the current element. A CSS colour.
  std::u16string SelectionBorderColor() const;
  void set_SelectionBorderColor(std::u16string_view value);
  /// The border's width around the current element. A number of pixels, or a CSS length.
  std::u16string SelectionBorderWidth() const;
  void set_SelectionBorderWidth(std::u16string_view value);
  /// Whether the current element is framed; can be set at design time only.
  bool HighlightDOMSelection() const;
  /// Raises 382 after the start.
  void set_HighlightDOMSelection(bool value);
  /// Whether a click in the document frames the element under it.
  bool HighlightDOMSelectionOnClick() const;
  void set_HighlightDOMSelectionOnClick(bool value);
  /// Whether an inserted image is uploaded at once.
  bool UploadImages() const;
  void set_UploadImages(bool value);
  /// The folder into which inserted images are copied.
  std::u16string LocalImageStore() const;
  void set_LocalImageStore(std::u16string_view value);
  /// The user's own words for the spelling run.
  std::u16string CustomDictionaryFilename() const;
  void set_CustomDictionaryFilename(std::u16string_view value);
  /// The language of what no element of the document names one for ("de-DE"); empty: the locale's.
  std::u16string SpellingLanguage() const;
  void set_SpellingLanguage(std::u16string_view value);
  /// Whether wrong words are underlined while the user types.
  bool CheckSpellingAsYouType() const;
  void set_CheckSpellingAsYouType(bool value);
  /// The server that files are transferred to and from.
  std::u16string FTPHost() const;
  void set_FTPHost(std::u16string_view value);
  /// The name for logging in there.
  std::u16string FTPUser() const;
  void set_FTPUser(std::u16string_view value);
  /// The password there; the property store holds it unenciphered.
  std::u16string FTPPassword() const;
  void set_FTPPassword(std::u16string_view value);
  /// The server's folder to begin in.
  std::u16string FTPInitDir() const;
  void set_FTPInitDir(std::u16string_view value);
  /// The address under which uploaded images are seen.
  std::u16string FTPSaveToURL() const;
  void set_FTPSaveToURL(std::u16string_view value);
  /// Whether data connections are passive.
  bool FTPPassive() const;
  void set_FTPPassive(bool value);
  /// The server's port.
  std::int32_t FTPPort() const;
  void set_FTPPort(std::int32_t value);
  /// Text (1) or binary (2) transfer.
  ed_FTPTransferType FTPTransferType() const;
  void set_FTPTransferType(ed_FTPTransferType value);
  /// The proxy that transfers go through.
  std::u16string FTPProxyServer() const;
  void set_FTPProxyServer(std::u16string_view value);
  /// The servers that need no proxy.
  std::u16string FTPProxyBypassList() const;
  void set_FTPProxyBypassList(std::u16string_view value);
  /// Whether a transfer is under way.
  bool FTPActionInProgress() const;
  /// Whether a transfer shows its progress in a dialog.
  bool ShowFTPDialog() const;
  void set_ShowFTPDialog(bool value);
  /// Bytes that are moved between two looks at the message loop; above 1,024 without a rest.
  std::int32_t FTPBlockSize() const;
  void set_FTPBlockSize(std::int32_t value);
  /// The number of the control's window; its temporary files begin with it.
  std::int32_t hwnd() const;
  /// Whether the source is in front.
  bool InCodeView() const;

  // --- operations ---
  /// Opens a file, or the one that the user chooses if the name is empty; whole or its body only. Gives its
  /// name, "" if the user chose none. Waits until it is there.
  std::u16string Open_document(std::u16string_view strURL = {}, bool openEntireDoc = false);
  /// Saves to a file, or to the one that the user chooses if the name is empty; whole or body only.
  void Save_document(std::u16string_view strFilename = {}, bool bEntireDocument = false);
  /// Prints, after asking the user or at once.
  void print_Document(bool DontShowDialog = false);
  /// Types a line break (true) or the Return key (false) into the document.
  void sendCR(bool bBR);
  /// Puts the selection, or the word at the caret, between two pieces of HTML.
  void FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag);
  /// Inserts HTML in place of the selection (0), before it (1) or after it (2).
  void InsertAtCursor(std::u16string_view HTMLText,
                      ed_InsertType insertWhere = ed_InsertType::ed_InsertReplaceSelection);
  /// Gives what is selected, or the word at the caret, as HTML or as text. Nothing where it can't be had.
  std::optional<std::u16string> GetCurrentSelection(bool HTMLText);
  /// Selects by character position and gives the HTML of what it selected.
  std::u16string selectText(std::int32_t SelStartPos, std::int32_t SelLength);
  /// Goes back to the HTML that was last set, without a question.
  void RevertToOriginal();
  /// Does nothing; hosts may call it.
  void CleanUp();
  /// Scrolls to the document's beginning.
  void scrollToTop();
  /// Scrolls to the document's end.
  void scrollToBottom();
  /// Switches between the document and its source.
  void show_Code();
  /// Looks for a text in the view in front, marks all hits, selects the first one and gives their number.
  /// Options, added up: match case (1), whole words (2), a regular expression (4), in the selection (8).
  std::int32_t FindText(std::u16string_view Text, std::int32_t Options = 0);
  /// Selects the next hit and gives its number, from 1; 0 where there is none.
  std::int32_t FindNext();
  /// Selects the hit before and gives its number, from 1; 0 where there is none.
  std::int32_t FindPrevious();
  /// The number of hits. Its change is told as that of a property.
  std::int32_t FindCount();
  /// Which hit is selected, from 1; 0 where none is.
  std::int32_t FindPosition();
  /// The number of hits that may not be edited.
  std::int32_t FindLocked();
  /// Replaces the selected hit, $1 or ${name} being groups of a regular expression, and selects the next one.
  /// False where no hit is selected or it may not be edited.
  bool ReplaceText(std::u16string_view Replacement);
  /// Replaces all hits that may be edited, as one step of undo, and gives their number.
  std::int32_t ReplaceAllText(std::u16string_view Replacement);
  /// Ends the search and takes its marks away.
  void FindEnd();
  /// Bold, on or off.
  void bold_document();
  /// Italic, on or off.
  void italic_document();
  /// Underlined, on or off.
  void underline_document();
  /// Struck through, on or off.
  void strike_document();
  /// Indents by one level.
  void indent_document();
  /// Takes one level of indentation off.
  void unindent_document();
  /// Aligns to the left.
  void Left_Justify();
  /// Centres.
  void Center_justify();
  /// Aligns to the right.
  void Right_justify();
  /// A numbered list, on or off.
  void numbered_list();
  /// A bulleted list, on or off.
  void unnumbered_list();
  /// Takes back the last step, of the view in front.
  void undo_document();
  /// Does again what was taken back.
  void redo_document();
  /// Inserts a horizontal rule.
  void insert_HR();
  /// Makes the selection a link; asks for its address.
  void insert_Link();
  /// Asks for font, size and colours of the selection.
  void change_Font();
  /// Asks for a table's measures and inserts it.
  void Table_Document();
  /// Asks for a form's settings and inserts it.
  void insert_Form();
  /// Moves the selection to the clipboard.
  void cut_document();
  /// Copies the selection to the clipboard.
  void copy_document();
  /// Inserts what is on the clipboard.
  void paste_document();
  /// Ends the running transfer.
  void FTPCancelTransfer();
  /// Checks the document's words, from the first to the last.
  void SpellCheck();
  /// Ends the spelling run after the word in hand.
  void SpellingCancel();
  /// Sends a file to the server.
  bool PutFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  /// Fetches a file from the server.
  bool GetFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile);
  /// Deletes a file on the server.
  bool DeleteFileFTP(std::u16string_view RemoteFile);
  /// Uploads an image, or the one that the user chooses, and inserts it. "" is no name.
  void Insert_Image(std::u16string_view localImagePath = {});
  /// Inserts a local image, or the one that the user chooses. "" is no name.
  void Insert_Image_NoFTP(std::u16string_view localImagePath = {});
  /// Inserts the image at an address.
  void insertImageFromURL(std::u16string_view ImageURL);
  /// Uploads the document's local images and gives their number.
  std::int32_t UploadAllImages();
  /// The number of local images in the document.
  std::int32_t CountLocalImages();
  /// Lets the present document have the images and style sheets that it wants from elsewhere.
  void ShowRemoteContent();

  // --- for code of this library; no public header says what this is ---
  core::HTMLed& control() const;

 private:
  class Parts;
  std::u16string text(std::u16string_view name) const;
  bool flag(std::u16string_view name) const;
  std::int32_t number(std::u16string_view name) const;
  void put(std::u16string_view name, const library::Value& value);
  library::Value call(std::u16string_view name, std::vector<library::Value> arguments = {});

  std::unique_ptr<Parts> parts_;
};

}  // namespace tvx
