/* A watcher of messages, as hosts in C make them. */
#ifndef TVX_TESTS_WATCHER_H
#define TVX_TESTS_WATCHER_H

#include "host.h"

typedef struct watcher {
  tvx_subclass subclass;
  int32_t response;
  int32_t result;
  int calls, asked;
  int32_t hwnd, message;
  intptr_t first, second;
  void (*act)(struct watcher* self, int32_t hwnd, int32_t message);
  tvx_subclassing* kit;
  const char* name; /* for watchers_called; may be null */
  host_control* made;
} watcher;

extern char watchers_called[64]; /* their names, in turn */

tvx_subclassing* make_kit(void);
/* It consumes what it watches, and answers 7. */
watcher make_watcher(tvx_subclassing* kit, const char* name);
tvx_result attach(watcher* seen, int32_t hwnd, int32_t message);
void detach(watcher* seen, int32_t hwnd, int32_t message);
/* Sends 3 and -4 with the message. */
int32_t sent(tvx_subclassing* kit, int32_t hwnd, int32_t message);
int32_t hwnd_of(const host_control* made);

#endif
