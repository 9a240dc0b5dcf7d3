/* A host in C whose control is in a window, with no loop of its own. It has no Qt but for what the library brings. */
#include "watcher.h"

#include <locale.h>

static host_control show_in_window(const char *html) {
  host_control made = host_make();
  tvx_box box = {10, 20, 700, 500};
  tvx_error error;
  tvx_result result;
  host_set(made.members, "DocumentHTML", host_text(html));
  result = made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, &box);
  if (result != TVX_OK && made.tools->functions->GetError(made.tools, &error) == TVX_OK)
    fprintf(stderr, "Show: %ld, %s\n", (long)result, host_utf8(&made, &error.text));
  CHECK(result == TVX_OK);
  return made;
}

static void veto_code(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  (void)sink, (void)count;
  if (number == TVX_EVENT_BeforeCodeViewChange) arguments[1].as.reference->as.boolean = TVX_TRUE;
}

CASE(a_control_goes_from_off_screen_into_a_window) {
  host_control made = host_make();
  host_sink sink;
  uint32_t connection;
  int32_t handle = host_get(made.members, "hwnd").as.integer32;
  tvx_value result = {TVX_EMPTY, {0, 0, 0}, {0}}, reference = host_reference(&result);
  host_init_sink(&sink, &made, veto_code);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  host_set(made.members, "DocumentHTML", host_text("<p>seen</p>"));
  host_set(made.members, "showFormToolbar", host_boolean(1));
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "<P>seen</P>") == 0);
  CHECK(host_get(made.members, "showFormToolbar").as.boolean == TVX_TRUE);
  CHECK(host_get(made.members, "hwnd").as.integer32 == handle);
  host_call(made.members, "show_Code", NULL, 0);
  host_call(made.members, "InCodeView", &reference, 1);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 1 && result.as.boolean == TVX_FALSE);
  CHECK(made.tools->functions->Pump(made.tools, 50) == TVX_OK);
  CHECK(made.control->functions->Hide(made.control) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_STARTED);
  CHECK(made.control->functions->Close(made.control) == TVX_OK);
  CHECK(made.control->functions->Hide(made.control) == TVX_CLOSED);
  CHECK(sink.references == 1);
  host_release(&made);
}

CASE(watchers_stay_when_the_control_goes_into_a_window) {
  host_control made = host_make();
  tvx_subclassing *kit = make_kit();
  watcher mine = make_watcher(kit, NULL), size = make_watcher(kit, NULL), end = make_watcher(kit, NULL);
  const int32_t hwnd = hwnd_of(&made);
  tvx_box box = {0, 0, 620, 410};
  CHECK(attach(&mine, hwnd, 1025) == TVX_OK && attach(&size, hwnd, 5) == TVX_OK && attach(&end, hwnd, 2) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(sent(kit, hwnd, 1025) == 7 && mine.calls == 1 && end.calls == 0);
  CHECK(made.control->functions->Resize(made.control, &box) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 100) == TVX_OK);
  CHECK(size.second == (620 | 410 << 16));
  host_release(&made);
  CHECK(end.calls == 1);
  kit->functions->Release(kit);
}

CASE(a_windows_title_is_what_the_host_says) {
  host_control made = host_make();
  tvx_frame *frame;
  tvx_value title = host_text("A letter");
  tvx_text got;
  CHECK(made.control->functions->QueryInterface(made.control, &tvx_id_frame, (void **)&frame) == TVX_OK);
  CHECK(frame->functions->GetTitle(frame, &got) == TVX_OK && strcmp(host_utf8(&made, &got), "HTMLed") == 0);
  made.tools->functions->FreeText(made.tools, &got);
  CHECK(frame->functions->SetTitle(frame, &title.as.text) == TVX_OK);
  CHECK(frame->functions->SetTitle(frame, NULL) == TVX_POINTER);
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(frame->functions->GetTitle(frame, &got) == TVX_OK && strcmp(host_utf8(&made, &got), "A letter") == 0);
  made.tools->functions->FreeText(made.tools, &got);
  CHECK(made.control->functions->Close(made.control) == TVX_OK);
  CHECK(frame->functions->SetTitle(frame, &title.as.text) == TVX_CLOSED);
  frame->functions->Release(frame);
  host_release(&made);
}

CASE(windows_and_controls_off_screen_live_side_by_side) {
  host_control first = show_in_window("<p>one</p>"), second = host_start(), third = show_in_window("<p>three</p>");
  host_set(second.members, "DocumentHTML", host_text("<p>two</p>"));
  CHECK(strcmp(host_get_text(&first, "DocumentText"), "one") == 0);
  CHECK(strcmp(host_get_text(&second, "DocumentText"), "two") == 0);
  CHECK(strcmp(host_get_text(&third, "DocumentText"), "three") == 0);
  CHECK(first.tools->functions->Pump(first.tools, 100) == TVX_OK);
  host_release(&first);
  host_release(&third);
  CHECK(second.tools->functions->Pump(second.tools, 100) == TVX_OK);
  host_release(&second);
}

CASE(the_programs_locale_stays) {
  host_control made;
  CHECK(strcmp(setlocale(LC_ALL, NULL), "C") == 0);
  made = show_in_window("<p>one</p>");
  CHECK(strcmp(setlocale(LC_ALL, NULL), "C") == 0);
  host_release(&made);
}

static void release_all(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  (void)arguments, (void)count;
  if (number == TVX_EVENT_BeforeCodeViewChange) host_release(sink->made);
}

CASE(a_window_can_be_released_within_its_event) {
  host_control made = show_in_window("<p>one</p>"), other = host_start();
  host_sink sink;
  uint32_t connection;
  tvx_dispatch *members = made.members;
  host_init_sink(&sink, &made, release_all);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  members->functions->Invoke(members, TVX_MEMBER_show_Code, TVX_CALL, NULL, 0, NULL, NULL);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 1 && sink.references == 1);
  CHECK(other.tools->functions->Pump(other.tools, 200) == TVX_OK);
  host_release(&other);
}

/* What is left at the end of the program is its end's matter, and no crash. */
CASE(a_program_may_end_with_its_window_open) {
  static host_sink sink;
  host_control made = show_in_window("<p>one</p>");
  uint32_t connection;
  host_init_sink(&sink, &made, NULL);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
}

CASE(without_x11_nothing_can_be_shown_in_a_hosts_window) {
  host_control made = host_make();
  tvx_error error;
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, 1, NULL) == TVX_NO_WINDOWS);
  CHECK(made.tools->functions->GetError(made.tools, &error) == TVX_OK && error.text.length > 0);
  made.tools->functions->FreeText(made.tools, &error.text);
  /* It has not been shown: it can still be, off screen. */
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  CHECK(strcmp(host_get_text(&made, "DocumentText"), "one") == 0);
  host_release(&made);
}

#include "cases.h"
