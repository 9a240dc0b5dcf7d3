#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tvx/core/enumerations.h"

namespace tvx::platform {
class PropertyBag;
}

namespace tvx::core {

/// RemoteContent: nothing; images and style sheets; as nothing, and the host asks its user; all, frames
/// included.
constexpr std::int32_t remote_content_off = 0, remote_content_on = 1, remote_content_ask = 2,
                       remote_content_all = 3;

/// One large text, held by many and never changed.
using SharedText = std::shared_ptr<const std::u16string>;
SharedText share(std::u16string_view text);

/// The values of the control's properties, with the defaults of a new control. DocumentHTML is what the host
/// last gave, and SelectionBorderStyle the text that goes into an element's style.
struct Properties {
#include "tvx/interface/property_fields.inc"
};

/// Captions that the branch toolbar's menu takes from the control. A new control has none.
struct TableLabels {
  std::u16string cell, row, delete_row, delete_cell;
};

/// Fills the values from a saved control, key by key in the order of the store. A key that fails keeps what
/// it had.
void read_properties(Properties& properties, TableLabels& labels, const platform::PropertyBag& bag);
void write_properties(const Properties& properties, platform::PropertyBag& bag);

/// The border style's number as the text that goes into a style, and back; 0 for a text that is none.
std::u16string_view text_of(EdHighLightStyle style);
EdHighLightStyle highlight_style_of(std::u16string_view text);

}  // namespace tvx::core
