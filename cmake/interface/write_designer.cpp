#include "text.h"
#include "writers.h"

/// What a form designer is told of the properties: how texts are written, and what each property is.
namespace {

std::string escaped(const std::string& text) {
  std::string xml;
  for (const char letter : text) {
    if (letter == '&' || letter == '<' || letter == '"')
      xml += letter == '&' ? "&amp;" : letter == '<' ? "&lt;" : "&quot;";
    else
      xml += letter;
  }
  return xml;
}

/// One element of the form's XML, as a row of C++.
std::string row(const std::string& xml) { return "R\"xml(" + xml + ")xml\"\n"; }

}  // namespace

// Addresses, paths, HTML: none of it is for translators.
void write_designer(const Interface& interface, Pieces& pieces) {
  std::string rows;
  for (const Entry* property : interface.all(Kind::Property)) {
    if (!property->can_be_set()) continue;
    rows += row("<tooltip name=\"" + property->name + "\">" + escaped(property->summary) + "</tooltip>");
    if (property->type == "string")
      rows += row("<stringpropertyspecification name=\"" + property->name + "\" type=\"" +
                  (property->fact("text") == "several lines" ? "multiline" : "singleline") +
                  "\" notr=\"true\"/>");
  }
  pieces["designer_properties.inc"] = rows;
}
