#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// An absolute address taken apart by the rules of the URL standard (section 4.4): characters that may not
/// stand there are written as %XX, host names in lower case and ASCII, dot segments are gone, a default port
/// too. IPv4 addresses written as one number or in hexadecimal stay as they are.
struct Url {
  /// In lower case, without the colon.
  std::u16string scheme;
  /// User, host and port as written after "//"; nothing in an address like "about:blank". Of a local file:
  /// "".
  std::optional<std::u16string> authority;
  /// Begins with "/" but in an address that has neither authority nor folders ("data:...").
  std::u16string path;
  /// Without the "?" or the "#".
  std::optional<std::u16string> query;
  std::optional<std::u16string> fragment;

  /// Nothing if the text is no absolute address: "page.html", "http://", "http://a b/".
  static std::optional<Url> parse(std::u16string_view text);
  /// `reference` seen from `base`. Nothing if that means nothing.
  static std::optional<Url> parse(std::u16string_view reference, const Url& base);

  std::u16string text() const;
  /// Without the fragment: what two places in one document have in common.
  std::u16string document() const;

  bool is_file() const { return scheme == u"file"; }
  /// "data:", "about:", "javascript:": nothing can be relative to it.
  bool has_opaque_path() const { return !authority && !path.starts_with(u'/'); }

  bool operator==(const Url&) const = default;
};

/// `reference` as an absolute address; nothing if it is relative and the base is unusable ("", "http://").
std::optional<std::u16string> resolve_url(std::u16string_view reference, std::u16string_view base);

/// The path of a "file:" address, its %XX undone; nothing for other addresses, other machines, or a NUL.
std::optional<std::u16string> local_path(std::u16string_view url);
/// The "file:" address of an absolute path; "%", "?", "#" and "\" in names are escaped.
std::u16string file_url(std::u16string_view path);

// --- Addresses as plain texts, as hosts give them. Nothing here looks at what stands after them. ---

/// The longest result, in code units, of the three functions below; a longer one becomes the empty text.
inline constexpr std::size_t longest_url = 259;

/// Escapes what can't stand in an address: control characters, blanks, "<>\^`{|} and the quotation mark, and
/// all above 126, as the %XX of their UTF-8 bytes. "%", "#" and "?" stay: escaping twice changes nothing.
std::u16string EncodeURL(std::u16string_view url);

/// Undoes every %XX. The bytes of a run of them are UTF-8; if they aren't, they are Windows-1252.
std::u16string DecodeURL(std::u16string_view url);

enum : std::uint32_t {
  /// Escape nothing but blanks.
  URL_ESCAPE_SPACES_ONLY = 0x04000000,
  /// Leave "." and ".." segments as they are.
  URL_DONT_SIMPLIFY = 0x08000000,
  /// Undo every %XX in the result.
  URL_UNESCAPE = 0x10000000,
  /// Escape what `EncodeURL` escapes.
  URL_ESCAPE_UNSAFE = 0x20000000,
};

/// The address without blanks at its ends, with "/" for "\" where the scheme has folders (http, https, ftp,
/// file), and without "." and ".." segments; a relative text keeps the ".." that lead out of it. Other bits
/// of `flags` have no effect.
std::u16string CanonicalURL(std::u16string_view url, std::uint32_t flags);

}  // namespace tvx
