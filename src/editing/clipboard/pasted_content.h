#pragma once

#include <string_view>

#include "tvx/dom/document.h"

namespace tvx::editing {

/// HTML from elsewhere as nodes of `document` that stand in no tree, made fit for it:
///
/// - Only what stands between the marks `<!--StartFragment-->` and `<!--EndFragment-->`, wherever in the
/// text's
///   own tree they are, with the lists and tables around them. Without marks all of it but the white space
///   with line breaks at its edges, which is its program's layout of the source.
/// - Rows and cells that come without a table get one.
/// - Nothing that acts: no scripts, event attributes, script addresses, embedded documents.
/// - Nothing that belongs to the page it comes from: META, LINK, BASE, TITLE, STYLE, conditional comments.
/// - Nothing that means something to one program only: XML islands, `mso-` declarations, `Mso` classes, and
/// the
///   elements that are left with nothing to say.
///
/// Content of programs whose habits are known (editing/clipboard/foreign_source.h) is rebuilt as a person
/// would have written it: drawn bullets become lists, what classes show becomes style, drawings become
/// pictures, styles that say what `place` gives anyway or what its page says of all its text go, as do empty
/// paragraphs, and a table says once what it says of each cell.
///
/// All else stays as it came. Costs a few walks over the content.
dom::Ref<dom::DocumentFragment> pasted_content(dom::Document& document, std::u16string_view html,
                                               const dom::Element* place = nullptr);

}  // namespace tvx::editing
