#include "tvx/core/dialogs/font_settings.h"

#include <variant>

#include "tvx/base/colour.h"
#include "tvx/base/error.h"
#include "tvx/browser/browser.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/dom/journal.h"

namespace tvx::core {

// Nothing where the selection has several: what is written back then changes none of them.
std::u16string FontSettings::colour(std::u16string_view command) const {
  std::u16string text;
  attempt([&] {
    const browser::CommandValue value = document().queryCommandValue(command);
    if (const auto* number = std::get_if<std::int32_t>(&value))
      text = u"#" + RGBToHex(ColourToRGB(*number, u","), u",");
  });
  return text;
}

std::u16string FontSettings::text(std::u16string_view command) const {
  std::u16string text;
  attempt([&] {
    const browser::CommandValue value = document().queryCommandValue(command);
    if (const auto* found = std::get_if<std::u16string>(&value)) text = *found;
  });
  return text;
}

void FontSettings::read_values() {
  values_ = {colour(u"Forecolor"), colour(u"Backcolor"), text(u"FontName"), text(u"FontSize")};
}

// Also after Cancel, which writes what was read. A background is written only where it is another one: text
// without one keeps none.
void FontSettings::write_values() const {
  const auto kept = browser().Document();
  const dom::UndoStep step(browser_document().tree().journal(), u"Font");
  const auto run = [this](std::u16string_view command, const std::u16string& value) {
    attempt([&] { browser::press_command(browser_document(), command, value); });
  };
  run(u"Forecolor", values_.FontFore);
  run(u"FontSize", values_.FontSizeValue);
  run(u"Fontname", values_.FontNameValue);
  if (colour(u"Backcolor") != values_.FontBack) run(u"BackColor", values_.FontBack);
}

void FontSettings::change_Font() {
  const KeepAlive alive(context_);
  read_values();
  const std::vector<std::u16string> fonts =
      surroundings().forms ? surroundings().forms->fonts() : std::vector<std::u16string>();
  dialogs::FontDialog dialog(surroundings().dialogs, fonts, values_);
  if (!attempt([&] { context_.show_dialog(dialog.form(), u"FontSettings"); })) return;
  attempt([&] { write_values(); });
  mark_changed();
}

}  // namespace tvx::core
