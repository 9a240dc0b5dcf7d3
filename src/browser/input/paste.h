#pragma once

#include <string>

#include "tvx/browser/html_document.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/platform/transfer_data.h"

namespace tvx::platform {
class Clipboard;
}

/// The way of content into and out of a document: the clipboard's, and that of what is dropped on it.
namespace tvx::browser {

/// Puts what comes from elsewhere in the place of the selection, as one undo step; the caret then stands
/// after it. HTML before pictures, pictures before files, files before plain text. False: nothing could be
/// used, or it fits nowhere.
///
/// HTML is made fit first (editing/pasted_content.h). A picture is stored as a file in the document's image
/// folder, or stands in the page itself if there is none. Files of pages and texts are read, pictures shown,
/// of all others and of addresses a link is made. Of plain text each line stays a line and nothing becomes
/// markup.
///
/// Relative addresses that were seen from another page are written so that they lead to the same.
///
/// What the data doesn't have of the content, pictures above all, is asked of `source`; null: nothing.
bool paste_into(HTMLDocument& document, const platform::TransferData& data,
                std::u16string_view step = u"Paste", const platform::TransferSource* source = nullptr);
/// Whether something of it could be used.
bool can_paste(const platform::TransferData& data);

/// What of the selection goes to other programs, in all forms; empty while nothing is selected. `base` is
/// what relative addresses in it are seen from.
platform::TransferItems transfer_items(const editing::CopiedContent& content, std::u16string_view base = {});

/// The clipboard as a document's commands reach it.
class DocumentClipboard final : public editing::ClipboardDoor {
 public:
  DocumentClipboard(HTMLDocument& document, platform::Clipboard& clipboard)
      : document_(document), clipboard_(clipboard) {}
  bool put(const editing::CopiedContent& content) override;
  bool paste(editing::Editor& editor) override;
  bool paste_text(editing::Editor& editor) override;

 private:
  HTMLDocument& document_;
  platform::Clipboard& clipboard_;
};

}  // namespace tvx::browser
