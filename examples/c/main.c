/* The editor in a program in C: a window with a page whose source may not be shown. When the window is closed, the
 * program prints the HTML. Nothing is linked but dlopen: the library is found by the name of its class.
 *
 *   cc -std=c99 main.c -o editor -ldl
 */
#include <stdio.h>
#include <string.h>
#include <tvx/tvxhtml.h>

static int closed = 0, vetoes = 0;

/* Both of the program's objects live as long as the program: nobody need count. */
static tvx_result has_no_other(tvx_dispatch *self, const tvx_id *id, void **object) {
  (void)self, (void)id;
  *object = NULL;
  return TVX_NO_INTERFACE;
}
static uint32_t counted(tvx_dispatch *self) { return (void)self, 1; }
static uint32_t container_counted(tvx_container *self) { return (void)self, 1; }

/* The sink: what the program hears of the editor. */
static tvx_result heard(tvx_dispatch *self, int32_t number, uint16_t how, tvx_value *arguments, uint32_t count,
                        tvx_value *result, tvx_error *error) {
  (void)self, (void)how, (void)count, (void)result, (void)error;
  if (number == TVX_EVENT_BeforeCodeViewChange) {
    arguments[1].as.reference->as.boolean = TVX_TRUE; /* cancel */
    ++vetoes;
  }
  return TVX_OK;
}
static const tvx_dispatch_functions sink_functions = {has_no_other, counted, counted, NULL, heard};
static tvx_dispatch sink = {&sink_functions};

/* The container: the form around it. */
static tvx_result in_a_program(tvx_container *self, int16_t *user_mode) {
  (void)self;
  *user_mode = TVX_TRUE;
  return TVX_OK;
}
static tvx_result changed(tvx_container *self, const tvx_text *key) { return (void)self, (void)key, TVX_OK; }
static tvx_result window_closed(tvx_container *self) { return (void)self, closed = 1, TVX_OK; }
static const tvx_container_functions container_functions = {NULL,         container_counted, container_counted,
                                                            in_a_program, changed,           window_closed};
static tvx_container container = {&container_functions};

int main(int count, char **arguments) {
  const int self_check = count > 1 && strcmp(arguments[1], "--self-check") == 0;
  tvx_control *control = NULL;
  tvx_dispatch *members = NULL;
  tvx_events *events = NULL;
  tvx_library *library = NULL;
  tvx_value html = {TVX_TEXT, {0, 0, 0}, {0}};
  uint32_t connection;
  char page[4096];
  if (tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) != TVX_OK) {
    fprintf(stderr, "The editor isn't installed, or isn't registered\n");
    return 1;
  }
  control->functions->QueryInterface(control, &tvx_id_dispatch, (void **)&members);
  control->functions->QueryInterface(control, &tvx_id_events, (void **)&events);
  control->functions->QueryInterface(control, &tvx_id_library, (void **)&library);
  control->functions->SetContainer(control, &container);
  events->functions->Advise(events, &sink, &connection);

  library->functions->NewTextFromUTF8(library, "<h1>Hello</h1><p>Write here.</p>", -1, &html.as.text);
  members->functions->Invoke(members, TVX_MEMBER_DocumentHTML, TVX_SET, &html, 1, NULL, NULL);
  library->functions->ClearValue(library, &html);

  if (control->functions->Show(control, TVX_OWN_WINDOW, 0, NULL) != TVX_OK) return 2;
  if (self_check) {
    members->functions->Invoke(members, TVX_MEMBER_show_Code, TVX_CALL, NULL, 0, NULL, NULL);
    closed = 1;
  }
  while (!closed) library->functions->Pump(library, 20);

  members->functions->Invoke(members, TVX_MEMBER_DocumentHTML, TVX_GET, NULL, 0, &html, NULL);
  library->functions->TextToUTF8(library, &html.as.text, page, sizeof page);
  library->functions->ClearValue(library, &html);
  puts(page);

  members->functions->Release(members);
  events->functions->Release(events);
  library->functions->Release(library);
  control->functions->Release(control);
  return self_check && (vetoes != 1 || !strstr(page, "Write here.")) ? 3 : 0;
}
