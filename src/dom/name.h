#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tvx::dom {

/// The namespace of an element.
enum class Namespace : std::uint8_t { Html, Svg, MathMl };

/// The namespace of an attribute; anything but None occurs on foreign elements only.
enum class AttributeNamespace : std::uint8_t { None, XLink, Xml, Xmlns };

/// The element names that this system knows by number; every other name is Unknown.
enum class Tag : std::uint16_t {
  Unknown,
#define TVX_TAG(enumerator, name) enumerator,
#include "tvx/dom/tags.inc"
#undef TVX_TAG
  Count
};

/// An interned name of an element or an attribute. Equal names are one entry, so comparing is
/// comparing addresses. Entries live as long as the process. One thread only.
class Name {
 public:
  struct Entry {
    std::u16string text;   // letters as interned; HTML's names are in small letters
    std::u16string upper;  // with ASCII letters in capitals
    Tag tag;
  };

  /// The empty name.
  Name();
  /// Interns `text` as it stands.
  explicit Name(std::u16string_view text);
  explicit Name(Tag tag);

  const std::u16string& text() const { return entry_->text; }
  const std::u16string& upper() const { return entry_->upper; }
  Tag tag() const { return entry_->tag; }
  bool empty() const { return entry_->text.empty(); }
  const void* key() const { return entry_; }

  friend bool operator==(Name a, Name b) { return a.entry_ == b.entry_; }

 private:
  const Entry* entry_;
};

/// Attribute names that the code asks for.
namespace names {
#define TVX_ATTRIBUTE(identifier, name) inline const Name identifier{std::u16string_view(name)};
#include "tvx/dom/attributes.inc"
#undef TVX_ATTRIBUTE
}  // namespace names

}  // namespace tvx::dom

template <>
struct std::hash<tvx::dom::Name> {
  std::size_t operator()(tvx::dom::Name name) const noexcept { return std::hash<const void*>{}(name.key()); }
};
