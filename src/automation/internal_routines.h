#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "tvx/library/objects/members_of.h"

namespace tvx::automation {

class ControlObject;

/// Routines that have a name of their own and are no member that hosts see.
std::span<const library::MemberOf<ControlObject>> internal_routines();

/// Handlers of what the browser, the client, the code view and the toolbars raise.
std::span<const library::MemberOf<ControlObject>> handlers();
/// "mnuMiscCut_Click", "mnuClass_Click" with an index: what choosing the item does, whether it could be
/// chosen now or not. Nothing where no item is called so, or it is a head or a separator.
std::optional<library::Value> click_menu_item(ControlObject& self, std::u16string_view name,
                                              library::Values& arguments);

}  // namespace tvx::automation
