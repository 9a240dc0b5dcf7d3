#pragma once

#include <string_view>

#include "tvx/dom/node.h"

/// What hosts assign to `innerHTML`, `outerHTML` and `innerText`: each is one undo step. Where content can't
/// be written in this way (the rows of a table, the inside of an image, the body itself) it throws
/// RuntimeError(445) and nothing has changed.
namespace tvx::dom {

/// Refused for TABLE, its sections, rows and columns, HTML, HEAD, TITLE, STYLE, FRAMESET, and void elements.
void assign_inner_html(Element& element, std::u16string_view html);
/// Parsed where the element stands, it takes its position. Refused for HTML, HEAD, BODY, FRAMESET, the parts
/// of tables, and elements that stand in nothing.
void assign_outer_html(Element& element, std::u16string_view html);
/// The same for nodes that stand in no tree and belong to the element's document. They are used up.
void assign_outer_nodes(Element& element, const Ref<DocumentFragment>& content);
/// Refused where `innerHTML` is, but for TITLE and STYLE.
void assign_inner_text(Element& element, std::u16string_view text);
/// The text takes the element's place; refused where `outerHTML` is.
void assign_outer_text(Element& element, std::u16string_view text);

}  // namespace tvx::dom
