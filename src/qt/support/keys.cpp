#include "tvx/qt/support/keys.h"

#include <QKeyEvent>
#include <string_view>

namespace tvx::qt {
namespace {

struct NamedKey {
  int qt_key;
  std::u16string_view name;
  int code;
};

constexpr NamedKey named_keys[] = {
    {Qt::Key_Return, u"Enter", 13},
    {Qt::Key_Enter, u"Enter", 13},
    {Qt::Key_Tab, u"Tab", 9},
    {Qt::Key_Backtab, u"Tab", 9},
    {Qt::Key_Backspace, u"Backspace", 8},
    {Qt::Key_Delete, u"Delete", 46},
    {Qt::Key_Insert, u"Insert", 45},
    {Qt::Key_Escape, u"Escape", 27},
    {Qt::Key_Left, u"ArrowLeft", 37},
    {Qt::Key_Up, u"ArrowUp", 38},
    {Qt::Key_Right, u"ArrowRight", 39},
    {Qt::Key_Down, u"ArrowDown", 40},
    {Qt::Key_Home, u"Home", 36},
    {Qt::Key_End, u"End", 35},
    {Qt::Key_PageUp, u"PageUp", 33},
    {Qt::Key_PageDown, u"PageDown", 34},
    {Qt::Key_Shift, u"Shift", 16},
    {Qt::Key_Control, u"Control", 17},
    {Qt::Key_Alt, u"Alt", 18},
    {Qt::Key_AltGr, u"AltGraph", 18},
    {Qt::Key_CapsLock, u"CapsLock", 20},
    {Qt::Key_Space, u" ", 32},
    {Qt::Key_Menu, u"ContextMenu", 93},
    {Qt::Key_Meta, u"Meta", 91},
};

// Punctuation keys of the Latin layout, by what they type with and without Shift.
constexpr std::pair<std::u16string_view, int> punctuation[] = {
    {u";:", 186}, {u"=+", 187}, {u",<", 188},  {u"-_", 189}, {u".>", 190}, {u"/?", 191},
    {u"`~", 192}, {u"[{", 219}, {u"\\|", 220}, {u"]}", 221}, {u"'\"", 222}};

// Where the letters of the Latin layout are on a keyboard, by scan code.
struct ScanRow {
  int first;
  std::u16string_view letters;
};
constexpr ScanRow scan_rows[] = {
    {10, u"1234567890"}, {24, u"QWERTYUIOP"}, {38, u"ASDFGHJKL"}, {52, u"ZXCVBNM"}};

constexpr std::pair<int, int> scan_punctuation[] = {{20, 189}, {21, 187}, {34, 219}, {35, 221},
                                                    {47, 186}, {48, 222}, {49, 192}, {51, 220},
                                                    {59, 188}, {60, 190}, {61, 191}, {94, 226}};
// A key that has no number of its own. It must not be 0, which means a key that was taken away.
constexpr int unnumbered_key = 255;

int code_of_scan(int scan) {
  for (const ScanRow& row : scan_rows) {
    const int at = scan - row.first;
    if (at >= 0 && at < static_cast<int>(row.letters.size()))
      return row.letters[static_cast<std::size_t>(at)];
  }
  for (const auto& [place, code] : scan_punctuation) {
    if (place == scan) return code;
  }
  return unnumbered_key;
}

int virtual_key(const QKeyEvent& event) {
  const int key = event.key();
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + (key - Qt::Key_F1);
  if (key < 0x80) {
    for (const auto& [typed, code] : punctuation) {
      if (typed.find(static_cast<char16_t>(key)) != typed.npos) return code;
    }
  }
  return code_of_scan(static_cast<int>(event.nativeScanCode()));
}

}  // namespace

browser::KeyInput key_input(const QKeyEvent& event) {
  browser::KeyInput input;
  const Qt::KeyboardModifiers held = event.modifiers();
  input.shift = held & Qt::ShiftModifier;
  input.control = held & Qt::ControlModifier;
  input.alt = held & Qt::AltModifier;
  std::u16string text = event.text().toStdU16String();
  if (!text.empty() && (text[0] < u' ' || text[0] == 0x7F)) text.clear();
  for (const NamedKey& named : named_keys) {
    if (named.qt_key != event.key()) continue;
    input.key = named.name;
    input.key_code = named.code;
    if (named.code == 32) input.text = u" ";
    return input;
  }
  input.key_code = virtual_key(event);
  // A Latin letter by its place, where the layout's own types no text with Control.
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
