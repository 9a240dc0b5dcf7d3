#include <algorithm>
#include <iostream>
#include <string>

#include "dom/inexpressible.h"
#include "tvx/base/strings.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/serialise.h"

/// Loads each file that standard input names, reads it back, loads what was read, and says whether both trees
/// are the same: a line a file, "same", "other", "inexpressible" or "unreadable" before its name. Ends with 1
/// if any is other or unreadable.
namespace {

using namespace tvx;

std::u16string_view line_with(std::u16string_view text, std::size_t at) {
  at = std::min(at, text.size());
  const std::size_t before = text.substr(0, at).rfind(u'\n');
  const std::size_t begin = before == text.npos ? 0 : before + 1;
  return text.substr(begin, std::min(text.find(u'\n', begin), begin + 120) - begin);
}

bool check(const std::string& file) {
  const auto first = browser::make_page(browser::read_local(from_utf8(file)));
  if (!first) {
    std::cout << "unreadable " << file << '\n';
    return false;
  }
  browser::HttpAnswer read_back;
  read_back.content_type = "text/html; charset=utf-8";
  read_back.address = first->url();
  read_back.body = to_utf8(dom::serialise_children(first->tree()));
  const auto second = browser::make_page(read_back);
  const std::u16string before = dom::print_tree(first->tree()), after = dom::print_tree(second->tree());
  const bool same =
      before == after && first->tree().compatibility_mode() == second->tree().compatibility_mode();
  const std::string kind = same ? "" : dom::test::inexpressible_kind(first->tree());
  if (!kind.empty()) {
    std::cout << "inexpressible " << file << " (" << kind << ")\n";
    return true;
  }
  std::cout << (same ? "same " : "other ") << file << '\n';
  if (!same) {
    const auto [left, right] = std::ranges::mismatch(before, after);
    std::cout << "  was " << to_utf8(line_with(before, std::size_t(left - before.begin()))) << "\n  is  "
              << to_utf8(line_with(after, std::size_t(right - after.begin()))) << '\n';
  }
  return same;
}

}  // namespace

int main() {
  bool all = true;
  for (std::string file; std::getline(std::cin, file);) all &= check(file);
  return all ? 0 : 1;
}
