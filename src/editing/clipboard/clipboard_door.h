#pragma once

#include "tvx/editing/clipboard/copied_content.h"

namespace tvx::editing {

/// What the commands Copy, Cut and Paste need of the world: a way out for content, and a way in.
class ClipboardDoor {
 public:
  virtual ~ClipboardDoor() = default;
  /// False: it could not be put anywhere.
  virtual bool put(const CopiedContent& content) = 0;
  /// Pastes what there is in the place of the selection. False: there is no format that can be read.
  virtual bool paste(Editor& editor) = 0;
  /// Pastes the plain text alone, whatever else there is. False: there is none.
  virtual bool paste_text(Editor&) { return false; }
};

}  // namespace tvx::editing
