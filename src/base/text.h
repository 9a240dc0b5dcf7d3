#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// Replaces every occurrence of `find`, searching from the left and going on after what was put in, so that
/// a replacement which holds `find` does not loop. Without `caseSensitive` both sides are compared in upper
/// case, one code unit for one ("ß" stays, "ı" equals "I"), so that places keep their numbers.
/// An empty `find` occurs nowhere. Costs one walk over the text, whatever the two texts look like.
std::u16string ReplaceAll(std::u16string_view find, std::u16string_view replacement, std::u16string_view text,
                          bool caseSensitive);

/// Where `find` first occurs in the text; npos: nowhere. The empty text occurs at the start. Costs one walk
/// over both texts, whatever they look like.
std::size_t FirstOccurrence(std::u16string_view find, std::u16string_view text);

/// The empty text for nothing, otherwise the text.
std::u16string NullToEmpty(const std::optional<std::u16string>& value);

/// The part after the last "\"; in a path that has none, after the last "/"; else the whole text.
std::u16string_view FileNameFromPath(std::u16string_view path);

/// The text before the first NUL.
std::u16string_view TrimNul(std::u16string_view text);

/// Upper case without a change of length, by Unicode's simple mapping of each code unit.
std::u16string upper_cased(std::u16string_view text);

}  // namespace tvx
