#include "tvx/dom/parser/quirks.h"

#include <algorithm>
#include <iterator>

#include "tvx/base/strings.h"

namespace tvx::dom::parser {
namespace {

// In small letters; compared without case.
constexpr std::u16string_view quirky_public_ids[] = {u"-//w3o//dtd w3 html strict 3.0//en//",
                                                     u"-/w3c/dtd html 4.0 transitional/en", u"html"};

constexpr std::u16string_view quirky_system_id =
    u"http://www.ibm.com/data/dtd/v11/ibmxhtml1-transitional.dtd";

constexpr std::u16string_view quirky_public_prefixes[] = {
    u"+//silmaril//dtd html pro v0r11 19970101//",
    u"-//as//dtd html 3.0 aswedit + extensions//",
    u"-//advasoft ltd//dtd html 3.0 aswedit + extensions//",
    u"-//ietf//dtd html 2.0 level 1//",
    u"-//ietf//dtd html 2.0 level 2//",
    u"-//ietf//dtd html 2.0 strict level 1//",
    u"-//ietf//dtd html 2.0 strict level 2//",
    u"-//ietf//dtd html 2.0 strict//",
    u"-//ietf//dtd html 2.0//",
    u"-//ietf//dtd html 2.1e//",
    u"-//ietf//dtd html 3.0//",
    u"-//ietf//dtd html 3.2 final//",
    u"-//ietf//dtd html 3.2//",
    u"-//ietf//dtd html 3//",
    u"-//ietf//dtd html level 0//",
    u"-//ietf//dtd html level 1//",
    u"-//ietf//dtd html level 2//",
    u"-//ietf//dtd html level 3//",
    u"-//ietf//dtd html strict level 0//",
    u"-//ietf//dtd html strict level 1//",
    u"-//ietf//dtd html strict level 2//",
    u"-//ietf//dtd html strict level 3//",
    u"-//ietf//dtd html strict//",
    u"-//ietf//dtd html//",
    u"-//metrius//dtd metrius presentational//",
    u"-//microsoft//dtd internet explorer 2.0 html strict//",
    u"-//microsoft//dtd internet explorer 2.0 html//",
    u"-//microsoft//dtd internet explorer 2.0 tables//",
    u"-//microsoft//dtd internet explorer 3.0 html strict//",
    u"-//microsoft//dtd internet explorer 3.0 html//",
    u"-//microsoft//dtd internet explorer 3.0 tables//",
    u"-//netscape comm. corp.//dtd html//",
    u"-//netscape comm. corp.//dtd strict html//",
    u"-//o'reilly and associates//dtd html 2.0//",
    u"-//o'reilly and associates//dtd html extended 1.0//",
    u"-//o'reilly and associates//dtd html extended relaxed 1.0//",
    u"-//sq//dtd html 2.0 hotmetal + extensions//",
    u"-//softquad software//dtd hotmetal pro 6.0::19990601::extensions to html 4.0//",
    u"-//softquad//dtd hotmetal pro 4.0::19971010::extensions to html 4.0//",
    u"-//spyglass//dtd html 2.0 extended//",
    u"-//sun microsystems corp.//dtd hotjava html//",
    u"-//sun microsystems corp.//dtd hotjava strict html//",
    u"-//w3c//dtd html 3 1995-03-24//",
    u"-//w3c//dtd html 3.2 draft//",
    u"-//w3c//dtd html 3.2 final//",
    u"-//w3c//dtd html 3.2//",
    u"-//w3c//dtd html 3.2s draft//",
    u"-//w3c//dtd html 4.0 frameset//",
    u"-//w3c//dtd html 4.0 transitional//",
    u"-//w3c//dtd html experimental 19960712//",
    u"-//w3c//dtd html experimental 970421//",
    u"-//w3c//dtd w3 html//",
    u"-//w3o//dtd w3 html 3.0//",
    u"-//webtechs//dtd mozilla html 2.0//",
    u"-//webtechs//dtd mozilla html//",
};

// Quirks without a system identifier, limited quirks with one.
constexpr std::u16string_view transitional_prefixes[] = {u"-//w3c//dtd html 4.01 frameset//",
                                                         u"-//w3c//dtd html 4.01 transitional//"};
constexpr std::u16string_view limited_quirks_prefixes[] = {u"-//w3c//dtd xhtml 1.0 frameset//",
                                                           u"-//w3c//dtd xhtml 1.0 transitional//"};

template <std::size_t size>
bool begins_with_one_of(std::u16string_view text, const std::u16string_view (&prefixes)[size]) {
  return std::any_of(std::begin(prefixes), std::end(prefixes),
                     [text](std::u16string_view prefix) { return text.starts_with(prefix); });
}

}  // namespace

CompatibilityMode compatibility_mode_of(const Token::DocumentTypeData& data) {
  const std::u16string public_id = ascii_lower(data.public_id);
  const bool transitional = begins_with_one_of(public_id, transitional_prefixes);
  if (data.force_quirks || data.name != u"html" || begins_with_one_of(public_id, quirky_public_prefixes) ||
      std::find(std::begin(quirky_public_ids), std::end(quirky_public_ids), public_id) !=
          std::end(quirky_public_ids) ||
      ascii_lower(data.system_id) == quirky_system_id || (transitional && !data.has_system_id)) {
    return CompatibilityMode::Quirks;
  }
  if (transitional || begins_with_one_of(public_id, limited_quirks_prefixes))
    return CompatibilityMode::LimitedQuirks;
  return CompatibilityMode::NoQuirks;
}

}  // namespace tvx::dom::parser
