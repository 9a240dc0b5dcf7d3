#include "tvx/core/htmled.h"
#include "tvx/core/parts.h"

/// The members that hosts see, each done by the part whose subject it is.
namespace tvx::core {

// --- content ---

std::u16string HTMLed::DocumentHTML() {
  parts_->side.take();
  return parts_->content.DocumentHTML();
}
void HTMLed::set_DocumentHTML(std::u16string_view html) { parts_->content.set_DocumentHTML(html); }
std::u16string HTMLed::allHTML() {
  parts_->side.take();
  return parts_->content.allHTML();
}
std::u16string HTMLed::DocumentText() {
  parts_->side.take();
  return parts_->content.DocumentText();
}
void HTMLed::set_BaseURL(std::u16string_view url) { parts_->content.set_BaseURL(url); }
void HTMLed::RevertToOriginal() { parts_->content.RevertToOriginal(); }
void HTMLed::make_original() {
  parts_->side.take();
  parts_->content.make_original();
}
const std::u16string& HTMLed::originalHTML() const { return parts_->content.original_html(); }
void HTMLed::Open_document(std::u16string& strURL, bool openEntireDoc) {
  parts_->files.Open_document(strURL, openEntireDoc);
}
void HTMLed::Save_document(const std::u16string& strFilename, bool bEntireDocument) {
  parts_->side.take();
  parts_->files.Save_document(strFilename, bEntireDocument);
}
void HTMLed::print_Document(bool DontShowDialog) {
  parts_->side.take();
  parts_->files.print_Document(DontShowDialog);
}
bool HTMLed::openingDocument() const { return parts_->files.opening(); }
const std::u16string& HTMLed::styleSheetPath() const { return parts_->style_sheet.path(); }
const std::vector<StyleClass>& HTMLed::style_classes() const { return parts_->style_sheet.classes(); }
const std::u16string& HTMLed::appPath() const { return parts_->bootstrap.app_path(); }

// --- views ---

void HTMLed::set_size(float width, float height) { parts_->panes.set_size(width, height); }
void HTMLed::UserControl_Resize() { parts_->panes.resize(); }
const Layout& HTMLed::layout() const { return parts_->panes.layout(); }
void HTMLed::WBrowser_GotFocus() {
  parts_->side.leave();
  parts_->edit_window.got_focus();
}
void HTMLed::WBrowser_LostFocus(std::u16string_view active_control) {
  parts_->edit_window.lost_focus(active_control, InCodeView());
}
void HTMLed::scrollToTop() { parts_->edit_window.scroll_to_line(0); }
void HTMLed::scrollToBottom() { parts_->edit_window.scroll_to_line(999999); }
void HTMLed::show_Code() { parts_->view_switch.show_Code(); }
bool HTMLed::InCodeView() const { return parts_->code.in_front(); }
source::OrvelCV& HTMLed::txtCode() { return parts_->code.box(); }
dom::Element* HTMLed::highlightElement() const { return parts_->highlight.element(); }

// --- finding ---

std::int32_t HTMLed::FindText(std::u16string_view text, std::int32_t options) {
  return parts_->finder.FindText(text, options);
}
std::int32_t HTMLed::FindNext() { return parts_->finder.FindNext(); }
std::int32_t HTMLed::FindPrevious() { return parts_->finder.FindPrevious(); }
std::int32_t HTMLed::FindCount() { return parts_->finder.FindCount(); }
std::int32_t HTMLed::FindPosition() { return parts_->finder.FindPosition(); }
std::int32_t HTMLed::FindLocked() { return parts_->finder.FindLocked(); }
bool HTMLed::ReplaceText(std::u16string_view replacement) { return parts_->finder.ReplaceText(replacement); }
std::int32_t HTMLed::ReplaceAllText(std::u16string_view replacement) {
  return parts_->finder.ReplaceAllText(replacement);
}
void HTMLed::FindEnd() { parts_->finder.FindEnd(); }

// --- commands; while the code shows, it follows what they change ---

void HTMLed::sendCR(bool bBR) {
  parts_->view_switch.change_document([&] { parts_->formatting.sendCR(bBR); });
}
void HTMLed::bold_document() {
  parts_->view_switch.change_document([this] { parts_->formatting.bold(); });
}
void HTMLed::italic_document() {
  parts_->view_switch.change_document([this] { parts_->formatting.italic(); });
}
void HTMLed::underline_document() {
  parts_->view_switch.change_document([this] { parts_->formatting.underline(); });
}
void HTMLed::strike_document() {
  parts_->view_switch.change_document([this] { parts_->formatting.strike(); });
}
void HTMLed::indent_document() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"indent"); });
}
void HTMLed::unindent_document() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"outdent"); });
}
void HTMLed::Left_Justify() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"JustifyLeft"); });
}
void HTMLed::Center_justify() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"JustifyCenter"); });
}
void HTMLed::Right_justify() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"JustifyRight"); });
}
void HTMLed::numbered_list() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"InsertOrderedList"); });
}
void HTMLed::unnumbered_list() {
  parts_->view_switch.change_document([this] { parts_->formatting.run_command(u"InsertUnorderedList"); });
}
void HTMLed::undo_document() {
  parts_->side.take();
  parts_->formatting.undo();
}
void HTMLed::redo_document() {
  parts_->side.take();
  parts_->formatting.redo();
}
void HTMLed::insert_Link() {
  parts_->side.take();
  parts_->formatting.insert_Link();
}
void HTMLed::SpellCheck() {
  parts_->view_switch.change_document([this] { parts_->spelling.SpellCheck(); });
}
void HTMLed::SpellingCancel() { parts_->spelling.SpellingCancel(); }
void HTMLed::cut_document() {
  parts_->side.take();
  parts_->clipboard.cut();
}
void HTMLed::copy_document() {
  parts_->side.take();
  parts_->clipboard.copy();
}
void HTMLed::paste_document() {
  parts_->side.take();
  parts_->clipboard.paste();
}
platform::Clipboard& HTMLed::clipboard() const { return parts_->clipboard.clipboard(); }
void HTMLed::insert_HR() {
  parts_->view_switch.change_document([this] { parts_->selection.insert_HR(); });
}
void HTMLed::FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag) {
  parts_->view_switch.change_document([&] { parts_->selection.FormatSelection(OpeningTag, ClosingTag); });
}
void HTMLed::InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere) {
  parts_->view_switch.change_document([&] { parts_->selection.InsertAtCursor(HTMLText, insertWhere); });
}
void HTMLed::Insert_Image(const std::optional<std::u16string>& localImagePath) {
  parts_->view_switch.change_document([&] { parts_->images.Insert_Image(localImagePath); });
}
void HTMLed::Insert_Image_NoFTP(const std::optional<std::u16string>& localImagePath) {
  parts_->view_switch.change_document([&] { parts_->images.Insert_Image_NoFTP(localImagePath); });
}
void HTMLed::insertImageFromURL(std::u16string_view ImageURL) {
  parts_->view_switch.change_document([&] { parts_->images.insertImageFromURL(ImageURL); });
}
bool HTMLed::RemoteContentWithheld() const {
  const auto& document = browser_->Document();
  return document && document->withholds();
}
void HTMLed::ShowRemoteContent() {
  // What the control lets in by default, and no less than it lets in now.
  if (properties_.RemoteContent == remote_content_all) return;
  browser_->set_policy_of_document({});
  PropertyChanged(u"RemoteContentWithheld");
}
std::int32_t HTMLed::CountLocalImages() { return parts_->images.CountLocalImages(); }
std::optional<std::u16string> HTMLed::GetCurrentSelection(bool HTMLText) {
  parts_->side.take();
  return parts_->selection.GetCurrentSelection(HTMLText);
}
std::u16string HTMLed::selectText(std::int32_t SelStartPos, std::int32_t SelLength) {
  parts_->side.take();
  return parts_->selection.selectText(SelStartPos, SelLength);
}
const browser::Event* HTMLed::lastEvent() const { return parts_->input.last_event(); }

// --- the server ---

bool HTMLed::PutFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  return parts_->transfers.PutFileFTP(LocalFile, RemoteFile);
}
bool HTMLed::GetFileFTP(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  return parts_->transfers.GetFileFTP(LocalFile, RemoteFile);
}
bool HTMLed::DeleteFileFTP(std::u16string_view RemoteFile) {
  return parts_->transfers.DeleteFileFTP(RemoteFile);
}
std::shared_ptr<transfer::clsDirectoryList> HTMLed::ListFilesFTP(std::u16string_view RemoteDirectory,
                                                                 std::u16string_view Filter) {
  return parts_->transfers.ListFilesFTP(RemoteDirectory, Filter);
}
void HTMLed::FTPCancelTransfer() { parts_->transfers.FTPCancelTransfer(); }
std::int32_t HTMLed::UploadAllImages() {
  std::int32_t uploaded = 0;
  parts_->view_switch.change_document([&] { uploaded = parts_->transfers.UploadAllImages(); });
  return uploaded;
}

// --- bars, menus and dialogs ---

void HTMLed::Table_Document() {
  parts_->view_switch.change_document([this] { parts_->tables.insert_table(); });
}
void HTMLed::change_Font() {
  parts_->view_switch.change_document([this] { parts_->font_settings.change_Font(); });
}
void HTMLed::insert_Form() {
  parts_->view_switch.change_document([this] { parts_->form_elements.insert_Form(); });
}
void HTMLed::mnuClass_Click(std::int16_t Index) {
  parts_->side.take();
  parts_->classes.give_to_element(Index);
}
void HTMLed::mnuMiscClass_Click(std::int16_t Index) {
  parts_->side.take();
  parts_->classes.give_to_selection(Index);
}
ControlActions& HTMLed::actions() { return parts_->actions; }
void HTMLed::insert_table(std::int32_t rows, std::int32_t columns) {
  parts_->side.take();
  parts_->tables.insert_table(rows, columns);
}
SideSource& HTMLed::side_source() { return parts_->side; }
SelectionFormats& HTMLed::selection_formats() { return parts_->selection_formats; }
platform::Toolbar& HTMLed::Toolbar1() { return parts_->toolbars.Toolbar1; }
platform::Toolbar& HTMLed::Toolbar2() { return parts_->toolbars.Toolbar2; }
platform::Toolbar& HTMLed::tlbDOM() { return parts_->toolbars.tlbDOM; }
bool HTMLed::press(platform::Toolbar& toolbar, std::u16string_view key) {
  return toolbar.press(toolbar.Item(key));
}
ContextMenus& HTMLed::menus() { return parts_->menus; }
platform::Menu* HTMLed::menu(std::u16string_view name, std::optional<int> index) {
  return parts_->menus.find(name, index);
}
const TableLabels& HTMLed::table_labels() const { return parts_->labels; }

}  // namespace tvx::core
