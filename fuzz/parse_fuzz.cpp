#include <cstdint>

#include "tvx/base/strings.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

// Parses, writes, parses what was written, and destroys: as a document, and as a fragment in a context
// that the first byte chooses.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tvx::dom;
  if (size == 0) return 0;
  const std::u16string html =
      tvx::from_utf8(std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  const Ref<Document> document = parse_document(html);
  parse_document(serialise_children(*document));

  FragmentContext context;
  context.name = Name(static_cast<Tag>(data[0] % static_cast<unsigned>(Tag::Count)));
  context.name_space = static_cast<Namespace>(data[0] % 3);
  const Ref<DocumentFragment> fragment = parse_fragment(*document, context, html);
  parse_fragment(*document, context, serialise_children(*fragment));
  return 0;
}
