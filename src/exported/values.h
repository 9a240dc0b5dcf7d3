#pragma once

#include "tvx/library/members/member_table.h"
#include "tvx/tvxhtml.h"

/// Values as hosts have them, and as the members take them.
namespace tvx::exported {

/// What a value is, or the one that its reference leads to. Throws RuntimeError(13) for what is none, and for
/// an object of the host's own: no member takes those.
library::Value value_from(const tvx_value& value);

/// In the form that a member of this type has; Variant: as it is. The caller clears it.
tvx_value value_for(const library::Value& value, library::Type type = library::Type::Variant);

/// Puts a value where a reference leads to, in the place of what is there.
void replace_value(tvx_value& target, const library::Value& value,
                   library::Type type = library::Type::Variant);

/// `arguments` in their order; a null pointer is none of them.
library::Values values_from(const tvx_value* arguments, std::uint32_t count);

}  // namespace tvx::exported
