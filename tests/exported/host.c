#include "host.h"

#include <dlfcn.h>

static tvx_DllGetClassObject get_class_object(void) {
  static tvx_DllGetClassObject function;
  if (!function) {
    const char *path = getenv("TVX_LIBRARY");
    void *library = dlopen(path ? path : "libtvxHTML.so.1", RTLD_NOW | RTLD_LOCAL);
    void *symbol = library ? dlsym(library, "DllGetClassObject") : NULL;
    if (!symbol) fprintf(stderr, "%s\n", dlerror());
    CHECK(symbol);
    memcpy(&function, &symbol, sizeof symbol);
  }
  return function;
}

tvx_factory *host_factory(void) {
  tvx_factory *factory = NULL;
  CHECK(get_class_object()(&tvx_class_htmled, &tvx_id_factory, (void **)&factory) == TVX_OK);
  return factory;
}

void *host_instance(const tvx_id *class_id, const tvx_id *id) {
  tvx_factory *factory = NULL;
  void *object = NULL;
  CHECK(get_class_object()(class_id, &tvx_id_factory, (void **)&factory) == TVX_OK);
  CHECK(factory->functions->CreateInstance(factory, NULL, id, &object) == TVX_OK && object);
  factory->functions->Release(factory);
  return object;
}

host_control host_make(void) {
  host_control made;
  tvx_factory *factory = host_factory();
  CHECK(factory->functions->CreateInstance(factory, NULL, &tvx_id_control, (void **)&made.control) == TVX_OK);
  factory->functions->Release(factory);
  CHECK(made.control->functions->QueryInterface(made.control, &tvx_id_dispatch, (void **)&made.members) == TVX_OK);
  CHECK(made.control->functions->QueryInterface(made.control, &tvx_id_events, (void **)&made.events) == TVX_OK);
  CHECK(made.control->functions->QueryInterface(made.control, &tvx_id_library, (void **)&made.tools) == TVX_OK);
  return made;
}

host_control host_start(void) {
  host_control made = host_make();
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  return made;
}

void host_release(host_control *made) {
  made->members->functions->Release(made->members);
  made->events->functions->Release(made->events);
  made->tools->functions->Release(made->tools);
  made->control->functions->Release(made->control);
  memset(made, 0, sizeof *made);
}

tvx_value host_text(const char *utf8) {
  static tvx_char pool[100][512];
  static size_t next;
  tvx_value value = {TVX_TEXT, {0, 0, 0}, {0}};
  tvx_char *characters = pool[next++ % 100];
  uint32_t length = 0;
  for (; utf8[length]; ++length) { /* ASCII is enough for tests */
    CHECK(length < 512);
    characters[length] = (tvx_char)(unsigned char)utf8[length];
  }
  value.as.text.characters = characters;
  value.as.text.length = length;
  return value;
}

tvx_value host_boolean(int flag) {
  tvx_value value = {TVX_BOOLEAN, {0, 0, 0}, {0}};
  value.as.boolean = flag ? TVX_TRUE : TVX_FALSE;
  return value;
}

tvx_value host_number(int32_t number) {
  tvx_value value = {TVX_INTEGER32, {0, 0, 0}, {0}};
  value.as.integer32 = number;
  return value;
}

tvx_value host_reference(tvx_value *target) {
  tvx_value value = {TVX_REFERENCE, {0, 0, 0}, {0}};
  value.as.reference = target;
  return value;
}

int32_t host_number_of(tvx_dispatch *object, const char *name) {
  tvx_value text = host_text(name);
  int32_t number = 0;
  tvx_result result = object->functions->GetIDsOfNames(object, &text.as.text, 1, &number);
  CHECK(result == TVX_OK || (result == TVX_NO_NAME && number == -1));
  return number;
}

tvx_result host_invoke(tvx_dispatch *object, const char *name, uint16_t how, tvx_value *arguments,
                       uint32_t count, tvx_value *result, tvx_error *error) {
  return object->functions->Invoke(object, host_number_of(object, name), how, arguments, count, result, error);
}

static void succeed(const char *name, tvx_result result, const tvx_error *error) {
  uint32_t i;
  if (result == TVX_OK) return;
  fprintf(stderr, "%s: %ld, error %ld: ", name, (long)result, (long)error->number);
  for (i = 0; i < error->text.length; ++i) fputc(error->text.characters[i], stderr);
  fputc('\n', stderr);
  exit(1);
}

void host_set(tvx_dispatch *object, const char *name, tvx_value value) {
  tvx_error error;
  succeed(name, host_invoke(object, name, TVX_SET, &value, 1, NULL, &error), &error);
}

tvx_value host_get(tvx_dispatch *object, const char *name) {
  tvx_error error;
  tvx_value value;
  succeed(name, host_invoke(object, name, TVX_GET, NULL, 0, &value, &error), &error);
  return value;
}

tvx_value host_call(tvx_dispatch *object, const char *name, tvx_value *arguments, uint32_t count) {
  tvx_error error;
  tvx_value value;
  succeed(name, host_invoke(object, name, TVX_CALL, arguments, count, &value, &error), &error);
  return value;
}

const char *host_utf8(const host_control *made, const tvx_text *text) {
  static char buffer[65536];
  CHECK(made->tools->functions->TextToUTF8(made->tools, text, buffer, sizeof buffer) < sizeof buffer);
  return buffer;
}

const char *host_get_text(const host_control *made, const char *name) {
  tvx_value value = host_get(made->members, name);
  const char *utf8;
  CHECK(value.type == TVX_TEXT);
  utf8 = host_utf8(made, &value.as.text);
  made->tools->functions->ClearValue(made->tools, &value);
  return utf8;
}

static tvx_result sink_query(tvx_dispatch *self, const tvx_id *id, void **object) {
  (void)self, (void)id;
  *object = NULL;
  return TVX_NO_INTERFACE;
}
static uint32_t sink_add(tvx_dispatch *self) { return ++((host_sink *)self)->references; }
static uint32_t sink_release(tvx_dispatch *self) { return --((host_sink *)self)->references; }
static tvx_result sink_numbers(tvx_dispatch *self, const tvx_text *names, uint32_t count, int32_t *numbers) {
  (void)self, (void)names, (void)count, (void)numbers;
  return TVX_NO_NAME;
}
static tvx_result sink_invoke(tvx_dispatch *self, int32_t number, uint16_t how, tvx_value *arguments,
                              uint32_t count, tvx_value *result, tvx_error *error) {
  host_sink *sink = (host_sink *)self;
  CHECK(number >= 1 && number <= 16 && how == TVX_CALL && !result && !error);
  ++sink->heard[number];
  if (sink->act) sink->act(sink, number, arguments, count);
  return TVX_OK;
}

void host_init_sink(host_sink *sink, host_control *made,
                    void (*act)(host_sink *, int32_t, tvx_value *, uint32_t)) {
  static const tvx_dispatch_functions functions = {sink_query, sink_add, sink_release, sink_numbers, sink_invoke};
  memset(sink, 0, sizeof *sink);
  sink->dispatch.functions = &functions;
  sink->references = 1;
  sink->made = made;
  sink->act = act;
}
