// Texts: replacing against the plain way of doing it; code pages that hold all they decode.

#include "fuzz_input.h"
#include "tvx/base/code_page.h"
#include "tvx/base/text.h"

using namespace tvx;

namespace {

std::u16string replaced_plainly(const std::u16string& find, const std::u16string& text) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size();) {
    if (!find.empty() && text.compare(i, find.size(), find) == 0) {
      out += u"<>";
      i += find.size();
    } else {
      out += text[i++];
    }
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::u16string all = fuzz::text_of(data + 1, size - 1);
  const std::u16string find = all.substr(0, data[0] % 8);
  const std::u16string text = all.substr(find.size());
  fuzz::require(ReplaceAll(find, u"<>", text, true) == replaced_plainly(find, text), "replacing all");
  fuzz::require(ReplaceAll(find, u"<>", upper_cased(text), false) ==
                    replaced_plainly(upper_cased(find), upper_cased(text)),
                "replacing all without case");

  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const CodePage page = CodePage::windows_1252();
  fuzz::require(page.encode(page.decode(bytes)) == bytes, "Windows-1252 holds each byte");
  for (const char* name : {"utf-8", "shift_jis", "gb18030", "utf-16"}) {
    const CodePage other = *CodePage::by_name(name);
    const std::u16string decoded = other.decode(bytes);
    fuzz::require(other.decode(other.encode(decoded)).size() <= decoded.size() * 2 + 2,
                  "a code page is stable");
  }
  return 0;
}
