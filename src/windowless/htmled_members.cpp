#include "tvx/core/htmled.h"
#include "tvx/htmled.h"
#include "tvx/library/members/dispatch.h"

/// Properties and operations: each is the member of the table with that name.
namespace tvx {

using library::Values;

namespace {

/// An argument that needn't be given.
Values optional(std::u16string_view text) { return text.empty() ? Values() : Values{library::Value(text)}; }

}  // namespace

std::u16string HTMLed::text(std::u16string_view name) const {
  return library::get_property(control(), name).to_text();
}
bool HTMLed::flag(std::u16string_view name) const {
  return library::get_property(control(), name).to_boolean();
}
std::int32_t HTMLed::number(std::u16string_view name) const {
  return library::get_property(control(), name).to_integer32();
}
void HTMLed::put(std::u16string_view name, const library::Value& value) {
  library::set_property(control(), name, value);
}
library::Value HTMLed::call(std::u16string_view name, Values arguments) {
  return library::call_method(control(), name, arguments);
}

// --- properties ---

std::u16string HTMLed::DocumentHTML() const { return text(u"DocumentHTML"); }
void HTMLed::set_DocumentHTML(std::u16string_view value) { put(u"DocumentHTML", value); }
std::u16string HTMLed::allHTML() const { return text(u"allHTML"); }
std::u16string HTMLed::DocumentText() const { return text(u"DocumentText"); }
std::u16string HTMLed::DocumentTitle() const { return text(u"DocumentTitle"); }
void HTMLed::set_DocumentTitle(std::u16string_view value) { put(u"DocumentTitle", value); }
bool HTMLed::IsDirty() const { return flag(u"IsDirty"); }
std::u16string HTMLed::BaseURL() const { return text(u"BaseURL"); }
void HTMLed::set_BaseURL(std::u16string_view value) { put(u"BaseURL", value); }
bool HTMLed::relativeURLs() const { return flag(u"relativeURLs"); }
void HTMLed::set_relativeURLs(bool value) { put(u"relativeURLs", value); }
bool HTMLed::AlwaysConvertUnicodeCharacters() const { return flag(u"AlwaysConvertUnicodeCharacters"); }
void HTMLed::set_AlwaysConvertUnicodeCharacters(bool value) { put(u"AlwaysConvertUnicodeCharacters", value); }
std::u16string HTMLed::CSSText() const { return text(u"CSSText"); }
void HTMLed::set_CSSText(std::u16string_view value) { put(u"CSSText", value); }
bool HTMLed::CSShttp() const { return flag(u"CSShttp"); }
void HTMLed::set_CSShttp(bool value) { put(u"CSShttp", value); }
bool HTMLed::showDocumentBackgroundImage() const { return flag(u"showDocumentBackgroundImage"); }
void HTMLed::set_showDocumentBackgroundImage(bool value) { put(u"showDocumentBackgroundImage", value); }
bool HTMLed::EditorEnabled() const { return flag(u"EditorEnabled"); }
void HTMLed::set_EditorEnabled(bool value) { put(u"EditorEnabled", value); }
bool HTMLed::useEnterAsBR() const { return flag(u"useEnterAsBR"); }
void HTMLed::set_useEnterAsBR(bool value) { put(u"useEnterAsBR", value); }
bool HTMLed::isAccessContained() const { return flag(u"isAccessContained"); }
void HTMLed::set_isAccessContained(bool value) { put(u"isAccessContained", value); }
bool HTMLed::AutoFormat() const { return flag(u"AutoFormat"); }
void HTMLed::set_AutoFormat(bool value) { put(u"AutoFormat", value); }
std::int32_t HTMLed::RemoteContent() const { return number(u"RemoteContent"); }
void HTMLed::set_RemoteContent(std::int32_t value) { put(u"RemoteContent", value); }
bool HTMLed::RemoteContentWithheld() const { return flag(u"RemoteContentWithheld"); }
EdBorderStyle HTMLed::BorderStyle() const { return EdBorderStyle(number(u"BorderStyle")); }
void HTMLed::set_BorderStyle(EdBorderStyle value) { put(u"BorderStyle", std::int32_t(value)); }
bool HTMLed::showFormToolbar() const { return flag(u"showFormToolbar"); }
void HTMLed::set_showFormToolbar(bool value) { put(u"showFormToolbar", value); }
bool HTMLed::showFormattingToolbar1() const { return flag(u"showFormattingToolbar1"); }
void HTMLed::set_showFormattingToolbar1(bool value) { put(u"showFormattingToolbar1", value); }
bool HTMLed::showFormattingToolbar2() const { return flag(u"showFormattingToolbar2"); }
void HTMLed::set_showFormattingToolbar2(bool value) { put(u"showFormattingToolbar2", value); }
bool HTMLed::showDOMToolbar() const { return flag(u"showDOMToolbar"); }
void HTMLed::set_showDOMToolbar(bool value) { put(u"showDOMToolbar", value); }
bool HTMLed::showCSSDropDown() const { return flag(u"showCSSDropDown"); }
void HTMLed::set_showCSSDropDown(bool value) { put(u"showCSSDropDown", value); }
std::u16string HTMLed::HiddenButtons() const { return text(u"HiddenButtons"); }
void HTMLed::set_HiddenButtons(std::u16string_view value) { put(u"HiddenButtons", value); }
std::u16string HTMLed::HiddenContextMenus() const { return text(u"HiddenContextMenus"); }
void HTMLed::set_HiddenContextMenus(std::u16string_view value) { put(u"HiddenContextMenus", value); }
std::u16string HTMLed::LocalizationFile() const { return text(u"LocalizationFile"); }
void HTMLed::set_LocalizationFile(std::u16string_view value) { put(u"LocalizationFile", value); }
EdHighLightStyle HTMLed::SelectionBorderStyle() const {
  return EdHighLightStyle(number(u"SelectionBorderStyle"));
}
void HTMLed::set_SelectionBorderStyle(EdHighLightStyle value) {
  put(u"SelectionBorderStyle", std::int32_t(value));
}
std::u16string HTMLed::SelectionBorderColor() const { return text(u"SelectionBorderColor"); }
void HTMLed::set_SelectionBorderColor(std::u16string_view value) { put(u"SelectionBorderColor", value); }
std::u16string HTMLed::SelectionBorderWidth() const { return text(u"SelectionBorderWidth"); }
void HTMLed::set_SelectionBorderWidth(std::u16string_view value) { put(u"SelectionBorderWidth", value); }
bool HTMLed::HighlightDOMSelection() const { return flag(u"HighlightDOMSelection"); }
void HTMLed::set_HighlightDOMSelection(bool value) { put(u"HighlightDOMSelection", value); }
bool HTMLed::HighlightDOMSelectionOnClick() const { return flag(u"HighlightDOMSelectionOnClick"); }
void HTMLed::set_HighlightDOMSelectionOnClick(bool value) { put(u"HighlightDOMSelectionOnClick", value); }
bool HTMLed::UploadImages() const { return flag(u"UploadImages"); }
void HTMLed::set_UploadImages(bool value) { put(u"UploadImages", value); }
std::u16string HTMLed::LocalImageStore() const { return text(u"LocalImageStore"); }
void HTMLed::set_LocalImageStore(std::u16string_view value) { put(u"LocalImageStore", value); }
std::u16string HTMLed::CustomDictionaryFilename() const { return text(u"CustomDictionaryFilename"); }
void HTMLed::set_CustomDictionaryFilename(std::u16string_view value) {
  put(u"CustomDictionaryFilename", value);
}
std::u16string HTMLed::SpellingLanguage() const { return text(u"SpellingLanguage"); }
void HTMLed::set_SpellingLanguage(std::u16string_view value) { put(u"SpellingLanguage", value); }
bool HTMLed::CheckSpellingAsYouType() const { return flag(u"CheckSpellingAsYouType"); }
void HTMLed::set_CheckSpellingAsYouType(bool value) { put(u"CheckSpellingAsYouType", value); }
std::u16string HTMLed::FTPHost() const { return text(u"FTPHost"); }
void HTMLed::set_FTPHost(std::u16string_view value) { put(u"FTPHost", value); }
std::u16string HTMLed::FTPUser() const { return text(u"FTPUser"); }
void HTMLed::set_FTPUser(std::u16string_view value) { put(u"FTPUser", value); }
std::u16string HTMLed::FTPPassword() const { return text(u"FTPPassword"); }
void HTMLed::set_FTPPassword(std::u16string_view value) { put(u"FTPPassword", value); }
std::u16string HTMLed::FTPInitDir() const { return text(u"FTPInitDir"); }
void HTMLed::set_FTPInitDir(std::u16string_view value) { put(u"FTPInitDir", value); }
std::u16string HTMLed::FTPSaveToURL() const { return text(u"FTPSaveToURL"); }
void HTMLed::set_FTPSaveToURL(std::u16string_view value) { put(u"FTPSaveToURL", value); }
bool HTMLed::FTPPassive() const { return flag(u"FTPPassive"); }
void HTMLed::set_FTPPassive(bool value) { put(u"FTPPassive", value); }
std::int32_t HTMLed::FTPPort() const { return number(u"FTPPort"); }
void HTMLed::set_FTPPort(std::int32_t value) { put(u"FTPPort", value); }
ed_FTPTransferType HTMLed::FTPTransferType() const { return ed_FTPTransferType(number(u"FTPTransferType")); }
void HTMLed::set_FTPTransferType(ed_FTPTransferType value) { put(u"FTPTransferType", std::int32_t(value)); }
std::u16string HTMLed::FTPProxyServer() const { return text(u"FTPProxyServer"); }
void HTMLed::set_FTPProxyServer(std::u16string_view value) { put(u"FTPProxyServer", value); }
std::u16string HTMLed::FTPProxyBypassList() const { return text(u"FTPProxyBypassList"); }
void HTMLed::set_FTPProxyBypassList(std::u16string_view value) { put(u"FTPProxyBypassList", value); }
bool HTMLed::FTPActionInProgress() const { return flag(u"FTPActionInProgress"); }
bool HTMLed::ShowFTPDialog() const { return flag(u"ShowFTPDialog"); }
void HTMLed::set_ShowFTPDialog(bool value) { put(u"ShowFTPDialog", value); }
std::int32_t HTMLed::FTPBlockSize() const { return number(u"FTPBlockSize"); }
void HTMLed::set_FTPBlockSize(std::int32_t value) { put(u"FTPBlockSize", value); }
std::int32_t HTMLed::hwnd() const { return number(u"hwnd"); }
bool HTMLed::InCodeView() const { return control().InCodeView(); }

// --- operations ---

std::u16string HTMLed::Open_document(std::u16string_view strURL, bool openEntireDoc) {
  Values arguments{strURL, openEntireDoc};
  library::call_method(control(), u"Open_document", arguments);
  return arguments[0].to_text();
}
void HTMLed::Save_document(std::u16string_view strFilename, bool bEntireDocument) {
  call(u"Save_document", {strFilename, bEntireDocument});
}
void HTMLed::print_Document(bool DontShowDialog) { call(u"print_Document", {DontShowDialog}); }
void HTMLed::sendCR(bool bBR) { call(u"sendCR", {bBR}); }
void HTMLed::FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag) {
  call(u"FormatSelection", {OpeningTag, ClosingTag});
}
void HTMLed::InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere) {
  call(u"InsertAtCursor", {HTMLText, std::int32_t(insertWhere)});
}
std::optional<std::u16string> HTMLed::GetCurrentSelection(bool HTMLText) {
  const library::Value content = call(u"GetCurrentSelection", {HTMLText});
  return content.is_null() ? std::optional<std::u16string>() : content.to_text();
}
std::u16string HTMLed::selectText(std::int32_t SelStartPos, std::int32_t SelLength) {
  return call(u"selectText", {SelStartPos, SelLength}).to_text();
}
void HTMLed::RevertToOriginal() { call(u"RevertToOriginal"); }
void HTMLed::CleanUp() { call(u"CleanUp"); }
void HTMLed::scrollToTop() { call(u"scrollToTop"); }
void HTMLed::scrollToBottom() { call(u"scrollToBottom"); }
void HTMLed::show_Code() { call(u"show_Code"); }
std::int32_t HTMLed::FindText(std::u16string_view Text, std::int32_t Options) {
  return call(u"FindText", {Text, Options}).to_integer32();
}
std::int32_t HTMLed::FindNext() { return call(u"FindNext").to_integer32(); }
std::int32_t HTMLed::FindPrevious() { return call(u"FindPrevious").to_integer32(); }
std::int32_t HTMLed::FindCount() { return call(u"FindCount").to_integer32(); }
std::int32_t HTMLed::FindPosition() { return call(u"FindPosition").to_integer32(); }
std::int32_t HTMLed::FindLocked() { return call(u"FindLocked").to_integer32(); }
bool HTMLed::ReplaceText(std::u16string_view Replacement) {
  return call(u"ReplaceText", {Replacement}).to_boolean();
}
std::int32_t HTMLed::ReplaceAllText(std::u16string_view Replacement) {
  return call(u"ReplaceAllText", {Replacement}).to_integer32();
}
void HTMLed::FindEnd() { call(u"FindEnd"); }
void HTMLed::bold_document() { call(u"bold_document"); }
void HTMLed::italic_document() { call(u"italic_document"); }
void HTMLed::underline_document() { call(u"underline_document"); }
void HTMLed::strike_document() { call(u"strike_document"); }
void HTMLed::indent_document() { call(u"indent_document"); }
void HTMLed::unindent_document() { call(u"unindent_document"); }
void HTMLed::Left_Justify() { call(u"Left_Justify"); }
void HTMLed::Center_justify() { call(u"Center_justify"); }
void HTMLed::Right_justify() { call(u"Right_justify"); }
void HTMLed::numbered_list() { call(u"numbered_list"); }
void HTMLed::unnumbered_list() { call(u"unnumbered_list"); }
void HTMLed::undo_document() { call(u"undo_document"); }
void HTMLed::redo_document() { call(u"redo_document"); }
void HTMLed::insert_HR() { call(u"insert_HR"); }
void HTMLed::insert_Link() { call(u"insert_Link"); }
void HTMLed::change_Font() { call(u"change_Font"); }
void HTMLed::Table_Document() { call(u"Table_Document"); }
void HTMLed::insert_Form() { call(u"insert_Form"); }
void HTMLed::cut_document() { call(u"cut_document"); }
void HTMLed::copy_document() { call(u"copy_document"); }
void HTMLed::paste_document() { call(u"paste_document"); }
void HTMLed::FTPCancelTransfer() { call(u"FTPCancelTransfer"); }
void HTMLed::SpellCheck() { call(u"SpellCheck"); }
void HTMLed::SpellingCancel() { call(u"SpellingCancel"); }
bool HTMLed::PutFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  return call(u"PutFileFTP", {LocalFile, RemoteFile}).to_boolean();
}
bool HTMLed::GetFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  return call(u"GetFileFTP", {LocalFile, RemoteFile}).to_boolean();
}
bool HTMLed::DeleteFileFTP(std::u16string_view RemoteFile) {
  return call(u"DeleteFileFTP", {RemoteFile}).to_boolean();
}
void HTMLed::Insert_Image(std::u16string_view localImagePath) {
  call(u"Insert_Image", optional(localImagePath));
}
void HTMLed::Insert_Image_NoFTP(std::u16string_view localImagePath) {
  call(u"Insert_Image_NoFTP", optional(localImagePath));
}
void HTMLed::insertImageFromURL(std::u16string_view ImageURL) { call(u"insertImageFromURL", {ImageURL}); }
std::int32_t HTMLed::UploadAllImages() { return call(u"UploadAllImages").to_integer32(); }
std::int32_t HTMLed::CountLocalImages() { return call(u"CountLocalImages").to_integer32(); }
void HTMLed::ShowRemoteContent() { call(u"ShowRemoteContent"); }

}  // namespace tvx
