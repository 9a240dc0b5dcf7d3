#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/serialise.h"

namespace tvx::dom {
class Document;
}

namespace tvx::files {

/// What a page's text has around and beside its elements: a serialised page is put into this form again.
///
/// The document type and the comments in front of the page stay letter by letter, as long as the document
/// has the same ones; so does the white space at the places where the tree keeps none, or keeps it elsewhere.
struct PageShape {
  std::u16string lead;        // what stands before the html tag
  std::u16string lead_nodes;  // the same from the tree, to see whether it still holds
  std::u16string before_head;
  std::u16string after_body, after_html;  // white space only
  dom::Letters letters = dom::Letters::Small;
  bool has_instructions = false;  // as "<?php … ?>", which a parser of HTML takes for comments
  bool is_xml = false;            // also to be read by a parser of XML, which takes no tag without its end
};

/// The shape of a text (with LF) that was parsed to that tree.
PageShape shape_of(std::u16string_view text, const dom::Document& tree);

/// The text of a page in that shape. Parsing it gives the same tree again, but for trees that no text gives.
std::u16string page_text(const dom::Document& tree, const PageShape& shape);

}  // namespace tvx::files
