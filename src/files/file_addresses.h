#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/dom/tree.h"

namespace tvx::files {

/// An attribute of a page that names a file of this computer which is there.
struct FileAddress {
  dom::Ref<dom::Element> element;
  dom::Name attribute;
  std::u16string written;
  std::u16string path;  // of the file
  std::u16string rest;  // what stands after the file's name: "?a#b"
  bool relative;        // written as seen from the page
  bool shown;           // the page brings it in, a picture or a style sheet; else a link leads there
};

/// Those of a page that stands at that address, in its order. None in a page that names a base, where an
/// address means what the base makes of it. An address that is relative to a root is none, either.
std::vector<FileAddress> file_addresses(dom::Document& page, std::u16string_view page_address);

/// Whether a file lies in a folder or below, in whichever way both are reached.
bool lies_in(std::u16string_view path, std::u16string_view folder);

/// The address of a file as a page in that folder writes it: seen from the folder where the file lies in it
/// or where the two have more in common than the user's home, else a whole one.
std::u16string address_from(std::u16string_view folder, std::u16string_view path);

}  // namespace tvx::files
