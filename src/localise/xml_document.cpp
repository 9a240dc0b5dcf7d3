#include "tvx/localise/xml_document.h"

#include <expat.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"

namespace tvx::localise {
namespace {

/// White space by XML 1.0, section 2.3.
constexpr std::string_view white_space = " \t\r\n";

std::string_view without_white_space(std::string_view text) {
  const std::size_t first = text.find_first_not_of(white_space);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(white_space) - first + 1);
}

/// What each byte means in a code page where each byte is a character; nothing for any other code page.
bool fill_byte_table(const char* name, int (&table)[256]) {
  const std::optional<CodePage> page = CodePage::by_name(name);
  if (!page) return false;
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const std::u16string characters = page->decode(bytes);
  if (characters.size() != bytes.size()) return false;
  for (std::size_t byte = 0; byte < 256; ++byte)
    table[byte] = characters[byte] == u'\uFFFD' ? -1 : characters[byte];
  return true;
}

}  // namespace

// --- elements ---

const XmlElement* XmlElement::child(std::size_t index) const {
  return index < children_.size() ? children_[index] : nullptr;
}

const XmlElement* XmlElement::child_named(std::u16string_view name) const {
  const auto found =
      std::ranges::find_if(children_, [&](const XmlElement* each) { return each->name() == name; });
  return found == children_.end() ? nullptr : *found;
}

std::u16string XmlElement::text() const {
  const std::string_view all = *all_text_;
  return from_utf8(without_white_space(all.substr(text_begin_, text_end_ - text_begin_)));
}

// --- reading ---

/// One run of the parser: builds a document from what the parser reports.
class XmlReader {
 public:
  XmlReader() : parser_(XML_ParserCreate(nullptr)), contents_(std::make_unique<XmlDocument::Contents>()) {
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, started, ended);
    XML_SetCharacterDataHandler(parser_, characters);
    XML_SetEntityDeclHandler(parser_, entity_declared);
    XML_SetAttlistDeclHandler(parser_, attribute_declared);
    XML_SetSkippedEntityHandler(parser_, entity_skipped);
    XML_SetUnknownEncodingHandler(parser_, find_encoding, this);
  }
  ~XmlReader() { XML_ParserFree(parser_); }
  XmlReader(const XmlReader&) = delete;
  XmlReader& operator=(const XmlReader&) = delete;

  /// Nothing if the bytes are a document.
  std::optional<ParseError> read(std::string_view bytes) {
    if (XML_Parse(parser_, bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) == XML_STATUS_OK)
      return std::nullopt;
    if (refusal_.reason.empty()) refuse(from_utf8(XML_ErrorString(XML_GetErrorCode(parser_))));
    return refusal_;
  }
  std::unique_ptr<const XmlDocument::Contents> take() { return std::move(contents_); }

 private:
  static XmlReader& self(void* data) { return *static_cast<XmlReader*>(data); }

  static void started(void* data, const char* name, const char** attributes) {
    self(data).start(name, attributes);
  }
  static void ended(void* data, const char*) { self(data).end(); }
  static void characters(void* data, const char* text, int length) {
    self(data).contents_->text.append(text, static_cast<std::size_t>(length));
  }
  static void entity_declared(void* data, const char*, int, const char*, int, const char*, const char*,
                              const char*, const char*) {
    self(data).stop(u"entities can't be declared here");
  }
  // An attribute with a default value stands in every element of its name: a few bytes become a great many.
  static void attribute_declared(void* data, const char*, const char*, const char*, const char*, int) {
    self(data).stop(u"attributes can't be declared here");
  }
  // Where a document type has an external part, the parser takes it that an unknown entity stands there.
  static void entity_skipped(void* data, const char* name, int) {
    self(data).stop(u"unknown entity " + from_utf8(name));
  }
  static int find_encoding(void*, const char* name, XML_Encoding* encoding) {
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return fill_byte_table(name, encoding->map) ? XML_STATUS_OK : XML_STATUS_ERROR;
  }

  void start(const char* name, const char** attributes) {
    XmlElement& element = contents_->elements.emplace_back();
    element.name_ = from_utf8(name);
    for (; *attributes; attributes += 2)
      element.attributes_.push_back({from_utf8(attributes[0]), from_utf8(attributes[1])});
    element.all_text_ = &contents_->text;
    element.text_begin_ = contents_->text.size();
    if (open_.empty())
      contents_->root = &element;
    else
      open_.back()->children_.push_back(&element);
    open_.push_back(&element);
  }

  void end() {
    open_.back()->text_end_ = contents_->text.size();
    open_.pop_back();
  }

  void refuse(std::u16string reason) {
    refusal_ = {std::move(reason), XML_GetCurrentLineNumber(parser_),
                XML_GetCurrentColumnNumber(parser_) + 1};
  }
  // The parser may report more before it stops: the first reason is the one.
  void stop(std::u16string reason) {
    if (!refusal_.reason.empty()) return;
    refuse(std::move(reason));
    XML_StopParser(parser_, XML_FALSE);
  }

  XML_Parser parser_;
  std::unique_ptr<XmlDocument::Contents> contents_;
  std::vector<XmlElement*> open_;
  ParseError refusal_;
};

bool XmlDocument::refuse(std::u16string_view reason) {
  contents_.reset();
  error_ = {std::u16string(reason), 0, 0};
  return false;
}

bool XmlDocument::load(std::u16string_view path) {
  std::error_code failed;
  const auto size = std::filesystem::file_size(file_system_path(path), failed);
  if (!failed && size > largest_file) return refuse(u"the file is too large");
  const std::optional<std::string> bytes = failed ? std::nullopt : read_bytes(path);
  return bytes ? loadXML(*bytes) : refuse(u"the file can't be read");
}

bool XmlDocument::loadXML(std::string_view bytes) {
  if (bytes.size() > largest_file) return refuse(u"the file is too large");
  XmlReader reader;
  std::optional<ParseError> error = reader.read(bytes);
  error_ = error.value_or(ParseError());
  contents_ = error ? nullptr : reader.take();
  return !error;
}

}  // namespace tvx::localise
