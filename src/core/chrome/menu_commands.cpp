#include "tvx/core/chrome/menu_commands.h"
#include "tvx/core/chrome/command_state.h"

#include "tvx/base/error.h"
#include "tvx/base/interruption.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/actions.h"
#include "tvx/core/chrome/cell_menu.h"
#include "tvx/core/chrome/class_menus.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/table_tools.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/chrome/veto.h"
#include "tvx/core/commands/formatting.h"
#include "tvx/core/dialogs/field_settings.h"
#include "tvx/core/dialogs/image_settings.h"
#include "tvx/core/spelling/spelling_marks.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/objects/element_content.h"

namespace tvx::core {
namespace {

/// So many levels above an image a link around it counts.
constexpr int link_levels = 3;

bool stands_in_link(const dom::Element& image) {
  const dom::Element* above = &image;
  for (int level = 0; level < link_levels; ++level) {
    above = above->parent_element();
    if (!above) return false;
    if (above->is(dom::Tag::A)) return true;
  }
  return false;
}

}  // namespace

MenuCommands::MenuCommands(Context& context, const Parts& parts) : Part(context), parts_(parts) {
  parts.menus.set_handler(this);
}

void popup(const Surroundings& surroundings, platform::Menu& menu,
           const std::optional<platform::PopupPlace>& place) {
  if (surroundings.popups) surroundings.popups->PopupMenu(menu, surroundings.hwnd, place);
}

void MenuCommands::ApplyContextMenuState() {
  attempt([&] { parts_.menus.apply_hidden(properties_.HiddenContextMenus); });
}

void MenuCommands::ShowContextMenu(platform::Menu& menu) {
  const platform::Clipboard* clipboard = surroundings().clipboard;
  parts_.menus.refresh_paste(menu, [clipboard](platform::ClipboardFormat format) {
    return clipboard && clipboard->GetFormat(format);
  });
  show_obstacles(parts_.menus, parts_.toolbars, context_);
  if (const auto word = parts_.spelling.word_at_caret()) {
    const std::vector<std::u16string> suggestions = parts_.spelling.suggestions(*word);
    parts_.menus.show_spelling(menu, &suggestions, properties_.HiddenContextMenus);
  } else {
    parts_.menus.show_spelling(menu, nullptr, {});
  }
  parts_.menus.show_paste_text(clipboard && clipboard->GetFormat(platform::ClipboardFormat::text),
                               properties_.HiddenContextMenus);
  editing::Editor* editor = nullptr;
  attempt([&] { editor = &document().editor(); });
  show_cell_menus(parts_.menus, editor, properties_.HiddenContextMenus);
  popup(surroundings(), menu);
}

void MenuCommands::open() {
  const dom::Element* element = parts_.highlight.element();
  if (!element) throw RuntimeError(errors::object_not_set, u"There is no current element");
  ContextMenus& menus = parts_.menus;
  if (element->is(dom::Tag::Img)) {
    menus.show_image_link(stands_in_link(*element));
    ShowContextMenu(menus.mnuImg);
    return act_after_image_menu();
  }
  if (element->is(dom::Tag::Table)) {
    popup(surroundings(), menus.mnuT);
    return parts_.tables.act_after_menu(pending_command_);
  }
  if (element->is(dom::Tag::A)) {
    ShowContextMenu(menus.mnuLinks);
  } else {
    const bool can_toggle = parts_.toolbars.Toolbar1.Item(button_toggle).Enabled();
    menus.item(u"mnuMiscSource").set_Enabled(can_toggle && properties_.showFormattingToolbar1);
    const dom::Ref<dom::Element> shown(parts_.highlight.element());
    menus.show_form_items(menus.mnuMisc, FieldSettings::field_of(shown.get()) != nullptr,
                          FieldSettings::form_of(shown.get()) != nullptr, properties_.HiddenContextMenus);
    ShowContextMenu(menus.mnuMisc);
  }
  act_after_other_menus();
}

void MenuCommands::edit_image() {
  const dom::Element* element = parts_.highlight.element();
  if (!element || !element->is(dom::Tag::Img)) return;
  if (!parts_.menus.item(u"mnuImgProperties").Visible()) return;
  if (parts_.image_settings.EditImageProperties()) mark_changed();
}

// A menu that was dismissed marks the document as well: that is how it is with images.
void MenuCommands::act_after_image_menu() {
  const std::u16string& command = pending_command_;
  if (command == u"Link") {
    parts_.formatting.insert_Link();
  } else if (command == u"RemoveLink") {
    document().execCommand(u"unlink", false, u"");
  } else if (command == u"IMGPROP") {
    if (!parts_.image_settings.EditImageProperties()) return;
  }
  mark_changed();
}

void MenuCommands::act_after_other_menus() {
  const std::u16string& command = pending_command_;
  if (command.empty()) return;
  if (command == u"Field Settings" || command == u"Form Settings") return edit_field_or_form();
  if (command == u"Remove Link") {
    const dom::Ref<dom::Element> link = parts_.highlight.element();
    if (!link) throw RuntimeError(errors::object_not_set, u"There is no current element");
    dom::assign_outer_text(*link, dom::inner_text(*link));
  } else if (command == u"Edit Link") {
    parts_.formatting.insert_Link();
  }
  mark_changed();
}

// Marked as changed where something was confirmed, and not where the user cancels.
void MenuCommands::edit_field_or_form() {
  dom::Element* element = parts_.highlight.element();
  const bool form = pending_command_ == u"Form Settings";
  const dom::Ref<dom::Element> found =
      form ? FieldSettings::form_of(element) : FieldSettings::field_of(element);
  if (!found) return;
  form ? parts_.field_settings.edit_form(found) : parts_.field_settings.edit_field(found);
}

void MenuCommands::MenuItemClick(platform::Menu& item) {
  const KeepAlive alive(context_);
  // The items of the class menus ask the host themselves.
  const auto index = std::int16_t(item.Index().value_or(0));
  if (item.Name() == u"mnuClass") return parts_.classes.give_to_element(index);
  if (item.Name() == u"mnuMiscClass") {
    run_interruptible([&] { parts_.classes.give_to_selection(index); });
    return;
  }
  const std::u16string_view key = ContextMenus::key_of(item);
  if (key.empty() || !host_allows_item(context_, key)) return;
  run_interruptible([&] { attempt([&] { parts_.actions.choose(item); }); });
}

}  // namespace tvx::core
