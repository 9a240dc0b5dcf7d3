#pragma once

#include "tvx/core/part.h"

namespace tvx::core {

class ImageSettings;
class SelectionHighlight;
class TableTools;

/// The two items of the element path's menu that open a dialog for the current element.
class ElementDialogs final : public Part {
 public:
  ElementDialogs(Context& context, SelectionHighlight& highlight, TableTools& tables, ImageSettings& images)
      : Part(context), highlight_(highlight), tables_(tables), images_(images) {}

  void edit_tag();
  void edit_properties();

 private:
  SelectionHighlight& highlight_;
  TableTools& tables_;
  ImageSettings& images_;
};

}  // namespace tvx::core
