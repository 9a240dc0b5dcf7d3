#include "tvx/editing/clipboard/copied_content.h"

#include <algorithm>

#include "tvx/dom/builder.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/tables/selected_cells.h"
#include "tvx/editing/tree/clone_contents.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// What its parts mean nothing without.
bool is_structure(const Node& node) {
  static const TagSet tags{Tag::Ul,    Tag::Ol,    Tag::Dl,    Tag::Dir,      Tag::Menu, Tag::Table,
                           Tag::Tbody, Tag::Thead, Tag::Tfoot, Tag::Colgroup, Tag::Tr,   Tag::Select};
  return tags.has(node);
}

/// A block that stands for its content when all of it is taken. A cell is a container, and so is an item
/// whose end is not taken along.
bool comes_along(const Node& node, LineEnd end) {
  static const TagSet places{Tag::Li, Tag::Dd, Tag::Dt};
  const bool is_place = end == LineEnd::Without && places.has(node);
  return is_text_block(node) && !is_place && !is_editing_host(node);
}

/// Puts a copy of `around` around everything.
void wrap_in(Ref<dom::DocumentFragment>& content, const Element& around) {
  dom::Document& document = dom::document_of(around);
  const Ref<Node> holder = dom::clone(around, document, dom::Deep::No);
  dom::Builder::move_children(*content, *holder);
  dom::Builder::insert(*content, holder);
}

/// In a line of tab-separated text.
std::u16string text_of_cell(Element& cell) {
  std::u16string text =
      dom::inner_text(dom::Range{dom::Boundary{&cell, 0}, dom::Boundary{&cell, dom::length_of(cell)}});
  std::ranges::replace_if(
      text, [](char16_t unit) { return unit == u'\n' || unit == u'\t'; }, u' ');
  return text;
}

/// A table of the cells between two, with the rows and sections that they stand in.
CopiedContent copied_cells(const TableGrid& grid, const Element& table, const Element& from,
                           const Element& to) {
  const GridPart part = grid.part_between(from, to);
  dom::Document& document = dom::document_of(table);
  const auto bare_copy = [&](const Node& node) { return dom::clone(node, document, dom::Deep::No); };
  const Ref<Node> copy = bare_copy(table);
  Ref<Node> section = copy;
  const Node* section_of_rows = &table;
  CopiedContent copied;
  for (std::size_t row = part.top; row < part.bottom; ++row) {
    if (const Node* parent = grid.row(row).parent(); parent != section_of_rows) {
      section_of_rows = parent;
      section = parent == &table ? copy : bare_copy(*parent);
      if (section != copy) dom::Builder::insert(*copy, section);
    }
    const Ref<Node> line = bare_copy(grid.row(row));
    dom::Builder::insert(*section, line);
    if (row > part.top) copied.text += u'\n';
    for (std::size_t column = part.left; column < part.right; ++column) {
      const GridCell* cell = grid.at(row, column);
      if (column > part.left) copied.text += u'\t';
      if (!cell || cell->row != row || cell->column != column) continue;
      dom::Builder::insert(*line, dom::clone(*cell->cell, document, dom::Deep::Yes));
      copied.text += text_of_cell(*cell->cell);
    }
  }
  copied.html = dom::outer_html(static_cast<const Element&>(*copy));
  return copied;
}

}  // namespace

void append_line_end(dom::DocumentFragment& content) {
  dom::Builder::insert(content, dom::document_of(content).create_element(Tag::P));
}

bool remove_line_end(dom::DocumentFragment& content) {
  Node* last = content.last_child();
  while (last && is_filling(*last)) last = last->previous_sibling();
  if (!last || !last->is(Tag::P) || last->has_children()) return false;
  const Node* before = last->previous_sibling();
  while (before && is_filling(*before)) before = before->previous_sibling();
  if (!before) return false;
  dom::remove(*last);
  return true;
}

Ref<dom::DocumentFragment> copied_nodes(const dom::Range& range, LineEnd end) {
  Ref<dom::DocumentFragment> content = clone_contents(range);
  Node* node = dom::common_ancestor(*range.start.node, *range.end.node);
  bool in_line = true;
  for (; node; node = node->parent()) {
    auto* element = dom::as<Element>(node);
    if (!element) continue;
    if (is_structure(*element)) {
      wrap_in(content, *element);
      in_line = false;
    } else if (in_line && is_look(*element)) {
      wrap_in(content, *element);
    } else {
      const bool whole = in_line && comes_along(*element, end) && covers_content_of(range, *element);
      if (whole) wrap_in(content, *element);
      if (!whole || !element->is(Tag::Li)) break;
      in_line = false;
    }
  }
  return content;
}

std::optional<CopiedContent> copied_content(Editor& editor) {
  const Selection& selection = editor.selection();
  CopiedContent copied;
  if (Element* control = selection.control()) {
    copied.control = *control;
    copied.html = dom::outer_html(*control);
    copied.text = dom::inner_text(dom::Range{dom::before(*control), dom::after(*control)});
    return copied;
  }
  if (selection.type() == SelectionType::None) return {};
  if (const SelectedCorners corners = selected_corners(editor); corners && corners.several())
    return copied_cells(TableGrid(*corners.table), *corners.table, *corners.anchor, *corners.focus);
  const dom::Range seen = shrunk_to_characters(selection.range());
  if (!seen.start || seen.collapsed()) return {};
  const LineEnd end = takes_line_end(selection.range(), seen) ? LineEnd::With : LineEnd::Without;
  const Ref<dom::DocumentFragment> nodes = copied_nodes(seen, end);
  copied.text = dom::inner_text(seen);
  if (end == LineEnd::With) {
    append_line_end(*nodes);
    copied.text += u'\n';
  }
  copied.html = dom::serialise_children(*nodes);
  return copied;
}

}  // namespace tvx::editing
