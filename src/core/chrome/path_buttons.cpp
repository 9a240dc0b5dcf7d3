#include "tvx/core/chrome/path_buttons.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/core/chrome/element_code_dialog.h"
#include "tvx/dom/tree.h"

namespace tvx::core::branch {
namespace {

constexpr std::u16string_view key_prefix = u"KEY";

}  // namespace

std::vector<std::size_t> path_to(const dom::Document& document, const dom::Element* element) {
  std::vector<std::size_t> path;
  if (!element || element->document() != &document || !dom::is_connected(*element)) return path;
  for (; element && !element->is(dom::Tag::Body); element = element->parent_element())
    path.push_back(document.source_index(*element));
  std::ranges::reverse(path);
  return path;
}

void show_path(platform::Toolbar& toolbar, const dom::Document& document,
               const std::vector<std::size_t>& path) {
  const std::vector<dom::Element*>& all = document.all();
  for (const std::size_t place : path)
    toolbar.Add({std::u16string(key_prefix) + from_utf8(std::to_string(place)), all[place]->display_name(),
                 u"", u"Blank", platform::ButtonStyle::Default});
}

dom::Element* element_of(const dom::Document& document, std::u16string_view key) {
  const std::string digits = to_utf8(key.substr(std::min(key.size(), key_prefix.size())));
  std::size_t place = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), place);
  if (error != std::errc() || end != digits.data() + digits.size())
    throw RuntimeError(errors::type_mismatch, u"Type mismatch");
  const std::vector<dom::Element*>& all = document.all();
  return place < all.size() ? all[place] : nullptr;
}

ElementActions actions_for(std::u16string_view tag) {
  if (tag == u"table" || tag == u"img") return {.edit_tag = true, .properties = true};
  if (refuses_new_tag(tag)) return {.edit_tag = false, .properties = true};
  return {.edit_tag = true, .properties = false};
}

}  // namespace tvx::core::branch
