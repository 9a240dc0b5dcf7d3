/* A host in C that lists a folder of a server: the operation gives an object, and that gives others. */
#include "host.h"

static tvx_value list_of(host_control *made, const char *filter) {
  tvx_value arguments[2], list;
  arguments[0] = host_text("");
  arguments[1] = host_text(filter);
  list = host_call(made->members, "ListFilesFTP", arguments, 2);
  CHECK(list.type == TVX_OBJECT);
  return list;
}

static host_control connected(void) {
  host_control made = host_start();
  host_set(made.members, "FTPHost", host_text(getenv("TVX_SERVER")));
  host_set(made.members, "FTPUser", host_text("ada"));
  host_set(made.members, "FTPPassword", host_text("secret"));
  host_set(made.members, "FTPPassive", host_boolean(1));
  host_set(made.members, "ShowFTPDialog", host_boolean(0));
  return made;
}

CASE(a_folder_is_an_object_with_entries) {
  host_control made = connected();
  tvx_value list = list_of(&made, "*.html"), count, item, name = host_text("PAGE.HTML"), value;
  CHECK(list.as.object);
  count = host_call(list.as.object, "count", NULL, 0);
  CHECK(count.type == TVX_INTEGER32 && count.as.integer32 >= 1);
  item = host_call(list.as.object, "item", &name, 1);
  CHECK(item.type == TVX_OBJECT && item.as.object);
  value = host_get(item.as.object, "Filename");
  CHECK(strcmp(host_utf8(&made, &value.as.text), "page.html") == 0);
  made.tools->functions->ClearValue(made.tools, &value);
  value = host_get(item.as.object, "FileSize");
  CHECK(value.type == TVX_INTEGER32 && value.as.integer32 == 11);
  value = host_get(item.as.object, "LastWriteTime");
  CHECK(value.type == TVX_DATE && value.as.number > 43863 && value.as.number < 43866); /* about 3 February 2020 */
  value = host_get(item.as.object, "Directory");
  CHECK(value.type == TVX_BOOLEAN && value.as.boolean == TVX_FALSE);
  made.control->functions->Close(made.control);
  value = host_call(list.as.object, "count", NULL, 0); /* it is the host's */
  CHECK(value.as.integer32 == count.as.integer32);
  made.tools->functions->ClearValue(made.tools, &item);
  made.tools->functions->ClearValue(made.tools, &list);
  host_release(&made);
}

CASE(without_a_server_the_folder_is_nothing) {
  host_control made = connected();
  host_sink sink;
  uint32_t connection;
  tvx_value list;
  host_init_sink(&sink, &made, NULL);
  CHECK(made.events->functions->Advise(made.events, &sink.dispatch, &connection) == TVX_OK);
  host_set(made.members, "FTPHost", host_text("127.0.0.1:1"));
  list = list_of(&made, "*");
  CHECK(!list.as.object && sink.heard[TVX_EVENT_FTPError] > 0);
  host_release(&made);
}

#include "cases.h"
