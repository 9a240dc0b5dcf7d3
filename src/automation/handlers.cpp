#include "tvx/automation/control_object.h"
#include "tvx/automation/inside.h"
#include "tvx/automation/instance.h"
#include "tvx/automation/internal_routines.h"
#include "tvx/core/chrome/cell_menu.h"
#include "tvx/library/objects/members_of.h"

/// Handlers of the control by their names, as what they listen to calls them.
namespace tvx::automation {

using core::Inside;
using library::expect_arguments;
using library::MemberOf;
using library::Value;
using library::Values;

namespace {

core::Parts& parts(ControlObject& self) { return Inside::parts(*self); }

// --- the browser: `pDisp` is nothing for its own page, and anything else for a frame ---

browser::BrowserEvents& browser_events(ControlObject& self) { return parts(self).navigation; }

std::u16string text_or_nothing(const Values& arguments, std::size_t place) {
  return place < arguments.size() && !arguments[place].is_null() ? arguments[place].to_text()
                                                                 : std::u16string();
}

bool is_top(const Value& pDisp) {
  if (pDisp.is_null()) return true;
  return pDisp.is_object() ? pDisp.to_object()->kind() == u"browser" : pDisp.to_text() == u"WBrowser";
}

/// Where a navigation goes, from pDisp, URL and the frame's name.
browser::Navigation navigation_of(const Values& arguments, std::size_t frame) {
  browser::Navigation to;
  to.top = is_top(arguments[0]);
  to.url = arguments[1].to_text();
  to.target_frame = text_or_nothing(arguments, frame);
  return to;
}

/// pDisp, URL, Flags, TargetFrameName, PostData, Headers, Cancel; the last comes back.
Value before_navigate(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 7);
  browser::Navigation to = navigation_of(arguments, 3);
  arguments.resize(7);
  bool cancel = !arguments[6].is_null() && arguments[6].to_boolean();
  browser_events(self).BeforeNavigate2(to, cancel);
  arguments[6] = cancel;
  return {};
}

template <auto Event>
Value page_event(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  (browser_events(self).*Event)(is_top(arguments[0]), arguments[1].to_text());
  return {};
}

template <auto Event>
Value download_event(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  (browser_events(self).*Event)();
  return {};
}

/// pDisp, URL, Frame, StatusCode, Cancel.
Value navigate_error(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 5);
  const browser::Navigation to = navigation_of(arguments, 2);
  const bool has_status = arguments.size() > 3 && !arguments[3].is_null();
  browser_events(self).NavigateError(to, has_status ? arguments[3].to_integer32() : 404);
  return {};
}

// --- the client of the server ---

transfer::FTPEvents& client_events(ControlObject& self) { return parts(self).transfers.heard(); }

template <auto Event>
Value client_event(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  (client_events(self).*Event)();
  return {};
}

template <auto Event>
Value client_report(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  (client_events(self).*Event)(arguments[0].to_integer32(), arguments[1].to_text());
  return {};
}

Value client_progress(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  client_events(self).TransferProgress(arguments[0].to_integer32(), arguments[1].to_integer32());
  return {};
}

Value image_inserted(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  parts(self).images.insert_from_library(arguments[0].to_text());
  return {};
}

/// The library goes when its dialog does.
Value library_unloaded(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  if (transfer::frmLibraryImage* library = parts(self).image_library.fLib()) library->form().Hide();
  return {};
}

// --- the code view ---

Value code_got_focus(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  parts(self).code.heard().GotFocus();
  return {};
}

Value code_change(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  parts(self).code.heard().Change();
  return {};
}

/// KeyCode, which comes back, and Shift.
Value code_key_down(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  std::int16_t key = arguments[0].to_integer16();
  parts(self).code.heard().KeyDown(key, arguments.size() > 1 ? arguments[1].to_integer16() : std::int16_t{0});
  arguments[0] = std::int32_t{key};
  return {};
}

// --- buttons: by their number or their key, whether they can be pressed or not ---

template <auto Bar>
Value button_click(ControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  platform::Toolbar& bar = ((*self).*Bar)();
  platform::Button& button =
      arguments[0].is_text() ? bar.Item(arguments[0].to_text()) : bar.Item(arguments[0].to_integer32());
  parts(self).toolbar_commands.ButtonClick(bar, button);
  return {};
}

using Browser = browser::BrowserEvents;
using Client = transfer::FTPEvents;

constexpr MemberOf<ControlObject> rows[] = {
    {.name = u"WBrowser_BeforeNavigate2", .call = before_navigate},
    {.name = u"WBrowser_NavigateComplete2", .call = page_event<&Browser::NavigateComplete2>},
    {.name = u"WBrowser_DocumentComplete", .call = page_event<&Browser::DocumentComplete>},
    {.name = u"WBrowser_DownloadBegin", .call = download_event<&Browser::DownloadBegin>},
    {.name = u"WBrowser_DownloadComplete", .call = download_event<&Browser::DownloadComplete>},
    {.name = u"WBrowser_NavigateError", .call = navigate_error},
    {.name = u"cFTP_TransferProgress", .call = client_progress},
    {.name = u"cFTP_Cancelled", .call = client_event<&Client::Cancelled>},
    {.name = u"cFTP_FTPError", .call = client_report<&Client::FTPError>},
    {.name = u"cFTP_Connected", .call = client_event<&Client::Connected>},
    {.name = u"cFTP_Disconnected", .call = client_event<&Client::Disconnected>},
    {.name = u"cFTP_GetPutSuccess", .call = client_event<&Client::GetPutSuccess>},
    {.name = u"cFTP_FTPEvent", .call = client_report<&Client::FTPEvent>},
    {.name = u"fLib_ImageInserted", .call = image_inserted},
    {.name = u"fLib_unloaded", .call = library_unloaded},
    {.name = u"txtCode_GotFocus", .call = code_got_focus},
    {.name = u"txtCode_Change", .call = code_change},
    {.name = u"txtCode_KeyDown", .call = code_key_down},
    {.name = u"Toolbar1_ButtonClick", .call = button_click<&core::HTMLed::Toolbar1>},
    {.name = u"Toolbar2_ButtonClick", .call = button_click<&core::HTMLed::Toolbar2>},
    {.name = u"tlbDOM_ButtonClick", .call = button_click<&core::HTMLed::tlbDOM>},
};

/// Whether choosing the item has a handler: heads and separators have none.
bool has_handler(const platform::Menu& item) {
  if (item.Name() == u"mnuClass" || item.Name() == u"mnuMiscClass") return true;
  return !core::ContextMenus::key_of(item).empty();
}

}  // namespace

std::span<const MemberOf<ControlObject>> handlers() { return rows; }

std::optional<Value> click_menu_item(ControlObject& self, std::u16string_view name, Values& arguments) {
  constexpr std::u16string_view ending = u"_Click";
  if (name.size() <= ending.size() ||
      !equals_ignoring_ascii_case(name.substr(name.size() - ending.size()), ending))
    return {};
  name.remove_suffix(ending.size());
  platform::Menu* item = (*self).menu(name);
  if (!item || !has_handler(*item)) return {};
  // The class menus' own routines take any index, as a host may call them.
  if (item->Name() == u"mnuClass" || item->Name() == u"mnuMiscClass") {
    expect_arguments(arguments, 1, 1);
    const std::int16_t index = arguments[0].to_integer16();
    item->Name() == u"mnuClass" ? (*self).mnuClass_Click(index) : (*self).mnuMiscClass_Click(index);
    return Value();
  }
  if (item->Index() && !arguments.empty()) {
    expect_arguments(arguments, 1, 1);
    item = &item->parent()->Item(item->Name(), arguments[0].to_integer32());
  } else {
    expect_arguments(arguments, 0, 0);
  }
  parts(self).menu_commands.MenuItemClick(*item);
  return Value();
}

}  // namespace tvx::automation
