#include "tvx/editing/facts/written_address.h"

#include <algorithm>

#include "tvx/base/strings.h"

namespace tvx::editing {
namespace {

constexpr std::u16string_view www = u"www.";

bool starts_with(std::u16string_view word, std::u16string_view prefix) {
  return word.size() > prefix.size() && equals_ignoring_ascii_case(word.substr(0, prefix.size()), prefix);
}

bool is_address(std::u16string_view word) {
  for (std::u16string_view scheme : {u"http://", u"https://", u"ftp://", u"mailto:"})
    if (starts_with(word, scheme)) return true;
  // "www.example.org" and not "www.": a name of two parts at least.
  return starts_with(word, www) && word.size() > 6 && contains(word.substr(www.size()), u".");
}

}  // namespace

std::u16string_view written_address(std::u16string_view word) {
  while (!word.empty() && std::u16string_view(u".,;:!?'\")]}>").find(word.back()) != word.npos) {
    // A bracket that is opened in the address belongs to it.
    if (word.back() == u')' && std::ranges::count(word, u'(') >= std::ranges::count(word, u')')) break;
    word.remove_suffix(1);
  }
  return is_address(word) ? word : std::u16string_view();
}

std::u16string target_of(std::u16string_view written_address) {
  return (starts_with(written_address, www) ? u"http://" : u"") + std::u16string(written_address);
}

}  // namespace tvx::editing
