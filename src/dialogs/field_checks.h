#pragma once

#include "tvx/platform/form.h"

/// Marks fields in which something stands that can't be meant. All give whether the field is right.
namespace tvx::dialogs {

enum class Emptiness : std::uint8_t { allowed, refused };

/// A whole number within the range of a box that is for one.
bool check_number(platform::FormControl& box, Emptiness emptiness);
/// A size as attributes write it, in a box that is for a number: pixels, or a percentage. Empty is none.
bool check_length(platform::FormControl& box);
/// A colour as documents write it: a name, "#rgb", "#rrggbb" or "rrggbb". Empty is none.
bool check_colour(platform::FormControl& box);
/// Of all fields of a form that have a button for colours.
void check_colours(platform::Form& form);
/// What can be an element's id: empty, or without a blank in it.
bool check_id(platform::FormControl& box);

bool is_document_colour(std::u16string_view text);

}  // namespace tvx::dialogs
