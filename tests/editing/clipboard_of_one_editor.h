#pragma once

#include <string>

#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/paste.h"

namespace tvx::editing::test {

/// A clipboard that keeps what the editor copies, and has what a test puts there.
class ClipboardOfOneEditor final : public ClipboardDoor {
 public:
  std::u16string html, text;
  bool put(const CopiedContent& content) override {
    html = content.html;
    text = content.text;
    return true;
  }
  bool paste(Editor& editor) override {
    if (!html.empty()) return paste_html(editor, u"<!--StartFragment-->" + html + u"<!--EndFragment-->");
    return paste_plain_text(editor, text);
  }
};

}  // namespace tvx::editing::test
