#pragma once

#include <string>
#include <string_view>

#include "browser/html_document.h"

namespace tvx::qt {

/// An HTML file around the document that is edited in it. What an editor of documents doesn't keep stays
/// here and goes back: the document type and comments before and behind the document, the character set, the
/// byte order mark, the line ends.
class DocumentFile {
 public:
  /// A new document: UTF-8, no path.
  DocumentFile() = default;
  /// Reads what a document of this file needs to know before it is opened. Throws RuntimeError(53) if the
  /// file can't be read.
  static DocumentFile read(std::u16string_view path);

  const std::u16string& path() const { return path_; }
  void set_path(std::u16string path) { path_ = std::move(path); }
  /// As written in the file, empty where there is no such element.
  const std::u16string& title() const { return title_; }
  const std::u16string& base() const { return base_; }

  /// The bytes to write: `document` is the HTML element with all it holds, with LF as line end.
  std::string bytes_of(std::u16string_view document) const;
  /// Puts them in place of the file in one step; throws RuntimeError with a text for the user.
  void save(std::u16string_view document) const;

 private:
  std::u16string path_, title_, base_;
  std::u16string before_ = u"<!DOCTYPE html>\n", behind_ = u"\n";
  browser::Encoding encoding_;
  bool crlf_ = false;
};

}  // namespace tvx::qt
