#include "tvx/headless/form_keys.h"

#include <algorithm>
#include <string>

#include "tvx/browser/input/key_table.h"
#include "tvx/browser/input/typed_character.h"

namespace tvx::headless {

using browser::KeyInput;
using platform::ControlKind;
using platform::Form;
using platform::FormControl;

namespace {

constexpr std::int16_t backspace = 8, smallest_printed = 32;

bool is_stop(const FormControl& control) {
  switch (control.kind()) {
    case ControlKind::Label:
    case ControlKind::Frame:
    case ControlKind::PictureBox: return false;
    default: return control.reachable();
  }
}

void go_on(Form& form, bool forward) {
  const auto& all = form.controls();
  const auto count = static_cast<std::ptrdiff_t>(all.size());
  const auto here = std::ranges::find(all, form.ActiveControl(), [](const auto& each) { return each.get(); });
  std::ptrdiff_t place = here == all.end() ? -1 : here - all.begin();
  for (std::ptrdiff_t steps = 0; steps < count; ++steps) {
    place = (place + (forward ? 1 : count - 1)) % count;
    FormControl& control = *all[static_cast<std::size_t>(place)];
    if (!is_stop(control)) continue;
    form.SetFocus(control);
    if (control.kind() == ControlKind::TextBox) control.select(0, static_cast<int>(control.Text().size()));
    return;
  }
}

void replace_selection(FormControl& box, std::u16string_view by) {
  std::u16string text = box.Text();
  text.replace(static_cast<std::size_t>(box.SelStart()), static_cast<std::size_t>(box.SelLength()), by);
  box.edit(text, box.SelStart() + static_cast<int>(by.size()), 0);
}

void erase(FormControl& box, int from) {
  if (box.SelLength() > 0) return replace_selection(box, {});
  if (from < 0 || from >= static_cast<int>(box.Text().size())) return;
  box.select(from, 1);
  replace_selection(box, {});
}

/// What a key does in a box that types nothing.
void move_or_delete(FormControl& box, const KeyInput& key) {
  const int end = static_cast<int>(box.Text().size());
  if (key.key == u"Delete") erase(box, box.SelStart());
  if (key.key == u"Home") box.select(0, 0);
  if (key.key == u"End") box.select(end, 0);
  if (key.key == u"ArrowLeft") box.select(box.SelLength() > 0 ? box.SelStart() : box.SelStart() - 1, 0);
  if (key.key == u"ArrowRight")
    box.select(box.SelLength() > 0 ? box.SelStart() + box.SelLength() : box.SelStart() + 1, 0);
  if (key.key == u"ArrowUp") box.step(1);
  if (key.key == u"ArrowDown") box.step(-1);
}

void write(FormControl& box, const KeyInput& key, std::int16_t typed) {
  constexpr std::int16_t select_all = 1;
  const std::int16_t character = box.key_press(typed);
  if (character == 0) return;
  if (character == backspace) return erase(box, box.SelStart() - 1);
  if (character == select_all && key.control) return box.select(0, static_cast<int>(box.Text().size()));
  if (character == typed && !key.control) return replace_selection(box, key.text);
  if (character >= smallest_printed || character < 0)
    replace_selection(box, std::u16string(1, static_cast<char16_t>(character)));
}

void type_into(FormControl& box, const KeyInput& key) {
  const auto code = static_cast<std::int16_t>(key.key_code);
  const auto held = static_cast<std::int16_t>(key.shift | key.control << 1 | key.alt << 2);
  const bool taken = box.key_down(code, held) == 0;
  const std::int16_t typed = browser::typed_character(key);
  if (typed != 0)
    write(box, key, typed);
  else if (!taken && key.key == u"Tab")
    go_on(box.form(), !key.shift);
  else if (!taken)
    move_or_delete(box, key);
  box.key_up(code, held);
}

void choose_beside(FormControl& list, const KeyInput& key) {
  const int wanted = list.ListIndex() + (key.key == u"ArrowDown" ? 1 : key.key == u"ArrowUp" ? -1 : 0);
  if (wanted != list.ListIndex() && wanted >= 0 && wanted < list.ListCount()) list.choose(wanted);
}

}  // namespace

FormControl* first_stop(const Form& form) {
  const auto& all = form.controls();
  const auto found = std::ranges::find_if(all, [](const auto& control) { return is_stop(*control); });
  return found == all.end() ? nullptr : found->get();
}

void type_key(Form& form, const KeyInput& key) {
  FormControl* active = form.ActiveControl() ? form.ActiveControl() : first_stop(form);
  const bool on_button = active && active->kind() == ControlKind::CommandButton;
  if (key.key == u"Escape") return form.cancel();
  if (key.key == u"Enter") {
    if (FormControl* button = on_button ? active : form.default_button()) button->click();
    return;
  }
  if (!active || !active->reachable()) return;
  if (active->takes_text()) return type_into(*active, key);
  if (key.key == u"Tab") return go_on(form, !key.shift);
  if (key.key == u" ") active->click();
  if (active->is_list()) choose_beside(*active, key);
}

void type_over(FormControl& box, std::u16string_view text) {
  box.form().SetFocus(box);
  box.select(0, static_cast<int>(box.Text().size()));
  if (text.empty()) return type_into(box, {.key = u"Delete", .text = {}, .key_code = 46});
  for (const char16_t letter : text) {
    const std::u16string typed(1, letter);
    type_into(box, {.key = typed, .text = typed, .key_code = browser::key_code_of(letter)});
  }
}

}  // namespace tvx::headless
