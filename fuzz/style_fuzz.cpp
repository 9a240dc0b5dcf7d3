#include <cstdint>
#include <cstdlib>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/style_engine.h"

using namespace tvx::dom;

namespace {

void expect(bool condition) {
  if (!condition) std::abort();
}

// A declaration's text comes back as it was; what a setter says is what the getter answers, and setting
// that again changes nothing.
void try_declarations(std::u16string_view text) {
  constexpr std::u16string_view names[] = {u"border", u"border-style", u"border-left-width", u"margin",
                                           u"color",  u"background",   u"font-size",         u"list-style"};
  constexpr std::u16string_view values[] = {u"1px solid red", u"dashed", u"3px", u"1px 2px",
                                            u"blue",          u"green",  u"9px", u"square"};
  style::Declarations declarations(text);
  expect(declarations.css_text() == text);
  for (std::size_t i = 0; i < std::size(names); ++i) {
    declarations.set(names[i], values[i]);
    expect(tvx::equals_ignoring_ascii_case(declarations.get(names[i]), values[i]));
    expect(style::Declarations(declarations.css_text()).get(names[i]) == declarations.get(names[i]));
    expect(!declarations.set(names[i], declarations.get(names[i])));
  }
  for (const std::u16string_view name : names) declarations.remove(name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string css = tvx::from_utf8(std::string_view(reinterpret_cast<const char*>(data), size));
  try_declarations(css);
  const Ref<Document> document = parse_document(
      u"<!DOCTYPE html><div id=a class='a b'><p title=x>1<b>2</b><i></i></p><ul><li>3<li>4</ul><a "
      u"href=x>5</a></div>");
  style::StyleEngine& engine = style::style_of(*document);
  engine.set_extra_sheets({css});
  for (Element* element : document->all()) engine.values(*element);
  set_attribute(*document->body(), names::style, css);
  for (Element* element : document->all()) engine.values(*element);
  return 0;
}
