/* Knows the class's name alone, and shows it in a window. */
#include <tvx/tvxhtml.h>

int main(void) {
  tvx_control *control = NULL;
  if (tvx_create("tvxHTML.HTMLed", &tvx_id_control, (void **)&control) != TVX_OK) return 1;
  if (control->functions->Show(control, TVX_OWN_WINDOW, 0, NULL) != TVX_OK) return 2;
  control->functions->Release(control);
  return 0;
}
