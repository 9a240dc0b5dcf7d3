/* Hosts in C with a window on the desktop, under the hands of a user: xdotool. One has GLib's loop, one has none. */
#define _DEFAULT_SOURCE
#include "host.h"

#include <X11/Xlib.h>
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

/* --- the window's own end --- */

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

#include "cases.h"
