#pragma once

#include "tvx/exported/invocation.h"

namespace tvx::core {
class HTMLed;
}

/// The control's own members, by the numbers of the table.
namespace tvx::exported {

/// -1 for a name that is none.
std::int32_t number_of_member(std::u16string_view name);

tvx_result call_member(core::HTMLed& control, std::int32_t number, std::uint16_t how, Arguments arguments,
                       tvx_value& result);

}  // namespace tvx::exported
