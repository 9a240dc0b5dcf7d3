#include "tvx/base/error.h"
#include "tvx/exported/factory.h"
#include "tvx/exported/registry.h"
#include "tvx/tvxhtml.h"

/// The four functions that the library exports.

using namespace tvx::exported;

namespace {

std::vector<RegisteredClass> registered_classes() {
  std::vector<RegisteredClass> rows;
  for (const ExportedClass& each : exported_classes()) rows.push_back({each.name, each.id_text});
  return rows;
}

/// The registry belongs to no thread.
template <class Write>
tvx_result written(Write&& write) noexcept {
  try {
    write();
    return TVX_OK;
  } catch (...) {
    return TVX_FAILED;
  }
}

}  // namespace

extern "C" {

tvx_result DllRegisterServer(void) {
  return written([] { register_classes(registered_classes(), path_of_library()); });
}

tvx_result DllUnregisterServer(void) {
  return written([] { unregister_classes(registered_classes(), path_of_library()); });
}

tvx_result DllGetClassObject(const tvx_id* asked_class, const tvx_id* id, void** object) {
  if (!asked_class || !id || !object) return TVX_POINTER;
  *object = nullptr;
  const ExportedClass* found = find_class(*asked_class);
  if (!found) return TVX_NO_CLASS;
  if (!Module::only().can_make()) return TVX_WRONG_THREAD;
  return written([&] {
           auto* factory = new Factory(*found);
           factory->query(id, object);
           factory->release();
         }) != TVX_OK
             ? TVX_NO_MEMORY
         : *object ? TVX_OK
                   : TVX_NO_INTERFACE;
}

tvx_result DllCanUnloadNow(void) { return Module::only().can_unload() ? TVX_OK : TVX_NOTHING; }
}
