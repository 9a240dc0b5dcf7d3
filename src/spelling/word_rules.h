#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What a word is for the speller: decided here, once. Where words begin and end is Unicode's annex 29 (see
/// editing/walk/word_bounds.h), which decides this much already:
///
/// - An apostrophe between letters is part of the word ("don't", "l'été"): dictionaries know such words, and
///   "don" alone would be wrong. One at an edge is a quotation mark.
/// - A hyphen parts words: each half is judged by itself, so that "sun-dried" needs no entry of its own. A
///   half that is wrong by itself may be right with its hyphen.
/// - A combining mark belongs to its letter; elements within a line part nothing ("un<b>believ</b>able").
namespace tvx::spelling {

/// Whether a word is asked about at all. Not one with a digit in it ("mp3", "2nd": names and numbers), nor
/// with a dot or an underline within (names of programs and of machines), nor one longer than any dictionary
/// knows.
bool is_asked(std::u16string_view word);

/// Whether the word at [from, to) is part of an address: of a page, of e-mail, of a file. Those are names,
/// and mostly no words; what stands between blanks is judged as a whole.
bool is_in_address(std::u16string_view text, std::size_t from, std::size_t to);

/// The word at [from, to) with the hyphens beside it, after it first: "Installations-" of "Installations- und
/// Wartungswerkzeuge" is a form that dictionaries may have. None where no hyphen is.
std::vector<std::u16string> with_hyphens(std::u16string_view text, std::size_t from, std::size_t to);

/// As dictionaries have it: letters and their marks composed, the typewriter's apostrophe, and without what
/// nobody sees (soft hyphens, joiners).
std::u16string asked_form(std::u16string_view word);

/// A suggestion for `word` as it would be put in its position: with the capital that the word begins with, at
/// a sentence's start as in a heading, and with its form of the apostrophe. A capital that the suggestion has
/// stays: "germany" is "Germany".
std::u16string like(std::u16string_view word, std::u16string suggestion);

}  // namespace tvx::spelling
