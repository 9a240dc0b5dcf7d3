#include "tvx/core/chrome/toolbars.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/core/chrome/path_buttons.h"

namespace tvx::core {
namespace {

using platform::Button;
using platform::ButtonStyle;
using platform::Toolbar;

struct Row {
  std::u16string_view key, tool_tip, image;
};

/// A row without a key is a separator.
constexpr Row formatting_buttons[] = {
    {u"toggle", u"Toggle Design / Code view", u"toggle"},
    {u"Print", u"Print", u"print"},
    {},
    {u"Copy", u"Copy", u"copy"},
    {u"Cut", u"Cut", u"cut"},
    {u"Paste", u"Paste", u"paste"},
    {u"Align Left", u"Align Left", u"Align Left"},
    {u"Center", u"Center", u"Centre"},
    {u"Align Right", u"Align Right", u"Align Right"},
    {u"Bold", u"Bold", u"bold"},
    {u"Italic", u"Italic", u"italic"},
    {u"Underline", u"Underline", u"underline"},
    {u"Strike Through", u"Strike Through", u"strike"},
    {},
    {u"indent", u"Indent Paragraph", u"indent"},
    {u"unindent", u"Outdent Paragraph", u"outdent"},
    {u"Text", u"Change selected text font and color", u"text"},
    {u"Find", u"Find and Replace", u"find"},
    {u"Spell Check", u"Spell Check", u"spelling"},
    {},
    {u"Undo", u"Undo", u"undo"},
    {u"Redo", u"Redo", u"redo"},
    {u"link", u"Insert / Edit Hyperlink", u"link"},
    {u"Image", u"Insert Image", u"image"},
    {u"RemoteImage", u"Insert Image from remote server", u"remoteimage"},
    {u"orderedlist", u"insert numerical list", u"ol"},
    {u"unorderedlist", u"insert unordered list", u"ul"},
    {u"table", u"Insert / Edit Table", u"table"},
    {u"HR", u"Horizontal Line", u"hr"},
};

constexpr Row form_buttons[] = {
    {u"Form", u"Insert / Edit form", u"Form"},
    {u"TextField", u"Insert a textbox", u"Textbox"},
    {u"textarea", u"Insert a text area", u"TextArea"},
    {u"FileField", u"insert a file upload field", u"Filefield"},
    {u"HiddenField", u"Insert a hidden field", u"Hidden"},
    {u"ImageField", u"", u"ImageField"},
    {u"checkbox", u"", u"Checkbox"},
    {u"dropdown", u"insert a drop down list", u"combo"},
    {u"Button", u"Insert a command button", u"Button"},
    {u"Submit", u"Insert a form submit button", u"Submit"},
    {u"Reset", u"Insert a form Reset button", u"Reset"},
    {u"Radio", u"Insert an option button", u"Radio"},
};

constexpr int last_of_group_1 = 19;

template <std::size_t count>
void fill(Toolbar& toolbar, const Row (&rows)[count]) {
  for (const Row& row : rows)
    toolbar.Add({std::u16string(row.key), u"", std::u16string(row.tool_tip), std::u16string(row.image),
                 row.key.empty() ? ButtonStyle::Separator : ButtonStyle::Default});
}

void set_state(Button& button, bool on) {
  button.set_Enabled(on);
  button.set_Visible(on);
}

void set_state(Toolbar& toolbar, int first, int last, bool on) {
  for (int i = first; i <= std::min(last, toolbar.Count()); ++i) set_state(toolbar.Item(i), on);
}

}  // namespace

Toolbars::Toolbars() : Toolbar1(u"Toolbar1"), Toolbar2(u"Toolbar2"), tlbDOM(u"tlbDOM") {
  fill(Toolbar1, formatting_buttons);
  fill(Toolbar2, form_buttons);
}

void Toolbars::prepare_branch_toolbar() {
  tlbDOM.Clear();
  tlbDOM.set_ButtonHeight(branch::button_height);
  tlbDOM.set_ButtonWidth(branch::button_width);
  tlbDOM.Add({u"KEY0", u" ", u"", u"Blank", ButtonStyle::Default});
}

void Toolbars::apply_state(bool enabled, const ToolbarSettings& settings) {
  Toolbar1.Item(button_toggle).set_Enabled(enabled || settings.formatting_1);
  set_state(Toolbar1, 2, Toolbar1.Count(), enabled);
  if (!settings.formatting_1) set_state(Toolbar1, 2, last_of_group_1, false);
  if (!settings.formatting_2) set_state(Toolbar1, last_of_group_1 + 1, Toolbar1.Count(), false);
  if (!settings.hidden_buttons.empty()) hide(settings.hidden_buttons, settings.form_toolbar);
  Toolbar1.Item(button_find).set_Visible(false);
  Toolbar1.Refresh();
  Toolbar2.Refresh();
}

void Toolbars::hide(std::u16string_view keys, bool form_toolbar) {
  for (std::u16string_view key : split(keys, u';')) {
    if (Button* button = Toolbar1.find_ignoring_case(key)) set_state(*button, false);
    if (!form_toolbar) continue;
    if (Button* button = Toolbar2.find_ignoring_case(key)) set_state(*button, false);
  }
}

}  // namespace tvx::core
