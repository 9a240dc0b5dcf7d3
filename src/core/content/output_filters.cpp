#include "tvx/core/content/output_filters.h"

#include <vector>

#include "tvx/base/relative_address.h"
#include "tvx/base/strings.h"
#include "tvx/base/url_escape.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/mutation.h"

namespace tvx::core {
namespace {

using dom::CollectionKind;
using dom::Element;

/// As the collection stands now: what is written into one element may change it.
std::vector<dom::Ref<Element>> snapshot(dom::Document& tree, CollectionKind kind,
                                        std::u16string_view tag = {}) {
  const auto collection = dom::collection_of(tree, kind, tag);
  const auto& elements = collection->elements();
  return {elements.begin(), elements.end()};
}

void remove_base(browser::HTMLDocument& document, Element& element, dom::Name attribute,
                 std::u16string_view base) {
  const std::u16string* written = element.attribute(attribute);
  if (!written || written->empty()) return;
  const auto rest = without_base(document.absolute_url(*written), base);
  // What was relative already keeps its author's letters.
  if (rest && percent_decoded(*rest) != percent_decoded(*written))
    dom::set_attribute(element, attribute, *rest);
}

void keep_fragment_only(Element& link) {
  const std::u16string address(link.attribute_or_empty(dom::names::href));
  const std::size_t hash = address.rfind(u'#');
  if (hash != std::u16string::npos)
    dom::set_attribute(link, dom::names::href, std::u16string_view(address).substr(hash));
}

}  // namespace

std::u16string numeric_references(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (char16_t c : text) {
    if (c >= 1 && c <= 127) {
      result += c;
      continue;
    }
    result += u"&#";
    result += to_text(c == 0 ? 65536 : c);
    result += u';';
  }
  return result;
}

void make_addresses_relative(browser::HTMLDocument& document, std::u16string_view base) {
  const std::u16string kept(base);
  dom::Document& tree = document.tree();
  for (const auto& link : snapshot(tree, CollectionKind::Links)) {
    if (link->attribute_or_empty(dom::names::href).empty()) continue;
    remove_base(document, *link, dom::names::href, kept);
    keep_fragment_only(*link);
  }
  const dom::Name src(u"src");
  for (const auto& image : snapshot(tree, CollectionKind::Images)) remove_base(document, *image, src, kept);
  for (const auto& script : snapshot(tree, CollectionKind::Scripts))
    remove_base(document, *script, src, kept);
  for (const auto& input : snapshot(tree, CollectionKind::Tag, u"input"))
    if (equals_ignoring_ascii_case(input->attribute_or_empty(dom::Name(u"type")), u"image"))
      remove_base(document, *input, src, kept);
}

}  // namespace tvx::core
