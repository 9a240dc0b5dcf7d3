#include "tvx/qt/support/keys.h"

#include <QKeyEvent>
#include <string_view>
#include <utility>

#include "tvx/browser/input/key_table.h"

namespace tvx::qt {
namespace {

constexpr std::pair<int, std::u16string_view> key_names[] = {
    {Qt::Key_Return, u"Enter"},
    {Qt::Key_Enter, u"Enter"},
    {Qt::Key_Tab, u"Tab"},
    {Qt::Key_Backtab, u"Tab"},
    {Qt::Key_Backspace, u"Backspace"},
    {Qt::Key_Delete, u"Delete"},
    {Qt::Key_Insert, u"Insert"},
    {Qt::Key_Escape, u"Escape"},
    {Qt::Key_Left, u"ArrowLeft"},
    {Qt::Key_Up, u"ArrowUp"},
    {Qt::Key_Right, u"ArrowRight"},
    {Qt::Key_Down, u"ArrowDown"},
    {Qt::Key_Home, u"Home"},
    {Qt::Key_End, u"End"},
    {Qt::Key_PageUp, u"PageUp"},
    {Qt::Key_PageDown, u"PageDown"},
    {Qt::Key_Shift, u"Shift"},
    {Qt::Key_Control, u"Control"},
    {Qt::Key_Alt, u"Alt"},
    {Qt::Key_AltGr, u"AltGraph"},
    {Qt::Key_CapsLock, u"CapsLock"},
    {Qt::Key_NumLock, u"NumLock"},
    {Qt::Key_ScrollLock, u"ScrollLock"},
    {Qt::Key_Pause, u"Pause"},
    {Qt::Key_Print, u"PrintScreen"},
    {Qt::Key_Space, u" "},
    {Qt::Key_Menu, u"ContextMenu"},
    {Qt::Key_Meta, u"Meta"},
};

// What the Latin layout has where on a keyboard, by scan code.
struct ScanRow {
  unsigned first;
  std::u16string_view keys;
};
constexpr ScanRow scan_rows[] = {
    {10, u"1234567890-="}, {24, u"QWERTYUIOP[]"}, {38, u"ASDFGHJKL;'`"}, {51, u"\\ZXCVBNM,./"}};

// The key beside the left Shift, which only keyboards with 105 keys have.
constexpr unsigned scan_of_angle_bracket = 94;
constexpr int angle_bracket_key = 226;

int code_of_scan(unsigned scan) {
  if (scan == scan_of_angle_bracket) return angle_bracket_key;
  const char16_t key = latin_character_of_place(scan);
  return key ? browser::key_code_of(key) : browser::unnumbered_key;
}

int virtual_key(const QKeyEvent& event) {
  const int key = event.key();
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + (key - Qt::Key_F1);
  // What stands over a digit differs between layouts: where the key is counts more than what it types.
  static constexpr std::u16string_view shifted_digits = u")!@#$%^&*(";
  const unsigned scan = event.nativeScanCode();
  const bool by_what_it_types =
      key > 0x20 && key < 0x7F &&
      (scan == 0 || shifted_digits.find(static_cast<char16_t>(key)) == shifted_digits.npos);
  return by_what_it_types ? browser::key_code_of(static_cast<char16_t>(key)) : code_of_scan(scan);
}

}  // namespace

char16_t latin_character_of_place(unsigned scan_code) {
  for (const ScanRow& row : scan_rows)
    if (scan_code >= row.first && scan_code - row.first < row.keys.size())
      return row.keys[scan_code - row.first];
  return 0;
}

browser::KeyInput key_input(const QKeyEvent& event) {
  browser::KeyInput input;
  const Qt::KeyboardModifiers held = event.modifiers();
  input.shift = held & Qt::ShiftModifier;
  input.control = held & Qt::ControlModifier;
  input.alt = held & Qt::AltModifier;
  std::u16string text = event.text().toStdU16String();
  if (!text.empty() && (text[0] < u' ' || text[0] == 0x7F)) text.clear();
  for (const auto& [qt_key, name] : key_names) {
    if (qt_key != event.key()) continue;
    input.key = name;
    input.key_code = browser::named_key_code(name).value_or(browser::unnumbered_key);
    if (name == u" ") input.text = name;
    return input;
  }
  input.key_code = virtual_key(event);
  // A Latin letter by its position, where the layout's own types no text with Control.
  const bool latin = input.key_code >= 'A' && input.key_code <= 'Z';
  if (text.empty() && latin) {
    const char16_t letter = static_cast<char16_t>(input.key_code);
    input.key = std::u16string(1, input.shift ? letter : static_cast<char16_t>(letter + 32));
  } else {
    input.key = text;
  }
  if (input.control && !input.alt) text.clear();
  input.text = std::move(text);
  return input;
}

bool belongs_to_the_editor(const QKeyEvent& event) {
  const browser::KeyInput key = key_input(event);
  if (key.control && !key.alt) {
    static constexpr std::u16string_view letters = u"ABIUZYCXV";
    if (letters.find(static_cast<char16_t>(key.key_code)) != letters.npos) return true;
    return key.key.starts_with(u"Arrow") || key.key == u"Home" || key.key == u"End" ||
           key.key == u"Backspace" || key.key == u"Delete" || key.key == u"Enter";
  }
  if (key.alt || (event.modifiers() & Qt::MetaModifier)) return false;
  const bool is_function_key = key.key_code >= 112 && key.key_code <= 135;
  return !is_function_key && key.key != u"Escape";
}

}  // namespace tvx::qt
