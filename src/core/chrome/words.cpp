#include "tvx/core/chrome/words.h"

#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/localise/language_file.h"
#include "tvx/localise/localizer.h"

namespace tvx::core {
namespace {

using localise::XmlElement;
using platform::Toolbar;

struct Group {
  std::u16string_view name;
  Toolbar* (*toolbar)(Toolbars&);  // null: the entries are menu items
};

/// What a group's first attribute means. The numbers are those that language files have always had: the form
/// buttons stand third.
constexpr Group groups[] = {
    {u"Toolbar1", [](Toolbars& all) { return &all.Toolbar1; }},
    {u"Toolbar2", [](Toolbars& all) { return &all.Toolbar1; }},
    {u"Toolbar3", [](Toolbars& all) { return &all.Toolbar2; }},
    {u"ContextMenus", [](Toolbars&) -> Toolbar* { return nullptr; }},
};

/// Captions of menus that the control makes anew at each popup, by names that are no items of a menu.
struct Label {
  std::u16string_view name;
  std::u16string TableLabels::*text;
};
constexpr Label labels[] = {
    {u"mnucellaction", &TableLabels::cell},
    {u"mnurowaction", &TableLabels::row},
    {u"mnurowactiondelete", &TableLabels::delete_row},
    {u"mnucellactiondelete", &TableLabels::delete_cell},
};

// All buttons of that key: nothing says that there is but one.
void set_tool_tips(Toolbar& toolbar, std::u16string_view key, std::u16string_view text) {
  for (int i = 1; i <= toolbar.Count(); ++i)
    if (equals_ignoring_ascii_case(toolbar.Item(i).Key(), key)) toolbar.Item(i).set_ToolTipText(text);
}

}  // namespace

void Words::apply_language_file() {
  const std::u16string path = properties_.LocalizationFile;
  if (path.empty()) return;
  if (!localise::language_file_exists(path))
    return raise_error(localise::language_failure, u"Can not find UI language file");
  localise::XmlDocument document;
  if (const auto failure = failure_of([&] { document = localise::read_language_file(path); }))
    return raise_error(failure->number(), failure->text());
  translate_chrome(*document.documentElement());
}

// Every child of the root is walked as a group, the sections of dialogs too: a group whose attribute names no
// target, or that has none, goes on with the target of the group before it, and names that nothing here has
// change nothing.
void Words::translate_chrome(const XmlElement& root) {
  Toolbar* target = nullptr;
  for (const XmlElement* group : root.children()) {
    if (!group->attributes().empty()) {
      const std::u16string& value = group->attributes().front().value;
      for (const Group& each : groups)
        if (each.name == value) target = each.toolbar(toolbars_);
    }
    for (const XmlElement* entry : group->children()) {
      const XmlElement *key = entry->child(0), *text = entry->child(1);
      if (!key || !text) continue;
      if (target)
        set_tool_tips(*target, key->text(), text->text());
      else
        translate_menu_item(key->text(), text->text());
    }
  }
}

// The name of a menu array means its first item, the one that is no style sheet's class.
void Words::translate_menu_item(std::u16string_view name, const std::u16string& text) {
  for (const Label& label : labels)
    if (equals_ignoring_ascii_case(label.name, name)) return void(labels_.*label.text = text);
  if (platform::Menu* item = menus_.find(name)) item->set_Caption(text);
}

void Words::localise(platform::Form& dialog, std::u16string_view section) const {
  if (properties_.LocalizationFile.empty()) return;
  tvx::localise::clsLocalize localizer;
  localizer.set_TheForm(&dialog);
  localizer.set_LocalizationFile(properties_.LocalizationFile);
  localizer.Localise(section);
}

}  // namespace tvx::core
