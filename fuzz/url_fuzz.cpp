// Addresses: taking one apart, writing it and taking it apart again changes nothing; what a reference
// resolves to is absolute; a local path comes back from its address.

#include "fuzz_input.h"
#include "tvx/base/url.h"

using namespace tvx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::text_of(data, size);
  const std::size_t middle = text.size() / 2;
  const std::u16string_view head = std::u16string_view(text).substr(0, middle);
  const std::u16string_view tail = std::u16string_view(text).substr(middle);

  if (const auto url = Url::parse(text)) {
    const auto again = Url::parse(url->text());
    fuzz::require(again && again->text() == url->text(), "an address is its own form");
  }
  if (const auto url = resolve_url(tail, head))
    fuzz::require(Url::parse(*url).has_value(), "resolved is absolute");
  if (const auto path = local_path(text)) {
    const auto again = local_path(file_url(*path));
    fuzz::require(again.has_value(), "a local path has an address");
  }
  const std::u16string encoded = EncodeURL(text);
  fuzz::require(encoded.size() <= longest_url && EncodeURL(encoded) == encoded,
                "escaping twice changes nothing");
  fuzz::require(CanonicalURL(text, URL_UNESCAPE).size() <= longest_url, "the result fits");
  return 0;
}
