#include "tvx/dialogs/field_checks.h"

#include <algorithm>

#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/dom/style/color.h"

namespace tvx::dialogs {
namespace {

using platform::FormControl;

// Each is a word of the language files.
constexpr std::u16string_view no_number = u"This is no whole number", too_small = u"This number is too small",
                              too_large = u"This number is too large", no_colour_text = u"This is no colour",
                              blank_in_id = u"An id has no blanks",
                              no_length = u"This is neither a number nor a percentage";

bool mark(FormControl& box, std::u16string_view reason) {
  box.set_fault(reason);
  return reason.empty();
}

bool is_hexadecimal(std::u16string_view text) {
  return std::ranges::all_of(text, [](char16_t letter) {
    const char16_t lower = ascii_lower(letter);
    return is_ascii_digit(letter) || (lower >= u'a' && lower <= u'f');
  });
}

}  // namespace

bool check_number(FormControl& box, Emptiness emptiness) {
  const std::u16string_view text = trimmed(box.Text());
  if (text.empty()) return mark(box, emptiness == Emptiness::allowed ? u"" : no_number);
  const bool digits = std::ranges::all_of(text.substr(text.starts_with(u'-') ? 1 : 0), is_ascii_digit);
  const auto number = digits ? parse_number(text) : std::nullopt;
  if (!number) return mark(box, no_number);
  if (*number < box.number()->least) return mark(box, too_small);
  return mark(box, *number > box.number()->most ? too_large : u"");
}

bool check_length(FormControl& box) {
  std::u16string_view text = trimmed(box.Text());
  if (text.empty()) return mark(box, u"");
  if (text.ends_with(u'%')) text.remove_suffix(1);
  const bool digits = !text.empty() && std::ranges::all_of(text, is_ascii_digit);
  const auto number = digits ? parse_number(text) : std::nullopt;
  if (!number) return mark(box, no_length);
  return mark(box, *number > box.number()->most ? too_large : u"");
}

// What needs brackets belongs into a style sheet; an attribute makes another colour of it.
bool is_document_colour(std::u16string_view text) {
  const std::u16string bare(trimmed(text));
  if (bare.find(u'(') != bare.npos) return false;
  const bool old_form = bare.size() == 6 && is_hexadecimal(bare);
  const auto colour = dom::style::parse_color(old_form ? u'#' + bare : bare);
  return colour && colour->alpha == 1;
}

bool check_colour(FormControl& box) {
  const std::u16string_view text = trimmed(box.Text());
  return mark(box, text.empty() || is_document_colour(text) ? u"" : no_colour_text);
}

void check_colours(platform::Form& form) {
  for (const auto& control : form.controls())
    if (FormControl* field = control->colour_field()) check_colour(*field);
}

bool check_id(FormControl& box) {
  return mark(box, std::ranges::any_of(box.Text(), is_ascii_space) ? blank_in_id : u"");
}

}  // namespace tvx::dialogs
