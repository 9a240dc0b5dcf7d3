#include "tvx/files/brought_files.h"

#include <utility>
#include <vector>

#include "tvx/base/url.h"
#include "tvx/dom/parse.h"
#include "tvx/files/file_addresses.h"
#include "tvx/files/file_form.h"
#include "tvx/files/merge_markup.h"
#include "tvx/files/page_text.h"

namespace tvx::files {
namespace {

bool readdress(dom::Document& page, std::u16string_view address_of_page,
               const std::function<std::u16string(std::u16string_view)>& address) {
  std::vector<Readdressed> others;
  for (const FileAddress& each : file_addresses(page, address_of_page)) {
    std::u16string other = each.shown && each.relative ? address(each.path) : std::u16string();
    if (!other.empty()) others.emplace_back(each, std::move(other));
  }
  for (const AddressedText& each : texts_with(others)) each.place.set_text(each.text);
  return !others.empty();
}

}  // namespace

std::string with_brought_files(std::string bytes, std::u16string_view folder,
                               const std::function<std::u16string(std::u16string_view path)>& address) {
  const FileContent content = read_form(bytes);
  const dom::Ref<dom::Document> page = dom::parse_document(content.text);
  const PageShape shape = shape_of(content.text, *page);
  const std::u16string before = page_text(*page, shape);
  if (!readdress(*page, file_url(std::u16string(folder) + u'/'), address)) return bytes;
  const std::u16string after = page_text(*page, shape);
  std::u16string merged = merge_markup(before, content.text, after);
  if (page_text(*dom::parse_document(merged), shape) != after) merged = after;
  return write_form(
      merged, content.form,
      content.line_ends.empty() ? LineEnds() : line_ends_after(content.text, content.line_ends, merged));
}

}  // namespace tvx::files
