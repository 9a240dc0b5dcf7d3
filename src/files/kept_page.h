#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/files/file_form.h"

namespace tvx::files {

/// An edited page as a program keeps it until it is saved, so that the user gets it back if the program dies
/// before. It holds the page's text as this program writes it, and what stands in the source view where that
/// is in front.
struct KeptPage {
  std::u16string path;    // of the page's file; empty: it is in none yet
  std::int64_t time = 0;  // when it was kept, in seconds since 1970
  std::u16string page;
  std::optional<std::u16string> code;
  // How the user wants the file spelled, where that is another way than it is.
  std::optional<LineEnd> line_end;
  bool without_mark = false;
};

/// As a file; and the page of such a file, nothing where it isn't one or isn't whole.
std::string kept_bytes(const KeptPage& page);
std::optional<KeptPage> read_kept_page(std::string_view bytes);

}  // namespace tvx::files
