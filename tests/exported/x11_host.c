/* Hosts in C with a window on the desktop, under the hands of a user: xdotool. One has GLib's loop, one has none. */
#define _DEFAULT_SOURCE
#include "watcher.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <glib.h>
#include <unistd.h>

enum { longest_wait = 30000, turn = 20 };

/* What the user does, while the host's loop runs. */
static void user(const char *command) {
  char line[512];
  snprintf(line, sizeof line, "(sleep 0.3; xdotool %s) > /dev/null 2>&1 &", command);
  CHECK(system(line) == 0);
}

static void press(uint64_t window, int x, int y, const char *then) {
  char command[256];
  snprintf(command, sizeof command, "mousemove --window %lu %d %d sleep 0.2 click 1 sleep 0.4 %s",
           (unsigned long)window, x, y, then);
  user(command);
}

static int has_text(const host_control *made, const char *text) {
  return strstr(host_get_text(made, "DocumentText"), text) != NULL;
}

/* --- no loop: the host pumps --- */

static void pump_until(const host_control *made, const char *text, int milliseconds) {
  int waited;
  for (waited = 0; waited < milliseconds && !has_text(made, text); waited += turn)
    CHECK(made->tools->functions->Pump(made->tools, turn) == TVX_OK);
}

/* A machine that is busy misses a press now and then; the user tries again. */
static void type_until(const host_control *made, uint64_t window, const char *keys, const char *text) {
  int times;
  for (times = 0; times < 6 && !has_text(made, text); ++times) {
    press(window, 300, 300, keys);
    pump_until(made, text, longest_wait / 5);
  }
  if (!has_text(made, text)) fprintf(stderr, "the text is: %s\n", host_get_text(made, "DocumentText"));
  CHECK(has_text(made, text));
}

static Window host_window(Display *display, int width, int height) {
  XEvent event;
  Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), 30, 40, (unsigned)width, (unsigned)height,
                                      0, 0, WhitePixel(display, DefaultScreen(display)));
  XSelectInput(display, window, StructureNotifyMask);
  XMapRaised(display, window);
  do XNextEvent(display, &event);
  while (event.type != MapNotify);
  XSync(display, False);
  return window;
}

static uint64_t parent_of(Display *display, uint64_t window) {
  Window root, parent, *children;
  unsigned count;
  CHECK(XQueryTree(display, (Window)window, &root, &parent, &children, &count));
  if (children) XFree(children);
  return parent;
}

CASE(a_user_types_in_a_hosts_window) {
  Display *display = XOpenDisplay(NULL);
  Window window;
  XWindowAttributes attributes;
  host_control made = host_make();
  tvx_box box = {20, 30, 700, 500}, larger = {0, 0, 760, 560};
  uint64_t inner = 0;
  CHECK(display);
  window = host_window(display, 800, 600);
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, window, &box) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &inner) == TVX_OK && inner != 0 && inner != window);
  CHECK(parent_of(display, inner) == window);
  CHECK(made.tools->functions->Pump(made.tools, 500) == TVX_OK);
  CHECK(XGetWindowAttributes(display, (Window)inner, &attributes));
  CHECK(attributes.x == 20 && attributes.y == 30 && attributes.width == 700 && attributes.height == 500);
  type_until(&made, inner, "key ctrl+End type hello", "hello");
  CHECK(host_get(made.members, "IsDirty").as.boolean == TVX_TRUE);
  CHECK(made.control->functions->Resize(made.control, &larger) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 200) == TVX_OK);
  CHECK(XGetWindowAttributes(display, (Window)inner, &attributes));
  CHECK(attributes.x == 0 && attributes.y == 0 && attributes.width == 760 && attributes.height == 560);
  type_until(&made, inner, "key ctrl+a type all", "all");
  CHECK(made.control->functions->Close(made.control) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 200) == TVX_OK);
  host_release(&made);
  XDestroyWindow(display, window);
  XCloseDisplay(display);
}

static int shows_red(Display *display, uint64_t window) {
  XWindowAttributes inside;
  Window child;
  XImage *image;
  int x, y, left, top, found = 0;
  CHECK(XGetWindowAttributes(display, (Window)window, &inside));
  CHECK(XTranslateCoordinates(display, (Window)window, DefaultRootWindow(display), 0, 0, &left, &top, &child));
  image = XGetImage(display, DefaultRootWindow(display), left, top, (unsigned)inside.width, (unsigned)inside.height,
                    AllPlanes, ZPixmap);
  CHECK(image);
  for (y = 0; y < inside.height && !found; y += 2)
    for (x = 0; x < inside.width && !found; x += 8) found = (XGetPixel(image, x, y) & 0xFFFFFF) == 0xFF0000;
  XDestroyImage(image);
  return found;
}

/* As a host does whose own loop calls it twenty times a second: it never waits within. */
CASE(short_pumps_are_enough_to_draw_the_page) {
  Display *display = XOpenDisplay(NULL);
  host_control made = host_make();
  tvx_box box = {0, 0, 500, 400};
  uint64_t inner;
  enum { rare = 50 };
  int waited, red = 0;
  Window window;
  CHECK(display);
  window = host_window(display, 600, 500);
  host_set(made.members, "DocumentHTML", host_text("<p style='background: red'>one</p>"));
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, window, &box) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &inner) == TVX_OK);
  for (waited = 0; waited < longest_wait && !red; waited += rare) {
    usleep(rare * 1000);
    CHECK(made.tools->functions->Pump(made.tools, 0) == TVX_OK);
    if (waited % (10 * rare) == 0) red = shows_red(display, inner);
  }
  CHECK(red);
  host_release(&made);
  XDestroyWindow(display, window);
  XCloseDisplay(display);
}

CASE(a_style_sheet_that_was_set_before_the_start_is_shown) {
  Display *display = XOpenDisplay(NULL);
  host_control made = host_make();
  uint64_t inner;
  int waited, red = 0;
  CHECK(display);
  host_set(made.members, "CSShttp", host_boolean(0));
  host_set(made.members, "CSSText", host_text("p { background: red }"));
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  for (waited = 0; waited < longest_wait && !red; waited += 500) {
    CHECK(made.tools->functions->Pump(made.tools, 500) == TVX_OK);
    CHECK(made.control->functions->GetWindow(made.control, &inner) == TVX_OK);
    red = shows_red(display, inner);
  }
  CHECK(red);
  host_release(&made);
  XCloseDisplay(display);
}

/* The frame around the host's window isn't the control's. */
CASE(a_control_stays_in_its_position_when_the_hosts_window_changes) {
  Display *display = XOpenDisplay(NULL);
  host_control made = host_make();
  tvx_box box = {0, 0, 500, 400}, smaller = {7, 9, 400, 300};
  XWindowAttributes attributes;
  uint64_t inner;
  Window window;
  CHECK(display);
  window = host_window(display, 600, 500);
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, window, &box) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &inner) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 1000) == TVX_OK);
  XResizeWindow(display, window, 500, 420);
  XSync(display, False);
  CHECK(made.tools->functions->Pump(made.tools, 1000) == TVX_OK);
  CHECK(made.control->functions->Resize(made.control, &smaller) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 300) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &inner) == TVX_OK);
  CHECK(XGetWindowAttributes(display, (Window)inner, &attributes));
  CHECK(attributes.x == 7 && attributes.y == 9 && attributes.width == 400 && attributes.height == 300);
  host_release(&made);
  XDestroyWindow(display, window);
  XCloseDisplay(display);
}

static void veto_all(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  if (number != TVX_EVENT_ToolButtonClick) return;
  CHECK(count == 4 && arguments[1].as.reference->type == TVX_INTEGER16);
  CHECK(strcmp(host_utf8(sink->made, &arguments[0].as.reference->as.text), "Toolbar1") == 0);
  if (strcmp(host_utf8(sink->made, &arguments[2].as.reference->as.text), "Bold") == 0) sink->data = sink;
  fprintf(stderr, "vetoed: %s\n", host_utf8(sink->made, &arguments[2].as.reference->as.text));
  arguments[3].as.reference->as.boolean = TVX_TRUE;
}

/* Where the button is depends on the style: the row is pressed from left to right until the button is met. */
CASE(a_host_vetoes_buttons_that_the_user_presses) {
  host_control made = host_make();
  host_sink sink;
  uint32_t connection;
  uint64_t window;
  int round, x;
  host_init_sink(&sink, &made, veto_all);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &window) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 500) == TVX_OK);
  { /* The word is selected: an unvetoed press would make it bold. */
    tvx_value place[2];
    place[0] = host_number(0);
    place[1] = host_number(3);
    place[0] = host_call(made.members, "selectText", place, 2);
    made.tools->functions->ClearValue(made.tools, &place[0]);
  }
  for (round = 0; round < 5 && !sink.data; ++round)
    for (x = 16; x < 700 && !sink.data; x += 20) {
      press(window, x, 14, "");
      CHECK(made.tools->functions->Pump(made.tools, 1000) == TVX_OK);
    }
  CHECK(sink.data);
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "<P>one</P>") == 0);
  host_call(made.members, "bold_document", NULL, 0); /* what the host does itself isn't asked */
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "<P><B>one</B></P>") == 0);
  host_release(&made);
}

/* --- GLib's loop --- */

typedef struct glib_host {
  GMainLoop *loop;
  host_control *made;
  uint64_t window;
  int waited;
} glib_host;

static gboolean has_typed(gpointer data) {
  glib_host *host = data;
  if (!has_text(host->made, "hello") && host->waited < 6 * longest_wait / 5) {
    if (host->waited % (longest_wait / 5) == 0) press(host->window, 300, 300, "key ctrl+End type hello");
    host->waited += turn;
    return G_SOURCE_CONTINUE;
  }
  g_main_loop_quit(host->loop);
  return G_SOURCE_REMOVE;
}

CASE(a_user_types_under_glibs_loop) {
  host_control made = host_make();
  glib_host host = {NULL, NULL, 0, 0};
  host.loop = g_main_loop_new(NULL, FALSE);
  host.made = &made;
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &host.window) == TVX_OK);
  g_timeout_add(turn, has_typed, &host);
  g_main_loop_run(host.loop);
  CHECK(has_text(&made, "hello"));
  g_main_loop_unref(host.loop);
  host_release(&made);
}

/* A timer's events come from the loop that the host runs, before and after a window has been shown. */
typedef struct ticking {
  tvx_dispatch sink;
  void (*act)(struct ticking *self);
  GMainLoop *loop;
  int times;
} ticking;

static tvx_result tick_query(tvx_dispatch *self, const tvx_id *id, void **object) {
  (void)self, (void)id, (void)object;
  return TVX_NO_INTERFACE;
}
static uint32_t tick_count(tvx_dispatch *self) {
  (void)self;
  return 1;
}
static tvx_result tick_numbers(tvx_dispatch *self, const tvx_text *names, uint32_t count, int32_t *numbers) {
  (void)self, (void)names, (void)count, (void)numbers;
  return TVX_NO_NAME;
}
static tvx_result tick(tvx_dispatch *self, int32_t event, uint16_t how, tvx_value *arguments, uint32_t count,
                       tvx_value *result, tvx_error *error) {
  ticking *host = (ticking *)self;
  (void)event, (void)how, (void)arguments, (void)count, (void)result, (void)error;
  ++host->times;
  host->act(host);
  return TVX_OK;
}

static tvx_timer *make_ticking(ticking *host, void (*act)(ticking *)) {
  static const tvx_dispatch_functions functions = {tick_query, tick_count, tick_count, tick_numbers, tick};
  tvx_timer *timer = host_instance(&tvx_class_timer, &tvx_id_timer);
  tvx_events *events;
  uint32_t connection;
  memset(host, 0, sizeof *host);
  host->sink.functions = &functions;
  host->act = act;
  CHECK(timer->functions->QueryInterface(timer, &tvx_id_events, (void **)&events) == TVX_OK);
  CHECK(events->functions->Advise(events, &host->sink, &connection) == TVX_OK);
  events->functions->Release(events);
  return timer;
}

static void quit_at_three(ticking *host) {
  if (host->times % 3 == 0) g_main_loop_quit(host->loop);
}

static gboolean too_late(gpointer data) {
  (void)data;
  CHECK(!"the timer runs");
  return G_SOURCE_REMOVE;
}

static void run_until_three(ticking *host) {
  const guint end = g_timeout_add(longest_wait, too_late, NULL);
  g_main_loop_run(host->loop);
  g_source_remove(end);
}

CASE(timers_run_in_glibs_loop) {
  ticking host;
  tvx_timer *timer = make_ticking(&host, quit_at_three);
  host_control made;
  host.loop = g_main_loop_new(NULL, FALSE);
  CHECK(timer->functions->SetInterval(timer, 10) == TVX_OK);
  run_until_three(&host);
  made = host_make();
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  host.times = 0;
  run_until_three(&host);
  CHECK(timer->functions->SetInterval(timer, 0) == TVX_OK);
  timer->functions->Release(timer);
  host_release(&made);
  g_main_loop_unref(host.loop);
}

/* --- a window that isn't there --- */

static int has_markup(const host_control *made, const char *html) {
  return strcmp(host_get_text(made, "DocumentHTML"), html) == 0;
}

CASE(where_there_is_no_window_nothing_is_shown) {
  Display *display = XOpenDisplay(NULL);
  Window window, gone;
  host_control made = host_make();
  tvx_box box = {5, 6, 500, 400};
  tvx_error error;
  int32_t hwnd = hwnd_of(&made);
  CHECK(display);
  gone = host_window(display, 300, 200);
  XDestroyWindow(display, gone);
  window = host_window(display, 800, 600);
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, gone, &box) == TVX_NO_WINDOWS);
  CHECK(made.tools->functions->GetError(made.tools, &error) == TVX_OK);
  CHECK(strcmp(host_utf8(&made, &error.text), "There is no such window") == 0);
  made.tools->functions->FreeText(made.tools, &error.text);
  CHECK(hwnd_of(&made) == hwnd && has_markup(&made, "<p>one</p>")); /* as it was given: it hasn't started */
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, window, &box) == TVX_OK);
  CHECK(made.tools->functions->Pump(made.tools, 300) == TVX_OK && has_text(&made, "one"));
  host_release(&made);
  XDestroyWindow(display, window);
  XCloseDisplay(display);
}

/* --- a host with a container --- */

typedef struct form {
  tvx_container container;
  uint32_t references;
  int closed;
  int changed;
} form;

static tvx_result form_query(tvx_container *self, const tvx_id *id, void **object) {
  (void)self, (void)id, (void)object;
  return TVX_NO_INTERFACE;
}
static uint32_t form_add(tvx_container *self) { return ++((form *)self)->references; }
static uint32_t form_release(tvx_container *self) { return --((form *)self)->references; }
static tvx_result form_mode(tvx_container *self, int16_t *mode) {
  (void)self, (void)mode;
  return TVX_NOTHING;
}
static tvx_result form_changed(tvx_container *self, const tvx_text *key) {
  (void)key;
  ++((form *)self)->changed;
  return TVX_OK;
}
static tvx_result form_closed(tvx_container *self) {
  ++((form *)self)->closed;
  return TVX_OK;
}

static struct {
  Display *display;
  Window window;
  int starts;
} doomed;

/* What a control asks before it starts, and what it says first while it does. */
static tvx_result doomed_mode(tvx_container *self, int16_t *mode) {
  doomed.starts = 1;
  return form_mode(self, mode);
}
static tvx_result doomed_changed(tvx_container *self, const tvx_text *key) {
  if (doomed.starts && doomed.window) {
    XDestroyWindow(doomed.display, doomed.window);
    XSync(doomed.display, False);
    doomed.window = 0;
  }
  return form_changed(self, key);
}

/* The host's window goes while the editor starts. */
CASE(what_fails_while_it_starts_stays_off_screen) {
  static const tvx_container_functions functions = {form_query,  form_add,       form_release,
                                                    doomed_mode, doomed_changed, form_closed};
  form host = {{&functions}, 1, 0, 0};
  host_control made = host_make();
  tvx_box box = {0, 0, 500, 400};
  int32_t hwnd = hwnd_of(&made);
  CHECK((doomed.display = XOpenDisplay(NULL)) != NULL);
  doomed.window = host_window(doomed.display, 600, 500);
  CHECK(made.control->functions->SetContainer(made.control, &host.container) == TVX_OK);
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  host_set(made.members, "showFormToolbar", host_boolean(1));
  CHECK(made.control->functions->Show(made.control, TVX_IN_WINDOW, doomed.window, &box) == TVX_EXCEPTION);
  CHECK(!doomed.window);
  CHECK(hwnd_of(&made) == hwnd && has_markup(&made, "<p>one</p>"));
  CHECK(made.tools->functions->Pump(made.tools, 200) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  CHECK(has_markup(&made, "<P>one</P>") && host_get(made.members, "showFormToolbar").as.boolean == TVX_TRUE);
  host_release(&made);
  XCloseDisplay(doomed.display);
}

CASE(a_host_hears_that_the_user_closes_the_window) {
  static const tvx_container_functions functions = {form_query, form_add,     form_release,
                                                    form_mode,  form_changed, form_closed};
  form host = {{&functions}, 1, 0, 0};
  host_control made = host_make();
  uint64_t window;
  char command[128];
  int waited;
  CHECK(made.control->functions->SetContainer(made.control, &host.container) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &window) == TVX_OK);
  snprintf(command, sizeof command, "windowactivate %lu sleep 0.5 key alt+F4", (unsigned long)window);
  for (waited = 0; waited < 2 * longest_wait && !host.closed; waited += turn) {
    if (waited % (longest_wait / 3) == 0) user(command);
    CHECK(made.tools->functions->Pump(made.tools, turn) == TVX_OK);
  }
  CHECK(host.closed == 1);
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>")); /* the control itself is there */
  CHECK(has_text(&made, "one") && host.changed > 0);
  host_release(&made);
  CHECK(host.references == 1);
}

static char *title_of(Display *display, uint64_t window) {
  static char title[128];
  Atom type, name = XInternAtom(display, "_NET_WM_NAME", False);
  int format;
  unsigned long count, left;
  unsigned char *data = NULL;
  CHECK(XGetWindowProperty(display, (Window)window, name, 0, 64, False, AnyPropertyType, &type, &format, &count, &left,
                           &data) == Success);
  snprintf(title, sizeof title, "%.*s", (int)count, data ? (char *)data : "");
  if (data) XFree(data);
  return title;
}

CASE(a_watcher_keeps_the_window_open) {
  static const tvx_container_functions functions = {form_query, form_add,     form_release,
                                                    form_mode,  form_changed, form_closed};
  form host = {{&functions}, 1, 0, 0};
  host_control made = host_make();
  Display *display = XOpenDisplay(NULL);
  tvx_subclassing *kit = make_kit();
  watcher seen = make_watcher(kit, NULL), focus = make_watcher(kit, NULL);
  tvx_frame *frame;
  tvx_value title = host_text("A letter");
  uint64_t window;
  char command[128];
  int waited;
  CHECK(display && attach(&seen, hwnd_of(&made), 16) == TVX_OK && attach(&focus, hwnd_of(&made), 7) == TVX_OK);
  CHECK(made.control->functions->SetContainer(made.control, &host.container) == TVX_OK);
  CHECK(made.control->functions->QueryInterface(made.control, &tvx_id_frame, (void **)&frame) == TVX_OK);
  CHECK(frame->functions->SetTitle(frame, &title.as.text) == TVX_OK);
  frame->functions->Release(frame);
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &window) == TVX_OK);
  snprintf(command, sizeof command, "windowactivate %lu sleep 0.5 key alt+F4", (unsigned long)window);
  for (waited = 0; waited < 2 * longest_wait && !seen.calls; waited += turn) {
    if (waited % (longest_wait / 3) == 0) user(command);
    CHECK(made.tools->functions->Pump(made.tools, turn) == TVX_OK);
  }
  CHECK(seen.calls > 0 && host.closed == 0);
  CHECK(strcmp(title_of(display, window), "A letter") == 0);
  CHECK(made.tools->functions->Pump(made.tools, 200) == TVX_OK && host.closed == 0);
  CHECK(focus.calls > 0);
  detach(&seen, hwnd_of(&made), 16);
  for (waited = 0; waited < 2 * longest_wait && !host.closed; waited += turn) {
    if (waited % (longest_wait / 3) == 0) user(command);
    CHECK(made.tools->functions->Pump(made.tools, turn) == TVX_OK);
  }
  CHECK(host.closed == 1);
  kit->functions->Release(kit);
  host_release(&made);
  XCloseDisplay(display);
}

#include "cases.h"
