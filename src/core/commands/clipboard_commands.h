#pragma once

#include <functional>
#include <string_view>

#include "tvx/clipboard/clip.h"
#include "tvx/core/part.h"

namespace tvx::core {

class CodePane;
class Content;

/// Cut, copy and paste: the document's own commands first, and where they report failure by hand. In the
/// code view they are messages to its box.
class ClipboardCommands final : public Part {
 public:
  ClipboardCommands(Context& context, CodePane& code, const Content& content)
      : Part(context), code_(code), content_(content), clip_(surroundings().clipboard) {}

  void copy();
  void cut();
  void paste();
  /// The text alone, whatever else the clipboard has; nothing where it has none.
  void paste_text();
  /// Throws RuntimeError(91) where the control has none.
  platform::Clipboard& clipboard() const;
  const clipboard::clsClip& clip() const { return clip_; }

 private:
  std::u16string_view selection_type() const;
  void copy_by_hand();
  /// In the code view its box pastes; in the page `paste_into_page` does.
  void paste_with(const std::function<void()>& paste_into_page);
  void paste_by_hand();

  CodePane& code_;
  const Content& content_;
  const clipboard::clsClip clip_;
};

}  // namespace tvx::core
