#include "tvx/files/brought_files.h"

#include <filesystem>
#include <optional>

#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/files/file_form.h"
#include "tvx/files/merge_markup.h"
#include "tvx/files/page_text.h"

namespace tvx::files {
namespace {

/// Whether an element shows what that attribute names. A link of the text does not.
bool brings_in(const dom::Element& element, const dom::Name& attribute) {
  if (attribute == dom::names::src || attribute == dom::names::background || attribute == dom::names::poster)
    return true;
  if (attribute == dom::names::data) return element.is(dom::Tag::Object);
  return attribute == dom::names::href && element.is(dom::Tag::Link);
}

/// The path of the file that a relative address names; nothing where none is there.
std::optional<std::u16string> file_beside(std::u16string_view reference, const Url& folder) {
  if (reference.empty() || reference.starts_with(u'#') || reference.starts_with(u'/') ||
      Url::parse(reference))
    return {};
  const std::optional<Url> url = Url::parse(reference, folder);
  const std::optional<std::u16string> path = url ? local_path(url->document()) : std::nullopt;
  std::error_code none;
  if (!path || !std::filesystem::is_regular_file(file_system_path(*path), none)) return {};
  return path;
}

bool names_base(const dom::Document& page) {
  for (const dom::Node* node = &page; node; node = dom::next_in_order(*node))
    if (node->is(dom::Tag::Base) && static_cast<const dom::Element*>(node)->attribute(dom::names::href))
      return true;
  return false;
}

bool readdress(dom::Document& page, const Url& folder,
               const std::function<std::u16string(std::u16string_view)>& address) {
  bool any = false;
  for (dom::Node* node = &page; node; node = dom::next_in_order(*node)) {
    if (!node->is_element()) continue;
    auto& element = static_cast<dom::Element&>(*node);
    for (const dom::Name& name :
         {dom::names::src, dom::names::background, dom::names::poster, dom::names::data, dom::names::href}) {
      const std::u16string* value = brings_in(element, name) ? element.attribute(name) : nullptr;
      const auto path = value ? file_beside(*value, folder) : std::nullopt;
      const std::u16string other = path ? address(*path) : std::u16string();
      if (other.empty()) continue;
      dom::set_attribute(element, name, other);
      any = true;
    }
  }
  return any;
}

}  // namespace

std::string with_brought_files(std::string bytes, std::u16string_view folder,
                               const std::function<std::u16string(std::u16string_view path)>& address) {
  const std::optional<Url> place = Url::parse(file_url(std::u16string(folder) + u'/'));
  const FileContent content = read_form(bytes);
  const dom::Ref<dom::Document> page = dom::parse_document(content.text);
  if (!place || names_base(*page)) return bytes;
  const PageShape shape = shape_of(content.text, *page);
  const std::u16string before = page_text(*page, shape);
  if (!readdress(*page, *place, address)) return bytes;
  const std::u16string after = page_text(*page, shape);
  std::u16string merged = merge_markup(before, content.text, after);
  if (page_text(*dom::parse_document(merged), shape) != after) merged = after;
  return write_form(
      merged, content.form,
      content.line_ends.empty() ? LineEnds() : line_ends_after(content.text, content.line_ends, merged));
}

}  // namespace tvx::files
