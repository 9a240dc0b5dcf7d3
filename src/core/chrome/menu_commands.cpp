#include "tvx/core/chrome/menus.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/chrome/table_tools.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/platform/common_dialogs.h"

/// The right mouse press: which menu opens, and what its items lead to.
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

platform::Menu* HTMLed::menu(std::u16string_view name, std::optional<int> index) {
  return menus_->find(name, index);
}

void HTMLed::ApplyContextMenuState() {
  attempt([&] { menus_->apply_hidden(properties_.HiddenContextMenus); });
}

void HTMLed::popup(platform::Menu& menu, const std::optional<platform::PopupPlace>& place) {
  if (popups_) popups_->PopupMenu(menu, hwnd_, place);
}

void HTMLed::ShowContextMenu(platform::Menu& menu) {
  menus_->refresh_paste(
      menu, [this](platform::ClipboardFormat format) { return clipboard_ && clipboard_->GetFormat(format); });
  popup(menu);
}

// What the browser's own menu would need is never there: that menu stays away.
bool HTMLed::oncontextmenu() { return false; }

// The event and the element are those of the last selection change, which every press brings about.
void HTMLed::onmousedown() {
  const KeepAlive alive(*this);
  pending_context_command_.clear();
  if (!properties_.EditorEnabled) return;
  attempt([&] {
    BuildBranchToolbar();
    if (!last_event_ || last_event_->button != browser::MouseButton::Right) return;
    const dom::Element* element = highlight_->element();
    if (!element) throw RuntimeError(errors::object_not_set, u"There is no current element");
    open_context_menu(*element);
  });
}

void HTMLed::open_context_menu(const dom::Element& element) {
  if (element.is(dom::Tag::Img)) {
    menus_->show_image_link(stands_in_link(element));
    ShowContextMenu(menus_->mnuImg);
    return act_after_image_menu();
  }
  if (element.is(dom::Tag::Table)) {
    popup(menus_->mnuT);
    return act_after_table_menu();
  }
  if (element.is(dom::Tag::A)) {
    ShowContextMenu(menus_->mnuLinks);
  } else {
    menus_->item(u"mnuMiscSource")
        .set_Enabled(Toolbar1().Item(button_toggle).Enabled() && properties_.showFormattingToolbar1);
    ShowContextMenu(menus_->mnuMisc);
  }
  act_after_other_menus();
}

// A menu that was dismissed marks the document as well: that is how it is with images.
void HTMLed::act_after_image_menu() {
  const std::u16string& command = pending_context_command_;
  if (command == u"Link") {
    insert_Link();
  } else if (command == u"RemoveLink") {
    document().execCommand(u"unlink", false, u"");
  } else if (command == u"IMGPROP") {
    return;  // no dialog, no change
  }
  mark_changed();
}

void HTMLed::act_after_other_menus() {
  const std::u16string& command = pending_context_command_;
  if (command.empty()) return;
  if (command == u"Remove Link") {
    const dom::Ref<dom::Element> link = highlight_->element();
    if (!link) throw RuntimeError(errors::object_not_set, u"There is no current element");
    dom::assign_outer_text(*link, dom::inner_text(*link));
  } else if (command == u"Edit Link") {
    insert_Link();
  }
  mark_changed();
}

void HTMLed::act_after_table_menu() { TableTools(*this).act_after_menu(); }

// --- the items ---

struct HTMLed::MenuActions {
  struct Row {
    std::u16string_view name;
    void (*act)(HTMLed& control, const platform::Menu& item);
  };

  static void cut(HTMLed& control, const platform::Menu&) {
    control.cut_document();
    control.mark_changed();
  }
  static void copy(HTMLed& control, const platform::Menu&) { control.copy_document(); }
  static void paste(HTMLed& control, const platform::Menu&) {
    control.paste_document();
    control.mark_changed();
  }
  /// Leaves a text for what runs when the popup has closed.
  template <const char16_t* command>
  static void pend(HTMLed& control, const platform::Menu&) {
    control.pending_context_command_ = command;
  }
  static void source(HTMLed& control, const platform::Menu&) {
    if (control.Toolbar1().Item(button_toggle).Visible()) control.show_Code();
  }
  static void revert(HTMLed& control, const platform::Menu&) { control.ask_and_revert(); }
  static void cell_or_row(HTMLed& control, const platform::Menu& item) {
    TableTools(control).act_on_cell_or_row(item);
  }
  static void edit_tag(HTMLed& control, const platform::Menu&) { control.edit_tag(); }
  static void properties(HTMLed& control, const platform::Menu&) { control.edit_properties(); }

  static constexpr char16_t link[] = u"Link", remove_image_link[] = u"RemoveLink", image[] = u"IMGPROP",
                            edit_link[] = u"Edit Link", remove_link[] = u"Remove Link",
                            insert_row[] = u"Insert Row", delete_row[] = u"Delete Row",
                            insert_column[] = u"Insert Column", delete_column[] = u"Delete Column",
                            table[] = u"Properties";
  static constexpr Row rows[] = {
      {u"mnuImgCut", cut},
      {u"mnuImgCopy", copy},
      {u"mnuImgPaste", paste},
      {u"mnuImgNewLink", pend<link>},
      {u"mnuImgLink", pend<link>},
      {u"mnuImgLinkRemove", pend<remove_image_link>},
      {u"mnuImgProperties", pend<image>},
      {u"mnuLinkCut", cut},
      {u"mnuLinkCopy", copy},
      {u"mnuLinkPaste", paste},
      {u"mnuLinkEdit", pend<edit_link>},
      {u"mnuLinkRemove", pend<remove_link>},
      {u"mnuMiscCut", cut},
      {u"mnuMiscCopy", copy},
      {u"mnuMiscPaste", paste},
      {u"mnuInsertLink", pend<edit_link>},
      {u"mnuMiscSource", source},
      {u"mnuMiscRevert", revert},
      {u"mnuTInsRow", pend<insert_row>},
      {u"mnuTDelRow", pend<delete_row>},
      {u"mnuTInsCol", pend<insert_column>},
      {u"mnuTDelCol", pend<delete_column>},
      {u"mnuTProp", pend<table>},
      {u"mnuToolProperties", properties},
      {u"mnuToolEditTag", edit_tag},
      {u"MnuCellRowActionsDelete", cell_or_row},
      {u"MnuCellRowActionsInsertRowAbove", cell_or_row},
      {u"MnuCellRowActionsInsertRowBelow", cell_or_row},
      {u"MnuCellRowActionsMergeCellLeft", cell_or_row},
      {u"MnuCellRowActionsMergeCellRight", cell_or_row},
      {u"MnuCellRowActionsInsertCellBefore", cell_or_row},
      {u"MnuCellRowActionsInsertCellAfter", cell_or_row},
  };
};

void HTMLed::MenuItemClick(platform::Menu& item) {
  const KeepAlive alive(*this);
  // The items of the class menus ask the host themselves.
  if (item.Name() == u"mnuClass") return mnuClass_Click(std::int16_t(item.Index().value_or(0)));
  if (item.Name() == u"mnuMiscClass") return mnuMiscClass_Click(std::int16_t(item.Index().value_or(0)));
  const std::u16string_view key = ContextMenus::key_of(item);
  if (key.empty() || !host_allows_item(key)) return;
  const auto row =
      std::ranges::find(MenuActions::rows, std::u16string_view(item.Name()), &MenuActions::Row::name);
  if (row != std::end(MenuActions::rows)) attempt([&] { row->act(*this, item); });
}

// Cancel clears the mark as OK does.
void HTMLed::ask_and_revert() {
  const platform::MessageAnswer answer =
      dialogs_.show_message({.text = u"Discard Changes?",
                             .title = u"HTML Editor",
                             .buttons = platform::MessageButtons::ok_cancel,
                             .icon = platform::MessageIcon::critical,
                             .owner = hwnd_});
  if (answer == platform::MessageAnswer::ok)
    attempt([&] {
      const auto kept = docHTML_;
      dom::Element& body = body_of(document());
      const dom::UndoStep step(document().tree().journal(), u"Revert");
      dom::set_inner_html(body, *original_html_);
    });
  PropertyChanged(u"DocumentHTML");
  properties_.IsDirty = false;
}

}  // namespace tvx::core
