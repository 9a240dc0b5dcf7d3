#include "watcher.h"

char watchers_called[64];

static tvx_result watcher_query(tvx_subclass *self, const tvx_id *id, void **object) {
  (void)self, (void)id, (void)object;
  exit(1); /* is not called, and neither are the next two */
}
static uint32_t watcher_count(tvx_subclass *self) {
  (void)self;
  exit(1);
}
static tvx_result watcher_response(tvx_subclass *self, int32_t *value) {
  ++((watcher *)self)->asked;
  *value = ((watcher *)self)->response;
  return TVX_OK;
}
static tvx_result watcher_set_response(tvx_subclass *self, int32_t value) {
  ((watcher *)self)->response = value;
  return TVX_OK;
}
static tvx_result watcher_message(tvx_subclass *self, int32_t hwnd, int32_t message, intptr_t first, intptr_t second,
                                  int32_t *result) {
  watcher *seen = (watcher *)self;
  int32_t current = 0;
  ++seen->calls;
  seen->hwnd = hwnd, seen->message = message, seen->first = first, seen->second = second;
  if (seen->name) strcat(watchers_called, seen->name);
  CHECK(seen->kit->functions->GetCurrentMessage(seen->kit, &current) == TVX_OK && current == message);
  *result = seen->result;
  if (seen->act) seen->act(seen, hwnd, message);
  return TVX_OK;
}

watcher make_watcher(tvx_subclassing *kit, const char *name) {
  static const tvx_subclass_functions functions = {watcher_query,    watcher_count,        watcher_count,
                                                   watcher_response, watcher_set_response, watcher_message};
  watcher made;
  memset(&made, 0, sizeof made);
  made.subclass.functions = &functions;
  made.result = 7;
  made.kit = kit;
  made.name = name;
  return made;
}

tvx_subclassing *make_kit(void) {
  watchers_called[0] = '\0';
  return host_instance(&tvx_class_subclassing, &tvx_id_subclassing);
}

int32_t hwnd_of(const host_control *made) { return host_get(made->members, "hwnd").as.integer32; }

tvx_result attach(watcher *seen, int32_t hwnd, int32_t message) {
  return seen->kit->functions->AttachMessage(seen->kit, &seen->subclass, hwnd, message);
}

void detach(watcher *seen, int32_t hwnd, int32_t message) {
  CHECK(seen->kit->functions->DetachMessage(seen->kit, &seen->subclass, hwnd, message) == TVX_OK);
}

int32_t sent(tvx_subclassing *kit, int32_t hwnd, int32_t message) {
  int32_t result = -1;
  CHECK(kit->functions->SendMessage(kit, hwnd, message, 3, -4, &result) == TVX_OK);
  return result;
}
