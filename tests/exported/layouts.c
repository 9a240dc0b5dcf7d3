/* Prints the layout of all structures of tvx/tvxhtml.h: what programs were compiled against, and never changes. */
#include <stdio.h>

#include "tvx/tvxhtml.h"

#define SIZE(type) printf("%s %lu\n", #type, (unsigned long)sizeof(type))
#define FIELD(type, field) printf("  %s %lu\n", #field, (unsigned long)offsetof(type, field))
#define COMMON(type) SIZE(type), FIELD(type, QueryInterface), FIELD(type, AddRef), FIELD(type, Release)

static void values(void) {
  SIZE(tvx_id);
  SIZE(tvx_text);
  FIELD(tvx_text, characters), FIELD(tvx_text, length);
  SIZE(tvx_value);
  FIELD(tvx_value, type), FIELD(tvx_value, reserved), FIELD(tvx_value, as);
  FIELD(tvx_value, as.boolean), FIELD(tvx_value, as.integer16), FIELD(tvx_value, as.integer32);
  FIELD(tvx_value, as.number), FIELD(tvx_value, as.text), FIELD(tvx_value, as.object), FIELD(tvx_value, as.reference);
  SIZE(tvx_error);
  FIELD(tvx_error, number), FIELD(tvx_error, reserved), FIELD(tvx_error, text);
  SIZE(tvx_box);
  FIELD(tvx_box, left), FIELD(tvx_box, top), FIELD(tvx_box, width), FIELD(tvx_box, height);
}

static void library(void) {
  COMMON(tvx_unknown_functions);
  COMMON(tvx_library_functions);
  FIELD(tvx_library_functions, GetVersion), FIELD(tvx_library_functions, Pump);
  FIELD(tvx_library_functions, NewText), FIELD(tvx_library_functions, NewTextFromUTF8);
  FIELD(tvx_library_functions, TextToUTF8), FIELD(tvx_library_functions, FreeText);
  FIELD(tvx_library_functions, SetText), FIELD(tvx_library_functions, ClearValue);
  FIELD(tvx_library_functions, GetError);
  COMMON(tvx_factory_functions);
  FIELD(tvx_factory_functions, CreateInstance), FIELD(tvx_factory_functions, LockServer);
}

static void control(void) {
  COMMON(tvx_dispatch_functions);
  FIELD(tvx_dispatch_functions, GetIDsOfNames), FIELD(tvx_dispatch_functions, Invoke);
  COMMON(tvx_events_functions);
  FIELD(tvx_events_functions, Advise), FIELD(tvx_events_functions, Unadvise);
  COMMON(tvx_control_functions);
  FIELD(tvx_control_functions, SetContainer), FIELD(tvx_control_functions, ReadProperties);
  FIELD(tvx_control_functions, WriteProperties), FIELD(tvx_control_functions, Show);
  FIELD(tvx_control_functions, Hide), FIELD(tvx_control_functions, Resize);
  FIELD(tvx_control_functions, SetFocus), FIELD(tvx_control_functions, GetWindow);
  FIELD(tvx_control_functions, Close);
}

static void host(void) {
  COMMON(tvx_container_functions);
  FIELD(tvx_container_functions, GetUserMode), FIELD(tvx_container_functions, PropertyChanged);
  FIELD(tvx_container_functions, WindowClosed);
  COMMON(tvx_store_functions);
  FIELD(tvx_store_functions, ReadProperty), FIELD(tvx_store_functions, WriteProperty);
}

static void beside_the_control(void) {
  COMMON(tvx_frame_functions);
  FIELD(tvx_frame_functions, SetTitle), FIELD(tvx_frame_functions, GetTitle);
  COMMON(tvx_subclass_functions);
  FIELD(tvx_subclass_functions, GetMsgResponse), FIELD(tvx_subclass_functions, SetMsgResponse);
  FIELD(tvx_subclass_functions, WindowProc);
  COMMON(tvx_subclassing_functions);
  FIELD(tvx_subclassing_functions, AttachMessage), FIELD(tvx_subclassing_functions, DetachMessage);
  FIELD(tvx_subclassing_functions, GetCurrentMessage), FIELD(tvx_subclassing_functions, CallOldWindowProc);
  FIELD(tvx_subclassing_functions, SendMessage);
  COMMON(tvx_timer_functions);
  FIELD(tvx_timer_functions, GetItem), FIELD(tvx_timer_functions, SetItem);
  FIELD(tvx_timer_functions, GetInterval), FIELD(tvx_timer_functions, SetInterval);
  FIELD(tvx_timer_functions, PulseTimer);
}

int main(void) {
  printf("version %d, pointers of %lu bytes\n", TVX_INTERFACE_VERSION, (unsigned long)sizeof(void *));
  values();
  library();
  control();
  host();
  beside_the_control();
  return 0;
}
