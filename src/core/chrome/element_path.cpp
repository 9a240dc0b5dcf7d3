#include "tvx/core/chrome/element_path.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/command_state.h"
#include "tvx/core/chrome/menu_commands.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/path_buttons.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/dialogs/field_settings.h"
#include "tvx/core/views/panes.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/tree.h"

namespace tvx::core {
namespace {

/// What the menu of a button needs above the toolbar, in twips: with the cell and row submenu, and without.
constexpr float tall_menu = 1300, menu_height = 900;

}  // namespace

void ElementPath::BuildBranchToolbar() {
  if (!properties_.showDOMToolbar) return;
  platform::Toolbar& toolbar = toolbars_.tlbDOM;
  toolbar.Clear();
  toolbar.set_ButtonHeight(branch::button_height);
  toolbar.set_ButtonWidth(branch::button_width);
  toolbar.set_Visible(false);
  attempt([&] {
    const dom::Document& tree = document().tree();
    branch::show_path(toolbar, tree, branch::path_to(tree, highlight_.element()));
  });
  toolbar.set_Visible(true);
  toolbar.Refresh();
  panes_.fit_element_path();
}

void ElementPath::draw_selection_border() {
  highlight_.draw(
      {properties_.SelectionBorderStyle, properties_.SelectionBorderWidth, properties_.SelectionBorderColor});
}

void ElementPath::press(const platform::Button& button) {
  const std::u16string key = button.Key();
  highlight_.restore();
  dom::Element* element = branch::element_of(document().tree(), key);
  highlight_.set_element(element);
  if (!element) throw RuntimeError(errors::object_not_set, u"There is no such element");
  const std::u16string tag = ascii_lower(element->display_name());
  const branch::ElementActions actions = branch::actions_for(tag);
  menus_.item(u"mnuToolEditTag").set_Enabled(actions.edit_tag);
  menus_.item(u"mnuToolProperties").set_Enabled(actions.properties);
  show_obstacles(menus_, *element, actions.edit_tag);
  menus_.prepare_cell_row_actions(tag, {labels_.cell, labels_.row, labels_.delete_row, labels_.delete_cell});
  menus_.show_form_items(menus_.mnuToolProp, FieldSettings::field_of(element) != nullptr,
                         element->is(dom::Tag::Form), properties_.HiddenContextMenus);
  const float allowance = tag == u"tr" || tag == u"td" ? tall_menu : menu_height;
  if (properties_.HighlightDOMSelection) draw_selection_border();
  if (key.empty()) return;
  const float line = button.Top() + panes_.layout().Picture3.Top;
  popup(surroundings(), menus_.mnuToolProp, platform::PopupPlace{button.Left(), line - allowance, line});
}

}  // namespace tvx::core
