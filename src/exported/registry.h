#pragma once

#include <string>
#include <vector>

/// The user's registry of classes, as the header describes it. Paths as the file system takes them.
namespace tvx::exported {

/// Of this library, from the root on, by the name under which it was loaded.
std::string path_of_library();

/// A class of the library.
struct RegisteredClass {
  std::string name, id;
};

/// Writes the entries of these classes, instead of others of their names. All else in the file stays. Throws
/// RuntimeError(75) where the file can't be written.
void register_classes(const std::vector<RegisteredClass>& classes, const std::string& library);
/// Takes them out, unless they are another library's by now.
void unregister_classes(const std::vector<RegisteredClass>& classes, const std::string& library);

}  // namespace tvx::exported
