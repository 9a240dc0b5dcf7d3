#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::source {

/// What a parser makes of a tag that doesn't fit.
enum class TagTrouble : std::uint8_t {
  None,
  NeverClosed,      // a start tag: the element ends with the one around it, or with the document
  GoesOn,           // a start tag of a format: it goes on into what follows
  ClosesNothing,    // an end tag: it is passed over
  EmptyParagraph,   // </p> without a paragraph makes an empty one
  LineBreak,        // </br> is read as <br>
  ClosedByAnother,  // a start tag: an end tag within which it stands closes it
  OpensAgain        // a start tag of a format: closed by another's end tag, and opened again after it
};

struct SourceTag {
  static constexpr std::size_t nobody = std::size_t(-1);
  Offset begin = 0, end = 0;  // from < to after >
  Offset name = 0, name_end = 0;
  bool is_end_tag = false;
  TagTrouble trouble = TagTrouble::None;
  std::size_t partner = nobody;   // the tag at the element's other end
  std::size_t ended_by = nobody;  // the tag that ended the element, which may be its partner or any other
};

/// The tags of a source in their order, each with its partner, by the rules by which a browser reads HTML:
/// end tags that may be left out are missed nowhere, elements without content have none.
class TagStructure {
 public:
  explicit TagStructure(std::u16string_view source);

  const std::vector<SourceTag>& tags() const { return tags_; }
  /// The tag that a position stands in or touches; of two the one that begins there.
  const SourceTag* at(Offset place) const;
  const SourceTag* partner_of(const SourceTag& tag) const;
  /// The name of the innermost element that is open at a position and needs an end tag; empty if none is.
  std::u16string_view open_at(Offset place, std::u16string_view source) const;

 private:
  class Reading;
  std::vector<SourceTag> tags_;
};

/// An element without content: it has no end tag.
bool is_void_element(std::u16string_view name);

}  // namespace tvx::source
