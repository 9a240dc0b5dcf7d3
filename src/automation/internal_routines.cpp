#include "tvx/automation/internal_routines.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "tvx/automation/control_object.h"
#include "tvx/automation/inside.h"
#include "tvx/automation/instance.h"
#include "tvx/automation/script_objects.h"
#include "tvx/base/colour.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/clipboard/html_format.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/loaded_dialogs.h"
#include "tvx/platform/special_folders.h"
#include "tvx/services/wait.h"
#include "tvx/source/formatter.h"

namespace tvx::automation {

using core::HTMLed;
using core::Inside;
using core::Parts;
using library::expect_arguments;
using library::MemberOf;
using library::Value;
using library::Values;

namespace {

core::Parts& parts(ControlObject& self) { return Inside::parts(*self); }

Value start_editor(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  Inside::StartEditor(*self);
  return {};
}

/// A routine of a part without arguments.
template <auto Part, auto Routine>
Value run(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  ((parts(self).*Part).*Routine)();
  return {};
}

/// A container's call.
template <auto Call>
Value container_call(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  ((*self).*Call)();
  return {};
}

/// A handler of the document's events, as the document calls it; what it answers, if it answers.
template <auto Handler>
Value handler(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  return library::result_of(
      [&] { return (static_cast<browser::DocumentHandler&>(parts(self).input).*Handler)(); });
}

/// A routine that makes a text of texts, with nothing of the control in it.
template <auto Routine>
Value one_text(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return std::u16string(Routine(arguments[0].to_text()));
}

template <auto Question>
Value one_text_flag(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return Question(arguments[0].to_text());
}

Value replace_all(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 4, 4);
  return ReplaceAll(arguments[0].to_text(), arguments[1].to_text(), arguments[2].to_text(),
                    arguments[3].to_boolean());
}

Value format_source(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 4, 4);
  return source::FormatHTMLSource(arguments[0].to_text(), arguments[1].to_integer16(),
                                  arguments[2].to_boolean(), arguments[3].to_boolean());
}

Value colour_to_rgb(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  return ColourToRGB(arguments[0].to_integer32(), arguments[1].to_text());
}

Value rgb_to_hex(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  return RGBToHex(arguments[0].to_text(), arguments[1].to_text());
}

Value canonical_url(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  return CanonicalURL(arguments[0].to_text(), static_cast<std::uint32_t>(arguments[1].to_number()));
}

std::u16string file_name(const std::u16string& path) { return std::u16string(FileNameFromPath(path)); }

Value special_folder(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return platform::GetSpecialFolder(static_cast<platform::WindowHandle>((*self).hwnd()),
                                    arguments[0].to_integer32());
}

Value wait(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  services::Wait(self.loop(), arguments[0].to_integer32());
  return {};
}

Value convert_characters(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return parts(self).content.ConvertUnicodeCharacters(arguments[0].to_text());
}

Value relative_html(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return parts(self).content.RelativeDocumentHTML(arguments[0].to_text());
}

Value write_template(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 3);
  return parts(self).bootstrap.WriteTemplateDocument(arguments[0].to_text(), arguments[1].to_integer32());
}

Value apply_toolbar_state(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  parts(self).toolbar_commands.ApplyToolbarState(arguments[0].to_boolean());
  return {};
}

Value lost_focus(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  (*self).WBrowser_LostFocus(arguments[0].to_text());
  return {};
}

Value html_format_id(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  return platform::number_of(clipboard::GetHTMLFormatId());
}

/// The prefix and the suffix go back with the marks.
Value put_html(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 3, 3);
  std::u16string prefix = arguments[1].to_text(), suffix = arguments[2].to_text();
  clipboard::PutHTMLOnClipboard((*self).clipboard(), arguments[0].to_text(), prefix, suffix);
  arguments[1] = prefix;
  arguments[2] = suffix;
  return {};
}

Value get_html(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  return clipboard::GetHTMLFromClipboard((*self).clipboard());
}

/// Whether its callers mark a change comes back, as its argument.
Value edit_image_properties(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 1);
  const bool result = parts(self).image_settings.EditImageProperties();
  if (!arguments.empty()) arguments[0] = result;
  return result;
}

Value upload_image_file(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return parts(self).transfers.UploadImageFile(arguments[0].to_text());
}

Value show_context_menu(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  const std::u16string name = arguments[0].to_text();
  platform::Menu* menu = (*self).menu(name);
  if (!menu) library::unknown_member(name);
  parts(self).menu_commands.ShowContextMenu(*menu);
  return {};
}

/// A failure is passed over.
Value write_text_file(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  WriteTextFile(arguments[0].to_text(), arguments[1].to_text());
  return {};
}

/// What had been read when it failed.
Value read_text_file(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return ReadTextFile(arguments[0].to_text()).text;
}

Value null_to_empty(ControlObject&, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return NullToEmpty(arguments[0].is_null() ? std::optional<std::u16string>() : arguments[0].to_text());
}

std::u16string trim_nul(const std::u16string& text) { return std::u16string(TrimNul(text)); }

// --- the common dialogs ---

platform::CommonDialogs& dialogs(ControlObject& self) { return parts(self).context.surroundings().dialogs; }

Value show_color(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  return std::int32_t{
      dialogs(self).ShowColor(arguments[0].to_integer32(), platform::WindowHandle((*self).hwnd()))};
}

/// Names and patterns in turn, each ended by a NUL.
std::vector<platform::FileFilter> filters_of(std::u16string_view text) {
  std::vector<platform::FileFilter> filters;
  const auto next = [&] {
    const std::size_t end = std::min(text.find(u'\0'), text.size());
    const std::u16string piece(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return piece;
  };
  while (!text.empty()) {
    std::u16string name = next();
    filters.push_back({std::move(name), next()});
  }
  return filters;
}

/// The filter, the title, the owner, and what stands in the field at first.
template <auto Show>
Value show_file_dialog(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 4);
  platform::FileDialog dialog;
  dialog.filters = filters_of(arguments[0].to_text());
  dialog.title = arguments[1].to_text();
  dialog.owner = platform::WindowHandle((*self).hwnd());
  if (arguments.size() > 3) dialog.preset = arguments[3].to_text();
  return std::u16string(TrimNul((dialogs(self).*Show)(dialog)));
}

template <auto Routine>
Value of_instance(ControlObject& self, Values& arguments) {
  return Routine(self.instance(), arguments);
}

using Handler = browser::DocumentHandler;

constexpr MemberOf<ControlObject> rows[] = {
    {.name = u"UserControl_Resize", .call = container_call<&HTMLed::UserControl_Resize>},
    {.name = u"UserControl_Show", .call = container_call<&HTMLed::UserControl_Show>},
    {.name = u"UserControl_EnterFocus", .call = container_call<&HTMLed::UserControl_EnterFocus>},
    {.name = u"UserControl_ExitFocus", .call = container_call<&HTMLed::UserControl_ExitFocus>},
    {.name = u"WBrowser_GotFocus", .call = container_call<&HTMLed::WBrowser_GotFocus>},
    {.name = u"WBrowser_LostFocus", .call = lost_focus},
    {.name = u"StartEditor", .call = start_editor},
    {.name = u"BootstrapDocument", .call = run<&Parts::bootstrap, &core::Bootstrap::BootstrapDocument>},
    {.name = u"LoadStoredDocumentHTML", .call = run<&Parts::content, &core::Content::LoadStoredDocumentHTML>},
    {.name = u"WriteTemplateDocument", .call = write_template},
    {.name = u"ApplyToolbarState", .call = apply_toolbar_state},
    {.name = u"ApplyContextMenuState",
     .call = run<&Parts::menu_commands, &core::MenuCommands::ApplyContextMenuState>},
    {.name = u"BuildBranchToolbar",
     .call = run<&Parts::element_path, &core::ElementPath::BuildBranchToolbar>},
    {.name = u"IsDialogLoaded", .call = one_text_flag<platform::IsDialogLoaded>},
    {.name = u"ApplyStyleSheet", .call = run<&Parts::style_sheet, &core::StyleSheetBinding::ApplyStyleSheet>},
    {.name = u"LoadStyleClasses",
     .call = run<&Parts::style_sheet, &core::StyleSheetBinding::LoadStyleClasses>},
    {.name = u"FindEditWindow", .call = run<&Parts::edit_window, &core::EditWindow::FindEditWindow>},
    {.name = u"ShowEditCaret", .call = run<&Parts::edit_window, &core::EditWindow::ShowEditCaret>},
    {.name = u"ConvertUnicodeCharacters", .call = convert_characters},
    {.name = u"RelativeDocumentHTML", .call = relative_html},
    {.name = u"docHTML_onkeydown", .call = handler<&Handler::onkeydown>},
    {.name = u"docHTML_onkeypress", .call = handler<&Handler::onkeypress>},
    {.name = u"docHTML_onkeyup", .call = handler<&Handler::onkeyup>},
    {.name = u"docHTML_onmousedown", .call = handler<&Handler::onmousedown>},
    {.name = u"docHTML_oncontextmenu", .call = handler<&Handler::oncontextmenu>},
    {.name = u"docHTML_onclick", .call = handler<&Handler::onclick>},
    {.name = u"docHTML_ondblclick", .call = handler<&Handler::ondblclick>},
    {.name = u"docHTML_ondragstart", .call = handler<&Handler::ondragstart>},
    {.name = u"docHTML_oncontrolselect", .call = handler<&Handler::oncontrolselect>},
    {.name = u"docHTML_onselectstart", .call = handler<&Handler::onselectstart>},
    {.name = u"docHTML_onselectionchange", .call = handler<&Handler::onselectionchange>},
    {.name = u"EditImageProperties", .call = edit_image_properties},
    {.name = u"GetWordRange", .call = of_instance<get_word_range>},
    {.name = u"recurs_document", .call = of_instance<recurs_document>},
    {.name = u"GetHTMLFormatId", .call = html_format_id},
    {.name = u"PutHTMLOnClipboard", .call = put_html},
    {.name = u"GetHTMLFromClipboard", .call = get_html},
    {.name = u"ReplaceAll", .call = replace_all},
    {.name = u"FormatHTMLSource", .call = format_source},
    {.name = u"ColourToRGB", .call = colour_to_rgb},
    {.name = u"RGBToHex", .call = rgb_to_hex},
    {.name = u"FileNameFromPath", .call = one_text<file_name>},
    {.name = u"EncodeURL", .call = one_text<EncodeURL>},
    {.name = u"DecodeURL", .call = one_text<DecodeURL>},
    {.name = u"CanonicalURL", .call = canonical_url},
    {.name = u"UploadImageFile", .call = upload_image_file},
    {.name = u"ShowContextMenu", .call = show_context_menu},
    {.name = u"WriteTextFile", .call = write_text_file},
    {.name = u"ReadTextFile", .call = read_text_file},
    {.name = u"NullToEmpty", .call = null_to_empty},
    {.name = u"TrimNul", .call = one_text<trim_nul>},
    {.name = u"ShowColor", .call = show_color},
    {.name = u"ShowOpen", .call = show_file_dialog<&platform::CommonDialogs::ShowOpen>},
    {.name = u"ShowSave", .call = show_file_dialog<&platform::CommonDialogs::ShowSave>},
    {.name = u"GetSpecialFolder", .call = special_folder},
    {.name = u"Wait", .call = wait},
};

}  // namespace

std::span<const MemberOf<ControlObject>> internal_routines() { return rows; }

}  // namespace tvx::automation
