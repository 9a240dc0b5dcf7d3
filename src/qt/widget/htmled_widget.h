#pragma once

#include <QVariant>
#include <QWidget>
#include <memory>
#include <string_view>
#include <vector>

#include "tvx/core/enumerations.h"

namespace tvx::core {
class HTMLed;
}
namespace tvx::browser {
class DocumentView;
}
namespace tvx::dom {
class Element;
}
namespace tvx::library {
class Value;
}
namespace tvx::platform {
class Clipboard;
class CommonDialogs;
class MessageLoop;
class Forms;
class PopupMenus;
class PropertyBag;
}  // namespace tvx::platform

Q_DECLARE_OPAQUE_POINTER(tvx::dom::Element*)

namespace tvx::qt {

class WebView;

/// Who takes the desktop's place, for programs that drive the editor: null is the desktop's own. All outlive
/// the widget.
struct Substitutes {
  platform::CommonDialogs* dialogs = nullptr;
  platform::PopupMenus* popups = nullptr;
  platform::Forms* forms = nullptr;
  platform::Clipboard* clipboard = nullptr;
};

/// The visual HTML editor as one widget: toolbars, the view, the source. Put it into a window, show it, and
/// give it HTML.
///
/// Properties, operations and events have the names that docs/reference.md lists. Properties that are set
/// before the first show are what the editor starts with. What can't be done (a property that is read-only by
/// then, an operation that this build doesn't have) leaves a warning in Qt's log; who wants it as an
/// exception with its number asks control(). Events are signals whose references the host may write to:
/// `cancel = true` in ToolButtonClick stops the button. They must be connected directly, which is what
/// connect() does within a thread.
class HTMLedWidget final : public QWidget {
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
  explicit HTMLedWidget(platform::MessageLoop& loop, QWidget* parent = nullptr,
                        const Substitutes& substitutes = {});
  /// Also within an event of its own.
  ~HTMLedWidget() override;

  /// For a form designer: the widget then shows what it is, and never starts. Before the first show.
  void set_design_mode(bool on);
  /// Starts the editor, unless it has been started; the first show does. Waits, with the loop running, until
  /// there is a document.
  void start();
  bool started() const;
  /// The properties, from a store and into one (qt/settings_store.h is one over QSettings). Reading is for
  /// before the start.
  void read_properties(const platform::PropertyBag& store);
  void write_properties(platform::PropertyBag& store) const;

  /// Where printing without a dialog goes: into this PDF file, to the default printer if it is empty.
  void set_print_file(const QString& path);

  core::HTMLed& control() const;
  browser::DocumentView& document_view();
  /// A part of the face by its path: "Toolbar1.Buttons(18).Visible", "mnuMiscSource.Enabled",
  /// "mnuMiscClass(0).Caption". Invalid for what is an object or nothing. Throws RuntimeError(438) for a name
  /// that is none.
  QVariant part(const QString& path) const;
  void set_part(const QString& path, const QVariant& value);
  WebView& view();
  QSize sizeHint() const override { return {900, 640}; }

  // --- properties ---
  QString DocumentHTML() const;
  QString allHTML() const;
  QString DocumentText() const;
  QString DocumentTitle() const;
  bool IsDirty() const;
  QString BaseURL() const;
  bool relativeURLs() const;
  bool AlwaysConvertUnicodeCharacters() const;
  QString CSSText() const;
  bool CSShttp() const;
  bool showDocumentBackgroundImage() const;
  bool EditorEnabled() const;
  bool useEnterAsBR() const;
  bool isAccessContained() const;
  EdBorderStyle BorderStyle() const;
  bool showFormToolbar() const;
  bool showFormattingToolbar1() const;
  bool showFormattingToolbar2() const;
  bool showDOMToolbar() const;
  bool showCSSDropDown() const;
  QString HiddenButtons() const;
  QString HiddenContextMenus() const;
  QString LocalizationFile() const;
  EdHighLightStyle SelectionBorderStyle() const;
  QString SelectionBorderColor() const;
  QString SelectionBorderWidth() const;
  bool HighlightDOMSelection() const;
  bool HighlightDOMSelectionOnClick() const;
  bool UploadImages() const;
  QString LocalImageStore() const;
  QString CustomDictionaryFilename() const;
  QString FTPHost() const;
  QString FTPUser() const;
  QString FTPPassword() const;
  QString FTPInitDir() const;
  QString FTPSaveToURL() const;
  bool FTPPassive() const;
  int FTPPort() const;
  ed_FTPTransferType FTPTransferType() const;
  QString FTPProxyServer() const;
  QString FTPProxyBypassList() const;
  bool FTPActionInProgress() const;
  bool ShowFTPDialog() const;
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

  // --- operations ---
  /// Opens a file, or the one that the user chooses if the name is empty; gives its name, "" if the user
  /// chose none.
  QString Open_document(const QString& strURL = {}, bool openEntireDoc = false);
  void Save_document(const QString& strFilename = {}, bool bEntireDocument = false);
  void print_Document(bool DontShowDialog = false);
  void sendCR(bool bBR);
  void FormatSelection(const QString& OpeningTag, const QString& ClosingTag);
  void InsertAtCursor(const QString& HTMLText,
                      tvx::qt::HTMLedWidget::ed_InsertType insertWhere = ed_InsertReplaceSelection);
  /// A null string where it can't be had.
  QString GetCurrentSelection(bool HTMLText);
  QString selectText(int SelStartPos, int SelLength);
  void RevertToOriginal();
  void CleanUp();
  void scrollToTop();
  void scrollToBottom();
  void show_Code();
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
  void insert_HR();
  void insert_Link();
  void change_Font();
  void Table_Document();
  void insert_Form();
  void cut_document();
  void copy_document();
  void paste_document();
  void FTPCancelTransfer();
  void SpellCheck();
  void SpellingCancel();
  bool PutFileFTP(const QString& LocalFile, const QString& RemoteFile);
  bool GetFileFTP(const QString& LocalFile, const QString& RemoteFile);
  bool DeleteFileFTP(const QString& RemoteFile);
  void Insert_Image(const QString& localImagePath = {});
  void Insert_Image_NoFTP(const QString& localImagePath = {});
  void insertImageFromURL(const QString& ImageURL);
  int UploadAllImages();
  int CountLocalImages();

 signals:
  // --- the events ---
  void Error(int errNo, const QString& errDesc);
  void FTPSuccess(int id, const QString& Message);
  void FTPError(int errNo, const QString& errDesc);
  void ASCIIKeyPress(int KeyCode, bool Shift, bool Control);
  void FTPTransferProgress(int CurrentBytes, int TotalBytes);
  void SpellCheckComplete(bool Cancelled);
  void ToolButtonClick(const QString& Toolbar, int index, const QString& buttonName, bool& cancel);
  void MenuClick(const QString& MenuItem, bool& cancel);
  void BeforeLibraryInsert(const QString& AssetName, bool& cancel);
  void BeforeCodeViewChange(bool CurrentlyWYSIWYG, bool& cancel);
  void SpellCheckWord(bool& Cancelled, const QString& oldWord, QString& newWord, bool& AddThisWord);
  void BeginImageUpload();
  void EndImageUpload();
  void BeforeGetDocumentHTML(QString& CurrentDocumentHTML);
  /// Null: the click met nothing.
  void DocumentClick(tvx::dom::Element* CurrentElement);
  void BeforeNavigate(const QString& TheURL, const QString& TheFrameName, bool& CancelNavigate);

  /// A property that a container would save has another value, or may have: the user has touched the
  /// document.
  void property_changed(const QString& key);
  void document_replaced();
  /// Whether the document that print_Document was asked for has gone to the printer, or into its file.
  void print_finished(bool done);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  class Parts;
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
