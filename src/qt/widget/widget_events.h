#pragma once

#include <QPointer>

#include "tvx/core/events.h"
#include "tvx/htmled_widget.h"

namespace tvx::qt {

/// The control's events as signals of its widget. A widget that is gone emits nothing.
class WidgetEvents final : public core::HTMLedEvents {
 public:
  explicit WidgetEvents(HTMLedWidget& widget) : widget_(&widget) {}

  void Error(std::int32_t& errNo, std::u16string& errDesc) override;
  void FTPSuccess(std::int32_t& id, std::u16string& Message) override;
  void FTPError(std::int32_t& errNo, std::u16string& errDesc) override;
  void ASCIIKeyPress(std::int32_t& KeyCode, bool& Shift, bool& Control) override;
  void FTPTransferProgress(std::int32_t& CurrentBytes, std::int32_t& TotalBytes) override;
  void SpellCheckComplete(bool& Cancelled) override;
  void ToolButtonClick(std::u16string& Toolbar, std::int16_t& index, std::u16string& buttonName,
                       bool& cancel) override;
  void MenuClick(std::u16string& MenuItem, bool& cancel) override;
  void BeforeLibraryInsert(std::u16string& AssetName, bool& cancel) override;
  void BeforeCodeViewChange(bool& CurrentlyWYSIWYG, bool& cancel) override;
  void SpellCheckWord(bool& Cancelled, std::u16string& oldWord, std::u16string& newWord,
                      bool& AddThisWord) override;
  void BeginImageUpload() override;
  void EndImageUpload() override;
  void BeforeGetDocumentHTML(std::u16string& CurrentDocumentHTML) override;
  void DocumentClick(dom::Ref<dom::Element>& CurrentElement) override;
  void BeforeNavigate(std::u16string& TheURL, std::u16string& TheFrameName, bool& CancelNavigate) override;

 private:
  template <class Emit>
  void tell(Emit&& emit_signal) {
    if (widget_) emit_signal(*widget_);
  }
  QPointer<HTMLedWidget> widget_;
};

}  // namespace tvx::qt
