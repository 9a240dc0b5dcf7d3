#pragma once

#include <string>

/// The user's registry of classes, as the header describes it. Paths as the file system takes them.
namespace tvx::exported {

/// Of this library, from the root on, by the name under which it was loaded.
std::string path_of_library();

/// Writes the entry of the class, in the place of another one of its name. All else in the file stays. Throws
/// RuntimeError(75) where the file can't be written.
void register_class(const std::string& name, const std::string& id, const std::string& library);
/// Takes it out, unless it is another library's by now.
void unregister_class(const std::string& name, const std::string& library);

}  // namespace tvx::exported
