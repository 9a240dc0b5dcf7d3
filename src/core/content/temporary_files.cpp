#include "tvx/core/content/temporary_files.h"

#include <signal.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/platform/special_folders.h"

namespace tvx::core {
namespace {

constexpr std::size_t least_digits = 7;  // platform::next_window_handle

constexpr std::u16string_view file_names[] = {style_sheet_file, document_file, picture_file};

/// The number of the window that a temporary file begins with; nothing if it is no such file.
std::optional<std::uint64_t> window_of(std::string_view name) {
  std::uint64_t number = 0;
  const auto [rest, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  const std::size_t digits = static_cast<std::size_t>(rest - name.data());
  const std::u16string ending = from_utf8(name.substr(digits));
  const bool ours = std::ranges::find(file_names, ending) != std::end(file_names);
  return error == std::errc() && digits >= least_digits && ours ? std::optional(number) : std::nullopt;
}

/// Whether the process is gone that has given a window its number; a number that a host has chosen says
/// nothing.
bool is_gone(std::uint64_t window) {
  constexpr std::int64_t handles_a_process = 512, process_numbers = 1 << 22;
  const auto high = static_cast<std::int64_t>(window / handles_a_process);
  for (const std::int64_t process : {process_numbers - 1 - high, high}) {
    if (process <= 0 || process >= process_numbers) continue;
    if (platform::number_of(platform::first_window_handle(process)) != high * handles_a_process) continue;
    return ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
  }
  return false;
}

}  // namespace

std::u16string with_final_slash(std::u16string folder) {
  if (!folder.empty() && folder.back() != u'/' && folder.back() != u'\\') folder += u'/';
  return folder;
}

std::u16string temporary_file(platform::WindowHandle hwnd, std::u16string_view name) {
  const std::u16string folder =
      with_final_slash(platform::GetSpecialFolder(hwnd, platform::CSIDL_INTERNET_CACHE));
  if (folder.empty()) return {};
  return folder + to_text(platform::number_of(hwnd)) + std::u16string(name);
}

void remove_temporary_files(platform::WindowHandle hwnd) {
  for (std::u16string_view name : file_names) {
    std::error_code ignored;  // a file that is gone already is none of our business
    attempt([&] { std::filesystem::remove(file_system_path(temporary_file(hwnd, name)), ignored); });
  }
}

void sweep_temporary_files(platform::WindowHandle hwnd) {
  namespace fs = std::filesystem;
  const std::u16string folder =
      with_final_slash(platform::GetSpecialFolder(hwnd, platform::CSIDL_INTERNET_CACHE));
  if (folder.empty()) return;
  std::error_code ignored;
  const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (const fs::directory_entry& entry : fs::directory_iterator(file_system_path(folder), ignored)) {
    const auto window = window_of(entry.path().filename().string());
    if (!window || !is_gone(*window)) continue;
    if (entry.symlink_status(ignored).type() == fs::file_type::regular &&
        entry.last_write_time(ignored) < yesterday)
      fs::remove(entry.path(), ignored);
  }
}

}  // namespace tvx::core
