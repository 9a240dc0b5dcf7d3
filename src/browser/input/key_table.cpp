#include "tvx/browser/input/key_table.h"

#include <utility>

#include "tvx/base/strings.h"

namespace tvx::browser {
namespace {

constexpr std::pair<std::u16string_view, int> named_keys[] = {
    {u"Backspace", 8},    {u"Tab", 9},       {u"Enter", 13},      {u"Shift", 16},       {u"Control", 17},
    {u"Alt", 18},         {u"AltGraph", 18}, {u"Pause", 19},      {u"CapsLock", 20},    {u"Escape", 27},
    {u" ", 32},           {u"PageUp", 33},   {u"PageDown", 34},   {u"End", 35},         {u"Home", 36},
    {u"ArrowLeft", 37},   {u"ArrowUp", 38},  {u"ArrowRight", 39}, {u"ArrowDown", 40},   {u"PrintScreen", 44},
    {u"Insert", 45},      {u"Delete", 46},   {u"Meta", 91},       {u"ContextMenu", 93}, {u"NumLock", 144},
    {u"ScrollLock", 145}, {u"Process", 229}};

// Punctuation by what its key types, without and with Shift.
constexpr std::pair<std::u16string_view, int> punctuation[] = {
    {u";:", 186}, {u"=+", 187}, {u",<", 188},  {u"-_", 189}, {u".>", 190}, {u"/?", 191},
    {u"`~", 192}, {u"[{", 219}, {u"\\|", 220}, {u"]}", 221}, {u"'\"", 222}};

/// "F1" to "F24".
std::optional<int> function_key_code(std::u16string_view name) {
  if (name.size() < 2 || name.size() > 3 || name[0] != u'F') return {};
  int number = 0;
  for (const char16_t c : name.substr(1)) {
    if (!is_ascii_digit(c)) return {};
    number = 10 * number + (c - u'0');
  }
  if (name[1] == u'0' || number > 24) return {};
  return 111 + number;
}

}  // namespace

std::optional<int> named_key_code(std::u16string_view name) {
  for (const auto& [known, code] : named_keys)
    if (known == name) return code;
  return function_key_code(name);
}

int key_code_of(char16_t typed) {
  if (is_ascii_alpha(typed)) return ascii_upper(typed);
  if (is_ascii_digit(typed) || typed == u' ') return typed;
  constexpr std::u16string_view shifted_digits = u")!@#$%^&*(";
  if (const std::size_t digit = shifted_digits.find(typed); digit != shifted_digits.npos)
    return static_cast<int>(u'0' + digit);
  for (const auto& [typed_by, code] : punctuation)
    if (typed_by.find(typed) != typed_by.npos) return code;
  return unnumbered_key;
}

}  // namespace tvx::browser
