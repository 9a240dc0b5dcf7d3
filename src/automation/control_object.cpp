#include "tvx/automation/control_object.h"

#include "tvx/automation/inside.h"
#include "tvx/automation/instance.h"
#include "tvx/automation/internal_routines.h"
#include "tvx/automation/script_objects.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/style/style_sheet.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/form.h"

namespace tvx::automation {

using core::HTMLed;
using core::Inside;
using library::MemberOf;
using library::Value;
using library::Values;

namespace {

core::Parts& parts(ControlObject& self) { return Inside::parts(*self); }

Value element(ControlObject& self, dom::Element* element) {
  return library::element_object(element, (*self).DOM());
}

Value last_event(ControlObject& self) {
  const browser::Event* event = (*self).lastEvent();
  return event ? library::event_object(*event, (*self).DOM()) : Value();
}

/// The handle of the sheet among the document's, so that its members are those of any other.
Value active_style_sheet(ControlObject& self) {
  const auto& active = parts(self).style_sheet.active();
  return active ? library::style_sheet_object(active) : Value();
}

template <auto Getter>
Value getter(ControlObject& self) {
  return ((*self).*Getter)();
}

template <auto Field>
Value border(ControlObject& self) {
  return parts(self).highlight.saved().*Field;
}

/// The dialog in front by its name, or one of its controls.
Value open_dialog_part(platform::Form* dialog, std::u16string_view name) {
  if (!dialog) return {};
  if (equals_ignoring_ascii_case(dialog->Name(), name)) return library::form_object(*dialog);
  platform::FormControl* control = dialog->find(name);
  return control ? Value(library::form_control_object(*control)) : Value();
}

/// It comes with the start and goes with the end.
Value client(ControlObject& self) {
  return (*self).started() ? Value(client_object(parts(self).transfers.cFTP())) : Value();
}

/// The window that takes the document's keys; the control has one for all, and it counts once it is found.
Value edit_window(ControlObject& self) {
  return parts(self).edit_window.found() ? (*self).hwnd() : std::int32_t{0};
}

constexpr MemberOf<ControlObject> rows[] = {
    {u"docHTML", [](ControlObject& self) { return library::document_object((*self).DOM()); }},
    {u"WBrowser", [](ControlObject& self) -> Value { return browser_object(self.instance()); }},
    {u"txtCode", [](ControlObject& self) -> Value { return code_view_object(self.instance()); }},
    {u"cFTP", client},
    {u"fLib", [](ControlObject& self) -> Value { return library_object(parts(self).image_library.fLib()); }},
    {u"clsLocalize", [](ControlObject& self) -> Value { return localizer_object(self.instance()); }},
    {u"CTimer", [](ControlObject& self) -> Value { return timers_object(self.instance(), self.loop()); }},
    {u"ISubclass", [](ControlObject& self) -> Value { return watchers_object(self.instance()); }},
    {u"GSubclass", [](ControlObject& self) -> Value { return subclass_object(self.instance()); }},
    {u"editWindow", edit_window},
    {u"codeText", [](ControlObject& self) -> Value { return parts(self).code.codeText(); }},
    {u"clip", [](ControlObject& self) -> Value { return clip_object(parts(self).clipboard.clip()); }},
    {u"clsSpell", [](ControlObject& self) -> Value { return spell_object(self.instance()); }},
    {u"clsString", [](ControlObject& self) -> Value { return string_object(self.instance()); }},
    {u"spellingCancelled", [](ControlObject& self) -> Value { return parts(self).spelling.cancelled(); }},
    {u"markedWords", [](ControlObject& self) { return marked_words(self.instance()); }},
    {u"highlightElement", [](ControlObject& self) { return element(self, (*self).highlightElement()); },
     [](ControlObject& self, const Value& value) {
       parts(self).highlight.set_element(library::element_of(value));
     }},
    {u"savedBorderStyle", border<&core::BorderLook::style>},
    {u"savedBorderWidth", border<&core::BorderLook::width>},
    {u"savedBorderColor", border<&core::BorderLook::color>},
    {u"lastEvent", last_event},
    {u"originalHTML", getter<&HTMLed::originalHTML>},
    {u"styleSheetPath", getter<&HTMLed::styleSheetPath>},
    {u"appPath", getter<&HTMLed::appPath>},
    {u"openingDocument", getter<&HTMLed::openingDocument>},
    {u"inCodeView", getter<&HTMLed::InCodeView>},
    {u"selectedHTML", [](ControlObject& self) -> Value { return parts(self).code.selection().html; }},
    {u"selectedSourceIndex",
     [](ControlObject& self) -> Value { return parts(self).code.selection().source_index; }},
    {u"codeSelectionStart",
     [](ControlObject& self) -> Value { return parts(self).code.selection().code_start; }},
    {u"storedDocumentHTML",
     [](ControlObject& self) -> Value { return *Inside::properties(*self).DocumentHTML; }},
    {u"selectionBorderText",
     [](ControlObject& self) -> Value { return Inside::properties(*self).SelectionBorderStyle; }},
    {u"baseElement", [](ControlObject& self) { return element(self, parts(self).content.base_element()); }},
    {u"baseHrefSet", [](ControlObject& self) -> Value { return parts(self).content.base_href_set(); }},
    {u"pendingContextCommand",
     [](ControlObject& self) -> Value { return parts(self).menu_commands.pending_command(); }},
    {u"downloadDone", [](ControlObject& self) -> Value { return parts(self).style_sheet.download_done(); }},
    {u"watchDownload",
     [](ControlObject& self) -> Value { return parts(self).style_sheet.watches_download(); }},
    {u"activeStyleSheet", active_style_sheet},
    {u"FontFore", [](ControlObject& self) -> Value { return parts(self).font_settings.values().FontFore; }},
    {u"FontBack", [](ControlObject& self) -> Value { return parts(self).font_settings.values().FontBack; }},
    {u"FontNameValue",
     [](ControlObject& self) -> Value { return parts(self).font_settings.values().FontNameValue; }},
    {u"FontSizeValue",
     [](ControlObject& self) -> Value { return parts(self).font_settings.values().FontSizeValue; }},
    {u"lblCell", [](ControlObject& self) -> Value { return (*self).table_labels().cell; }},
    {u"lblRow", [](ControlObject& self) -> Value { return (*self).table_labels().row; }},
    {u"lblDeleteRow", [](ControlObject& self) -> Value { return (*self).table_labels().delete_row; }},
    {u"lblDeleteCell", [](ControlObject& self) -> Value { return (*self).table_labels().delete_cell; }},
};

}  // namespace

HTMLed& ControlObject::operator*() const { return instance_.control(); }

Value ControlObject::invoke(std::u16string_view name, Values& arguments) {
  for (const std::span<const MemberOf<ControlObject>> subject :
       {std::span<const MemberOf<ControlObject>>(rows), internal_routines(), handlers()})
    if (const auto* row = library::find_member(subject, name))
      return library::invoke_member(*row, *this, arguments);
  if (const library::ObjectHandle part = library::part_named(**this, name))
    return arguments.empty() ? Value(part) : part->item(arguments);
  if (const Value dialog = open_dialog_part(instance().forms().open(), name); !dialog.is_null()) {
    library::expect_arguments(arguments, 0, 0);
    return dialog;
  }
  if (std::optional<Value> answer = click_menu_item(*this, name, arguments)) return *answer;
  const library::Member* shared = library::find_member(name);
  if (shared && shared->kind == library::MemberKind::Property) {
    library::expect_arguments(arguments, 0, 0);
    return library::get_property(**this, name);
  }
  return library::call_method(**this, name, arguments);
}

void ControlObject::set(std::u16string_view name, const Value& value) {
  const std::span<const MemberOf<ControlObject>> inside(rows);
  if (const auto* row = library::find_member(inside, name)) return library::set_member(*row, *this, value);
  library::set_property(**this, name, value);
}

library::ObjectHandle control_object(Instance& instance, platform::MessageLoop& loop) {
  return std::make_shared<ControlObject>(instance, loop);
}

}  // namespace tvx::automation
