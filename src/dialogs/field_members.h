#pragma once

#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/platform/form.h"

/// Which control of the fields' dialog shows which member of a field.
namespace tvx::dialogs {

/// Types of INPUT into which a text is written, which has a width in characters.
inline constexpr std::u16string_view text_types[] = {u"text", u"password", u"email",
                                                     u"tel",  u"url",      u"search"};

/// Fills those controls that the form shows.
void fill_from(dom::Element& field, platform::Form& form);
/// Writes what differs from what the field says already. Steps that fail are skipped.
void write_to(dom::Element& field, const platform::Form& form);

}  // namespace tvx::dialogs
