#include "tvx/files/kept_page.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "tvx/base/strings.h"

namespace tvx::files {
namespace {

constexpr std::string_view heading = "tvxHTML unsaved page 1\n";

/// In the order of the enumeration.
constexpr std::string_view line_end_names[] = {"lf", "crlf", "cr"};

void append(std::string& bytes, std::string_view name, std::string_view value) {
  bytes += name;
  bytes += ' ';
  bytes += std::to_string(value.size());
  bytes += '\n';
  bytes += value;
  bytes += '\n';
}

/// Reads what append() has written, one after the other.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  bool at_end() const { return rest_.empty(); }
  /// Nothing where the next value has another name, or isn't whole.
  std::optional<std::string_view> next(std::string_view name) {
    std::string_view text = rest_;
    if (!text.starts_with(name) || !text.substr(name.size()).starts_with(' ')) return {};
    text.remove_prefix(name.size() + 1);
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (error != std::errc()) return {};
    text.remove_prefix(std::size_t(end - text.data()));
    if (text.size() < 2 || text.size() - 2 < length || text[0] != '\n' || text[length + 1] != '\n') return {};
    rest_ = text.substr(length + 2);
    return text.substr(1, length);
  }

 private:
  std::string_view rest_;
};

}  // namespace

std::string kept_bytes(const KeptPage& page) {
  std::string bytes(heading);
  append(bytes, "path", to_utf8(page.path));
  append(bytes, "time", std::to_string(page.time));
  append(bytes, "page", to_utf8(page.page));
  if (page.code) append(bytes, "code", to_utf8(*page.code));
  if (page.line_end) append(bytes, "line_end", line_end_names[std::size_t(*page.line_end)]);
  if (page.without_mark) append(bytes, "without_mark", {});
  return bytes;
}

std::optional<KeptPage> read_kept_page(std::string_view bytes) {
  if (!bytes.starts_with(heading)) return {};
  Reader reader(bytes.substr(heading.size()));
  const auto path = reader.next("path"), time = reader.next("time"), page = reader.next("page");
  if (!path || !time || !page) return {};
  KeptPage kept;
  kept.path = from_utf8(*path);
  std::from_chars(time->data(), time->data() + time->size(), kept.time);
  kept.page = from_utf8(*page);
  if (const auto code = reader.next("code")) kept.code = from_utf8(*code);
  if (const auto end = reader.next("line_end")) {
    const auto found = std::ranges::find(line_end_names, *end);
    if (found == std::end(line_end_names)) return {};
    kept.line_end = LineEnd(found - std::begin(line_end_names));
  }
  kept.without_mark = reader.next("without_mark").has_value();
  if (!reader.at_end()) return {};
  return kept;
}

}  // namespace tvx::files
