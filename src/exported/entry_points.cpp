#include "tvx/base/error.h"
#include "tvx/exported/factory.h"
#include "tvx/exported/registry.h"
#include "tvx/tvxhtml.h"

/// The four functions that the library exports.

using namespace tvx::exported;

namespace {

constexpr const char* class_name = "tvxHTML.HTMLed";
constexpr const char* class_id = "{04C657AA-8E4F-4912-B967-DCEC43DE5A5C}";

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
  return written([] { register_class(class_name, class_id, path_of_library()); });
}

tvx_result DllUnregisterServer(void) {
  return written([] { unregister_class(class_name, path_of_library()); });
}

tvx_result DllGetClassObject(const tvx_id* asked_class, const tvx_id* id, void** object) {
  if (!asked_class || !id || !object) return TVX_POINTER;
  *object = nullptr;
  if (!(*asked_class == tvx_class_htmled)) return TVX_NO_CLASS;
  if (!Module::only().can_make()) return TVX_WRONG_THREAD;
  return written([&] {
           auto* factory = new Factory;
           factory->query(id, object);
           factory->release();
         }) != TVX_OK
             ? TVX_NO_MEMORY
         : *object ? TVX_OK
                   : TVX_NO_INTERFACE;
}

tvx_result DllCanUnloadNow(void) { return Module::only().can_unload() ? TVX_OK : TVX_NOTHING; }
}
