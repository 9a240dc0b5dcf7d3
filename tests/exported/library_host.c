/* A host in C without a screen: the registry, lifetime, threads, the container and the store. */
#define _DEFAULT_SOURCE
#include "host.h"

#include <dirent.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

static void *library_handle(void) {
  void *library = dlopen(getenv("TVX_LIBRARY"), RTLD_NOW | RTLD_LOCAL);
  CHECK(library);
  return library;
}

static tvx_result entry(void *library, const char *name) {
  tvx_DllRegisterServer function;
  void *symbol = dlsym(library, name);
  CHECK(symbol);
  memcpy(&function, &symbol, sizeof symbol);
  return function();
}

/* --- the registry --- */

static char *registry_path(void) {
  static char path[4096];
  snprintf(path, sizeof path, "%s/tvxHTML/classes", getenv("XDG_DATA_HOME"));
  return path;
}

static const char *registry_text(void) {
  static char text[65536];
  FILE *file = fopen(registry_path(), "r");
  size_t length;
  if (!file) return "";
  length = fread(text, 1, sizeof text - 1, file);
  text[length] = '\0';
  fclose(file);
  return text;
}

static void write_registry(const char *text) {
  FILE *file = fopen(registry_path(), "w");
  CHECK(file && fputs(text, file) >= 0 && fclose(file) == 0);
}

static void start_over(void) {
  void *library = library_handle();
  CHECK(entry(library, "DllRegisterServer") == TVX_OK); /* makes the folder */
  CHECK(remove(registry_path()) == 0);
}

CASE(a_registered_class_is_created_by_its_name) {
  void *library = library_handle();
  tvx_control *control = NULL;
  start_over();
  CHECK(tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) == TVX_NOT_REGISTERED && !control);
  CHECK(entry(library, "DllRegisterServer") == TVX_OK);
  CHECK(tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) == TVX_OK && control);
  control->functions->Release(control);
  CHECK(tvx_create("TVXhtml.htmlED", &tvx_id_control, (void **)&control) == TVX_OK);
  control->functions->Release(control);
  {
    tvx_timer *timer = NULL;
    tvx_subclassing *kit = NULL;
    CHECK(tvx_create("tvxHTML.CTimer", &tvx_id_timer, (void **)&timer) == TVX_OK);
    CHECK(tvx_create("tvxHTML.GSubclass", &tvx_id_subclassing, (void **)&kit) == TVX_OK);
    CHECK(tvx_create("tvxHTML.CTimer", &tvx_id_control, (void **)&control) == TVX_NO_INTERFACE && !control);
    timer->functions->Release(timer);
    kit->functions->Release(kit);
  }
  CHECK(tvx_create("tvxHTML.HTMLe", &tvx_id_control, (void **)&control) == TVX_NOT_REGISTERED);
  CHECK(entry(library, "DllUnregisterServer") == TVX_OK);
  CHECK(tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) == TVX_NOT_REGISTERED && !control);
  CHECK(!strstr(registry_text(), "tvxHTML."));
}

CASE(registering_twice_leaves_one_entry) {
  void *library = library_handle();
  const char *text;
  start_over();
  CHECK(entry(library, "DllRegisterServer") == TVX_OK && entry(library, "DllRegisterServer") == TVX_OK);
  text = strstr(registry_text(), "tvxHTML.HTMLed\t{04C657AA-");
  CHECK(text && !strstr(text + 1, "tvxHTML.HTMLed\t"));
}

CASE(entries_of_others_stay) {
  void *library = library_handle();
  start_over();
  write_registry("# mine\nOther.Class\t{00000000-0000-0000-0000-000000000001}\t/other.so\n\nno line of three fields\n"
                 "tvxHTML.HTMLed\t{00000000-0000-0000-0000-000000000002}\t/older.so\n");
  CHECK(entry(library, "DllUnregisterServer") == TVX_OK);
  CHECK(strstr(registry_text(), "/older.so")); /* it is another library's */
  CHECK(entry(library, "DllRegisterServer") == TVX_OK);
  CHECK(!strstr(registry_text(), "/older.so"));
  CHECK(strstr(registry_text(), "# mine\nOther.Class\t") && strstr(registry_text(), "\nno line of three fields\n"));
  CHECK(entry(library, "DllUnregisterServer") == TVX_OK);
  CHECK(strstr(registry_text(), "Other.Class\t") && !strstr(registry_text(), "tvxHTML.HTMLed"));
}

CASE(a_registry_that_cannot_be_written_is_a_failure) {
  void *library = library_handle();
  start_over();
  CHECK(mkdir(registry_path(), 0700) == 0); /* a folder in its position: nobody writes that, root neither */
  CHECK(entry(library, "DllRegisterServer") == TVX_FAILED);
  CHECK(rmdir(registry_path()) == 0);
  CHECK(entry(library, "DllRegisterServer") == TVX_OK);
}

/* Readers never see a part of the file, whoever writes it; and no writer undoes what another has written. */
CASE(the_registry_is_whole_at_all_times) {
  enum { writers = 6, times = 40 };
  void *library = library_handle();
  int i, status, running = writers;
  start_over();
  write_registry("Other.Class\t{00000000-0000-0000-0000-000000000001}\t/other.so\n");
  for (i = 0; i < writers; ++i)
    if (fork() == 0) {
      int round;
      for (round = 0; round < times; ++round) {
        if (entry(library, "DllRegisterServer") != TVX_OK) _exit(1);
        if (round % 3 == i % 3 && entry(library, "DllUnregisterServer") != TVX_OK) _exit(1);
      }
      _exit(entry(library, "DllRegisterServer") == TVX_OK ? 0 : 1);
    }
  while (running > 0) {
    const char *text = registry_text();
    CHECK(strncmp(text, "Other.Class\t", 12) == 0 && text[strlen(text) - 1] == '\n');
    while (waitpid(-1, &status, WNOHANG) > 0) {
      CHECK(WIFEXITED(status) && WEXITSTATUS(status) == 0);
      --running;
    }
  }
  CHECK(strstr(registry_text(), "tvxHTML.HTMLed\t"));
}

CASE(lines_that_are_none_are_passed_over) {
  tvx_id id;
  char path[8];
  start_over();
  write_registry("# A.Class\t{00000000-0000-0000-0000-000000000001}\t/comment\nA.Class\nA.Class\t{}\t/no-id\n"
                 "A.Class\t{0000000-0000-0000-0000-000000000001}\t/short-id\n"
                 "A.Class\t{00112233-4455-6677-8899-aabbCCDDEEFF}\tfolder/relative.so\r\n"
                 "A.Class\t{00112233-4455-6677-8899-AABBCCDDEEFF}\t/second.so\n");
  CHECK(!tvx_find_class("A.Class", &id, path, sizeof path)); /* the path has no room */
  {
    char room[8192];
    CHECK(tvx_find_class("a.class", &id, room, sizeof room));
    CHECK(strstr(room, "/tvxHTML/folder/relative.so") && room[0] == '/');
    CHECK(id.bytes[0] == 0x00 && id.bytes[1] == 0x11 && id.bytes[15] == 0xFF && id.bytes[10] == 0xAA);
  }
}

CASE(the_systems_registry_comes_after_the_users) {
  tvx_id id;
  char path[8192], folders[4200], *users;
  start_over();
  write_registry("A.Class\t{00112233-4455-6677-8899-aabbccddeeff}\t/users.so\n");
  users = getenv("XDG_DATA_HOME");
  snprintf(folders, sizeof folders, "/nowhere:relative::%s", users);
  CHECK(setenv("XDG_DATA_DIRS", folders, 1) == 0 && setenv("XDG_DATA_HOME", "/nowhere/else", 1) == 0);
  CHECK(tvx_find_class("A.Class", &id, path, sizeof path) && strcmp(path, "/users.so") == 0);
  CHECK(setenv("XDG_DATA_DIRS", "", 1) == 0 && !tvx_find_class("A.Class", &id, path, sizeof path));
}

CASE(a_library_that_cannot_be_loaded_is_a_failure) {
  tvx_control *control = NULL;
  start_over();
  write_registry("tvxHTML.HTMLed\t{04C657AA-8E4F-4912-B967-DCEC43DE5A5C}\t/nowhere/libtvxHTML.so\n");
  CHECK(tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) == TVX_FAILED && !control);
}

/* --- lifetime --- */

static long resident_kilobytes(void) {
  FILE *file = fopen("/proc/self/statm", "r");
  long all = 0, resident = 0;
  CHECK(file && fscanf(file, "%ld %ld", &all, &resident) == 2 && fclose(file) == 0);
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

static int open_files(void) {
  DIR *folder = opendir("/proc/self/fd");
  int count = 0;
  CHECK(folder);
  while (readdir(folder)) ++count;
  closedir(folder);
  return count;
}

static void fill_a_cell(int row) {
  tvx_control *control = NULL;
  host_control made;
  char html[64];
  CHECK(tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) == TVX_OK);
  made.control = control;
  CHECK(control->functions->QueryInterface(control, &tvx_id_dispatch, (void **)&made.members) == TVX_OK);
  CHECK(control->functions->QueryInterface(control, &tvx_id_library, (void **)&made.tools) == TVX_OK);
  CHECK(control->functions->QueryInterface(control, &tvx_id_events, (void **)&made.events) == TVX_OK);
  CHECK(control->functions->Show(control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  snprintf(html, sizeof html, "<p>cell %d", row);
  host_set(made.members, "DocumentHTML", host_text(html));
  snprintf(html, sizeof html, "<P>cell %d</P>", row);
  CHECK(strcmp(host_get_text(&made, "DocumentHTML"), html) == 0);
  host_release(&made);
}

/* As a spreadsheet does whose cells hold HTML. */
CASE(a_thousand_controls_by_name_leave_nothing) {
  enum { warm = 200, all = 1000 };
  void *library = library_handle();
  long kilobytes = 0;
  int row, files = 0;
  CHECK(entry(library, "DllRegisterServer") == TVX_OK);
  for (row = 0; row < all; ++row) {
    if (row == warm) {
      kilobytes = resident_kilobytes();
      files = open_files();
    }
    fill_a_cell(row);
  }
  printf("%ld kB after %d controls, %ld kB after %d\n", kilobytes, (int)warm, resident_kilobytes(), (int)all);
  CHECK(open_files() == files);
#ifndef TVX_SANITIZED /* which keeps what is freed for a while */
  CHECK(resident_kilobytes() - kilobytes < 4096);             /* 800 controls: 5 kB each would be seen */
#endif
  CHECK(entry(library, "DllCanUnloadNow") == TVX_OK);
}

static int is_loaded(const char *name) {
  char line[4096];
  int found = 0;
  FILE *file = fopen("/proc/self/maps", "r");
  CHECK(file);
  while (fgets(line, sizeof line, file))
    if (strstr(line, name)) found = 1;
  fclose(file);
  return found;
}

CASE(the_library_can_be_unloaded_when_nothing_is_left) {
  void *library = library_handle(), *object;
  tvx_factory *factory;
  tvx_control *control;
  int round;
  for (round = 0; round < 3; ++round) {
    tvx_DllGetClassObject get;
    void *symbol = dlsym(library, "DllGetClassObject");
    memcpy(&get, &symbol, sizeof symbol);
    CHECK(entry(library, "DllCanUnloadNow") == TVX_OK);
    CHECK(get(&tvx_class_htmled, &tvx_id_factory, (void **)&factory) == TVX_OK);
    CHECK(entry(library, "DllCanUnloadNow") == TVX_NOTHING);
    CHECK(factory->functions->LockServer(factory, 1) == TVX_OK);
    CHECK(factory->functions->CreateInstance(factory, NULL, &tvx_id_control, (void **)&control) == TVX_OK);
    CHECK(control->functions->Show(control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
    control->functions->Release(control);
    CHECK(entry(library, "DllCanUnloadNow") == TVX_NOTHING);
    CHECK(factory->functions->LockServer(factory, 0) == TVX_OK);
    factory->functions->Release(factory);
    CHECK(entry(library, "DllCanUnloadNow") == TVX_OK);
    CHECK(get(&tvx_id_control, &tvx_id_factory, &object) == TVX_NO_CLASS && !object);
    CHECK(get(&tvx_class_htmled, &tvx_id_control, &object) == TVX_NO_INTERFACE && !object);
    CHECK(get(&tvx_class_htmled, NULL, &object) == TVX_POINTER);
    CHECK(is_loaded("/libtvxHTML.so"));
    dlclose(library);
#ifndef TVX_SANITIZED /* whose checks keep the library in the process */
    CHECK(!is_loaded("/libtvxHTML.so"));
#endif
    library = library_handle();
  }
}

/* --- threads --- */

static void *call_from_elsewhere(void *data) {
  host_control *made = data;
  tvx_dispatch *members = made->members;
  tvx_value value;
  CHECK(members->functions->Invoke(members, TVX_MEMBER_CleanUp, TVX_CALL, NULL, 0, &value, NULL) == TVX_WRONG_THREAD);
  CHECK(value.type == TVX_EMPTY);
  CHECK(made->control->functions->Show(made->control, TVX_OFF_SCREEN, 0, NULL) == TVX_WRONG_THREAD);
  CHECK(made->tools->functions->Pump(made->tools, 0) == TVX_WRONG_THREAD);
  return NULL;
}

static void *release_elsewhere(void *data) {
  host_release(data);
  return NULL;
}

static void *use_in_another_thread(void *data) {
  host_control made = host_start();
  (void)data;
  host_set(made.members, "DocumentHTML", host_text("<p>there</p>"));
  CHECK(strcmp(host_get_text(&made, "DocumentText"), "there") == 0);
  host_release(&made);
  return NULL;
}

static void in_thread(void *(*run)(void *), void *data) {
  pthread_t thread;
  CHECK(pthread_create(&thread, NULL, run, data) == 0 && pthread_join(thread, NULL) == 0);
}

CASE(calls_from_another_thread_are_refused) {
  host_control made = host_start();
  in_thread(call_from_elsewhere, &made);
  host_set(made.members, "DocumentHTML", host_text("<p>here</p>"));
  CHECK(strcmp(host_get_text(&made, "DocumentText"), "here") == 0);
  host_release(&made);
}

CASE(the_last_release_may_come_from_another_thread) {
  host_control made = host_start(), other = host_start();
  host_sink sink;
  uint32_t connection;
  host_init_sink(&sink, &made, NULL);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  in_thread(release_elsewhere, &made);
  CHECK(sink.references == 2); /* it ends in this thread */
  CHECK(other.tools->functions->Pump(other.tools, 0) == TVX_OK);
  CHECK(sink.references == 1);
  host_release(&other);
}

CASE(when_nothing_is_left_another_thread_may_begin) {
  host_control made = host_start();
  host_release(&made);
  in_thread(use_in_another_thread, NULL);
}

/* --- the container and the store --- */

typedef struct cupboard {
  tvx_store store;
  tvx_container container;
  uint32_t references;
  int16_t user_mode;
  int told;
  int reads, writes, kept;
  tvx_library *tools;
  char keys[100][64];
  tvx_value values[100];
} cupboard;

static cupboard *cupboard_of(tvx_store *store) { return (cupboard *)store; }
static cupboard *container_cupboard(tvx_container *container) {
  return (cupboard *)((char *)container - offsetof(cupboard, container));
}
static tvx_result no_query(tvx_store *self, const tvx_id *id, void **object) {
  (void)self, (void)id, (void)object;
  exit(1); /* is not called */
}
static uint32_t store_add(tvx_store *self) { return ++cupboard_of(self)->references; }
static uint32_t store_release(tvx_store *self) { return --cupboard_of(self)->references; }

static int key_index(cupboard *all, const tvx_text *key) {
  char name[64];
  uint32_t i;
  int at;
  CHECK(key->length < sizeof name);
  for (i = 0; i < key->length; ++i) name[i] = (char)key->characters[i];
  name[i] = '\0';
  for (at = 0; at < all->kept && strcmp(all->keys[at], name) != 0; ++at) {
  }
  if (at == all->kept) strcpy(all->keys[at], name);
  return at;
}

static tvx_result store_read(tvx_store *self, const tvx_text *key, tvx_value *value) {
  cupboard *all = cupboard_of(self);
  const int at = key_index(all, key);
  ++all->reads;
  if (at == all->kept) return TVX_NOTHING;
  if (all->values[at].type != TVX_TEXT) {
    all->tools->functions->ClearValue(all->tools, value);
    *value = all->values[at];
    return TVX_OK;
  }
  return all->tools->functions->SetText(all->tools, value, all->values[at].as.text.characters,
                                          all->values[at].as.text.length);
}

static tvx_result store_write(tvx_store *self, const tvx_text *key, const tvx_value *value, int16_t is_default) {
  cupboard *all = cupboard_of(self);
  const int at = key_index(all, key);
  ++all->writes;
  CHECK(at == all->kept); /* each key once */
  if (is_default) return TVX_OK;
  if (value->type == TVX_TEXT)
    CHECK(all->tools->functions->SetText(all->tools, &all->values[at], value->as.text.characters,
                                           value->as.text.length) == TVX_OK);
  else
    all->values[at] = *value;
  ++all->kept;
  return TVX_OK;
}

static uint32_t container_add(tvx_container *self) { return ++container_cupboard(self)->references; }
static uint32_t container_release(tvx_container *self) { return --container_cupboard(self)->references; }
static tvx_result container_mode(tvx_container *self, int16_t *mode) {
  *mode = container_cupboard(self)->user_mode;
  return TVX_OK;
}
static tvx_result container_changed(tvx_container *self, const tvx_text *key) {
  container_cupboard(self)->told = key_index(container_cupboard(self), key) + 1;
  return TVX_OK;
}

static void init_cupboard(cupboard *all, tvx_library *library) {
  static const tvx_store_functions store = {no_query, store_add, store_release, store_read, store_write};
  static const tvx_container_functions container = {NULL, container_add, container_release, container_mode,
                                                    container_changed, NULL};
  memset(all, 0, sizeof *all);
  all->store.functions = &store;
  all->container.functions = &container;
  all->user_mode = TVX_TRUE;
  all->references = 1;
  all->tools = library;
}

CASE(a_saved_control_is_read_back) {
  host_control first = host_start(), second = host_make();
  cupboard all;
  init_cupboard(&all, first.tools);
  host_set(first.members, "DocumentHTML", host_text("<p>kept</p>"));
  host_set(first.members, "FTPPort", host_number(2121));
  host_set(first.members, "relativeURLs", host_boolean(1));
  CHECK(first.control->functions->WriteProperties(first.control, &all.store) == TVX_OK);
  CHECK(all.writes > 40);
  CHECK(first.control->functions->ReadProperties(first.control, &all.store) == TVX_STARTED);
  CHECK(second.control->functions->ReadProperties(second.control, &all.store) == TVX_OK);
  CHECK(all.reads > 40 && all.references == 1);
  CHECK(second.control->functions->Show(second.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  CHECK(strcmp(host_get_text(&second, "DocumentText"), "kept") == 0);
  CHECK(host_get(second.members, "FTPPort").as.integer32 == 2121);
  CHECK(host_get(second.members, "relativeURLs").as.boolean == TVX_TRUE);
  host_release(&first);
  host_release(&second);
}

CASE(a_container_hears_of_changed_properties) {
  host_control made = host_start();
  cupboard all;
  init_cupboard(&all, made.tools);
  CHECK(made.control->functions->SetContainer(made.control, &all.container) == TVX_OK && all.references == 2);
  host_set(made.members, "FTPUser", host_text("somebody"));
  CHECK(all.told == 1 && strcmp(all.keys[0], "FTPUser") == 0);
  CHECK(made.control->functions->SetContainer(made.control, NULL) == TVX_OK && all.references == 1);
  CHECK(made.control->functions->SetContainer(made.control, &all.container) == TVX_OK);
  host_release(&made);
  CHECK(all.references == 1);
}

CASE(a_control_in_a_form_designer_never_starts) {
  host_control made = host_make();
  cupboard all;
  tvx_value value = host_boolean(0);
  tvx_error error;
  init_cupboard(&all, made.tools);
  all.user_mode = TVX_FALSE;
  CHECK(made.control->functions->SetContainer(made.control, &all.container) == TVX_OK);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, NULL) == TVX_OK);
  value = host_get(made.members, "DOM");
  CHECK(value.type == TVX_OBJECT && !value.as.object);
  value = host_boolean(0);
  host_set(made.members, "HighlightDOMSelection", value); /* 382 in a program */
  CHECK(host_invoke(made.members, "IsDirty", TVX_SET, &value, 1, NULL, &error) == TVX_EXCEPTION);
  CHECK(error.number == 387);
  made.tools->functions->FreeText(made.tools, &error.text);
  host_release(&made);
}

CASE(a_shown_control_stays_where_it_is) {
  host_control made = host_start();
  tvx_box box = {0, 0, 300, 200};
  uint64_t window = 7;
  CHECK(made.control->functions->Show(made.control, TVX_OWN_WINDOW, 0, NULL) == TVX_STARTED);
  CHECK(made.control->functions->Show(made.control, TVX_OFF_SCREEN, 0, &box) == TVX_OK);
  CHECK(made.control->functions->Resize(made.control, &box) == TVX_OK);
  CHECK(made.control->functions->Hide(made.control) == TVX_OK);
  CHECK(made.control->functions->SetFocus(made.control) == TVX_OK);
  CHECK(made.control->functions->GetWindow(made.control, &window) == TVX_NOTHING && window == 0);
  CHECK(made.control->functions->Show(made.control, 17, 0, NULL) == TVX_EXCEPTION);
  host_release(&made);
}

#include "cases.h"
