/* A host in C of what the library has beside the control: timers, and watched messages of a control's window. */
#define _DEFAULT_SOURCE
#include "watcher.h"

#include <unistd.h>

enum { ping = 1024 + 1, pong = 1024 + 2, marked = (int)0x80040000 };

/* Errors of the tables of functions are asked for. */
static int32_t last_error(tvx_library *tools, const char *text) {
  tvx_error error;
  char words[256];
  CHECK(tools->functions->GetError(tools, &error) == TVX_OK);
  tools->functions->TextToUTF8(tools, &error.text, words, sizeof words);
  if (strcmp(words, text) != 0) fprintf(stderr, "the error says: %s\n", words);
  CHECK(strcmp(words, text) == 0);
  tools->functions->FreeText(tools, &error.text);
  return error.number;
}

/* --- timers --- */

typedef struct clock_face {
  tvx_dispatch sink;
  uint32_t references;
  int times;
  tvx_timer *timer;
  void (*act)(struct clock_face *self);
} clock_face;

static tvx_result face_query(tvx_dispatch *self, const tvx_id *id, void **object) {
  (void)self, (void)id, (void)object;
  exit(1); /* is not called */
}
static uint32_t face_add(tvx_dispatch *self) { return ++((clock_face *)self)->references; }
static uint32_t face_release(tvx_dispatch *self) { return --((clock_face *)self)->references; }
static tvx_result face_numbers(tvx_dispatch *self, const tvx_text *names, uint32_t count, int32_t *numbers) {
  (void)self, (void)names, (void)count, (void)numbers;
  exit(1);
}
static tvx_result face_hear(tvx_dispatch *self, int32_t event, uint16_t how, tvx_value *arguments, uint32_t count,
                            tvx_value *result, tvx_error *error) {
  clock_face *face = (clock_face *)self;
  CHECK(event == TVX_CTimer_EVENT_ThatTime && how == TVX_CALL && count == 0 && !arguments && !result && !error);
  ++face->times;
  if (face->act) face->act(face);
  return TVX_OK;
}

static const tvx_dispatch_functions face_functions = {face_query, face_add, face_release, face_numbers, face_hear};

static tvx_timer *make_timer(clock_face *face) {
  tvx_timer *timer = host_instance(&tvx_class_timer, &tvx_id_timer);
  tvx_events *events;
  uint32_t connection;
  memset(face, 0, sizeof *face);
  face->sink.functions = &face_functions;
  face->references = 1;
  face->timer = timer;
  CHECK(timer->functions->QueryInterface(timer, &tvx_id_events, (void **)&events) == TVX_OK);
  CHECK(events->functions->Advise(events, &face->sink, &connection) == TVX_OK && connection != 0);
  events->functions->Release(events);
  return timer;
}

static tvx_library *tools_of(tvx_timer *timer) {
  tvx_library *tools;
  CHECK(timer->functions->QueryInterface(timer, &tvx_id_library, (void **)&tools) == TVX_OK);
  return tools;
}

static void set_interval(tvx_timer *timer, int32_t milliseconds) {
  CHECK(timer->functions->SetInterval(timer, milliseconds) == TVX_OK);
}

static int32_t interval_of(tvx_timer *timer) {
  int32_t value = -1;
  CHECK(timer->functions->GetInterval(timer, &value) == TVX_OK);
  return value;
}

static void pump_until(tvx_library *tools, const int *times, int wanted) {
  int turns;
  for (turns = 0; *times < wanted && turns < 2000; ++turns) CHECK(tools->functions->Pump(tools, 10) == TVX_OK);
  CHECK(*times >= wanted);
}

CASE(a_timer_raises_its_event_until_it_is_stopped) {
  clock_face face;
  tvx_timer *timer = make_timer(&face);
  tvx_library *tools = tools_of(timer);
  int heard;
  CHECK(interval_of(timer) == 0);
  set_interval(timer, 0);
  CHECK(tools->functions->Pump(tools, 20) == TVX_OK && face.times == 0);
  set_interval(timer, 5);
  CHECK(interval_of(timer) == 5);
  pump_until(tools, &face.times, 3);
  set_interval(timer, -1);
  CHECK(interval_of(timer) == 0);
  heard = face.times;
  CHECK(tools->functions->Pump(tools, 40) == TVX_OK && face.times == heard);
  CHECK(timer->functions->PulseTimer(timer) == TVX_OK && face.times == heard + 1);
  tools->functions->Release(tools);
  CHECK(timer->functions->Release(timer) == 0 && face.references == 1);
}

CASE(a_timer_runs_while_an_operation_waits) {
  host_control made = host_make();
  clock_face face;
  tvx_timer *timer = make_timer(&face);
  set_interval(timer, 1);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  while (face.times == 0) host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  set_interval(timer, 0);
  timer->functions->Release(timer);
  host_release(&made);
}

CASE(a_running_timer_outlives_its_last_reference) {
  host_control made = host_make(); /* keeps the library's loop */
  clock_face face;
  tvx_timer *timer = make_timer(&face);
  set_interval(timer, 5);
  CHECK(timer->functions->Release(timer) == 1 && face.references == 2); /* its own is left */
  pump_until(made.tools, &face.times, 2);
  set_interval(timer, 0);
  CHECK(face.references == 1); /* and that was the last one */
  host_release(&made);
}

static void stop(clock_face *face) { set_interval(face->timer, 0); }

static void release_and_stop(clock_face *face) {
  face->timer->functions->Release(face->timer);
  set_interval(face->timer, 0);
}

CASE(a_timer_may_end_in_its_own_event) {
  host_control made = host_make();
  clock_face first, second;
  tvx_timer *timer = make_timer(&first);
  make_timer(&second);
  first.act = stop;
  second.act = release_and_stop;
  set_interval(timer, 1);
  set_interval(second.timer, 1);
  pump_until(made.tools, &first.times, 1);
  pump_until(made.tools, &second.times, 1);
  CHECK(made.tools->functions->Pump(made.tools, 30) == TVX_OK);
  CHECK(first.times == 1 && second.times == 1 && second.references == 1);
  timer->functions->Release(timer);
  CHECK(first.references == 1);
  host_release(&made);
}

CASE(the_hundred_and_first_running_timer_is_refused) {
  enum { all = 100 };
  static clock_face faces[all + 1];
  tvx_library *tools;
  int i;
  for (i = 0; i <= all; ++i) make_timer(&faces[i]);
  tools = tools_of(faces[0].timer);
  for (i = 0; i < all; ++i) set_interval(faces[i].timer, 5);
  CHECK(faces[all].timer->functions->SetInterval(faces[all].timer, 5) == TVX_EXCEPTION);
  CHECK(last_error(tools, "No more than 10 timers allowed per class") == (marked | TVX_eeTooManyTimers));
  CHECK(interval_of(faces[all].timer) == 5); /* it counts as running */
  for (i = 0; i < all; ++i) pump_until(tools, &faces[i].times, 1);
  CHECK(faces[all].times == 0);
  CHECK(faces[all].timer->functions->Release(faces[all].timer) == 0); /* nothing holds it */
  CHECK(faces[all].references == 1);
  for (i = 0; i < all; ++i) {
    set_interval(faces[i].timer, 0);
    CHECK(faces[i].timer->functions->Release(faces[i].timer) == (i == 0 ? 1 : 0) || i == 0);
  }
  tools->functions->Release(tools);
}

CASE(a_timer_keeps_any_value) {
  clock_face face, other;
  tvx_timer *timer = make_timer(&face);
  tvx_library *tools = tools_of(timer);
  tvx_value value = host_text("mine"), got, inner;
  make_timer(&other); /* its sink is an object of ours */
  CHECK(timer->functions->GetItem(timer, &got) == TVX_OK && got.type == TVX_EMPTY);
  CHECK(timer->functions->SetItem(timer, &value) == TVX_OK);
  CHECK(timer->functions->GetItem(timer, &got) == TVX_OK && got.type == TVX_TEXT && got.as.text.length == 4);
  CHECK(got.as.text.characters != value.as.text.characters); /* a copy */
  tools->functions->ClearValue(tools, &got);
  inner = host_number(7);
  value = host_reference(&inner);
  CHECK(timer->functions->SetItem(timer, &value) == TVX_OK);
  CHECK(timer->functions->GetItem(timer, &got) == TVX_OK && got.type == TVX_INTEGER32 && got.as.integer32 == 7);
  value.type = TVX_OBJECT;
  value.as.object = &other.sink;
  CHECK(timer->functions->SetItem(timer, &value) == TVX_OK && other.references == 3);
  CHECK(timer->functions->GetItem(timer, &got) == TVX_OK && got.as.object == &other.sink && other.references == 4);
  tools->functions->ClearValue(tools, &got);
  CHECK(other.references == 3);
  tools->functions->Release(tools);
  timer->functions->Release(timer);
  CHECK(other.references == 2); /* the timer's end gave it back */
  other.timer->functions->Release(other.timer);
  CHECK(other.references == 1);
}

CASE(a_timer_is_reached_by_late_binding) {
  clock_face face;
  tvx_timer *timer = make_timer(&face);
  tvx_library *tools = tools_of(timer);
  tvx_dispatch *members;
  tvx_value value = host_text("no number"), got;
  tvx_error error;
  CHECK(timer->functions->QueryInterface(timer, &tvx_id_dispatch, (void **)&members) == TVX_OK);
  CHECK(host_number_of(members, "ITEM") == 1 && host_number_of(members, "interval") == 2);
  CHECK(host_number_of(members, "PulseTimer") == 3 && host_number_of(members, "nothing") == -1);
  host_set(members, "Interval", host_number(5));
  CHECK(interval_of(timer) == 5 && host_get(members, "Interval").as.integer32 == 5);
  host_call(members, "PulseTimer", NULL, 0);
  CHECK(face.times == 1);
  host_set(members, "Interval", host_number(0));
  host_set(members, "item", value);
  got = host_get(members, "item");
  CHECK(got.type == TVX_TEXT && got.as.text.length == 9);
  tools->functions->ClearValue(tools, &got);
  CHECK(host_invoke(members, "Interval", TVX_SET, &value, 1, NULL, &error) == TVX_EXCEPTION && error.number == 13);
  tools->functions->FreeText(tools, &error.text);
  CHECK(host_invoke(members, "Interval", TVX_CALL, NULL, 0, NULL, NULL) == TVX_NO_MEMBER);
  CHECK(host_invoke(members, "PulseTimer", TVX_GET, NULL, 0, NULL, NULL) == TVX_NO_MEMBER);
  CHECK(members->functions->Invoke(members, 4, TVX_GET, NULL, 0, NULL, NULL) == TVX_NO_MEMBER);
  members->functions->Release(members);
  tools->functions->Release(tools);
  timer->functions->Release(timer);
}

static long resident_kilobytes(void) {
  FILE *file = fopen("/proc/self/statm", "r");
  long all = 0, resident = 0;
  CHECK(file && fscanf(file, "%ld %ld", &all, &resident) == 2 && fclose(file) == 0);
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

CASE(a_thousand_timers_leave_nothing) {
  enum { warm = 2000, all = 12000 };
  host_control made = host_make();
  long kilobytes = 0;
  int i;
  for (i = 0; i < all; ++i) {
    clock_face face;
    tvx_timer *timer = make_timer(&face);
    tvx_value text = host_text("a text that takes some room");
    CHECK(timer->functions->SetItem(timer, &text) == TVX_OK);
    face.act = release_and_stop;
    set_interval(timer, 1);
    if (i % 12 == 0) { /* those ends come from the event itself */
      pump_until(made.tools, &face.times, 1);
    } else {
      release_and_stop(&face);
    }
    CHECK(face.references == 1);
    if (i == warm) kilobytes = resident_kilobytes();
  }
  printf("%ld kB after %d timers, %ld kB after %d\n", kilobytes, (int)warm, resident_kilobytes(), (int)all);
#ifndef TVX_SANITIZED                                /* which keeps what is freed for a while */
  CHECK(resident_kilobytes() - kilobytes < 512);     /* 10,000 timers: 52 bytes each would be seen */
#endif
  host_release(&made);
}

/* --- watched messages --- */

CASE(a_watcher_hears_of_the_messages_that_it_watches) {
  host_control made = host_start();
  tvx_subclassing *kit = make_kit();
  watcher seen = make_watcher(kit, "a");
  const int32_t hwnd = hwnd_of(&made);
  int32_t old = -1;
  CHECK(attach(&seen, hwnd, ping) == TVX_OK);
  CHECK(sent(kit, hwnd, ping) == 7 && seen.calls == 1); /* consumed: its result is the sender's */
  CHECK(seen.hwnd == hwnd && seen.message == ping && seen.first == 3 && seen.second == -4 && seen.asked == 2);
  CHECK(sent(kit, hwnd, pong) == 0 && seen.calls == 1);
  seen.response = TVX_emrPostProcess;
  CHECK(sent(kit, hwnd, ping) == 0 && seen.calls == 2); /* the window's own is the last word */
  seen.response = TVX_emrPreprocess;
  CHECK(sent(kit, hwnd, ping) == 7 && seen.calls == 3);
  CHECK(kit->functions->CallOldWindowProc(kit, hwnd, ping, 0, 0, &old) == TVX_OK && old == 0 && seen.calls == 3);
  detach(&seen, hwnd, ping);
  detach(&seen, hwnd, ping);
  CHECK(sent(kit, hwnd, ping) == 0 && seen.calls == 3);
  kit->functions->Release(kit);
  host_release(&made);
}

CASE(the_later_watcher_is_called_first) {
  host_control made = host_start();
  tvx_subclassing *kit = make_kit();
  watcher a = make_watcher(kit, "a"), b = make_watcher(kit, "b");
  const int32_t hwnd = hwnd_of(&made);
  a.result = 1, b.result = 2;
  CHECK(attach(&a, hwnd, ping) == TVX_OK && attach(&b, hwnd, ping) == TVX_OK);
  CHECK(sent(kit, hwnd, ping) == 1 && strcmp(watchers_called, "ba") == 0);
  CHECK(b.asked == 0); /* the first one decides */
  detach(&a, hwnd, ping);
  CHECK(sent(kit, hwnd, ping) == 2 && strcmp(watchers_called, "bab") == 0);
  detach(&b, hwnd, ping);
  kit->functions->Release(kit);
  host_release(&made);
}

CASE(what_cannot_be_watched_is_an_error) {
  host_control made = host_start();
  tvx_subclassing *kit = make_kit();
  watcher seen = make_watcher(kit, NULL);
  const int32_t hwnd = hwnd_of(&made);
  CHECK(attach(&seen, 1, ping) == TVX_EXCEPTION);
  CHECK(last_error(made.tools, "Invalid window") == (marked | 13083));
  CHECK(attach(&seen, hwnd, ping) == TVX_OK && attach(&seen, hwnd, ping) == TVX_EXCEPTION);
  CHECK(last_error(made.tools, "Message already handled by another class") == (marked | 13082));
  CHECK(sent(kit, hwnd, ping) == 7 && seen.calls == 1); /* nothing changed */
  detach(&seen, hwnd, ping);
  CHECK(sent(kit, hwnd, ping) == 0);
  CHECK(kit->functions->AttachMessage(kit, NULL, hwnd, ping) == TVX_POINTER);
  CHECK(kit->functions->DetachMessage(kit, &seen.subclass, 1, ping) == TVX_OK);
  kit->functions->Release(kit);
  host_release(&made);
}

CASE(a_controls_window_tells_its_size_its_focus_and_its_end) {
  host_control made = host_make();
  tvx_subclassing *kit = make_kit();
  watcher size = make_watcher(kit, NULL), focus = make_watcher(kit, NULL), end = make_watcher(kit, NULL);
  const int32_t hwnd = hwnd_of(&made);
  tvx_box box = {0, 0, 640, 480};
  CHECK(attach(&size, hwnd, 5) == TVX_OK && attach(&focus, hwnd, 7) == TVX_OK && attach(&end, hwnd, 2) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, &box) == TVX_OK);
  CHECK(size.calls >= 1 && size.second == (640 | 480 << 16));
  CHECK(made.control->functions->SetFocus(made.control) == TVX_OK && focus.calls == 1);
  CHECK(made.control->functions->Close(made.control) == TVX_OK && end.calls == 1);
  CHECK(attach(&size, hwnd, ping) == TVX_EXCEPTION); /* there is no window any more */
  host_release(&made);
  CHECK(end.calls == 1);
  kit->functions->Release(kit);
}

static void detach_and_free(watcher *self, int32_t hwnd, int32_t message) {
  detach(self, hwnd, message);
  memset(self, 0xEE, sizeof *self); /* who is asked after this ends the process */
  free(self);
}

CASE(a_watcher_may_end_in_its_own_message) {
  host_control made = host_start();
  tvx_subclassing *kit = make_kit();
  const int32_t hwnd = hwnd_of(&made);
  int round;
  for (round = 0; round < 3; ++round) {
    watcher *seen = malloc(sizeof *seen);
    CHECK(seen);
    *seen = make_watcher(kit, NULL);
    seen->act = detach_and_free;
    seen->response = TVX_emrPreprocess;
    CHECK(attach(seen, hwnd, ping) == TVX_OK);
    CHECK(sent(kit, hwnd, ping) == 7);
    CHECK(sent(kit, hwnd, ping) == 0);
  }
  kit->functions->Release(kit);
  host_release(&made);
}

static void close_the_control(watcher *self, int32_t hwnd, int32_t message) {
  (void)hwnd, (void)message;
  CHECK(self->made->control->functions->Close(self->made->control) == TVX_OK);
}

CASE(a_watcher_may_close_the_control) {
  host_control made = host_start();
  tvx_subclassing *kit = make_kit();
  watcher seen = make_watcher(kit, NULL);
  const int32_t hwnd = hwnd_of(&made);
  seen.act = close_the_control;
  seen.made = &made;
  seen.response = TVX_emrPostProcess;
  CHECK(attach(&seen, hwnd, ping) == TVX_OK);
  CHECK(sent(kit, hwnd, ping) == 0 && seen.calls == 1); /* there is no window to go on to */
  CHECK(sent(kit, hwnd, ping) == 0 && seen.calls == 1);
  detach(&seen, hwnd, ping);
  kit->functions->Release(kit);
  host_release(&made);
}

CASE(a_thousand_watchers_leave_nothing) {
  enum { warm = 1000, all = 11000 };
  host_control made = host_start();
  tvx_subclassing *kit = make_kit();
  const int32_t hwnd = hwnd_of(&made);
  long kilobytes = 0;
  int i;
  for (i = 0; i < all; ++i) {
    watcher *seen = malloc(sizeof *seen + (size_t)(i % 97));
    CHECK(seen);
    *seen = make_watcher(kit, NULL);
    CHECK(attach(seen, hwnd, ping) == TVX_OK && sent(kit, hwnd, ping) == 7);
    detach(seen, hwnd, ping);
    free(seen);
    if (i == warm) kilobytes = resident_kilobytes();
  }
  printf("%ld kB after %d watchers, %ld kB after %d\n", kilobytes, (int)warm, resident_kilobytes(), (int)all);
#ifndef TVX_SANITIZED
  CHECK(resident_kilobytes() - kilobytes < 512);
#endif
  kit->functions->Release(kit);
  host_release(&made);
}

#include "cases.h"
