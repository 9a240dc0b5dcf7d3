#pragma once

#include <cstdint>
#include <string>

#include "tvx/object.h"

namespace tvx {

/// What a host of HTMLed hears. Arguments go by reference; what a host may change says so. Texts are UTF-16.
/// A host may call the control from within every event. Exceptions that leave an event end at the control.
class HTMLedEvents {
 public:
  virtual ~HTMLedEvents() = default;
  /// 1. An operation failed in a way that the host should know.
  virtual void Error(std::int32_t& /*errNo*/, std::u16string& /*errDesc*/) {}
  /// 2. A note about a transfer, or its good end.
  virtual void FTPSuccess(std::int32_t& /*id*/, std::u16string& /*Message*/) {}
  /// 3. A transfer failed.
  virtual void FTPError(std::int32_t& /*errNo*/, std::u16string& /*errDesc*/) {}
  /// 4. A key goes down in the document, before anything acts on it.
  virtual void ASCIIKeyPress(std::int32_t& /*KeyCode*/, bool& /*Shift*/, bool& /*Control*/) {}
  /// 5. Bytes of a running transfer.
  virtual void FTPTransferProgress(std::int32_t& /*CurrentBytes*/, std::int32_t& /*TotalBytes*/) {}
  /// 6. A spelling run has ended.
  virtual void SpellCheckComplete(bool& /*Cancelled*/) {}
  /// 7. A toolbar button is about to act; `cancel` true stops it.
  virtual void ToolButtonClick(std::u16string& /*Toolbar*/, std::int16_t& /*index*/,
                               std::u16string& /*buttonName*/, bool& /*cancel*/) {}
  /// 8. An item of a context menu is about to act; `cancel` true stops it.
  virtual void MenuClick(std::u16string& /*MenuItem*/, bool& /*cancel*/) {}
  /// 9. Part of the interface; nothing raises it.
  virtual void BeforeLibraryInsert(std::u16string& /*AssetName*/, bool& /*cancel*/) {}
  /// 10. The view is about to switch; `cancel` true stops it.
  virtual void BeforeCodeViewChange(bool& /*CurrentlyWYSIWYG*/, bool& /*cancel*/) {}
  /// 11. A spelling run deals with a word.
  virtual void SpellCheckWord(bool& /*Cancelled*/, std::u16string& /*oldWord*/, std::u16string& /*newWord*/,
                              bool& /*AddThisWord*/) {}
  /// 12. The connection of a one-file upload stands.
  virtual void BeginImageUpload() {}
  /// 13. A one-file upload has ended.
  virtual void EndImageUpload() {}
  /// 14. `DocumentHTML` is being read; what is written here is what the reader gets.
  virtual void BeforeGetDocumentHTML(std::u16string& /*CurrentDocumentHTML*/) {}
  /// 15. A click in the document; the element may be nothing.
  virtual void DocumentClick(Object& /*CurrentElement*/) {}
  /// 16. Something other than the control wants to navigate. `CancelNavigate` is true on entry.
  virtual void BeforeNavigate(std::u16string& /*TheURL*/, std::u16string& /*TheFrameName*/,
                              bool& /*CancelNavigate*/) {}
};

}  // namespace tvx
