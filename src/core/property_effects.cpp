#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/content/remote_content.h"
#include "tvx/core/htmled.h"
#include "tvx/core/parts.h"
#include "tvx/dom/journal.h"

/// What setting a property does beside storing the value: one table.
namespace tvx::core {

struct HTMLed::PropertyEffects {
  struct Row {
    std::u16string_view key;
    void (*act)(HTMLed& control);
    bool at_design_time;
  };

  static void toolbars(HTMLed& control) {
    buttons(control);
    control.parts_->panes.resize();
  }
  static void buttons(HTMLed& control) {
    control.parts_->toolbar_commands.ApplyToolbarState(control.properties_.EditorEnabled);
  }
  static void resize(HTMLed& control) { control.parts_->panes.resize(); }
  static void menus(HTMLed& control) { control.parts_->menu_commands.ApplyContextMenuState(); }
  static void words(HTMLed& control) { control.parts_->words.apply_language_file(); }
  static void sheet(HTMLed& control) {
    if (control.docHTML_) control.parts_->style_sheet.ApplyStyleSheet();
  }
  static void title(HTMLed& control) {
    attempt([&] {
      browser::HTMLDocument& document = control.document();
      const dom::UndoStep step(document.tree().journal(), u"Title");
      document.set_title(control.properties_.DocumentTitle);
    });
  }
  static void spelling(HTMLed& control) {
    control.parts_->spelling_marks.apply();
    control.parts_->spelling_marks.check_again();
  }
  static void border(HTMLed& control) {
    const EdBorderStyle style = control.properties_.BorderStyle;
    control.tell([&](HTMLedObserver& observer) { observer.border_changed(style); });
  }
  static void remote_content(HTMLed& control) {
    control.browser_->set_resource_policy(policy_of(control.properties_));
  }
  static void editing(HTMLed& control) {
    const bool enabled = control.properties_.EditorEnabled;
    if (control.run_time()) {
      attempt([&] { control.parts_->view_switch.switch_editing(enabled); });
      control.parts_->code.lock_as_told();
      control.parts_->side.apply();
      control.parts_->panes.resize();
    }
    control.tell([&](HTMLedObserver& observer) { observer.editor_enabled_changed(enabled); });
  }

  static constexpr Row rows[] = {
      {u"showFormToolbar", toolbars, false},
      {u"showFormattingToolbar1", toolbars, false},
      {u"showFormattingToolbar2", toolbars, false},
      {u"showDOMToolbar", resize, false},
      {u"HiddenButtons", buttons, false},
      {u"HiddenContextMenus", menus, false},
      {u"LocalizationFile", words, false},
      {u"CSSText", sheet, false},
      {u"CheckSpellingAsYouType", spelling, false},
      {u"SpellingLanguage", spelling, false},
      {u"CustomDictionaryFilename", spelling, false},
      {u"DocumentTitle", title, true},
      {u"BorderStyle", border, true},
      {u"EditorEnabled", editing, true},
      {u"RemoteContent", remote_content, true},
  };
};

void HTMLed::property_set(std::u16string_view key) {
  const auto row = std::ranges::find(PropertyEffects::rows, key, &PropertyEffects::Row::key);
  if (row != std::end(PropertyEffects::rows) && (row->at_design_time || run_time())) row->act(*this);
  PropertyChanged(key);
}

}  // namespace tvx::core
