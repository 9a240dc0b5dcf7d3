#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/platform/common_dialogs.h"

/// From a pressed button to the operation behind it.
namespace tvx::core {
namespace {

struct Action {
  std::u16string_view key;  // compared letter by letter
  void (*act)(HTMLed& control);
};

constexpr Action actions[] = {
    {u"toggle", [](HTMLed& control) { control.show_Code(); }},
    {u"Print", [](HTMLed& control) { control.print_Document(false); }},
    {u"Copy", [](HTMLed& control) { control.copy_document(); }},
    {u"Cut", [](HTMLed& control) { control.cut_document(); }},
    {u"Paste", [](HTMLed& control) { control.paste_document(); }},
    {u"Align Left", [](HTMLed& control) { control.Left_Justify(); }},
    {u"Center", [](HTMLed& control) { control.Center_justify(); }},
    {u"Align Right", [](HTMLed& control) { control.Right_justify(); }},
    {u"Bold", [](HTMLed& control) { control.bold_document(); }},
    {u"Italic", [](HTMLed& control) { control.italic_document(); }},
    {u"Underline", [](HTMLed& control) { control.underline_document(); }},
    {u"Strike Through", [](HTMLed& control) { control.strike_document(); }},
    {u"indent", [](HTMLed& control) { control.indent_document(); }},
    {u"unindent", [](HTMLed& control) { control.unindent_document(); }},
    {u"Undo", [](HTMLed& control) { control.undo_document(); }},
    {u"Redo", [](HTMLed& control) { control.redo_document(); }},
    {u"orderedlist", [](HTMLed& control) { control.numbered_list(); }},
    {u"unorderedlist", [](HTMLed& control) { control.unnumbered_list(); }},
    {u"table", [](HTMLed& control) { control.Table_Document(); }},
};

}  // namespace

void HTMLed::ApplyToolbarState(bool enabled) {
  attempt([&] {
    ToolbarSettings settings;
    settings.formatting_1 = properties_.showFormattingToolbar1;
    settings.formatting_2 = properties_.showFormattingToolbar2;
    settings.form_toolbar = properties_.showFormToolbar;
    settings.hidden_buttons = properties_.HiddenButtons;
    toolbars_->apply_state(enabled, settings);
  });
  const Layout before = layout_;
  if (enabled) {
    layout_.Picture2.Visible = properties_.showFormToolbar;
    layout_.Picture2.Top = layout_.Picture1.Height;
  } else {
    layout_.Picture1.Visible = properties_.showFormattingToolbar1;
    layout_.Picture2.Visible = false;
  }
  tell_layout(before);
}

bool HTMLed::press(platform::Toolbar& toolbar, std::u16string_view key) {
  return toolbar.press(toolbar.Item(key));
}

void HTMLed::ButtonClick(platform::Toolbar& toolbar, platform::Button& button) {
  const KeepAlive alive(*this);
  if (&toolbar == &toolbars_->Toolbar1)
    Toolbar1_ButtonClick(button);
  else if (&toolbar == &toolbars_->Toolbar2)
    Toolbar2_ButtonClick(button);
  else if (&toolbar == &toolbars_->tlbDOM)
    attempt([&] { tlbDOM_ButtonClick(button); });
}

bool HTMLed::host_allows(std::u16string_view toolbar, const platform::Button& button) {
  std::u16string name(toolbar), key = button.Key();
  std::int16_t index = std::int16_t(button.Index());
  bool cancel = false;
  raise([&](HTMLedEvents& host) { host.ToolButtonClick(name, index, key, cancel); });
  return !cancel;
}

void HTMLed::Toolbar1_ButtonClick(platform::Button& button) {
  if (!host_allows(u"Toolbar1", button)) return;
  const std::u16string key = button.Key();
  if ((key == u"Undo" || key == u"Redo") && !properties_.IsDirty) return;
  const auto action = std::ranges::find(actions, key, &Action::key);
  if (action != std::end(actions)) {
    attempt([&] { action->act(*this); });
  } else if (key == u"Find") {
    const KeepAlive alive(*this);
    dialogs_.show_message({.text = key, .owner = hwnd_});
  }
  mark_changed();
}

void HTMLed::Toolbar2_ButtonClick(platform::Button& button) {
  if (!host_allows(u"FormsToolbar", button)) return;
  mark_changed();
}

}  // namespace tvx::core
