#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/dom/tree.h"
#include "tvx/files/addresses_in_text.h"

namespace tvx::files {

/// Where addresses stand in a page: an attribute, or the text of a `style` element where that is empty.
struct AddressPlace {
  dom::Ref<dom::Element> element;
  dom::Name attribute;

  std::u16string text() const;
  void set_text(std::u16string_view text) const;
  bool operator==(const AddressPlace&) const = default;
};

/// An address in a page that names a file of this computer which is there.
struct FileAddress {
  AddressPlace place;
  AddressInText in_text;  // all of it, or one of those that are there
  std::u16string written;
  std::u16string path;  // of the file
  std::u16string rest;  // what stands after the file's name: "?a#b"
  bool relative;        // written as seen from the page
  bool shown;           // the page brings it in, a picture or a style sheet; else a link leads there
};

/// Those of a page that stands at that address, in its order. None in a page that names a base, where an
/// address means what the base makes of it. An address that is relative to a root is none, either.
std::vector<FileAddress> file_addresses(dom::Document& page, std::u16string_view page_address);

/// What stands in a place that has addresses.
struct AddressedText {
  AddressPlace place;
  std::u16string text;
};

/// An address, and what is to stand there.
using Readdressed = std::pair<FileAddress, std::u16string>;

/// The texts of all places with these addresses changed, which are in the page's order. The page stays as it
/// is.
std::vector<AddressedText> texts_with(const std::vector<Readdressed>& others);

/// Whether a file lies in a folder or below, in whichever way both are reached.
bool lies_in(std::u16string_view path, std::u16string_view folder);

/// The address of a file as a page in that folder writes it: seen from the folder where the file lies in it
/// or where the two have more in common than the user's home, else a whole one.
std::u16string address_from(std::u16string_view folder, std::u16string_view path);

}  // namespace tvx::files
