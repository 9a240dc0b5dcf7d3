#include "tvx/base/colour.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

std::u16string hexadecimal(std::uint32_t number) {
  std::u16string digits;
  do {
    digits.insert(digits.begin(), u"0123456789ABCDEF"[number % 16]);
    number /= 16;
  } while (number > 0);
  if (digits.size() == 1) digits.insert(digits.begin(), u'0');
  return digits;
}

/// Takes the part before the next separator off `rest`; the last part leaves nothing.
std::u16string_view take_part(std::u16string_view& rest, std::u16string_view separator) {
  const std::size_t end = separator.empty() ? rest.npos : rest.find(separator);
  const std::u16string_view part = rest.substr(0, end);
  rest = end == rest.npos ? std::u16string_view() : rest.substr(end + separator.size());
  return part;
}

}  // namespace

std::u16string ColourToRGB(Colour value, std::u16string_view separator) {
  const Colour blue = value / 65536;
  const Colour green = (value - blue * 65536) / 256;
  const Colour red = value - blue * 65536 - green * 256;
  std::u16string out = to_text(red);
  out.append(separator).append(to_text(green));
  return out.append(separator).append(to_text(blue));
}

std::u16string RGBToHex(std::u16string_view text, std::u16string_view separator) {
  std::u16string out;
  for (int part = 0; part < 3; ++part) {
    const auto number = parse_integer(trimmed(take_part(text, separator)));
    if (!number) throw RuntimeError(errors::type_mismatch, u"Type mismatch");
    if (*number < INT32_MIN || *number > INT32_MAX) throw RuntimeError(errors::overflow, u"Overflow");
    out += hexadecimal(static_cast<std::uint32_t>(*number));
  }
  return out;
}

}  // namespace tvx
