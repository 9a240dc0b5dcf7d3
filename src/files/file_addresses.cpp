#include "tvx/files/file_addresses.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/dom/mutation.h"

namespace tvx::files {
namespace {

namespace fs = std::filesystem;

enum class Use { None, Shown, Link };

/// Of a link that has a picture ready before it is wanted.
const dom::Name& imagesrcset() {
  static const dom::Name name(u"imagesrcset");
  return name;
}

Use use_of(const dom::Element& element, const dom::Name& attribute) {
  if (attribute == dom::names::href)
    return element.is(dom::Tag::Link) ? Use::Shown : element.is(dom::Tag::Base) ? Use::None : Use::Link;
  if (attribute == dom::names::data) return element.is(dom::Tag::Object) ? Use::Shown : Use::None;
  return Use::Shown;
}

/// The addresses of an attribute, each with its place in the value.
std::vector<AddressInText> addresses_in(const dom::Name& attribute, const std::u16string& value) {
  if (attribute == dom::names::srcset || attribute == imagesrcset()) return addresses_in_srcset(value);
  // Few have any, and this is asked of every element that has a style.
  if (attribute == dom::names::style)
    return contains(value, u"(") ? addresses_in_css(value) : std::vector<AddressInText>();
  return {{0, value.size(), AddressSpelling::Plain, value}};
}

bool names_base(const dom::Document& page) {
  for (const dom::Node* node = &page; node; node = dom::next_in_order(*node))
    if (node->is(dom::Tag::Base) && static_cast<const dom::Element*>(node)->attribute(dom::names::href))
      return true;
  return false;
}

/// What an address means, seen from the page; nothing where it names no file.
std::optional<FileAddress> file_at(std::u16string_view written, const std::optional<Url>& page) {
  const std::u16string_view reference = trimmed(written);
  if (reference.empty() || reference.find_first_of(u"#?/\\") == 0) return {};
  const std::optional<Url> whole = Url::parse(reference);
  const std::optional<Url> url = whole || !page ? whole : Url::parse(reference, *page);
  const std::optional<std::u16string> path = url ? local_path(url->document()) : std::nullopt;
  std::error_code none;
  if (!path || !fs::is_regular_file(file_system_path(*path), none)) return {};
  FileAddress found{{}, {}, std::u16string(written), *path, {}, !whole, false};
  if (url->query) found.rest = u'?' + *url->query;
  if (url->fragment) found.rest += u'#' + *url->fragment;
  return found;
}

fs::path in_one_way(std::u16string_view path) { return fs::path(file_system_path(path)).lexically_normal(); }

/// The same without links on the way; the file itself may be one.
fs::path without_links(const fs::path& path) {
  std::error_code failure;
  const fs::path folder = fs::weakly_canonical(path.parent_path(), failure);
  return failure ? path : folder / path.filename();
}

fs::path folder_without_links(const fs::path& folder) {
  std::error_code failure;
  const fs::path found = fs::weakly_canonical(folder, failure);
  return failure ? folder : found;
}

bool is_below(const fs::path& path, const fs::path& folder) {
  const auto [of_folder, of_path] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return of_folder == folder.end() && of_path != path.end();
}

fs::path folder_in_one_way(std::u16string_view folder) {
  fs::path path = in_one_way(folder);
  return path.has_filename() ? path : path.parent_path();
}

/// From the folder to the file, as addresses write it.
std::u16string seen_from(const fs::path& folder, const fs::path& path) {
  std::u16string address;
  for (const fs::path& step : path.lexically_relative(folder)) {
    if (!address.empty()) address += u'/';
    address += file_url(from_utf8(step.string())).substr(std::u16string_view(u"file://").size());
  }
  // What stands before a colon would be read as a scheme.
  const bool has_colon = address.substr(0, address.find(u'/')).find(u':') != address.npos;
  return has_colon ? u"./" + address : address;
}

/// Whether both lie in a folder that is somebody's project rather than one for everything.
bool are_near(const fs::path& one, const fs::path& other) {
  fs::path common;
  for (auto a = one.begin(), b = other.begin(); a != one.end() && b != other.end() && *a == *b; ++a, ++b)
    common /= *a;
  const char* home = std::getenv("HOME");
  const fs::path own = folder_in_one_way(from_utf8(home ? home : "/"));
  std::error_code failure;
  const bool is_temporary = common == fs::temp_directory_path(failure);
  return common != common.root_path() && common != own && !is_below(own, common) && !is_temporary;
}

}  // namespace

namespace {

/// Goes over a page's places in their order.
class FileAddressReader {
 public:
  explicit FileAddressReader(std::u16string_view page_address) : stands_at_(Url::parse(page_address)) {}

  void read(dom::Element& element) {
    for (const dom::Name& name :
         {dom::names::src, dom::names::background, dom::names::poster, dom::names::data, dom::names::href,
          dom::names::srcset, imagesrcset(), dom::names::style}) {
      const std::u16string* value = element.attribute(name);
      const Use use = value ? use_of(element, name) : Use::None;
      if (use != Use::None) add({element, name}, addresses_in(name, *value), use);
    }
    if (element.is(dom::Tag::Style)) {
      const AddressPlace sheet{element, {}};
      add(sheet, addresses_in_css(sheet.text()), Use::Shown);
    }
  }
  std::vector<FileAddress> found() { return std::move(found_); }

 private:
  void add(const AddressPlace& place, const std::vector<AddressInText>& all, Use use) {
    for (const AddressInText& each : all) {
      std::optional<FileAddress> address = file_at(each.address, stands_at_);
      if (!address) continue;
      address->place = place;
      address->in_text = each;
      address->shown = use == Use::Shown;
      found_.push_back(*std::move(address));
    }
  }

  const std::optional<Url> stands_at_;
  std::vector<FileAddress> found_;
};

/// The text of a sheet in the page. One in several pieces, as a script might have left it, has none.
dom::Text* sheet_text(const dom::Element& element) {
  return element.child_count() == 1 ? dom::as<dom::Text>(element.first_child()) : nullptr;
}

}  // namespace

std::u16string AddressPlace::text() const {
  if (!attribute.empty()) return std::u16string(element->attribute_or_empty(attribute));
  const dom::Text* text = sheet_text(*element);
  return text ? std::u16string(text->data()) : std::u16string();
}

void AddressPlace::set_text(std::u16string_view text) const {
  if (!attribute.empty()) return dom::set_attribute(*element, attribute, text);
  if (dom::Text* sheet = sheet_text(*element)) dom::replace_data(*sheet, 0, sheet->data().size(), text);
}

std::vector<FileAddress> file_addresses(dom::Document& page, std::u16string_view page_address) {
  if (names_base(page)) return {};
  FileAddressReader reader(page_address);
  for (dom::Node* node = &page; node; node = dom::next_in_order(*node))
    if (node->is_element()) reader.read(static_cast<dom::Element&>(*node));
  return reader.found();
}

// From the last to the first of a place, so that those before it stand where they stood.
std::vector<AddressedText> texts_with(const std::vector<Readdressed>& others) {
  std::vector<AddressedText> texts;
  for (auto each = others.rbegin(); each != others.rend(); ++each) {
    const auto& [address, other] = *each;
    if (texts.empty() || texts.back().place != address.place)
      texts.push_back({address.place, address.place.text()});
    texts.back().text = with_address(texts.back().text, address.in_text, other);
  }
  return texts;
}

bool lies_in(std::u16string_view path, std::u16string_view folder) {
  const fs::path file = in_one_way(path), base = folder_in_one_way(folder);
  return is_below(file, base) || is_below(without_links(file), folder_without_links(base));
}

std::u16string address_from(std::u16string_view folder, std::u16string_view path) {
  const fs::path file = in_one_way(path), base = folder_in_one_way(folder);
  if (is_below(file, base)) return seen_from(base, file);
  const fs::path own_file = without_links(file), own_place = folder_without_links(base);
  if (is_below(own_file, own_place)) return seen_from(own_place, own_file);
  // As it is written: whoever reads an address knows nothing of links when taking ".." off it.
  if (are_near(file, base)) return seen_from(base, file);
  return file_url(from_utf8(file.string()));
}

}  // namespace tvx::files
