#include "tvx/base/code_page.h"

#include <langinfo.h>
#include <locale.h>
#include <unicode/ucnv.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <memory>

#include "tvx/base/strings.h"

namespace tvx {
namespace {

constexpr const char* utf8_name = "utf-8";
constexpr const char* windows_1252_name = "windows-1252";

/// Bytes 0x80 to 0x9F; all others are their own character.
constexpr std::array<char16_t, 32> windows_1252_high = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char windows_1252_byte(UChar32 c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  const auto place = std::find(windows_1252_high.begin(), windows_1252_high.end(), c);
  return place == windows_1252_high.end() ? '?'
                                          : static_cast<char>(0x80 + (place - windows_1252_high.begin()));
}

/// Calls `take` with each character; a lone surrogate comes as "?", since no code page can hold it.
template <class Take>
void for_each_character(std::u16string_view text, Take&& take) {
  for (std::size_t i = 0; i < text.size();) {
    UChar32 c;
    U16_NEXT(text.data(), i, text.size(), c);
    take(U_IS_SURROGATE(c) ? UChar32('?') : c);
  }
}

std::string encode_windows_1252(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for_each_character(text, [&](UChar32 c) { out.push_back(windows_1252_byte(c)); });
  return out;
}

std::u16string decode_windows_1252(std::string_view bytes) {
  std::u16string out;
  out.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    out.push_back(value >= 0x80 && value < 0xA0 ? windows_1252_high[value - 0x80] : value);
  }
  return out;
}

std::u16string without_lone_surrogates(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for_each_character(text, [&](UChar32 c) {
    if (c > 0xFFFF) {
      out.push_back(U16_LEAD(c));
      out.push_back(U16_TRAIL(c));
    } else {
      out.push_back(static_cast<char16_t>(c));
    }
  });
  return out;
}

// Every other code page is the business of ICU's converters.

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

Converter open_converter(const std::string& name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(ucnv_open(name.c_str(), &status));
  if (U_FAILURE(status)) return nullptr;
  ucnv_setSubstString(converter.get(), u"?", 1, &status);
  return converter;
}

std::string encode_by_icu(const std::string& name, std::u16string_view text) {
  const Converter converter = open_converter(name);
  const std::u16string whole = without_lone_surrogates(text);
  const auto length = static_cast<std::int32_t>(whole.size());
  std::string out(
      UCNV_GET_MAX_BYTES_FOR_STRING(static_cast<std::size_t>(length), ucnv_getMaxCharSize(converter.get())),
      '\0');
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t written = ucnv_fromUChars(
      converter.get(), out.data(), static_cast<std::int32_t>(out.size()), whole.data(), length, &status);
  out.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(written));
  return out;
}

std::u16string decode_by_icu(const std::string& name, std::string_view bytes) {
  const Converter converter = open_converter(name);
  std::u16string out(bytes.size() + 2, u'\0');
  for (;;) {
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        ucnv_toUChars(converter.get(), out.data(), static_cast<std::int32_t>(out.size()), bytes.data(),
                      static_cast<std::int32_t>(bytes.size()), &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {  // few code pages have bytes that stand for several units
      out.resize(static_cast<std::size_t>(length));
      continue;
    }
    out.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(length));
    return out;
  }
}

std::string lower_case(std::string_view name) {
  std::string out(name);
  for (char& c : out) c = static_cast<char>(ascii_lower(static_cast<unsigned char>(c)));
  out.erase(0, out.find_first_not_of(" \t\n\f\r"));
  return out.erase(out.find_last_not_of(" \t\n\f\r") + 1);
}

bool means_windows_1252(const std::string& label) {
  static constexpr const char* labels[] = {
      "windows-1252",   "cp1252", "x-cp1252",   "iso-8859-1",  "iso8859-1",      "iso88591",
      "iso_8859-1",     "latin1", "l1",         "ascii",       "us-ascii",       "cp819",
      "ansi_x3.4-1968", "ibm819", "iso-ir-100", "csisolatin1", "iso_8859-1:1987"};
  return std::find(std::begin(labels), std::end(labels), label) != std::end(labels);
}

std::optional<CodePage>& chosen_system_page() {
  static std::optional<CodePage> chosen;
  return chosen;
}

/// The character set of the user's locale, asked from the environment: a library can't count on the
/// program having called setlocale. Empty if the locale isn't installed.
std::string locale_character_set() {
  const locale_t user = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (!user) return {};
  const std::string name = nl_langinfo_l(CODESET, user);
  freelocale(user);
  return name;
}

}  // namespace

CodePage CodePage::utf8() { return CodePage(utf8_name); }
CodePage CodePage::windows_1252() { return CodePage(windows_1252_name); }

std::optional<CodePage> CodePage::by_name(std::string_view name) {
  const std::string label = lower_case(name);
  if (label == "utf-8" || label == "utf8" || label == "unicode-1-1-utf-8") return utf8();
  if (means_windows_1252(label)) return windows_1252();
  if (label == "utf-16" || label == "unicode" || label == "ucs-2") return CodePage("utf-16le");
  if (label.empty() || !open_converter(label)) return std::nullopt;
  return CodePage(label);
}

CodePage CodePage::system() {
  if (chosen_system_page()) return *chosen_system_page();
  static const CodePage from_locale = [] {
    const std::string name = locale_character_set();
    return name == "ANSI_X3.4-1968" ? utf8() : by_name(name).value_or(utf8());
  }();
  return from_locale;
}

void CodePage::set_system(std::optional<CodePage> page) { chosen_system_page() = std::move(page); }

std::string CodePage::encode(std::u16string_view text) const {
  if (name_ == utf8_name) return to_utf8(without_lone_surrogates(text));
  if (name_ == windows_1252_name) return encode_windows_1252(text);
  return encode_by_icu(name_, text);
}

std::u16string CodePage::decode(std::string_view bytes) const {
  if (name_ == utf8_name) return from_utf8(bytes);
  if (name_ == windows_1252_name) return decode_windows_1252(bytes);
  return decode_by_icu(name_, bytes);
}

}  // namespace tvx
