#pragma once

#include <string>

#include "tvx/dom/node.h"

namespace tvx::dom {

enum class Letters : std::uint8_t {
  Upper,  // HTML element names in capitals: what hosts, files and the source view get
  Lower,  // as the HTML standard writes them: for comparison with its test data
  Small   // names as in Lower, all else as in Upper: for files that are written so
};

/// HTML standard, section 13.3 "serializing HTML fragments", with this system's letters: attribute names
/// as the tree has them, values in double quotes, `&amp; &lt; &gt; &nbsp;` as references in text (`&quot;`
/// in values), void elements without a slash, raw text elements as they stand, foreign elements in their
/// own letters. In capitals a document type keeps its identifiers, which the standard leaves out.
std::u16string serialise_children(const Node& node, Letters letters = Letters::Upper);
/// The node itself with all it holds; of a document, its children.
std::u16string serialise_node(const Node& node, Letters letters = Letters::Upper);

/// Elements that have no end tag and no content (HTML standard, section 13.1.2, and the obsolete ones).
bool is_void(const Element& element);

}  // namespace tvx::dom
