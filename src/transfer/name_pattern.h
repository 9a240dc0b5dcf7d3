#pragma once

#include <string_view>

namespace tvx::transfer {

enum class LetterCase : bool { Counts, Ignored };

/// Whether a file's name fits a pattern: "*" stands for any letters, "?" for one, and "*.*" for every name,
/// with a dot or without.
bool fits_pattern(std::u16string_view name, std::u16string_view pattern, LetterCase letters);
bool has_wildcard(std::u16string_view pattern);

/// Names that a server's commands can carry: a line break or a zero character would end the command in the
/// middle of the name. Throws RuntimeError(87) for others.
void require_plain_name(std::u16string_view name);

/// Whether a name from a listing is that of a file in the folder listed. One with a "/", a "\" or "..",
/// joined to a local folder, would lead out of it.
bool stays_in_folder(std::u16string_view name);

}  // namespace tvx::transfer
