/* A host in C without a screen: members, values, events, objects. */
#include "host.h"

CASE(the_document_is_read_and_written) {
  host_control made = host_start();
  host_set(made.members, "DocumentHTML", host_text("<p>Hello</p>"));
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "<P>Hello</P>") == 0);
  CHECK(strcmp(host_get_text(&made, "documenthtml"), "<P>Hello</P>") == 0);
  CHECK(strcmp(host_get_text(&made, "DocumentText"), "Hello") == 0);
  host_release(&made);
}

CASE(properties_set_before_the_start_are_what_it_starts_with) {
  host_control made = host_make();
  tvx_value dom;
  host_set(made.members, "DocumentHTML", host_text("<p>Early</p>"));
  dom = host_get(made.members, "DOM");
  CHECK(dom.type == TVX_OBJECT && dom.as.object == NULL);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "<P>Early</P>") == 0);
  host_release(&made);
}

CASE(names_have_the_numbers_of_the_header) {
  host_control made = host_make();
#define NAME(number, name, kind, type, count) CHECK(host_number_of(made.members, #name) == number);
  TVX_EACH_MEMBER(NAME)
  CHECK(host_number_of(made.members, "documentHTML") == TVX_MEMBER_DocumentHTML);
  CHECK(host_number_of(made.members, "NoSuchMember") == -1);
  host_release(&made);
}

/* A value of the type that the description names; the caller clears it. */
static int has_type(const tvx_value *value, const char *type) {
  if (strcmp(type, "boolean") == 0) return value->type == TVX_BOOLEAN;
  if (strcmp(type, "string") == 0) return value->type == TVX_TEXT;
  if (strcmp(type, "object") == 0 || strncmp(type, "cls", 3) == 0) return value->type == TVX_OBJECT;
  if (strcmp(type, "") == 0) return value->type == TVX_EMPTY;
  if (strcmp(type, "variant") == 0) return value->type == TVX_EMPTY || value->type == TVX_TEXT;
  return value->type == TVX_INTEGER32;
}

static void check_property(host_control *made, int32_t number, const char *name, const char *type) {
  tvx_value value;
  tvx_error error;
  CHECK(made->members->functions->Invoke(made->members, number, TVX_GET, NULL, 0, &value, &error) == TVX_OK);
  if (!has_type(&value, type)) fprintf(stderr, "%s has the type %d\n", name, value.type);
  CHECK(has_type(&value, type));
  if (value.type != TVX_OBJECT) { /* to the value that it has: taken, or refused with a number that says why */
    tvx_result result = made->members->functions->Invoke(made->members, number, TVX_SET, &value, 1, NULL, &error);
    CHECK(result == TVX_OK || (result == TVX_EXCEPTION && (error.number == 382 || error.number == 383)));
    if (result != TVX_OK) made->tools->functions->FreeText(made->tools, &error.text);
  }
  made->tools->functions->ClearValue(made->tools, &value);
}

static void check_operation(host_control *made, int32_t number, const char *name, const char *type, int count) {
  tvx_value arguments[8], value;
  tvx_error error;
  tvx_result result;
  int i;
  for (i = 0; i < count; ++i) arguments[i] = host_text("1"); /* a file that isn't there, a number, true */
  result = made->members->functions->Invoke(made->members, number, TVX_CALL, arguments, (uint32_t)count, &value, &error);
  if (result != TVX_OK) fprintf(stderr, "%s: %ld, error %ld\n", name, (long)result, (long)error.number);
  CHECK(result == TVX_OK && has_type(&value, type));
  made->tools->functions->ClearValue(made->tools, &value);
}

CASE(every_member_can_be_called_by_its_number) {
  host_control made = host_start();
  host_set(made.members, "FTPHost", host_text("127.0.0.1:1")); /* where nobody answers */
#define MEMBER(number, name, kind, type, count)                          \
  if (strcmp(kind, "property") == 0)                                     \
    check_property(&made, number, #name, type);                          \
  else                                                                   \
    check_operation(&made, number, #name, type, count);
  TVX_EACH_MEMBER(MEMBER)
  host_release(&made);
}

CASE(what_is_no_member_of_that_kind_is_refused) {
  host_control made = host_start();
  tvx_value value;
  tvx_dispatch *members = made.members;
  CHECK(members->functions->Invoke(members, 9999, TVX_GET, NULL, 0, &value, NULL) == TVX_NO_MEMBER);
  CHECK(members->functions->Invoke(members, TVX_MEMBER_BaseURL, TVX_CALL, NULL, 0, &value, NULL) == TVX_NO_MEMBER);
  CHECK(members->functions->Invoke(members, TVX_MEMBER_CleanUp, TVX_GET, NULL, 0, &value, NULL) == TVX_NO_MEMBER);
  CHECK(members->functions->Invoke(members, TVX_MEMBER_CleanUp, 64, NULL, 0, &value, NULL) == TVX_NO_MEMBER);
  CHECK(members->functions->Invoke(members, TVX_MEMBER_CleanUp, TVX_CALL | TVX_GET, NULL, 0, &value, NULL) == TVX_OK);
  CHECK(value.type == TVX_EMPTY);
  host_release(&made);
}

CASE(failures_have_a_number_and_a_text) {
  host_control made = host_start();
  tvx_value value = host_boolean(1);
  tvx_error error;
  CHECK(host_invoke(made.members, "IsDirty", TVX_SET, &value, 1, NULL, &error) == TVX_EXCEPTION);
  CHECK(error.number == 382 && error.text.length > 0);
  made.tools->functions->FreeText(made.tools, &error.text);
  CHECK(error.text.length == 0);
  CHECK(made.tools->functions->GetError(made.tools, &error) == TVX_OK && error.number == 382);
  made.tools->functions->FreeText(made.tools, &error.text);
  value = host_text("not a number");
  CHECK(host_invoke(made.members, "FTPPort", TVX_SET, &value, 1, NULL, &error) == TVX_EXCEPTION);
  CHECK(error.number == 13);
  made.tools->functions->FreeText(made.tools, &error.text);
  CHECK(host_invoke(made.members, "CleanUp", TVX_CALL, &value, 1, NULL, &error) == TVX_EXCEPTION);
  CHECK(error.number == 450);
  made.tools->functions->FreeText(made.tools, &error.text);
  CHECK(host_invoke(made.members, "CleanUp", TVX_CALL, NULL, 0, NULL, &error) == TVX_OK);
  CHECK(error.number == 0 && error.text.length == 0);
  host_release(&made);
}

CASE(arguments_are_converted) {
  host_control made = host_start();
  tvx_value value;
  host_set(made.members, "FTPPort", host_text("2121"));
  value = host_get(made.members, "FTPPort");
  CHECK(value.type == TVX_INTEGER32 && value.as.integer32 == 2121);
  host_set(made.members, "FTPPassive", host_number(-1));
  value = host_get(made.members, "FTPPassive");
  CHECK(value.type == TVX_BOOLEAN && value.as.boolean == TVX_TRUE);
  value.type = TVX_DOUBLE;
  value.as.number = 99.5;
  host_set(made.members, "FTPPort", value);
  value = host_get(made.members, "FTPPort");
  CHECK(value.as.integer32 == 100); /* to the even number */
  value.type = TVX_INTEGER16;
  value.as.integer16 = -3;
  host_set(made.members, "FTPPort", value);
  value = host_get(made.members, "FTPPort");
  CHECK(value.as.integer32 == -3);
  host_release(&made);
}

CASE(arguments_come_back_where_a_reference_leads) {
  host_control made = host_start();
  tvx_value result = {TVX_EMPTY, {0, 0, 0}, {0}}, reference = host_reference(&result);
  tvx_value file = {TVX_EMPTY, {0, 0, 0}, {0}}, given[2], answer;
  host_call(made.members, "InCodeView", &reference, 1);
  CHECK(result.type == TVX_BOOLEAN && result.as.boolean == TVX_FALSE);
  host_call(made.members, "show_Code", NULL, 0);
  host_call(made.members, "InCodeView", &reference, 1);
  CHECK(result.as.boolean == TVX_TRUE);
  /* Nobody chooses a file here: "" comes back, in the place of what the library has put there. */
  CHECK(made.tools->functions->SetText(made.tools, &file, NULL, 0) == TVX_OK);
  given[0] = host_reference(&file);
  given[1] = host_boolean(0);
  answer = host_call(made.members, "Open_document", given, 2);
  CHECK(answer.type == TVX_EMPTY && file.type == TVX_TEXT && file.as.text.length == 0);
  host_release(&made);
}

/* --- events --- */

static void veto_code(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  if (number != TVX_EVENT_BeforeCodeViewChange) return;
  CHECK(count == 2 && arguments[0].type == TVX_REFERENCE && arguments[1].type == TVX_REFERENCE);
  CHECK(arguments[0].as.reference->type == TVX_BOOLEAN && arguments[0].as.reference->as.boolean == TVX_TRUE);
  CHECK(arguments[1].as.reference->as.boolean == TVX_FALSE);
  arguments[1].as.reference->as.boolean = sink->data ? TVX_FALSE : TVX_TRUE;
}

static int in_code_view(host_control *made) {
  tvx_value result = {TVX_EMPTY, {0, 0, 0}, {0}}, reference = host_reference(&result);
  host_call(made->members, "InCodeView", &reference, 1);
  return result.as.boolean != 0;
}

CASE(a_sink_can_veto_by_reference) {
  host_control made = host_start();
  host_sink sink;
  uint32_t connection = 0;
  host_init_sink(&sink, &made, veto_code);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK && connection != 0);
  CHECK(sink.references == 2);
  host_call(made.members, "show_Code", NULL, 0);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 1 && !in_code_view(&made));
  sink.data = &sink; /* no veto */
  host_call(made.members, "show_Code", NULL, 0);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 2 && in_code_view(&made));
  CHECK(made.events->functions->Unadvise(made.events, connection) == TVX_OK);
  CHECK(made.events->functions->Unadvise(made.events, connection) == TVX_NO_CONNECTION);
  CHECK(sink.references == 1);
  host_call(made.members, "show_Code", NULL, 0);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 2);
  host_release(&made);
}

static void change_text(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  tvx_value *text;
  tvx_library *library = sink->made->tools;
  if (number != TVX_EVENT_BeforeGetDocumentHTML) return;
  CHECK(count == 1);
  text = arguments[0].as.reference;
  CHECK(text->type == TVX_TEXT);
  CHECK(library->functions->SetText(library, text, (const tvx_char *)sink->data, 3) == TVX_OK);
}

CASE(a_sink_can_write_a_text) {
  static const tvx_char first[3] = {'o', 'n', 'e'}, second[3] = {'t', 'w', 'o'};
  host_control made = host_start();
  host_sink sink, later;
  uint32_t connection;
  host_init_sink(&sink, &made, change_text);
  host_init_sink(&later, &made, change_text);
  sink.data = (void *)first;
  later.data = (void *)second;
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "one") == 0);
  CHECK(made.events->functions->Advise(made.events, &later.dispatch, &connection) == TVX_OK);
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), "two") == 0); /* the later has the last word */
  host_release(&made);
  CHECK(sink.references == 1 && later.references == 1);
}

static void write_nonsense(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  (void)sink, (void)count;
  if (number != TVX_EVENT_BeforeCodeViewChange) return;
  arguments[1].as.reference->type = 77;
  arguments[0].type = 77;
}

CASE(what_a_sink_writes_wrongly_counts_for_nothing) {
  host_control made = host_start();
  host_sink sink;
  uint32_t connection;
  host_init_sink(&sink, &made, write_nonsense);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  host_call(made.members, "show_Code", NULL, 0);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 1 && in_code_view(&made));
  host_release(&made);
}

static void release_all(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  (void)arguments, (void)count;
  if (number != TVX_EVENT_BeforeCodeViewChange) return;
  host_release(sink->made);
}

CASE(a_control_can_be_released_within_its_event) {
  host_control made = host_start();
  host_sink sink;
  uint32_t connection;
  tvx_dispatch *members = made.members;
  host_init_sink(&sink, &made, release_all);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  members->functions->Invoke(members, TVX_MEMBER_show_Code, TVX_CALL, NULL, 0, NULL, NULL);
  CHECK(sink.heard[TVX_EVENT_BeforeCodeViewChange] == 1);
  CHECK(sink.references == 1); /* it has ended: its sinks are released */
}

static void close_it(host_sink *sink, int32_t number, tvx_value *arguments, uint32_t count) {
  (void)arguments, (void)count;
  if (number != TVX_EVENT_BeforeGetDocumentHTML) return;
  CHECK(sink->made->control->functions->Close(sink->made->control) == TVX_OK);
}

CASE(a_control_can_be_closed_within_its_event) {
  host_control made = host_start();
  host_sink sink;
  uint32_t connection;
  tvx_value value;
  host_init_sink(&sink, &made, close_it);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  host_invoke(made.members, "DocumentHTML", TVX_GET, NULL, 0, &value, NULL);
  made.tools->functions->ClearValue(made.tools, &value);
  CHECK(sink.references == 1);
  CHECK(host_invoke(made.members, "DocumentHTML", TVX_GET, NULL, 0, &value, NULL) == TVX_CLOSED);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_CLOSED);
  CHECK(made.control->functions->Close(made.control) == TVX_CLOSED);
  host_release(&made);
}

/* --- objects --- */

CASE(elements_are_objects_with_members_by_name) {
  host_control made = host_start();
  tvx_value dom, body, list, item, name = host_text("P"), index = host_number(1), text;
  host_set(made.members, "DocumentHTML", host_text("<p>one</p><p id=second>two</p>"));
  dom = host_get(made.members, "DOM");
  CHECK(dom.type == TVX_OBJECT && dom.as.object);
  body = host_get(dom.as.object, "body");
  list = host_call(body.as.object, "getElementsByTagName", &name, 1);
  CHECK(list.type == TVX_OBJECT);
  CHECK(list.as.object->functions->Invoke(list.as.object, 0, TVX_GET, &index, 1, &item, NULL) == TVX_OK);
  CHECK(item.type == TVX_OBJECT && item.as.object);
  text = host_get(item.as.object, "innerText");
  CHECK(strcmp(host_utf8(&made, &text.as.text), "two") == 0);
  made.tools->functions->ClearValue(made.tools, &text);
  host_set(item.as.object, "innerHTML", host_text("three"));
  CHECK(strcmp(host_get_text(&made, "DocumentText"), "one\n\nthree") == 0);
  /* An object as an argument. */
  text = host_call(body.as.object, "contains", &item, 1);
  CHECK(text.type == TVX_BOOLEAN && text.as.boolean == TVX_TRUE);
  /* What it hasn't. */
  CHECK(host_invoke(item.as.object, "noSuchThing", TVX_CALL, NULL, 0, &text, NULL) == TVX_EXCEPTION);
  made.tools->functions->ClearValue(made.tools, &item);
  made.tools->functions->ClearValue(made.tools, &list);
  made.tools->functions->ClearValue(made.tools, &body);
  made.tools->functions->ClearValue(made.tools, &dom);
  host_release(&made);
}

CASE(objects_outlive_their_control) {
  host_control made = host_start();
  tvx_value dom, body, text;
  tvx_error error;
  tvx_library *library = made.tools;
  host_set(made.members, "DocumentHTML", host_text("<p>one</p>"));
  dom = host_get(made.members, "DOM");
  body = host_get(dom.as.object, "body");
  library->functions->AddRef(library);
  made.control->functions->Close(made.control);
  host_release(&made);
  if (host_invoke(body.as.object, "innerHTML", TVX_GET, NULL, 0, &text, &error) == TVX_OK)
    library->functions->ClearValue(library, &text);
  if (host_invoke(body.as.object, "offsetLeft", TVX_GET, NULL, 0, &text, &error) == TVX_EXCEPTION)
    library->functions->FreeText(library, &error.text);
  if (host_invoke(dom.as.object, "readyState", TVX_GET, NULL, 0, &text, &error) == TVX_OK)
    library->functions->ClearValue(library, &text);
  library->functions->ClearValue(library, &body);
  library->functions->ClearValue(library, &dom);
  library->functions->Release(library);
}

CASE(an_entry_of_a_folder_has_dates) {
  host_control made = host_make();
  tvx_value item = host_get(made.members, "DirectoryItem"), value = {TVX_DATE, {0, 0, 0}, {0}};
  value.as.number = 36526.25; /* six in the morning of the first of January 2000 */
  host_set(item.as.object, "LastWriteTime", value);
  value = host_get(item.as.object, "LastWriteTime");
  CHECK(value.type == TVX_DATE && value.as.number == 36526.25);
  host_set(item.as.object, "Filename", host_text("page.html"));
  value = host_get(item.as.object, "Filename");
  CHECK(strcmp(host_utf8(&made, &value.as.text), "page.html") == 0);
  made.tools->functions->ClearValue(made.tools, &value);
  made.tools->functions->ClearValue(made.tools, &item);
  host_release(&made);
}

CASE(an_object_of_the_hosts_own_is_no_argument) {
  host_control made = host_start();
  host_sink sink;
  tvx_value object = {TVX_OBJECT, {0, 0, 0}, {0}}, value;
  tvx_error error;
  host_init_sink(&sink, &made, NULL);
  object.as.object = &sink.dispatch;
  CHECK(host_invoke(made.members, "BaseURL", TVX_SET, &object, 1, &value, &error) == TVX_EXCEPTION);
  CHECK(error.number == 13);
  made.tools->functions->FreeText(made.tools, &error.text);
  host_release(&made);
}

/* --- objects and interfaces --- */

CASE(all_faces_of_an_object_are_one_object) {
  host_control made = host_make();
  tvx_unknown *first = NULL, *second = NULL;
  void *none = &made;
  CHECK(made.control->functions->QueryInterface(made.control, &tvx_id_unknown, (void **)&first) == TVX_OK);
  CHECK(made.members->functions->QueryInterface(made.members, &tvx_id_unknown, (void **)&second) == TVX_OK);
  CHECK(first == second);
  CHECK(first->functions->AddRef(first) == 7);
  CHECK(first->functions->Release(first) == 6);
  CHECK(first->functions->QueryInterface(first, &tvx_id_store, &none) == TVX_NO_INTERFACE && none == NULL);
  CHECK(first->functions->QueryInterface(first, NULL, &none) == TVX_POINTER);
  first->functions->Release(first);
  second->functions->Release(second);
  host_release(&made);
}

CASE(a_factory_refuses_what_it_does_not_make) {
  tvx_factory *factory = host_factory();
  void *object = factory;
  tvx_unknown outer = {NULL};
  CHECK(factory->functions->CreateInstance(factory, &outer, &tvx_id_control, &object) == TVX_NO_AGGREGATION);
  CHECK(object == NULL);
  CHECK(factory->functions->CreateInstance(factory, NULL, &tvx_id_container, &object) == TVX_NO_INTERFACE);
  CHECK(object == NULL);
  CHECK(factory->functions->CreateInstance(factory, NULL, NULL, &object) == TVX_POINTER);
  factory->functions->Release(factory);
}

CASE(texts_may_contain_zeros_and_halves_of_characters) {
  static const tvx_char odd[] = {'a', 0, 0xD83D, 'b', 0xD83D, 0xDE00};
  host_control made = host_start();
  tvx_value value = {TVX_TEXT, {0, 0, 0}, {0}};
  tvx_text text;
  char bytes[8];
  value.as.text.characters = odd;
  value.as.text.length = 6;
  host_set(made.members, "FTPUser", value);
  value = host_get(made.members, "FTPUser");
  CHECK(value.as.text.length == 6 && memcmp(value.as.text.characters, odd, sizeof odd) == 0);
  made.tools->functions->ClearValue(made.tools, &value);
  CHECK(value.type == TVX_EMPTY);
  CHECK(made.tools->functions->NewTextFromUTF8(made.tools, "a\xC3\xA4\xF0\x9F\x98\x80\xFF", -1, &text) == TVX_OK);
  CHECK(text.length == 5 && text.characters[1] == 0xE4 && text.characters[2] == 0xD83D && text.characters[4] == 0xFFFD);
  CHECK(made.tools->functions->TextToUTF8(made.tools, &text, NULL, 0) == 10);
  CHECK(made.tools->functions->TextToUTF8(made.tools, &text, bytes, 6) == 10);
  CHECK(strcmp(bytes, "a\xC3\xA4") == 0); /* the next one has four bytes */
  made.tools->functions->FreeText(made.tools, &text);
  made.tools->functions->FreeText(made.tools, &text); /* it is empty by now */
  text.characters = odd;
  text.length = 6;
  made.tools->functions->FreeText(made.tools, &text); /* it isn't the library's, and stays as it is */
  CHECK(odd[5] == 0xDE00);
  host_release(&made);
}

#include "cases.h"
