#pragma once

#include "tvx/core/part.h"
#include "tvx/dialogs/image_dialog.h"

namespace tvx::core {

class SelectionHighlight;

/// The settings of the image that is the current element.
class ImageSettings final : public Part {
 public:
  ImageSettings(Context& context, SelectionHighlight& highlight) : Part(context), highlight_(highlight) {}

  /// False after OK, true after Cancel and Reset: what the callers mark as a change goes by this, the wrong
  /// way round, and hosts know it so: some save by that mark, and would find another document changed than
  /// before. The step of undo goes by what has changed, and so do observers, who hear of OK by themselves.
  /// False too where the document has been replaced meanwhile: the new one is as it came.
  bool EditImageProperties();

 private:
  SelectionHighlight& highlight_;
};

}  // namespace tvx::core
