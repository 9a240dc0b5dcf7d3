#pragma once

#include <string_view>

#include "tvx/dom/document.h"

namespace tvx::dom {

/// Parses a whole document by the HTML standard (section 13.2, scripting off) into a fresh document.
/// Never fails: every text has a tree. Elements nested deeper than 512 become siblings.
Ref<Document> parse_document(std::u16string_view html);

/// Where a fragment is to stand (HTML standard, section 13.4 "parsing HTML fragments").
struct FragmentContext {
  Name name = Name(Tag::Body);
  Namespace name_space = Namespace::Html;
  CompatibilityMode compatibility_mode = CompatibilityMode::NoQuirks;
  /// A form element at or above the position: nested form tags are dropped.
  bool inside_form = false;
  /// For annotation-xml contexts: its `encoding` makes it an HTML integration point.
  std::u16string encoding;
};
FragmentContext context_of(const Element& element);

/// Parses a fragment as new nodes of `document`, in a fragment that stands in no tree.
Ref<DocumentFragment> parse_fragment(Document& document, const FragmentContext& context,
                                     std::u16string_view html);

}  // namespace tvx::dom
