#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <vector>

namespace tvx::test {

/// HTML files of as many packages as there are, in the order of their names: one or two of each package
/// first.
inline std::vector<std::filesystem::path> files_of_packages(std::size_t most) {
  std::vector<std::filesystem::path> found;
  std::error_code ignored;
  for (const std::size_t of_each : {2, 40}) {
    for (const auto& package : std::filesystem::directory_iterator("/usr/share/doc", ignored)) {
      if (!package.is_directory(ignored) || package.is_symlink(ignored)) continue;
      std::vector<std::filesystem::path> pages;
      for (auto at = std::filesystem::recursive_directory_iterator(
               package.path(), std::filesystem::directory_options::skip_permission_denied, ignored);
           at != std::filesystem::recursive_directory_iterator(); at.increment(ignored)) {
        const auto ending = at->path().extension();
        if ((ending == ".html" || ending == ".htm") && at->is_regular_file(ignored) &&
            at->file_size(ignored) < 1'000'000)
          pages.push_back(at->path());
      }
      std::ranges::sort(pages);
      pages.resize(std::min(pages.size(), of_each));
      for (const std::filesystem::path& page : pages)
        if (std::ranges::find(found, page) == found.end()) found.push_back(page);
    }
    if (found.size() >= most) break;
  }
  std::ranges::sort(found);
  found.resize(std::min(found.size(), most));
  return found;
}

}  // namespace tvx::test
