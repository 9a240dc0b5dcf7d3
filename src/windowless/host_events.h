#pragma once

#include "tvx/core/events.h"
#include "tvx/core/htmled.h"
#include "tvx/events.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::windowless {

/// The control's events as its host hears them. The control outlives this.
class HostEvents final : public core::HTMLedEvents {
 public:
  explicit HostEvents(core::HTMLed& control) : control_(control) {}
  /// Null: nobody listens.
  void set_host(tvx::HTMLedEvents* host) { host_ = host; }

  void Error(std::int32_t& errNo, std::u16string& errDesc) override {
    if (host_) host_->Error(errNo, errDesc);
  }
  void FTPSuccess(std::int32_t& id, std::u16string& Message) override {
    if (host_) host_->FTPSuccess(id, Message);
  }
  void FTPError(std::int32_t& errNo, std::u16string& errDesc) override {
    if (host_) host_->FTPError(errNo, errDesc);
  }
  void ASCIIKeyPress(std::int32_t& KeyCode, bool& Shift, bool& Control) override {
    if (host_) host_->ASCIIKeyPress(KeyCode, Shift, Control);
  }
  void FTPTransferProgress(std::int32_t& CurrentBytes, std::int32_t& TotalBytes) override {
    if (host_) host_->FTPTransferProgress(CurrentBytes, TotalBytes);
  }
  void SpellCheckComplete(bool& Cancelled) override {
    if (host_) host_->SpellCheckComplete(Cancelled);
  }
  void ToolButtonClick(std::u16string& Toolbar, std::int16_t& index, std::u16string& buttonName,
                       bool& cancel) override {
    if (host_) host_->ToolButtonClick(Toolbar, index, buttonName, cancel);
  }
  void MenuClick(std::u16string& MenuItem, bool& cancel) override {
    if (host_) host_->MenuClick(MenuItem, cancel);
  }
  void BeforeLibraryInsert(std::u16string& AssetName, bool& cancel) override {
    if (host_) host_->BeforeLibraryInsert(AssetName, cancel);
  }
  void BeforeCodeViewChange(bool& CurrentlyWYSIWYG, bool& cancel) override {
    if (host_) host_->BeforeCodeViewChange(CurrentlyWYSIWYG, cancel);
  }
  void SpellCheckWord(bool& Cancelled, std::u16string& oldWord, std::u16string& newWord,
                      bool& AddThisWord) override {
    if (host_) host_->SpellCheckWord(Cancelled, oldWord, newWord, AddThisWord);
  }
  void BeginImageUpload() override {
    if (host_) host_->BeginImageUpload();
  }
  void EndImageUpload() override {
    if (host_) host_->EndImageUpload();
  }
  void BeforeGetDocumentHTML(std::u16string& CurrentDocumentHTML) override {
    if (host_) host_->BeforeGetDocumentHTML(CurrentDocumentHTML);
  }
  void DocumentClick(dom::Ref<dom::Element>& CurrentElement) override {
    if (!host_) return;
    Object element(library::element_object(CurrentElement.get(), control_.DOM()).to_object());
    host_->DocumentClick(element);
  }
  void BeforeNavigate(std::u16string& TheURL, std::u16string& TheFrameName, bool& CancelNavigate) override {
    if (host_) host_->BeforeNavigate(TheURL, TheFrameName, CancelNavigate);
  }

 private:
  core::HTMLed& control_;
  tvx::HTMLedEvents* host_ = nullptr;
};

}  // namespace tvx::windowless
