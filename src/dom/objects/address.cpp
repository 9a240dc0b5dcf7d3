#include "tvx/dom/objects/address.h"

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/dom/collections.h"

namespace tvx::dom {

std::u16string base_address(Document& document, std::u16string_view document_address) {
  const auto bases = collection_of(document, CollectionKind::Tag, u"base");
  for (const Element* base : bases->elements()) {
    // OURS: a base that is no usable address leaves addresses as written, and doesn't give way to the
    // document's own: that can be a temporary file, whose folder means nothing to anybody.
    if (const std::u16string* written = base->attribute(names::href))
      return resolve_url(trimmed(*written), u"").value_or(u"");
  }
  return std::u16string(document_address);
}

std::u16string absolute_address(Document& document, std::u16string_view document_address,
                                std::u16string_view written) {
  if (written.empty()) return {};
  return resolve_url(trimmed(written), base_address(document, document_address))
      .value_or(std::u16string(written));
}

std::u16string protocol_of(std::u16string_view address) {
  const auto url = Url::parse(address);
  if (!url) return {};
  return url->is_file() ? u"File Protocol" : url->scheme + u":";
}

}  // namespace tvx::dom
