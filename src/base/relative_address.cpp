#include "tvx/base/relative_address.h"

#include "tvx/base/text.h"
#include "tvx/base/url.h"

namespace tvx {
namespace {

/// The address as the URL standard writes it; as it stands if it is none. A slash that only the standard adds
/// is left out, so that what is taken off ends where the base ends.
std::u16string normal_form(std::u16string_view address) {
  const auto url = Url::parse(address);
  std::u16string text = url ? url->text() : std::u16string(address);
  if (url && text.ends_with(u'/') && !address.ends_with(u'/')) text.pop_back();
  return text;
}

}  // namespace

std::optional<std::u16string> without_base(std::u16string_view address, std::u16string_view base) {
  if (base.empty()) return std::nullopt;
  const std::u16string normal_base = normal_form(base), normal_address = normal_form(address);
  for (const std::u16string_view in : {address, std::u16string_view(normal_address)}) {
    for (const std::u16string_view each : {base, std::u16string_view(normal_base)}) {
      std::u16string rest = ReplaceAll(each, u"", in, false);
      if (rest != in) return rest;
    }
  }
  return std::nullopt;
}

}  // namespace tvx
