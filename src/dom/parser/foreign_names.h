#pragma once

#include <vector>

#include "tvx/dom/node.h"

/// Names of SVG and MathML in HTML: HTML standard, section 13.2.6.1 "adjust SVG attributes" and its
/// neighbours, and section 13.2.6.5.
namespace tvx::dom::parser {

/// "foreignobject" is written foreignObject.
Name adjusted_svg_name(Name name);
void adjust_foreign_attributes(std::vector<Attribute>& attributes, Namespace name_space);

bool is_mathml_text_integration_point(const Element& element);
bool is_html_integration_point(const Element& element);
/// HTML start tags that end foreign content; `font` does with some attributes only.
bool breaks_out_of_foreign_content(Tag tag);

}  // namespace tvx::dom::parser
