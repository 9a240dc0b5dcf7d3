#include <QLoggingCategory>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/buttons.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/object_path.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/toolbar.h"
#include "tvx/qt/support/strings.h"

/// The widget's properties and operations: each is the member of the table with that name.
namespace tvx::qt {
namespace {

using library::Value;
using library::Values;

Q_LOGGING_CATEGORY(category, "tvx.htmled")

/// No exception crosses a property or a slot: what called it may be Qt itself.
template <class Act>
void or_warn(std::u16string_view name, Act&& act) {
  try {
    act();
  } catch (const RuntimeError& error) {
    qCWarning(category).noquote() << to_qt(name) + QStringLiteral(":") << to_qt(error.text())
                                  << QStringLiteral("(%1)").arg(error.number());
  }
}

Value value_of(const QString& text) { return from_qt(text); }

/// An optional argument that isn't given.
Values optional(const QString& text) { return text.isNull() ? Values() : Values{value_of(text)}; }

bool flag_of(const Value& value) { return !value.is_null() && value.to_boolean(); }
int number_of(const Value& value) { return value.is_null() ? 0 : value.to_integer32(); }
QString text_of(const Value& value) { return value.is_null() ? QString() : to_qt(value.to_text()); }

}  // namespace

// --- parts of the face ---

namespace {

struct ToVariant {
  QVariant operator()(bool flag) const { return flag; }
  QVariant operator()(std::int32_t number) const { return number; }
  QVariant operator()(std::int64_t number) const { return qlonglong(number); }
  QVariant operator()(double number) const { return number; }
  QVariant operator()(const std::u16string& text) const { return to_qt(text); }
  template <class Other>
  QVariant operator()(const Other&) const {
    return {};
  }
};

Value value_of_variant(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool();
    case QMetaType::Int: return std::int32_t{value.toInt()};
    case QMetaType::Double: return value.toDouble();
    default: return from_qt(value.toString());
  }
}

}  // namespace

QVariant HTMLedWidget::part(const QString& path) const {
  std::vector<library::PathStep> steps = library::parse_path(from_qt(path));
  return std::visit(ToVariant{}, library::read_path(*library::face_of(control()), steps).data());
}

void HTMLedWidget::set_part(const QString& path, const QVariant& value) {
  std::vector<library::PathStep> steps = library::parse_path(from_qt(path));
  library::write_path(*library::face_of(control()), steps, value_of_variant(value));
}

Object HTMLedWidget::DOM() const { return Object(library::document_object(control().DOM()).to_object()); }

HTMLedWidget::ButtonState HTMLedWidget::button_state(const QString& toolbar, const QString& button) const {
  const platform::Button* found = library::find_button(control(), from_qt(toolbar), from_qt(button));
  if (!found) return {};
  return {true,
          found->Enabled(),
          found->Visible(),
          found->Value() == 1,
          to_qt(found->Caption()),
          to_qt(found->ToolTipText())};
}

bool HTMLedWidget::press_button(const QString& toolbar, const QString& button) {
  return library::press_button(control(), from_qt(toolbar), from_qt(button));
}

QString HTMLedWidget::text(std::u16string_view name) const {
  return to_qt(library::get_property(control(), name).to_text());
}
bool HTMLedWidget::flag(std::u16string_view name) const {
  return library::get_property(control(), name).to_boolean();
}
int HTMLedWidget::number(std::u16string_view name) const {
  return library::get_property(control(), name).to_integer32();
}

void HTMLedWidget::put(std::u16string_view name, const Value& value) {
  or_warn(name, [&] { library::set_property(control(), name, value); });
}

Value HTMLedWidget::call(std::u16string_view name, Values arguments) {
  Value result;
  or_warn(name, [&] { result = library::call_method(control(), name, arguments); });
  return result;
}

// --- properties ---

QString HTMLedWidget::DocumentHTML() const { return text(u"DocumentHTML"); }
void HTMLedWidget::set_DocumentHTML(const QString& value) { put(u"DocumentHTML", from_qt(value)); }
QString HTMLedWidget::allHTML() const { return text(u"allHTML"); }
QString HTMLedWidget::DocumentText() const { return text(u"DocumentText"); }
QString HTMLedWidget::DocumentTitle() const { return text(u"DocumentTitle"); }
void HTMLedWidget::set_DocumentTitle(const QString& value) { put(u"DocumentTitle", from_qt(value)); }
bool HTMLedWidget::IsDirty() const { return flag(u"IsDirty"); }
QString HTMLedWidget::BaseURL() const { return text(u"BaseURL"); }
void HTMLedWidget::set_BaseURL(const QString& value) { put(u"BaseURL", from_qt(value)); }
bool HTMLedWidget::relativeURLs() const { return flag(u"relativeURLs"); }
void HTMLedWidget::set_relativeURLs(bool value) { put(u"relativeURLs", value); }
bool HTMLedWidget::AlwaysConvertUnicodeCharacters() const { return flag(u"AlwaysConvertUnicodeCharacters"); }
void HTMLedWidget::set_AlwaysConvertUnicodeCharacters(bool value) {
  put(u"AlwaysConvertUnicodeCharacters", value);
}
QString HTMLedWidget::CSSText() const { return text(u"CSSText"); }
void HTMLedWidget::set_CSSText(const QString& value) { put(u"CSSText", from_qt(value)); }
bool HTMLedWidget::CSShttp() const { return flag(u"CSShttp"); }
void HTMLedWidget::set_CSShttp(bool value) { put(u"CSShttp", value); }
bool HTMLedWidget::showDocumentBackgroundImage() const { return flag(u"showDocumentBackgroundImage"); }
void HTMLedWidget::set_showDocumentBackgroundImage(bool value) { put(u"showDocumentBackgroundImage", value); }
bool HTMLedWidget::EditorEnabled() const { return flag(u"EditorEnabled"); }
void HTMLedWidget::set_EditorEnabled(bool value) { put(u"EditorEnabled", value); }
bool HTMLedWidget::useEnterAsBR() const { return flag(u"useEnterAsBR"); }
void HTMLedWidget::set_useEnterAsBR(bool value) { put(u"useEnterAsBR", value); }
bool HTMLedWidget::isAccessContained() const { return flag(u"isAccessContained"); }
void HTMLedWidget::set_isAccessContained(bool value) { put(u"isAccessContained", value); }
bool HTMLedWidget::AutoFormat() const { return flag(u"AutoFormat"); }
void HTMLedWidget::set_AutoFormat(bool value) { put(u"AutoFormat", value); }
int HTMLedWidget::RemoteContent() const { return number(u"RemoteContent"); }
void HTMLedWidget::set_RemoteContent(int value) { put(u"RemoteContent", value); }
bool HTMLedWidget::RemoteContentWithheld() const { return flag(u"RemoteContentWithheld"); }
HTMLedWidget::EdBorderStyle HTMLedWidget::BorderStyle() const {
  return EdBorderStyle(number(u"BorderStyle"));
}
void HTMLedWidget::set_BorderStyle(EdBorderStyle value) { put(u"BorderStyle", int(value)); }
bool HTMLedWidget::showFormToolbar() const { return flag(u"showFormToolbar"); }
void HTMLedWidget::set_showFormToolbar(bool value) { put(u"showFormToolbar", value); }
bool HTMLedWidget::showFormattingToolbar1() const { return flag(u"showFormattingToolbar1"); }
void HTMLedWidget::set_showFormattingToolbar1(bool value) { put(u"showFormattingToolbar1", value); }
bool HTMLedWidget::showFormattingToolbar2() const { return flag(u"showFormattingToolbar2"); }
void HTMLedWidget::set_showFormattingToolbar2(bool value) { put(u"showFormattingToolbar2", value); }
bool HTMLedWidget::showDOMToolbar() const { return flag(u"showDOMToolbar"); }
void HTMLedWidget::set_showDOMToolbar(bool value) { put(u"showDOMToolbar", value); }
bool HTMLedWidget::showCSSDropDown() const { return flag(u"showCSSDropDown"); }
void HTMLedWidget::set_showCSSDropDown(bool value) { put(u"showCSSDropDown", value); }
QString HTMLedWidget::HiddenButtons() const { return text(u"HiddenButtons"); }
void HTMLedWidget::set_HiddenButtons(const QString& value) { put(u"HiddenButtons", from_qt(value)); }
QString HTMLedWidget::HiddenContextMenus() const { return text(u"HiddenContextMenus"); }
void HTMLedWidget::set_HiddenContextMenus(const QString& value) {
  put(u"HiddenContextMenus", from_qt(value));
}
QString HTMLedWidget::LocalizationFile() const { return text(u"LocalizationFile"); }
void HTMLedWidget::set_LocalizationFile(const QString& value) { put(u"LocalizationFile", from_qt(value)); }
HTMLedWidget::EdHighLightStyle HTMLedWidget::SelectionBorderStyle() const {
  return EdHighLightStyle(number(u"SelectionBorderStyle"));
}
void HTMLedWidget::set_SelectionBorderStyle(EdHighLightStyle value) {
  put(u"SelectionBorderStyle", int(value));
}
QString HTMLedWidget::SelectionBorderColor() const { return text(u"SelectionBorderColor"); }
void HTMLedWidget::set_SelectionBorderColor(const QString& value) {
  put(u"SelectionBorderColor", from_qt(value));
}
QString HTMLedWidget::SelectionBorderWidth() const { return text(u"SelectionBorderWidth"); }
void HTMLedWidget::set_SelectionBorderWidth(const QString& value) {
  put(u"SelectionBorderWidth", from_qt(value));
}
bool HTMLedWidget::HighlightDOMSelection() const { return flag(u"HighlightDOMSelection"); }
void HTMLedWidget::set_HighlightDOMSelection(bool value) { put(u"HighlightDOMSelection", value); }
bool HTMLedWidget::HighlightDOMSelectionOnClick() const { return flag(u"HighlightDOMSelectionOnClick"); }
void HTMLedWidget::set_HighlightDOMSelectionOnClick(bool value) {
  put(u"HighlightDOMSelectionOnClick", value);
}
bool HTMLedWidget::UploadImages() const { return flag(u"UploadImages"); }
void HTMLedWidget::set_UploadImages(bool value) { put(u"UploadImages", value); }
QString HTMLedWidget::LocalImageStore() const { return text(u"LocalImageStore"); }
void HTMLedWidget::set_LocalImageStore(const QString& value) { put(u"LocalImageStore", from_qt(value)); }
QString HTMLedWidget::CustomDictionaryFilename() const { return text(u"CustomDictionaryFilename"); }
void HTMLedWidget::set_CustomDictionaryFilename(const QString& value) {
  put(u"CustomDictionaryFilename", from_qt(value));
}
QString HTMLedWidget::SpellingLanguage() const { return text(u"SpellingLanguage"); }
void HTMLedWidget::set_SpellingLanguage(const QString& value) { put(u"SpellingLanguage", from_qt(value)); }
bool HTMLedWidget::CheckSpellingAsYouType() const { return flag(u"CheckSpellingAsYouType"); }
void HTMLedWidget::set_CheckSpellingAsYouType(bool value) { put(u"CheckSpellingAsYouType", value); }
QString HTMLedWidget::FTPHost() const { return text(u"FTPHost"); }
void HTMLedWidget::set_FTPHost(const QString& value) { put(u"FTPHost", from_qt(value)); }
QString HTMLedWidget::FTPUser() const { return text(u"FTPUser"); }
void HTMLedWidget::set_FTPUser(const QString& value) { put(u"FTPUser", from_qt(value)); }
QString HTMLedWidget::FTPPassword() const { return text(u"FTPPassword"); }
void HTMLedWidget::set_FTPPassword(const QString& value) { put(u"FTPPassword", from_qt(value)); }
QString HTMLedWidget::FTPInitDir() const { return text(u"FTPInitDir"); }
void HTMLedWidget::set_FTPInitDir(const QString& value) { put(u"FTPInitDir", from_qt(value)); }
QString HTMLedWidget::FTPSaveToURL() const { return text(u"FTPSaveToURL"); }
void HTMLedWidget::set_FTPSaveToURL(const QString& value) { put(u"FTPSaveToURL", from_qt(value)); }
bool HTMLedWidget::FTPPassive() const { return flag(u"FTPPassive"); }
void HTMLedWidget::set_FTPPassive(bool value) { put(u"FTPPassive", value); }
int HTMLedWidget::FTPPort() const { return number(u"FTPPort"); }
void HTMLedWidget::set_FTPPort(int value) { put(u"FTPPort", value); }
HTMLedWidget::ed_FTPTransferType HTMLedWidget::FTPTransferType() const {
  return ed_FTPTransferType(number(u"FTPTransferType"));
}
void HTMLedWidget::set_FTPTransferType(ed_FTPTransferType value) { put(u"FTPTransferType", int(value)); }
QString HTMLedWidget::FTPProxyServer() const { return text(u"FTPProxyServer"); }
void HTMLedWidget::set_FTPProxyServer(const QString& value) { put(u"FTPProxyServer", from_qt(value)); }
QString HTMLedWidget::FTPProxyBypassList() const { return text(u"FTPProxyBypassList"); }
void HTMLedWidget::set_FTPProxyBypassList(const QString& value) {
  put(u"FTPProxyBypassList", from_qt(value));
}
bool HTMLedWidget::FTPActionInProgress() const { return flag(u"FTPActionInProgress"); }
bool HTMLedWidget::ShowFTPDialog() const { return flag(u"ShowFTPDialog"); }
void HTMLedWidget::set_ShowFTPDialog(bool value) { put(u"ShowFTPDialog", value); }
int HTMLedWidget::FTPBlockSize() const { return number(u"FTPBlockSize"); }
void HTMLedWidget::set_FTPBlockSize(int value) { put(u"FTPBlockSize", value); }
int HTMLedWidget::hwnd() const { return number(u"hwnd"); }

// --- operations ---

QString HTMLedWidget::Open_document(const QString& strURL, bool openEntireDoc) {
  Values arguments{value_of(strURL), openEntireDoc};
  or_warn(u"Open_document", [&] { library::call_method(control(), u"Open_document", arguments); });
  return text_of(arguments[0]);
}

void HTMLedWidget::Save_document(const QString& strFilename, bool bEntireDocument) {
  call(u"Save_document", {value_of(strFilename), bEntireDocument});
}

bool HTMLedWidget::InCodeView() const { return control().InCodeView(); }
void HTMLedWidget::print_Document(bool DontShowDialog) { call(u"print_Document", {DontShowDialog}); }
void HTMLedWidget::sendCR(bool bBR) { call(u"sendCR", {bBR}); }

void HTMLedWidget::FormatSelection(const QString& OpeningTag, const QString& ClosingTag) {
  call(u"FormatSelection", {value_of(OpeningTag), value_of(ClosingTag)});
}

void HTMLedWidget::InsertAtCursor(const QString& HTMLText, ed_InsertType insertWhere) {
  call(u"InsertAtCursor", {value_of(HTMLText), int(insertWhere)});
}

QString HTMLedWidget::GetCurrentSelection(bool HTMLText) {
  return text_of(call(u"GetCurrentSelection", {HTMLText}));
}

QString HTMLedWidget::selectText(int SelStartPos, int SelLength) {
  return text_of(call(u"selectText", {SelStartPos, SelLength}));
}

void HTMLedWidget::RevertToOriginal() { call(u"RevertToOriginal"); }
void HTMLedWidget::CleanUp() { call(u"CleanUp"); }
void HTMLedWidget::scrollToTop() { call(u"scrollToTop"); }
void HTMLedWidget::scrollToBottom() { call(u"scrollToBottom"); }
void HTMLedWidget::show_Code() { call(u"show_Code"); }
int HTMLedWidget::FindText(const QString& Text, int Options) {
  return number_of(call(u"FindText", {value_of(Text), Options}));
}
int HTMLedWidget::FindNext() { return number_of(call(u"FindNext")); }
int HTMLedWidget::FindPrevious() { return number_of(call(u"FindPrevious")); }
int HTMLedWidget::FindCount() { return number_of(call(u"FindCount")); }
int HTMLedWidget::FindPosition() { return number_of(call(u"FindPosition")); }
int HTMLedWidget::FindLocked() { return number_of(call(u"FindLocked")); }
bool HTMLedWidget::ReplaceText(const QString& Replacement) {
  return flag_of(call(u"ReplaceText", {value_of(Replacement)}));
}
int HTMLedWidget::ReplaceAllText(const QString& Replacement) {
  return number_of(call(u"ReplaceAllText", {value_of(Replacement)}));
}
void HTMLedWidget::FindEnd() { call(u"FindEnd"); }
void HTMLedWidget::bold_document() { call(u"bold_document"); }
void HTMLedWidget::italic_document() { call(u"italic_document"); }
void HTMLedWidget::underline_document() { call(u"underline_document"); }
void HTMLedWidget::strike_document() { call(u"strike_document"); }
void HTMLedWidget::indent_document() { call(u"indent_document"); }
void HTMLedWidget::unindent_document() { call(u"unindent_document"); }
void HTMLedWidget::Left_Justify() { call(u"Left_Justify"); }
void HTMLedWidget::Center_justify() { call(u"Center_justify"); }
void HTMLedWidget::Right_justify() { call(u"Right_justify"); }
void HTMLedWidget::numbered_list() { call(u"numbered_list"); }
void HTMLedWidget::unnumbered_list() { call(u"unnumbered_list"); }
void HTMLedWidget::undo_document() { call(u"undo_document"); }
void HTMLedWidget::redo_document() { call(u"redo_document"); }
void HTMLedWidget::insert_HR() { call(u"insert_HR"); }
void HTMLedWidget::insert_Link() { call(u"insert_Link"); }
void HTMLedWidget::change_Font() { call(u"change_Font"); }
void HTMLedWidget::Table_Document() { call(u"Table_Document"); }
void HTMLedWidget::insert_Form() { call(u"insert_Form"); }
void HTMLedWidget::cut_document() { call(u"cut_document"); }
void HTMLedWidget::copy_document() { call(u"copy_document"); }
void HTMLedWidget::paste_document() { call(u"paste_document"); }
void HTMLedWidget::FTPCancelTransfer() { call(u"FTPCancelTransfer"); }
void HTMLedWidget::SpellCheck() { call(u"SpellCheck"); }
void HTMLedWidget::SpellingCancel() { call(u"SpellingCancel"); }

bool HTMLedWidget::PutFileFTP(const QString& LocalFile, const QString& RemoteFile) {
  return flag_of(call(u"PutFileFTP", {value_of(LocalFile), value_of(RemoteFile)}));
}
bool HTMLedWidget::GetFileFTP(const QString& LocalFile, const QString& RemoteFile) {
  return flag_of(call(u"GetFileFTP", {value_of(LocalFile), value_of(RemoteFile)}));
}
bool HTMLedWidget::DeleteFileFTP(const QString& RemoteFile) {
  return flag_of(call(u"DeleteFileFTP", {value_of(RemoteFile)}));
}
void HTMLedWidget::Insert_Image(const QString& localImagePath) {
  call(u"Insert_Image", optional(localImagePath));
}
void HTMLedWidget::Insert_Image_NoFTP(const QString& localImagePath) {
  call(u"Insert_Image_NoFTP", optional(localImagePath));
}
void HTMLedWidget::insertImageFromURL(const QString& ImageURL) {
  call(u"insertImageFromURL", {value_of(ImageURL)});
}
int HTMLedWidget::UploadAllImages() { return number_of(call(u"UploadAllImages")); }
int HTMLedWidget::CountLocalImages() { return number_of(call(u"CountLocalImages")); }
void HTMLedWidget::ShowRemoteContent() { call(u"ShowRemoteContent"); }

}  // namespace tvx::qt
