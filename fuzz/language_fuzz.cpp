// Language files: reading ends, and what is read is sound.

#include "fuzz_input.h"
#include "tvx/localise/xml_document.h"

using namespace tvx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  localise::XmlDocument document;
  const bool read = document.loadXML({reinterpret_cast<const char*>(data), size});
  fuzz::require(read == (document.documentElement() != nullptr), "a document has a root");
  fuzz::require(read == document.parseError().reason.empty(), "what is refused has a reason");
  if (!read) return 0;
  std::vector<const localise::XmlElement*> open{document.documentElement()};
  std::size_t length = document.documentElement()->text().size();
  while (!open.empty()) {
    const localise::XmlElement* element = open.back();
    open.pop_back();
    fuzz::require(!element->name().empty(), "an element has a name");
    fuzz::require(element->text().size() <= length, "a text is part of the whole");
    open.insert(open.end(), element->children().begin(), element->children().end());
  }
  return 0;
}
