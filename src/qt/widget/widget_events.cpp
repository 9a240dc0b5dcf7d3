#include "tvx/qt/widget/widget_events.h"

#include "tvx/core/htmled.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {

using Widget = HTMLedWidget;

void WidgetEvents::Error(std::int32_t& errNo, std::u16string& errDesc) {
  tell([&](Widget& widget) { emit widget.Error(errNo, to_qt(errDesc)); });
}
void WidgetEvents::FTPSuccess(std::int32_t& id, std::u16string& Message) {
  tell([&](Widget& widget) { emit widget.FTPSuccess(id, to_qt(Message)); });
}
void WidgetEvents::FTPError(std::int32_t& errNo, std::u16string& errDesc) {
  tell([&](Widget& widget) { emit widget.FTPError(errNo, to_qt(errDesc)); });
}
void WidgetEvents::ASCIIKeyPress(std::int32_t& KeyCode, bool& Shift, bool& Control) {
  tell([&](Widget& widget) { emit widget.ASCIIKeyPress(KeyCode, Shift, Control); });
}
void WidgetEvents::FTPTransferProgress(std::int32_t& CurrentBytes, std::int32_t& TotalBytes) {
  tell([&](Widget& widget) { emit widget.FTPTransferProgress(CurrentBytes, TotalBytes); });
}
void WidgetEvents::SpellCheckComplete(bool& Cancelled) {
  tell([&](Widget& widget) { emit widget.SpellCheckComplete(Cancelled); });
}
void WidgetEvents::ToolButtonClick(std::u16string& Toolbar, std::int16_t& index, std::u16string& buttonName,
                                   bool& cancel) {
  tell(
      [&](Widget& widget) { emit widget.ToolButtonClick(to_qt(Toolbar), index, to_qt(buttonName), cancel); });
}
void WidgetEvents::MenuClick(std::u16string& MenuItem, bool& cancel) {
  tell([&](Widget& widget) { emit widget.MenuClick(to_qt(MenuItem), cancel); });
}
void WidgetEvents::BeforeLibraryInsert(std::u16string& AssetName, bool& cancel) {
  tell([&](Widget& widget) { emit widget.BeforeLibraryInsert(to_qt(AssetName), cancel); });
}
void WidgetEvents::BeforeCodeViewChange(bool& CurrentlyWYSIWYG, bool& cancel) {
  tell([&](Widget& widget) { emit widget.BeforeCodeViewChange(CurrentlyWYSIWYG, cancel); });
}
void WidgetEvents::SpellCheckWord(bool& Cancelled, std::u16string& oldWord, std::u16string& newWord,
                                  bool& AddThisWord) {
  QString word = to_qt(newWord);
  tell([&](Widget& widget) { emit widget.SpellCheckWord(Cancelled, to_qt(oldWord), word, AddThisWord); });
  newWord = from_qt(word);
}
void WidgetEvents::BeginImageUpload() {
  tell([](Widget& widget) { emit widget.BeginImageUpload(); });
}
void WidgetEvents::EndImageUpload() {
  tell([](Widget& widget) { emit widget.EndImageUpload(); });
}
void WidgetEvents::BeforeGetDocumentHTML(std::u16string& CurrentDocumentHTML) {
  const QString before = to_qt(CurrentDocumentHTML);
  QString html = before;
  tell([&](Widget& widget) { emit widget.BeforeGetDocumentHTML(html); });
  if (html != before) CurrentDocumentHTML = from_qt(html);
}
void WidgetEvents::DocumentClick(dom::Ref<dom::Element>& CurrentElement) {
  tell([&](Widget& widget) {
    emit widget.DocumentClick(
        Object(library::element_object(CurrentElement.get(), widget.control().DOM()).to_object()));
  });
}
void WidgetEvents::BeforeNavigate(std::u16string& TheURL, std::u16string& TheFrameName,
                                  bool& CancelNavigate) {
  tell([&](Widget& widget) {
    emit widget.BeforeNavigate(to_qt(TheURL), to_qt(TheFrameName), CancelNavigate);
  });
}

}  // namespace tvx::qt
