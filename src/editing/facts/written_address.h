#pragma once

#include <string>
#include <string_view>

/// Addresses as people write them into a text: "www.example.org" is one as well.
namespace tvx::editing {

/// The address that a word starts with, without the punctuation of the sentence after it; empty if it is
/// none.
std::u16string_view written_address(std::u16string_view word);
/// Where a link with such an address leads.
std::u16string target_of(std::u16string_view written_address);

}  // namespace tvx::editing
