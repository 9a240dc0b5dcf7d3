#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tvx/base/strings.h"

namespace tvx::spelling {

/// A folder of a test, gone at its end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "tvx-spelling-XXXXXX").string();
    path_ = ::mkdtemp(path.data());
  }
  ~TemporaryFolder() {
    std::error_code failed;
    std::filesystem::remove_all(path_, failed);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path(const std::string& name = {}) const { return name.empty() ? path_ : path_ + "/" + name; }
  std::u16string path16(const std::string& name) const { return from_utf8(path(name)); }
  void write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    std::ofstream(path(name), std::ios::binary) << bytes;
  }
  std::string read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

/// A variable of the environment for the life of this object.
class EnvironmentScope {
 public:
  EnvironmentScope(const char* name, const std::string& value) : name_(name) {
    const char* before = ::getenv(name);
    had_ = before != nullptr;
    if (had_) before_ = before;
    ::setenv(name, value.c_str(), 1);
  }
  ~EnvironmentScope() { had_ ? ::setenv(name_, before_.c_str(), 1) : ::unsetenv(name_); }
  EnvironmentScope(const EnvironmentScope&) = delete;
  EnvironmentScope& operator=(const EnvironmentScope&) = delete;

 private:
  const char* name_;
  std::string before_;
  bool had_;
};

}  // namespace tvx::spelling
