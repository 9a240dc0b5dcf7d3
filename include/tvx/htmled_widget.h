#pragma once

#include <QColor>
#include <QStringList>
#include <QVariant>
#include <QWidget>
#include <memory>
#include <string_view>
#include <vector>

#include "tvx/message_loop.h"
#include "tvx/object.h"
#include "tvx/property_bag.h"
#include "tvx/web_engine.h"

class QAction;

namespace tvx::core {
class HTMLed;
}
namespace tvx::browser {
class DocumentView;
}
namespace tvx::library {
class Value;
}
namespace tvx::qt {

class HostBars;
class WebView;

struct Substitutes;

/// The visual HTML editor as one widget: toolbars, the view, the source. Put it into a window, show it, and
/// give it HTML.
///
/// Properties, operations and events have the names that docs/reference.md lists. Properties that are set
/// before the first show are what the editor starts with. All texts are UTF-16. What can't be done (a
/// property that is read-only by then, an operation that this build doesn't have) leaves a warning in Qt's
/// log, and is an exception with its number where it is done by name: part("..."), set_part("...", ...).
/// Events are signals whose references the host may write to: `cancel = true` in ToolButtonClick stops the
/// button. They must be connected directly, which is what connect() does within a thread.
///
/// Many operations wait for the document with the event loop running: events and timers of the host nest in
/// them.
class HTMLedWidget : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString DocumentHTML READ DocumentHTML WRITE set_DocumentHTML USER true)
  Q_PROPERTY(QString allHTML READ allHTML STORED false)
  Q_PROPERTY(QString DocumentText READ DocumentText STORED false)
  Q_PROPERTY(QString DocumentTitle READ DocumentTitle WRITE set_DocumentTitle)
  Q_PROPERTY(bool IsDirty READ IsDirty STORED false)
  Q_PROPERTY(QString BaseURL READ BaseURL WRITE set_BaseURL)
  Q_PROPERTY(bool relativeURLs READ relativeURLs WRITE set_relativeURLs)
  Q_PROPERTY(bool AlwaysConvertUnicodeCharacters READ AlwaysConvertUnicodeCharacters WRITE
                 set_AlwaysConvertUnicodeCharacters)
  Q_PROPERTY(QString CSSText READ CSSText WRITE set_CSSText)
  Q_PROPERTY(bool CSShttp READ CSShttp WRITE set_CSShttp)
  Q_PROPERTY(
      bool showDocumentBackgroundImage READ showDocumentBackgroundImage WRITE set_showDocumentBackgroundImage)
  Q_PROPERTY(bool EditorEnabled READ EditorEnabled WRITE set_EditorEnabled)
  Q_PROPERTY(bool useEnterAsBR READ useEnterAsBR WRITE set_useEnterAsBR)
  Q_PROPERTY(bool isAccessContained READ isAccessContained WRITE set_isAccessContained)
  Q_PROPERTY(bool AutoFormat READ AutoFormat WRITE set_AutoFormat)
  Q_PROPERTY(int RemoteContent READ RemoteContent WRITE set_RemoteContent)
  Q_PROPERTY(bool RemoteContentWithheld READ RemoteContentWithheld STORED false)
  Q_PROPERTY(EdBorderStyle BorderStyle READ BorderStyle WRITE set_BorderStyle)
  Q_PROPERTY(bool showFormToolbar READ showFormToolbar WRITE set_showFormToolbar)
  Q_PROPERTY(bool showFormattingToolbar1 READ showFormattingToolbar1 WRITE set_showFormattingToolbar1)
  Q_PROPERTY(bool showFormattingToolbar2 READ showFormattingToolbar2 WRITE set_showFormattingToolbar2)
  Q_PROPERTY(bool showDOMToolbar READ showDOMToolbar WRITE set_showDOMToolbar)
  Q_PROPERTY(bool showCSSDropDown READ showCSSDropDown WRITE set_showCSSDropDown)
  Q_PROPERTY(QString HiddenButtons READ HiddenButtons WRITE set_HiddenButtons)
  Q_PROPERTY(QString HiddenContextMenus READ HiddenContextMenus WRITE set_HiddenContextMenus)
  Q_PROPERTY(QString LocalizationFile READ LocalizationFile WRITE set_LocalizationFile)
  Q_PROPERTY(EdHighLightStyle SelectionBorderStyle READ SelectionBorderStyle WRITE set_SelectionBorderStyle)
  Q_PROPERTY(QString SelectionBorderColor READ SelectionBorderColor WRITE set_SelectionBorderColor)
  Q_PROPERTY(QString SelectionBorderWidth READ SelectionBorderWidth WRITE set_SelectionBorderWidth)
  Q_PROPERTY(bool HighlightDOMSelection READ HighlightDOMSelection WRITE set_HighlightDOMSelection)
  Q_PROPERTY(bool HighlightDOMSelectionOnClick READ HighlightDOMSelectionOnClick WRITE
                 set_HighlightDOMSelectionOnClick)
  Q_PROPERTY(bool UploadImages READ UploadImages WRITE set_UploadImages)
  Q_PROPERTY(QString LocalImageStore READ LocalImageStore WRITE set_LocalImageStore)
  Q_PROPERTY(
      QString CustomDictionaryFilename READ CustomDictionaryFilename WRITE set_CustomDictionaryFilename)
  Q_PROPERTY(QString SpellingLanguage READ SpellingLanguage WRITE set_SpellingLanguage)
  Q_PROPERTY(bool CheckSpellingAsYouType READ CheckSpellingAsYouType WRITE set_CheckSpellingAsYouType)
  Q_PROPERTY(QString FTPHost READ FTPHost WRITE set_FTPHost)
  Q_PROPERTY(QString FTPUser READ FTPUser WRITE set_FTPUser)
  Q_PROPERTY(QString FTPPassword READ FTPPassword WRITE set_FTPPassword)
  Q_PROPERTY(QString FTPInitDir READ FTPInitDir WRITE set_FTPInitDir)
  Q_PROPERTY(QString FTPSaveToURL READ FTPSaveToURL WRITE set_FTPSaveToURL)
  Q_PROPERTY(bool FTPPassive READ FTPPassive WRITE set_FTPPassive)
  Q_PROPERTY(int FTPPort READ FTPPort WRITE set_FTPPort)
  Q_PROPERTY(ed_FTPTransferType FTPTransferType READ FTPTransferType WRITE set_FTPTransferType)
  Q_PROPERTY(QString FTPProxyServer READ FTPProxyServer WRITE set_FTPProxyServer)
  Q_PROPERTY(QString FTPProxyBypassList READ FTPProxyBypassList WRITE set_FTPProxyBypassList)
  Q_PROPERTY(bool FTPActionInProgress READ FTPActionInProgress STORED false)
  Q_PROPERTY(bool ShowFTPDialog READ ShowFTPDialog WRITE set_ShowFTPDialog)
  Q_PROPERTY(int FTPBlockSize READ FTPBlockSize WRITE set_FTPBlockSize)
  Q_PROPERTY(int hwnd READ hwnd STORED false)

 public:
  enum EdBorderStyle { None = 0, Solid = 1 };
  Q_ENUM(EdBorderStyle)
  enum EdHighLightStyle {
    edNone = 0,
    edSolid = 1,
    edDashed = 2,
    edDotted = 3,
    edDouble = 4,
    edGroove = 5,
    edRidge = 6,
    edInset = 7,
    edOutset = 8
  };
  Q_ENUM(EdHighLightStyle)
  enum ed_FTPTransferType { ov_Unknown = 0, ov_ASCII = 1, ov_Binary = 2 };
  Q_ENUM(ed_FTPTransferType)
  enum ed_InsertType {
    ed_InsertReplaceSelection = 0,
    ed_InsertBeforeSelection = 1,
    ed_InsertAfterSelection = 2
  };
  Q_ENUM(ed_InsertType)

  explicit HTMLedWidget(QWidget* parent = nullptr);
  /// With a message loop of the host's own, which outlives the widget; a widget that is deleted within an
  /// event of its own is over with the next turn of Qt's loop.
  explicit HTMLedWidget(platform::MessageLoop& loop, QWidget* parent = nullptr);
  /// Also within an event of its own.
  ~HTMLedWidget() override;

  /// For a form designer: the widget then shows what it is, and never starts. Before the first show.
  void set_design_mode(bool on);
  /// Starts the editor, unless it has been started; the first show does. Waits, with the loop running, until
  /// there is a document.
  void start();
  bool started() const;
  /// The properties, from a store and into one (settings_store.h is one over QSettings). Reading is for
  /// before the start.
  void read_properties(const platform::PropertyBag& store);
  void write_properties(platform::PropertyBag& store) const;

  /// Where printing without a dialog goes: into this PDF file, to the default printer if it is empty.
  void set_print_file(const QString& path);

  // --- parts of the face ---
  /// A button as it stands.
  struct ButtonState {
    /// False: the toolbar has no such button, and all else says nothing.
    bool exists = false;
    bool enabled = false, visible = false, pressed = false;
    QString caption, tool_tip;
  };
  /// Of a toolbar, "Toolbar1", "Toolbar2" or "tlbDOM", by the button's key as ToolButtonClick tells it:
  /// "Bold".
  ButtonState button_state(const QString& toolbar, const QString& button) const;
  /// Does what the user's press on it does, ToolButtonClick included. False: the button doesn't answer.
  bool press_button(const QString& toolbar, const QString& button);
  /// A part by its path: "Toolbar1.Buttons(18).Visible", "mnuMiscSource.Enabled", "mnuMiscClass(0).Caption".
  /// Invalid for what is an object or nothing. Throws RuntimeError: 438 for a name that is none.
  QVariant part(const QString& path) const;
  /// Throws RuntimeError: 438 for a name that is none, 383 for what can only be read.
  void set_part(const QString& path, const QVariant& value);
  /// The document by names; nothing before the start.
  Object DOM() const;
  QSize sizeHint() const override { return {900, 640}; }

  // --- for programs that draw their own bars and menus ---
  /// What such a bar can offer.
  enum class Action {
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    PasteText,
    SelectAll,
    Bold,
    Italic,
    Underline,
    Strike,
    Subscript,
    Superscript,
    ClearFormatting,
    Font,
    Paragraph,
    Heading1,
    Heading2,
    Heading3,
    Heading4,
    Heading5,
    Heading6,
    Preformatted,
    Quotation,
    AlignLeft,
    AlignCenter,
    AlignRight,
    Justify,
    Indent,
    Outdent,
    NumberedList,
    BulletedList,
    Link,
    Unlink,
    Image,
    RemoteImage,
    Table,
    Rule,
    Form,
    TextField,
    TextArea,
    FileField,
    HiddenField,
    ImageField,
    CheckBox,
    DropDownList,
    PushButton,
    SubmitButton,
    ResetButton,
    RadioButton,
    RowAbove,
    RowBelow,
    ColumnLeft,
    ColumnRight,
    DeleteRow,
    DeleteColumn,
    MergeCells,
    MergeDown,
    SplitCell,
    HeaderRow,
    SelectRow,
    SelectColumn,
    SelectTable,
    Source,
    Print,
    Spelling,
    ZoomIn,
    ZoomOut,
    ZoomReset
  };
  Q_ENUM(Action)
  /// An operation with its text, icon and keys, which follows the document: enabled where it can act, with
  /// the reason in its tool tip where it can't, and checked where the selection has it. It does what the
  /// button of the editor's own bars does, ToolButtonClick included, and comes after all that was typed
  /// before. The keys act while the focus is in the editor. It is the widget's, and there from the first time
  /// it is asked for.
  QAction* action(Action which);
  /// By its name: "Bold". Null: there is none.
  QAction* action(const QString& name);

  /// How the selection, or the text at the caret, is formatted.
  struct Format {
    /// "p", "h1" to "h6", "pre", "blockquote", or another block's name. Empty: several, or no block at all.
    QString paragraph_style;
    bool several_paragraph_styles = false;
    QString font;              // a list of families as CSS has it; empty: several
    int size = 0;              // 1 to 7; 0: several
    QColor colour, highlight;  // not valid: several, or no highlight
    QString style_class;
    friend bool operator==(const Format&, const Format&) = default;
  };
  Format format() const;
  /// "p", "h1" to "h6", "pre" or "blockquote".
  void set_paragraph_style(const QString& style);
  void set_font(const QString& family);
  /// 1 to 7, of which 3 is that of plain text.
  void set_font_size(int size);
  void set_text_colour(const QColor& colour);
  /// A colour that isn't valid takes the highlight away.
  void set_highlight(const QColor& colour);
  /// The classes of the document's style sheet.
  QStringList style_classes() const;
  /// Gives the selection one of them; an empty name takes it away.
  void set_style_class(const QString& name);
  /// How large the page is shown: 1 as it is, from 0.25 to 5.
  double zoom() const;
  void set_zoom(double factor);
  /// Waits, with the loop running, until what the user has typed so far is in the document.
  void finish_input();

  // --- properties ---
  /// The HTML in the body: set to edit it, read to have what it has become. Reading raises
  /// BeforeGetDocumentHTML.
  QString DocumentHTML() const;
  /// The HTML of the whole document, its head included, as it stands.
  QString allHTML() const;
  /// The text of the body, without markup.
  QString DocumentText() const;
  /// The document's title; every document loaded later gets it.
  QString DocumentTitle() const;
  /// Whether the user has touched the document since it was set.
  bool IsDirty() const;
  /// The address against which the document's addresses are read. An absolute URL.
  QString BaseURL() const;
  /// Whether reading the HTML takes BaseURL off the addresses of links, images and scripts.
  bool relativeURLs() const;
  /// Whether characters outside ASCII leave the control as numeric references.
  bool AlwaysConvertUnicodeCharacters() const;
  /// The style sheet: its address while CSShttp is true, else its text.
  QString CSSText() const;
  /// Whether CSSText is an address.
  bool CSShttp() const;
  /// Whether the document may show a background image; can be set at design time only.
  bool showDocumentBackgroundImage() const;
  /// Whether the document can be edited, or read only.
  bool EditorEnabled() const;
  /// Whether Enter makes a line break, not a paragraph.
  bool useEnterAsBR() const;
  /// Whether the control lives in a host that keeps Enter and the focus for itself.
  bool isAccessContained() const;
  /// Whether short forms that are typed become what they stand for: "- " a list, "1. " a numbered one, "# " a
  /// heading, "> " a quotation, an address a link. Each is an undo step of its own.
  bool AutoFormat() const;
  /// What documents bring in from other machines: nothing (0), images and style sheets (1), nothing until
  /// ShowRemoteContent (2), frames, fonts and media too (3).
  int RemoteContent() const;
  /// Whether the document wants images or style sheets that RemoteContent doesn't let it have.
  bool RemoteContentWithheld() const;
  /// The control's own frame: None (0) or Solid (1).
  EdBorderStyle BorderStyle() const;
  /// Whether the toolbar of form fields shows.
  bool showFormToolbar() const;
  /// Whether the first group of formatting buttons shows.
  bool showFormattingToolbar1() const;
  /// Whether the second group of formatting buttons shows.
  bool showFormattingToolbar2() const;
  /// Whether the bar with the path to the current element shows.
  bool showDOMToolbar() const;
  /// Stored for hosts that know it; nothing reads it.
  bool showCSSDropDown() const;
  /// The keys of the toolbar buttons that don't show. Separated by commas.
  QString HiddenButtons() const;
  /// The keys of the context menu items that don't show. Separated by commas.
  QString HiddenContextMenus() const;
  /// The file that translates the control's texts. A path; the file is XML (docs/localisation.md).
  QString LocalizationFile() const;
  /// The border's style around the current element.
  EdHighLightStyle SelectionBorderStyle() const;
  /// The border's colour around the current element. A CSS colour.
  QString SelectionBorderColor() const;
  /// The border's width around the current element. A number of pixels, or a CSS length.
  QString SelectionBorderWidth() const;
  /// Whether the current element is framed; can be set at design time only.
  bool HighlightDOMSelection() const;
  /// Whether a click in the document frames the element under it.
  bool HighlightDOMSelectionOnClick() const;
  /// Whether an inserted image is uploaded at once.
  bool UploadImages() const;
  /// The folder into which inserted images are copied.
  QString LocalImageStore() const;
  /// The user's own words for the spelling run.
  QString CustomDictionaryFilename() const;
  /// The language of what no element of the document names one for ("de-DE"); empty: the locale's.
  QString SpellingLanguage() const;
  /// Whether wrong words are underlined while the user types.
  bool CheckSpellingAsYouType() const;
  /// The server that files are transferred to and from.
  QString FTPHost() const;
  /// The name for logging in there.
  QString FTPUser() const;
  /// The password there; the property store holds it unenciphered.
  QString FTPPassword() const;
  /// The server's folder to begin in.
  QString FTPInitDir() const;
  /// The address under which uploaded images are seen.
  QString FTPSaveToURL() const;
  /// Whether data connections are passive.
  bool FTPPassive() const;
  /// The server's port.
  int FTPPort() const;
  /// Text (1) or binary (2) transfer.
  ed_FTPTransferType FTPTransferType() const;
  /// The proxy that transfers go through.
  QString FTPProxyServer() const;
  /// The servers that need no proxy.
  QString FTPProxyBypassList() const;
  /// Whether a transfer is under way.
  bool FTPActionInProgress() const;
  /// Whether a transfer shows its progress in a dialog.
  bool ShowFTPDialog() const;
  /// Bytes that are moved between two looks at the message loop; above 1,024 without a rest.
  int FTPBlockSize() const;
  /// The number of the control's window; its temporary files begin with it.
  int hwnd() const;
  /// Whether the source is in front.
  bool InCodeView() const;

 public slots:
  void set_DocumentHTML(const QString& value);
  void set_DocumentTitle(const QString& value);
  void set_BaseURL(const QString& value);
  void set_relativeURLs(bool value);
  void set_AlwaysConvertUnicodeCharacters(bool value);
  void set_CSSText(const QString& value);
  void set_CSShttp(bool value);
  void set_showDocumentBackgroundImage(bool value);
  void set_EditorEnabled(bool value);
  void set_useEnterAsBR(bool value);
  void set_isAccessContained(bool value);
  void set_AutoFormat(bool value);
  void set_RemoteContent(int value);
  void set_BorderStyle(EdBorderStyle value);
  void set_showFormToolbar(bool value);
  void set_showFormattingToolbar1(bool value);
  void set_showFormattingToolbar2(bool value);
  void set_showDOMToolbar(bool value);
  void set_showCSSDropDown(bool value);
  void set_HiddenButtons(const QString& value);
  void set_HiddenContextMenus(const QString& value);
  void set_LocalizationFile(const QString& value);
  void set_SelectionBorderStyle(EdHighLightStyle value);
  void set_SelectionBorderColor(const QString& value);
  void set_SelectionBorderWidth(const QString& value);
  void set_HighlightDOMSelection(bool value);
  void set_HighlightDOMSelectionOnClick(bool value);
  void set_UploadImages(bool value);
  void set_LocalImageStore(const QString& value);
  void set_CustomDictionaryFilename(const QString& value);
  void set_SpellingLanguage(const QString& value);
  void set_CheckSpellingAsYouType(bool value);
  void set_FTPHost(const QString& value);
  void set_FTPUser(const QString& value);
  void set_FTPPassword(const QString& value);
  void set_FTPInitDir(const QString& value);
  void set_FTPSaveToURL(const QString& value);
  void set_FTPPassive(bool value);
  void set_FTPPort(int value);
  void set_FTPTransferType(ed_FTPTransferType value);
  void set_FTPProxyServer(const QString& value);
  void set_FTPProxyBypassList(const QString& value);
  void set_ShowFTPDialog(bool value);
  void set_FTPBlockSize(int value);

  // --- operations ---
  /// Opens a file, or the one that the user chooses if the name is empty; whole or its body only.
  /// Gives its name, "" if the user chose none.
  QString Open_document(const QString& strURL = {}, bool openEntireDoc = false);
  /// Saves to a file, or to the one that the user chooses if the name is empty; whole or body only.
  void Save_document(const QString& strFilename = {}, bool bEntireDocument = false);
  /// Prints, after asking the user or at once.
  void print_Document(bool DontShowDialog = false);
  /// Types a line break (true) or the Return key (false) into the document.
  void sendCR(bool bBR);
  /// Puts the selection, or the word at the caret, between two pieces of HTML.
  void FormatSelection(const QString& OpeningTag, const QString& ClosingTag);
  /// Inserts HTML in place of the selection (0), before it (1) or after it (2).
  void InsertAtCursor(const QString& HTMLText,
                      tvx::qt::HTMLedWidget::ed_InsertType insertWhere = ed_InsertReplaceSelection);
  /// Gives what is selected, or the word at the caret, as HTML or as text.
  /// A null string where it can't be had.
  QString GetCurrentSelection(bool HTMLText);
  /// Selects by character position and gives the HTML of what it selected.
  QString selectText(int SelStartPos, int SelLength);
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
  int FindText(const QString& Text, int Options = 0);
  /// Selects the next hit and gives its number, from 1; 0 where there is none.
  int FindNext();
  /// Selects the hit before and gives its number, from 1; 0 where there is none.
  int FindPrevious();
  /// The number of hits. Its change is told as that of a property.
  int FindCount();
  /// Which hit is selected, from 1; 0 where none is.
  int FindPosition();
  /// The number of hits that may not be edited.
  int FindLocked();
  /// Replaces the selected hit, $1 or ${name} being groups of a regular expression, and selects the next one.
  /// False where no hit is selected or it may not be edited.
  bool ReplaceText(const QString& Replacement);
  /// Replaces all hits that may be edited, as one step of undo, and gives their number.
  int ReplaceAllText(const QString& Replacement);
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
  bool PutFileFTP(const QString& LocalFile, const QString& RemoteFile);
  /// Fetches a file from the server.
  bool GetFileFTP(const QString& LocalFile, const QString& RemoteFile);
  /// Deletes a file on the server.
  bool DeleteFileFTP(const QString& RemoteFile);
  /// Uploads an image, or the one that the user chooses, and inserts it.
  void Insert_Image(const QString& localImagePath = {});
  /// Inserts a local image, or the one that the user chooses.
  void Insert_Image_NoFTP(const QString& localImagePath = {});
  /// Inserts the image at an address.
  void insertImageFromURL(const QString& ImageURL);
  /// Uploads the document's local images and gives their number.
  int UploadAllImages();
  /// The number of local images in the document.
  int CountLocalImages();
  /// Lets the present document have the images and style sheets that it wants from elsewhere.
  void ShowRemoteContent();

 signals:
  // --- the events ---
  /// An operation failed in a way that the host should know.
  void Error(int errNo, const QString& errDesc);
  /// A note about a transfer, or its good end.
  void FTPSuccess(int id, const QString& Message);
  /// A transfer failed.
  void FTPError(int errNo, const QString& errDesc);
  /// A key goes down in the document, before anything acts on it.
  void ASCIIKeyPress(int KeyCode, bool Shift, bool Control);
  /// Bytes of a running transfer.
  void FTPTransferProgress(int CurrentBytes, int TotalBytes);
  /// A spelling run has ended.
  void SpellCheckComplete(bool Cancelled);
  /// A toolbar button is about to act; `cancel` true stops it.
  void ToolButtonClick(const QString& Toolbar, int index, const QString& buttonName, bool& cancel);
  /// An item of a context menu is about to act; `cancel` true stops it.
  void MenuClick(const QString& MenuItem, bool& cancel);
  /// Part of the interface; nothing raises it.
  void BeforeLibraryInsert(const QString& AssetName, bool& cancel);
  /// The view is about to switch; `cancel` true stops it.
  void BeforeCodeViewChange(bool CurrentlyWYSIWYG, bool& cancel);
  /// A spelling run deals with a word.
  void SpellCheckWord(bool& Cancelled, const QString& oldWord, QString& newWord, bool& AddThisWord);
  /// The connection of a one-file upload stands.
  void BeginImageUpload();
  /// A one-file upload has ended.
  void EndImageUpload();
  /// `DocumentHTML` is being read; what is written here is what the reader gets.
  void BeforeGetDocumentHTML(QString& CurrentDocumentHTML);
  /// A click in the document; the element may be nothing.
  void DocumentClick(const tvx::Object& CurrentElement);
  /// Something other than the control wants to navigate. `CancelNavigate` is true on entry.
  void BeforeNavigate(const QString& TheURL, const QString& TheFrameName, bool& CancelNavigate);

  /// A property that a container would save has another value, or may have: the user has touched the
  /// document.
  void property_changed(const QString& key);
  /// The editor shows another document: one was opened, or all of its HTML was set.
  void document_replaced();
  /// For bars of the program's own; each at most once a turn of the loop, and looked for only while somebody
  /// listens. The caret or the selection is somewhere else.
  void selectionChanged();
  /// format() has another answer.
  void formatChanged();
  /// IsDirty has another answer.
  void modificationChanged(bool modified);
  /// A document has come with all that it brings.
  void documentLoaded();
  void zoomChanged(double factor);
  /// Whether the document that print_Document was asked for has gone to the printer, or into its file.
  void print_finished(bool done);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 public:
  // --- for code of this library; no public header says what these are ---
  /// With others in the desktop's place, who outlive the widget.
  HTMLedWidget(platform::MessageLoop& loop, QWidget* parent, const Substitutes& substitutes);
  core::HTMLed& control() const;
  browser::DocumentView& document_view();
  WebView& view() const;

 private:
  friend class HostBars;
  class Parts;
  HostBars& host_bars() const;
  platform::MessageLoop& message_loop() const;
  void begin(std::shared_ptr<Parts> parts);
  static void bury(std::shared_ptr<Parts> parts, QWidget* remains, int milliseconds);
  void focus_moved(QWidget* from, QWidget* to);
  bool holds(const QWidget* widget) const;

  // Members by their names (htmled_widget_members.cpp).
  QString text(std::u16string_view name) const;
  bool flag(std::u16string_view name) const;
  int number(std::u16string_view name) const;
  void put(std::u16string_view name, const library::Value& value);
  library::Value call(std::u16string_view name, std::vector<library::Value> arguments = {});

  std::shared_ptr<Parts> parts_;
};

}  // namespace tvx::qt
