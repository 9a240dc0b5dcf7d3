/* What the hosts in C here have in common: checks that end the program, texts, calls by name, and a sink. */
#ifndef TVX_TESTS_HOST_H
#define TVX_TESTS_HOST_H

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "tvx/tvxhtml.h"

#define CHECK(condition)                                                      \
  do {                                                                        \
    if (!(condition)) {                                                       \
      fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      exit(1);                                                                \
    }                                                                         \
  } while (0)

/* A control by the faces that tests use. */
typedef struct host_control {
  tvx_control* control;
  tvx_dispatch* members;
  tvx_events* events;
  tvx_library* tools;
} host_control;

/* A case of a test program, which ends with cases.h. CMake finds cases by this line. */
#define CASE(name) static void name(void)

/* The library that the tests are given by its path. */
tvx_factory* host_factory(void);
/* An object of another class of the library, by one of its interfaces. */
void* host_instance(const tvx_id* class_id, const tvx_id* id);
host_control host_make(void);
/* Made and shown off screen. */
host_control host_start(void);
void host_release(host_control* made);

tvx_value host_text(const char* utf8); /* the host's own, for arguments; good until the next hundred texts */
tvx_value host_boolean(int flag);
tvx_value host_number(int32_t number);
tvx_value host_reference(tvx_value* value);

/* Calls by name. The program ends where a call fails that should not. */
int32_t host_number_of(tvx_dispatch* object, const char* name);
tvx_result host_invoke(tvx_dispatch* object, const char* name, uint16_t how, tvx_value* arguments,
                       uint32_t count, tvx_value* result, tvx_error* error);
void host_set(tvx_dispatch* object, const char* name, tvx_value value);
tvx_value host_get(tvx_dispatch* object, const char* name);
tvx_value host_call(tvx_dispatch* object, const char* name, tvx_value* arguments, uint32_t count);
/* A text property, in UTF-8 that the next call overwrites. */
const char* host_get_text(const host_control* made, const char* name);
const char* host_utf8(const host_control* made, const tvx_text* text);

/* A sink that counts what it hears and calls `act`. */
typedef struct host_sink host_sink;
struct host_sink {
  tvx_dispatch dispatch;
  uint32_t references;
  int heard[17];
  void (*act)(host_sink* self, int32_t number, tvx_value* arguments, uint32_t count);
  host_control* made;
  void* data;
};
void host_init_sink(host_sink* sink, host_control* made,
                    void (*act)(host_sink*, int32_t, tvx_value*, uint32_t));

#endif
