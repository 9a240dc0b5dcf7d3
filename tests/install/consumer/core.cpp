// The editor without a window, from an installed library.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "tvx/document_file.h"
#include "tvx/htmled.h"

namespace {

class Host final : public tvx::HTMLedEvents {
 public:
  void ToolButtonClick(std::u16string&, std::int16_t&, std::u16string& button, bool& cancel) override {
    cancel = button == u"Italic";
  }
};

int complaint(const char* what) {
  std::fprintf(stderr, "not so: %s\n", what);
  return 1;
}

}  // namespace

int main() {
  Host host;
  tvx::HTMLed editor;
  editor.set_events(&host);
  editor.start();
  editor.set_DocumentHTML(u"<P>Hello world</P>");
  editor.selectText(6, 5);
  editor.press_button(u"Toolbar1", u"Bold");
  editor.press_button(u"Toolbar1", u"Italic");
  if (editor.DocumentHTML() != u"<P>Hello <B>world</B></P>") return complaint("bold and not italic");
  try {
    editor.set_RemoteContent(7);
    return complaint("a number that is none is refused");
  } catch (const tvx::RuntimeError& error) {
    if (error.number() != tvx::errors::invalid_property_value) return complaint("refused with 380");
  }
  const auto path = std::filesystem::temp_directory_path() / "tvxhtml-consumer.html";
  std::ofstream(path) << "<p>one";
  const tvx::DocumentFile file = tvx::DocumentFile::open(path.u16string());
  file.open_in(editor);
  if (file.bytes_of(editor) != "<p>one") return complaint("a file keeps its bytes");
  std::filesystem::remove(path);
  editor.set_events(nullptr);
  return 0;
}
