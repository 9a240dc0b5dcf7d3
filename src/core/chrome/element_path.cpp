#include "tvx/core/chrome/path_buttons.h"

#include <cmath>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"

/// The way to the current element at the foot of the control, and the border around that element.
namespace tvx::core {
namespace {

/// What the menu of a button needs above the toolbar, in twips: with the cell and row submenu, and without.
constexpr float tall_menu = 1300, menu_height = 900;

}  // namespace

void HTMLed::BuildBranchToolbar() {
  if (!properties_.showDOMToolbar) return;
  const Layout before = layout_;
  platform::Toolbar& toolbar = tlbDOM();
  toolbar.Clear();
  toolbar.set_ButtonHeight(branch::button_height);
  toolbar.set_ButtonWidth(branch::button_width);
  toolbar.set_Visible(false);
  attempt([&] {
    const dom::Document& tree = document().tree();
    branch::show_path(toolbar, tree, branch::path_to(tree, highlight_->element()));
  });
  toolbar.set_Visible(true);
  toolbar.Refresh();
  layout_.Picture3.Height = toolbar.Height();
  layout_.Picture3.Top = height_ - layout_.Picture3.Height;
  layout_.WBrowser.Width = std::trunc(width_);
  layout_.WBrowser.Height = height_ - layout_.WBrowser.Top - layout_.Picture3.Height;
  tell_layout(before);
}

void HTMLed::draw_selection_border() {
  highlight_->draw(
      {properties_.SelectionBorderStyle, properties_.SelectionBorderWidth, properties_.SelectionBorderColor});
}

void HTMLed::tlbDOM_ButtonClick(const platform::Button& button) {
  const std::u16string key = button.Key();
  highlight_->restore();
  dom::Element* element = branch::element_of(document().tree(), key);
  highlight_->set_element(element);
  if (!element) throw RuntimeError(errors::object_not_set, u"There is no such element");
  const std::u16string tag = ascii_lower(element->display_name());
  const branch::ElementActions actions = branch::actions_for(tag);
  menus_->item(u"mnuToolEditTag").set_Enabled(actions.edit_tag);
  menus_->item(u"mnuToolProperties").set_Enabled(actions.properties);
  menus_->prepare_cell_row_actions(tag, {labels_.cell, labels_.row, labels_.delete_row, labels_.delete_cell});
  const float allowance = tag == u"tr" || tag == u"td" ? tall_menu : menu_height;
  if (properties_.HighlightDOMSelection) draw_selection_border();
  if (key.empty()) return;
  const float line = button.Top() + layout_.Picture3.Top;
  popup(menus_->mnuToolProp, platform::PopupPlace{button.Left(), line - allowance, line});
}

}  // namespace tvx::core
