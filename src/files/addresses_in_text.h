#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::files {

/// How an address is spelled where it stands.
enum class AddressSpelling : std::uint8_t {
  Plain,     // the text is the address
  InList,    // one of a list of pictures, between blanks and commas: `srcset`
  InUrl,     // "url(...)", without quotation marks
  InQuotes,  // a string of CSS
};

/// An address within a text, and the part of the text that is there for it.
struct AddressInText {
  std::size_t begin = 0, length = 0;
  AddressSpelling spelling = AddressSpelling::Plain;
  std::u16string address;  // escapes resolved

  bool operator==(const AddressInText&) const = default;
};

/// The addresses of the pictures among which a browser chooses (HTML standard, section 4.8.4.2.1 "srcset
/// attributes").
std::vector<AddressInText> addresses_in_srcset(std::u16string_view text);

/// What a style sheet or the declarations of a `style` attribute bring in: `url()`, `@import` and
/// `image-set`.
std::vector<AddressInText> addresses_in_css(std::u16string_view text);

/// The text with another address in that place. Characters that would end the address there are written as
/// %XX.
std::u16string with_address(std::u16string_view text, const AddressInText& place,
                            std::u16string_view address);

}  // namespace tvx::files
