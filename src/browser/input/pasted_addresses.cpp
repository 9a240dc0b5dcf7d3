#include "tvx/browser/input/pasted_addresses.h"

#include <array>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

constexpr std::array<std::u16string_view, 8> address_attributes = {
    u"src", u"href", u"background", u"action", u"data", u"poster", u"cite", u"longdesc"};

bool is_relative(std::u16string_view address) {
  return !address.empty() && address.front() != u'#' && !resolve_url(address, u"");
}

}  // namespace

void rewrite_relative_addresses(dom::Node& content,
                                const std::function<std::u16string(const std::u16string&)>& meant) {
  for (dom::Node* node = &content; node; node = dom::next_in_order(*node, &content)) {
    auto* element = dom::as<dom::Element>(node);
    if (!element) continue;
    for (const std::u16string_view name : address_attributes) {
      const std::u16string* written = element->attribute(dom::Name(name));
      if (!written || !is_relative(trimmed(*written))) continue;
      dom::set_attribute(*element, dom::Name(name), meant(std::u16string(trimmed(*written))));
    }
  }
}

std::u16string with_absolute_addresses(const std::u16string& html, std::u16string_view base) {
  if (!resolve_url(u"x", base)) return html;
  bool changed = false;
  const dom::Ref<dom::Document> page = dom::parse_document(u"");
  const dom::Ref<dom::DocumentFragment> content = dom::parse_fragment(*page, {}, html);
  rewrite_relative_addresses(*content, [&](const std::u16string& written) {
    changed = true;
    return resolve_url(written, base).value_or(written);
  });
  return changed ? dom::serialise_children(*content) : html;
}

}  // namespace tvx::browser
