#include "tvx/exported/window_part.h"

#include <dlfcn.h>

#include <string>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/exported/registry.h"

namespace tvx::exported {

namespace {

[[noreturn]] void not_loaded() {
  const char* why = dlerror();
  throw RuntimeError(errors::file_not_found, from_utf8(why ? why : "The window part is not the library's"));
}

}  // namespace

WindowPart* load_window_part() {
  const std::string own = path_of_library();
  const std::string path = own.substr(0, own.rfind('/') + 1) + "tvxhtml/window.so";
  void* part = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!part) not_loaded();
  const auto entry = reinterpret_cast<WindowPartEntry>(dlsym(part, window_part_entry));
  if (!entry) not_loaded();
  return entry();
}

}  // namespace tvx::exported
