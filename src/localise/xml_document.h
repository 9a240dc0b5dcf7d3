#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::localise {

struct XmlAttribute {
  std::u16string name, value;
};

/// An element of a document that has been read. Names are as written, prefixes included: name spaces mean
/// nothing here. What stands between elements, white space, comments, processing instructions and stray text,
/// is no child.
class XmlElement {
 public:
  const std::u16string& name() const { return name_; }
  /// In the order in which they are written.
  const std::vector<XmlAttribute>& attributes() const { return attributes_; }
  const std::vector<const XmlElement*>& children() const { return children_; }
  /// The child with that index, counted from 0; null if there is none.
  const XmlElement* child(std::size_t index) const;
  /// The first child of that name; null if there is none.
  const XmlElement* child_named(std::u16string_view name) const;
  /// All text inside, that of elements below included, without the white space at its ends: a file may be
  /// indented as its author likes. CDATA sections are text; a no-break space is no white space.
  std::u16string text() const;

 private:
  friend class XmlReader;
  std::u16string name_;
  std::vector<XmlAttribute> attributes_;
  std::vector<const XmlElement*> children_;
  const std::string* all_text_ = nullptr;
  std::size_t text_begin_ = 0, text_end_ = 0;
};

/// Why a text is no document. Line and position in the line count from 1; both are 0 where the file as a
/// whole is refused.
struct ParseError {
  std::u16string reason;
  std::size_t line = 0, linepos = 0;
};

/// A small XML file as a tree, to be read and not to be changed.
///
/// Nothing beside the file is ever loaded: a document type may be named, its external part stays where it
/// is. Neither entities nor attributes can be declared, so that a small file stays small; the five entities
/// of XML and characters by their number are there. Files are in UTF-8 or UTF-16, with or without a byte
/// order mark, or in an 8-bit code page that they name.
class XmlDocument {
 public:
  /// In bytes. The language files of this system have some twenty thousand.
  static constexpr std::size_t largest_file = 2u << 20;

  XmlDocument() = default;
  XmlDocument(XmlDocument&&) = default;
  XmlDocument& operator=(XmlDocument&&) = default;

  /// Reads a file. False if it can't be read, or is no XML, or isn't taken: `parseError` says why then, and
  /// there is no element.
  bool load(std::u16string_view path);
  /// The same of a file's bytes.
  bool loadXML(std::string_view bytes);

  const ParseError& parseError() const { return error_; }
  /// Null before a document has been read.
  const XmlElement* documentElement() const { return contents_ ? contents_->root : nullptr; }

 private:
  friend class XmlReader;
  /// Elements lie side by side and not in each other: a file may nest them as deeply as it likes.
  struct Contents {
    std::deque<XmlElement> elements;
    std::string text;  // of all elements, in UTF-8
    const XmlElement* root = nullptr;
  };
  bool refuse(std::u16string_view reason);

  std::unique_ptr<const Contents> contents_;
  ParseError error_;
};

}  // namespace tvx::localise
