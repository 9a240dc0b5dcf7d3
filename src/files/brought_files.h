#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tvx::files {

/// The bytes of a page that stood in a folder, for another one: what it brings in from beside itself,
/// pictures, media and style sheets, has another address. `address` is asked for that of each file that is
/// there, by its path; an empty answer leaves the page's own. Links to other pages stay as they are, and so
/// does a page that names its base. What isn't concerned keeps its letters.
std::string with_brought_files(std::string bytes, std::u16string_view folder,
                               const std::function<std::u16string(std::u16string_view path)>& address);

}  // namespace tvx::files
