#pragma once

#include <functional>
#include <memory>

#include "tvx/core/events.h"
#include "tvx/library/members/member_table.h"

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::automation {

/// Hears every event of a control and hands it on as a row of the event table with its arguments as values.
/// What stands in the arguments afterwards goes back to the control.
class EventRelay final : public core::HTMLedEvents {
 public:
  using Sink = std::function<void(const library::EventMember& event, library::Values& arguments)>;
  /// `document` is asked for the document that an element of an argument belongs to.
  using Document = std::function<std::shared_ptr<browser::HTMLDocument>()>;

  EventRelay(Sink sink, Document document) : sink_(std::move(sink)), document_(std::move(document)) {}

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
  template <class... Arguments>
  void relay(int number, Arguments&... arguments);

  Sink sink_;
  Document document_;
};

}  // namespace tvx::automation
