// A host's program without a window: public headers, and nothing else.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "tvx/document_file.h"
#include "tvx/enumerations.h"
#include "tvx/error.h"
#include "tvx/events.h"
#include "tvx/htmled.h"
#include "tvx/message_loop.h"
#include "tvx/object.h"
#include "tvx/property_bag.h"

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
  if (holds) return;
  ++failures;
  std::fprintf(stderr, "not so: %s\n", what);
}

class Listener final : public tvx::HTMLedEvents {
 public:
  void ToolButtonClick(std::u16string&, std::int16_t&, std::u16string& buttonName, bool& cancel) override {
    pressed = buttonName;
    cancel = buttonName == u"Italic";
  }
  void BeforeGetDocumentHTML(std::u16string& CurrentDocumentHTML) override { CurrentDocumentHTML += u"!"; }

  std::u16string pressed;
};

class Store final : public tvx::platform::PropertyBag {
 public:
  tvx::platform::PropertyValue ReadProperty(std::u16string_view key,
                                            const tvx::platform::PropertyValue& otherwise) const override {
    const auto found = values_.find(std::u16string(key));
    return found == values_.end() ? otherwise : found->second;
  }
  void WriteProperty(std::u16string_view key, const tvx::platform::PropertyValue& value,
                     const tvx::platform::PropertyValue& standard) override {
    if (!tvx::platform::equal_in_store(value, standard)) values_[std::u16string(key)] = value;
  }

 private:
  std::map<std::u16string, tvx::platform::PropertyValue> values_;
};

void edit() {
  Listener listener;
  tvx::HTMLed editor;
  editor.set_events(&listener);
  editor.start();
  editor.set_DocumentHTML(u"<P>Hello world</P>");
  editor.selectText(6, 5);
  expect(editor.press_button(u"Toolbar1", u"Bold"), "the button answers");
  expect(listener.pressed == u"Bold", "the host hears of the press");
  expect(editor.button_state(u"Toolbar1", u"Bold").pressed, "the button is down");
  editor.press_button(u"Toolbar1", u"Italic");
  expect(editor.DocumentHTML() == u"<P>Hello <B>world</B></P>!",
         "bold, not italic, and what the host writes");
  expect(std::get<std::u16string>(editor.DOM().get(u"all.tags(\"B\").item(0).innerText")) == u"world",
         "the document by names");
  editor.set_events(nullptr);
  editor.undo_document();
  expect(editor.DocumentHTML() == u"<P>Hello world</P>", "the step is taken back");
}

void fail() {
  tvx::HTMLed editor;
  editor.start();
  int number = 0;
  try {
    editor.part(u"NoSuchMember");
  } catch (const tvx::RuntimeError& error) {
    number = error.number();
  }
  expect(number == tvx::errors::unknown_member, "a name that is none fails with its number");
}

void remember() {
  Store store;
  {
    tvx::HTMLed editor;
    editor.set_SelectionBorderStyle(tvx::EdHighLightStyle::edDotted);
    editor.set_DocumentHTML(u"<P>Kept</P>");
    editor.start();
    editor.write_properties(store);
  }
  tvx::HTMLed again;
  again.read_properties(store);
  again.start();
  expect(again.SelectionBorderStyle() == tvx::EdHighLightStyle::edDotted, "a number is remembered");
  expect(again.DocumentHTML() == u"<P>Kept</P>", "the document is remembered");
}

void keep_a_file() {
  const auto path = std::filesystem::temp_directory_path() / "tvxhtml-host.html";
  const std::string before = "<!-- mine -->\r\n<html><body>\r\n<p>one\r\n<p>two</p>\r\n</body></html>\r\n";
  std::ofstream(path, std::ios::binary) << before;
  tvx::HTMLed editor;
  editor.start();
  tvx::DocumentFile file = tvx::DocumentFile::open(path.u16string());
  file.open_in(editor);
  expect(file.bytes_of(editor) == before, "an untouched file keeps its bytes");
  editor.selectText(0, 3);
  editor.bold_document();
  file.save(editor, path.u16string());
  std::ifstream in(path, std::ios::binary);
  const std::string after{std::istreambuf_iterator<char>(in), {}};
  expect(after.find("<!-- mine -->\r\n") == 0 && after.find("<b>one</b>") != std::string::npos &&
             after.find("<p>two</p>\r\n</body></html>\r\n") != std::string::npos,
         "the rest of an edited file is as it was");
  std::filesystem::remove(path);
}

}  // namespace

int main() {
  edit();
  fail();
  remember();
  keep_a_file();
  return failures ? 1 : 0;
}
