#include <array>
#include <string_view>

#include "base/error.h"
#include "browser/html_document.h"
#include "editing/command_table.h"

/// What queryCommandValue says in the platform's way.
namespace tvx::browser {
namespace {

bool is_one_of(std::u16string_view name, std::initializer_list<std::u16string_view> names) {
  for (std::u16string_view candidate : names)
    if (equals_ignoring_ascii_case(name, candidate)) return true;
  return false;
}

/// "rgb(1, 2, 3)" or "rgba(...)" as the number whose lowest byte is red; black for anything else.
std::int32_t colour_number(std::u16string_view text) {
  std::array<std::int32_t, 3> parts{};
  std::size_t part = 0;
  bool in_number = false;
  for (char16_t c : text) {
    if (is_ascii_digit(c)) {
      in_number = true;
      parts[part] = parts[part] * 10 + (c - u'0');
    } else if (in_number) {
      in_number = false;
      if (++part == parts.size()) break;
    }
  }
  return parts[0] + parts[1] * 256 + parts[2] * 65536;
}

}  // namespace

CommandValue HTMLDocument::queryCommandValue(std::u16string_view command) {
  if (is_one_of(command, {u"Copy", u"Cut", u"Paste"})) return false;
  const editing::CommandDefinition* row = editing::find_command(command);
  if (!row) throw RuntimeError(errors::invalid_call, u"Unknown command");
  if (row->state) return editor_->state(command);
  const std::u16string value = editor_->value(command);
  if (is_one_of(command, {u"foreColor", u"backColor", u"hiliteColor"})) return colour_number(value);
  if (is_one_of(command, {u"fontSize"})) return std::int32_t(parse_integer(value).value_or(0));
  return value;
}

}  // namespace tvx::browser
