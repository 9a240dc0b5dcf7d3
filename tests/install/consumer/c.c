/* Linked with the library. */
#include <tvx/tvxhtml.h>

int main(void) {
  tvx_factory *factory = NULL;
  tvx_control *control = NULL;
  if (DllGetClassObject(&tvx_class_htmled, &tvx_id_factory, (void **)&factory) != TVX_OK) return 1;
  if (factory->functions->CreateInstance(factory, NULL, &tvx_id_control, (void **)&control) != TVX_OK) return 2;
  factory->functions->Release(factory);
  if (control->functions->Show(control, TVX_OFF_SCREEN, 0, NULL) != TVX_OK) return 3;
  control->functions->Release(control);
  return DllCanUnloadNow() == TVX_OK ? 0 : 4;
}
