#include "tvx/automation/keys.h"

#include <iterator>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::automation {

namespace {

struct NamedKey {
  std::u16string_view name;
  int code;
  std::u16string_view text = {};
};

constexpr NamedKey named_keys[] = {
    {u"Backspace", 8}, {u"Tab", 9, u"\t"},  {u"Enter", 13, u"\n"}, {u"Shift", 16},       {u"Control", 17},
    {u"Alt", 18},      {u"Pause", 19},      {u"CapsLock", 20},     {u"Escape", 27},      {u"Space", 32, u" "},
    {u"PageUp", 33},   {u"PageDown", 34},   {u"End", 35},          {u"Home", 36},        {u"ArrowLeft", 37},
    {u"ArrowUp", 38},  {u"ArrowRight", 39}, {u"ArrowDown", 40},    {u"PrintScreen", 44}, {u"Insert", 45},
    {u"Delete", 46},   {u"Meta", 91},       {u"ContextMenu", 93},  {u"NumLock", 144},    {u"ScrollLock", 145},
    {u"Process", 229}, {u"F1", 112},        {u"F2", 113},          {u"F3", 114},         {u"F4", 115},
    {u"F5", 116},      {u"F6", 117},        {u"F7", 118},          {u"F8", 119},         {u"F9", 120},
    {u"F10", 121},     {u"F11", 122},       {u"F12", 123}};

/// The characters of the keys with an oem number: without and with Shift.
struct PunctuationKey {
  char16_t plain, shifted;
  int code;
};
constexpr PunctuationKey punctuation_keys[] = {{u';', u':', 186}, {u'=', u'+', 187}, {u',', u'<', 188},
                                               {u'-', u'_', 189}, {u'.', u'>', 190}, {u'/', u'?', 191},
                                               {u'`', u'~', 192}, {u'[', u'{', 219}, {u'\\', u'|', 220},
                                               {u']', u'}', 221}, {u'\'', u'"', 222}};

int code_of_character(char16_t c) {
  if (is_ascii_alpha(c)) return ascii_upper(c);
  if (is_ascii_digit(c) || c == u' ') return c;
  constexpr std::u16string_view shifted_digits = u")!@#$%^&*(";
  if (const std::size_t digit = shifted_digits.find(c); digit != shifted_digits.npos)
    return static_cast<int>(u'0' + digit);
  for (const PunctuationKey& key : punctuation_keys)
    if (c == key.plain || c == key.shifted) return key.code;
  return 0;  // a character of another layout: no key of this keyboard
}

bool is_one_character(std::u16string_view key) {
  return key.size() == 1 || (key.size() == 2 && is_high_surrogate(key[0]) && is_low_surrogate(key[1]));
}

}  // namespace

browser::KeyInput key_input(std::u16string_view key, Modifiers modifiers) {
  browser::KeyInput input;
  input.shift = modifiers.shift;
  input.control = modifiers.control;
  input.alt = modifiers.alt;
  for (const NamedKey& named : named_keys) {
    if (named.name != key) continue;
    input.key = named.name == u"Space" ? u" " : named.name;
    input.key_code = named.code;
    if (!modifiers.control && !modifiers.alt) input.text = named.text;
    return input;
  }
  if (!is_one_character(key))
    throw RuntimeError(errors::invalid_call, u"No such key: " + std::u16string(key));
  input.key = modifiers.shift ? ascii_upper(key) : std::u16string(key);
  input.key_code = code_of_character(key[0]);
  if (!modifiers.control && !modifiers.alt) input.text = input.key;
  return input;
}

}  // namespace tvx::automation
